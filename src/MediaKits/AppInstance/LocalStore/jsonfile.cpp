// SPDX-License-Identifier: MIT
#include "MediaKits/AppInstance/LocalStore/jsonfile.h"

#include "MediaKits/AppInstance/LocalStore/setaside.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QSaveFile>
#include <QTextCodec>
#include <QTextStream>

namespace {

bool isForbidden = false;

bool holds(const QJsonValue &taken, const QJsonValue &found);

// Qt reads a whole number of any size, and writes it with the digits of a double.
bool isWritable(const QJsonValue &value)
{
    constexpr qint64 largest = 1LL << 53;
    const QVariant number = value.toVariant();
    return number.userType() != QMetaType::LongLong ||
           (number.toLongLong() <= largest && number.toLongLong() >= -largest);
}

bool holdsItems(const QJsonArray &taken, const QJsonArray &found)
{
    bool all = true;
    for (int i = 0; i < found.size() && all; ++i)
        all = holds(taken.at(i), found.at(i));
    return all;
}

bool holdsFields(const QJsonObject &taken, const QJsonObject &found)
{
    bool all = true;
    for (auto it = found.begin(); it != found.end() && all; ++it)
        all = holds(taken.value(it.key()), it.value());
    return all;
}

// Whether nothing is lost of what was found when what was taken of it is written in its place. An
// empty value is no loss.
bool holds(const QJsonValue &taken, const QJsonValue &found)
{
    if (found.isObject())
        return holdsFields(taken.toObject(), found.toObject());
    if (found.isArray())
        return holdsItems(taken.toArray(), found.toArray());
    return found.isNull() || found == QJsonValue(QString()) ||
           (found == taken && isWritable(found));
}

// Bytes that are no characters. Names of files may well hold the character that stands for those.
bool hasDamagedText(const QByteArray &utf8)
{
    QTextCodec::ConverterState state;
    QTextCodec::codecForName("UTF-8")->toUnicode(utf8.constData(), utf8.size(), &state);
    return state.invalidChars > 0 || state.remainingChars > 0;
}

} // namespace

JsonFile::JsonFile(const QString &path) : m_path(path) {}

QJsonObject JsonFile::read()
{
    QFile file(m_path);
    m_mustKeep = false;
    m_hasObject = false;
    m_holdsMore = false;
    m_known.clear();
    m_object = {};
    m_asidePath.clear();
    const QFileInfo info(m_path);
    if (!info.exists())
        return {};
    if (!isReadableStore(info)) {
        m_asidePath = setAside(m_path);
        m_mustKeep = m_asidePath.isEmpty();
        return {};
    }
    if (!file.open(QIODevice::ReadOnly)) {
        m_mustKeep = true;
        return {};
    }
    m_known = file.readAll();
    QTextStream stream(m_known);
    stream.setCodec("UTF-8");
    const QString text = stream.readAll();
    const bool complete = file.error() == QFileDevice::NoError;
    file.close();

    const QJsonDocument document = QJsonDocument::fromJson(text.toUtf8());
    m_hasObject = complete && document.isObject();
    if (m_hasObject) {
        m_object = document.object();
        m_holdsMore = hasDamagedText(m_known);
        return m_object;
    }
    if (complete)
        m_asidePath = setAside(m_path);
    m_mustKeep = m_asidePath.isEmpty();
    return {};
}

void JsonFile::compareWith(const QJsonObject &taken)
{
    m_holdsMore = m_holdsMore || !holds(taken, m_object);
    m_object = {};
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
    if (m_holdsMore) {
        m_asidePath = copyAside(m_path);
        if (m_asidePath.isEmpty())
            return false;
        m_holdsMore = false;
    }
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
