// SPDX-License-Identifier: MIT
#include "MediaKits/MediaTasksManager/picturefile.h"

#include <QFile>
#include <QFileInfo>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

namespace {

bool isReference(const QXmlStreamReader &element)
{
    if (!element.qualifiedName().endsWith(QLatin1String("image"), Qt::CaseInsensitive))
        return false;
    const QXmlStreamAttributes attributes = element.attributes();
    for (const QXmlStreamAttribute &attribute : attributes) {
        if (attribute.qualifiedName().endsWith(QLatin1String("href")) &&
            !attribute.value().startsWith(QLatin1String("data:")))
            return true;
    }
    return false;
}

QByteArray withoutReferences(const QString &path)
{
    QFile file(path);
    file.open(QIODevice::ReadOnly);
    QByteArray drawing;
    QXmlStreamReader reader(&file);
    QXmlStreamWriter writer(&drawing);
    // Prefixes needn't be declared for whoever draws it.
    reader.setNamespaceProcessing(false);
    while (!reader.atEnd()) {
        reader.readNext();
        if (reader.isStartElement() && isReference(reader))
            reader.skipCurrentElement();
        else if (!reader.hasError())
            writer.writeCurrentToken(reader);
    }
    return reader.hasError() ? QByteArray() : drawing;
}

} // namespace

PictureFile::PictureFile(const QString &path)
{
    m_reader.setDecideFormatFromContent(true);
    m_reader.setAutoTransform(true);
    if (!QFileInfo(path).isFile())
        return;
    m_reader.setFileName(path);
    if (!m_reader.format().startsWith("svg"))
        return;
    m_drawing.setData(withoutReferences(path));
    m_drawing.open(QIODevice::ReadOnly);
    m_reader.setDevice(&m_drawing);
}
