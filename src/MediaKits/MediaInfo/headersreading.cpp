// SPDX-License-Identifier: MIT
#include "MediaKits/MediaInfo/headersreading.h"

#include "MediaKits/MediaInfo/MAMediaInfo/mamediainfo.h"

HeadersReading::HeadersReading(const QStringList &files, QObject *parent)
    : QObject(parent), m_files(files)
{
}

void HeadersReading::readNext()
{
    if (m_infos.size() == m_files.size()) {
        emit finished(m_infos);
        return;
    }
    auto *reader = new MAMediaInfo(m_files.at(m_infos.size()), this, ReadDepth::Headers);
    const auto take = [this, reader] {
        reader->disconnect(this);
        reader->deleteLater();
        m_infos += reader->mediaInfo();
        readNext();
    };
    connect(reader, &MediaInfoBase::got, this, take);
    connect(reader, &MediaInfoBase::error, this, take);
    reader->start();
}
