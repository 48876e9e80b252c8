// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaInfo/Facts/mediainfodata.h"

#include <QObject>
#include <QStringList>
#include <QVector>

/// Reads what the headers of some files tell, one file after the other, through the library
/// whatever their size.
class HeadersReading : public QObject
{
    Q_OBJECT

public:
    HeadersReading(const QStringList &files, QObject *parent);

    void start() { readNext(); }

signals:
    /// Once, after all files have been read.
    /// @param infos one for each file, null for a file without media
    void finished(const QVector<QSharedPointer<MediaInfoData>> &infos);

private:
    void readNext();

    const QStringList m_files;
    QVector<QSharedPointer<MediaInfoData>> m_infos;
};
