// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/AppInstance/LocalStore/delayedsave.h"
#include "MediaKits/AppInstance/LocalStore/jsonfile.h"

#include <QList>
#include <QString>

/// The conversion history in HistoryRecord.json: read by the constructor, written two seconds after
/// a change at the latest, and by the destructor.
class HistoryRecord
{
public:
    static constexpr int maxRecords = 500;

    struct Record
    {
        /// "yyyy.MM.dd hh:mm"
        QString datetime;
        QString inputfile;
        QString outputfile;
    };

    HistoryRecord();
    ~HistoryRecord();
    Q_DISABLE_COPY(HistoryRecord)

    static HistoryRecord &instance();

    /// Newest first, at most maxRecords.
    const QList<Record> &records() const { return m_records; }
    /// Puts the record in front and drops the oldest above maxRecords.
    void add(const Record &record);
    void clear();

    /// Reads the file anew.
    void load();
    void save();

private:
    QJsonObject content() const;

    JsonFile m_file;
    QList<Record> m_records;
    DelayedSave m_saving{[this] { save(); }};
};
