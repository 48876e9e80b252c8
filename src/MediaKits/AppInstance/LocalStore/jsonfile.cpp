// SPDX-License-Identifier: MIT
#include "MediaKits/AppInstance/LocalStore/jsonfile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QTextStream>

namespace {

// Of a store of ours; the largest have some hundred kB.
constexpr qint64 largestBytes = 64 * 1024 * 1024;

bool isForbidden = false;

// Empty when it can't be.
QString setAside(const QString &path)
{
    const QString broken = path + QStringLiteral(".broken");
    QString target = broken;
    for (int number = 2; QFile::exists(target); ++number)
        target = broken + QString::number(number);
    return QFile::rename(path, target) ? target : QString();
}

} // namespace

JsonFile::JsonFile(const QString &path) : m_path(path) {}

QJsonObject JsonFile::read()
{
    QFile file(m_path);
    m_mustKeep = false;
    m_hasObject = false;
    m_known.clear();
    m_asidePath.clear();
    const QFileInfo info(m_path);
    if (!info.exists())
        return {};
    if (info.size() > largestBytes) {
        m_asidePath = setAside(m_path);
        m_mustKeep = m_asidePath.isEmpty();
        return {};
    }
    // A pipe in its place would be waited for.
    if (!info.isFile() || !file.open(QIODevice::ReadOnly)) {
        m_mustKeep = true;
        return {};
    }
    m_known = file.readAll();
    QTextStream stream(m_known);
    stream.setCodec("UTF-8");
    const QByteArray text = stream.readAll().toUtf8();
    const bool complete = file.error() == QFileDevice::NoError;
    file.close();

    const QJsonDocument document = QJsonDocument::fromJson(text);
    m_hasObject = complete && document.isObject();
    if (m_hasObject)
        return document.object();
    if (complete)
        m_asidePath = setAside(m_path);
    m_mustKeep = m_asidePath.isEmpty();
    return {};
}

void JsonFile::forbidWriting()
{
    isForbidden = true;
}

bool JsonFile::write(const QJsonObject &object, QJsonDocument::JsonFormat format)
{
    if (m_mustKeep || m_path.isEmpty() || isForbidden)
        return false;
    const QByteArray text = QJsonDocument(object).toJson(format);
    if (text == m_known)
        return true;
    QDir().mkpath(QFileInfo(m_path).path());
    QSaveFile file(m_path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    // The files hold a login and the names of the user's films.
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
    file.write(text);
    // commit() takes no notice of an error while the buffer is written out.
    if (!file.flush())
        file.cancelWriting();
    if (!file.commit())
        return false;
    m_known = text;
    return true;
}
