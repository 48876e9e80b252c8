// SPDX-License-Identifier: MIT
#include "MediaKits/Manifest/manifestconfig.h"

#include "MediaKits/Logger/logger.h"

#include <QDomDocument>
#include <QFile>
#include <QSaveFile>
#include <QTextStream>

namespace {

bool readDocument(const QString &path, QDomDocument &document)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        CLOG(ERROR, "default") << "error::ParserXML->OpenXmlFile->file.open->"
                               << file.errorString();
        return false;
    }
    QString message;
    if (!document.setContent(&file, &message)) {
        CLOG(ERROR, "default") << "error::ParserXML->OpenXmlFile->doc.setContent" << message;
        return false;
    }
    return true;
}

void writeDocument(const QDomDocument &document, const QString &path)
{
    constexpr int indent = 4;
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly | QIODevice::Text)) {
        QTextStream stream(&file);
        document.save(stream, indent);
        stream.flush();
        // commit() doesn't look at what is still buffered.
        if (stream.status() != QTextStream::Ok || !file.flush())
            file.cancelWriting();
        if (file.commit())
            return;
    }
    CLOG(ERROR, "default") << "error::ParserXML->SaveXmlFile->" << path << ": "
                           << file.errorString();
}

} // namespace

void ManifestConfig::configWindowsSettings(const QString &path, const QVariantMap &settings)
{
    QDomDocument document;
    if (!readDocument(path, document))
        return;
    const QDomElement section = document.documentElement()
                                    .firstChildElement(QStringLiteral("application"))
                                    .firstChildElement(QStringLiteral("windowsSettings"));
    if (section.isNull())
        return;
    for (auto it = settings.begin(); it != settings.end(); ++it)
        section.firstChildElement(it.key()).firstChild().setNodeValue(it.value().toString());
    writeDocument(document, path);
}
