// SPDX-License-Identifier: MIT
#include "MediaKits/AppInstance/LocalStore/historyrecord.h"

#include "MediaKits/AppInstance/LocalStore/appdirs.h"

#include <QJsonArray>

namespace {

const QLatin1String historyKey("history");
const QLatin1String datetimeKey("datetime");
const QLatin1String inputfileKey("inputfile");
const QLatin1String outputfileKey("outputfile");

} // namespace

HistoryRecord::HistoryRecord() : m_file(dataDir() + QStringLiteral("/HistoryRecord.json"))
{
    load();
}

HistoryRecord::~HistoryRecord()
{
    save();
}

void HistoryRecord::load()
{
    m_records.clear();
    const QJsonArray history = m_file.read()[historyKey].toArray();
    for (const QJsonValue &value : history) {
        if (!value.isObject() || m_records.size() == maxRecords)
            continue;
        const QJsonObject object = value.toObject();
        m_records.append({object[datetimeKey].toString(), object[inputfileKey].toString(),
                          object[outputfileKey].toString()});
    }
    m_file.compareWith(content());
}

void HistoryRecord::save()
{
    m_file.write(content(), QJsonDocument::Compact);
}

QJsonObject HistoryRecord::content() const
{
    QJsonArray history;
    for (const Record &record : m_records) {
        history.append(QJsonObject{{datetimeKey, record.datetime},
                                   {inputfileKey, record.inputfile},
                                   {outputfileKey, record.outputfile}});
    }
    return {{historyKey, history}};
}

HistoryRecord &HistoryRecord::instance()
{
    static HistoryRecord history;
    return history;
}

void HistoryRecord::add(const Record &record)
{
    m_records.prepend(record);
    while (m_records.size() > maxRecords)
        m_records.removeLast();
    m_saving.request();
}

void HistoryRecord::clear()
{
    m_records.clear();
    m_saving.request();
}
