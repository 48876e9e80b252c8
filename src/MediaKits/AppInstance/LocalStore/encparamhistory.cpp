// SPDX-License-Identifier: MIT
#include "MediaKits/AppInstance/LocalStore/encparamhistory.h"

#include "MediaKits/AppInstance/LocalStore/appdirs.h"

#include <QJsonArray>

#include <cmath>
#include <limits>

namespace {

const QLatin1String historyKey("history");

// 0 for a number that is no preset's id.
quint32 presetId(const QJsonValue &value)
{
    const double number = value.toDouble();
    const bool isId = number >= 0.0 && number <= double(std::numeric_limits<quint32>::max()) &&
                      number == std::floor(number);
    return isId ? quint32(number) : 0;
}

} // namespace

EncParamHistory::EncParamHistory() : m_file(dataDir() + QStringLiteral("/EncParamData.json"))
{
    load();
}

EncParamHistory::~EncParamHistory()
{
    save();
}

void EncParamHistory::load()
{
    m_ids.clear();
    const QJsonArray history = m_file.read()[historyKey].toArray();
    for (const QJsonValue &value : history) {
        if (m_ids.size() < maxIds)
            m_ids.append(presetId(value));
    }
    m_file.compareWith(content());
}

void EncParamHistory::save()
{
    m_file.write(content(), QJsonDocument::Compact);
}

QJsonObject EncParamHistory::content() const
{
    QJsonArray history;
    for (const quint32 id : m_ids)
        history.append(qint64(id));
    return {{historyKey, history}};
}

EncParamHistory &EncParamHistory::instance()
{
    static EncParamHistory history;
    return history;
}

void EncParamHistory::touch(quint32 id)
{
    m_ids.removeAll(id);
    m_ids.prepend(id);
    while (m_ids.size() > maxIds)
        m_ids.removeLast();
    m_saving.request();
}

void EncParamHistory::remove(quint32 id)
{
    m_ids.removeAll(id);
    m_saving.request();
}
