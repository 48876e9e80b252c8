// SPDX-License-Identifier: MIT
#include "MediaKits/MediaInfo/MAMediaInfo/mamediainfo.h"

#include "MediaKits/Logger/logger.h"
#include "MediaKits/MediaInfo/FFMediaInfo/ffmediainfo.h"
#include "MediaKits/MediaInfo/MAMediaInfo/readingprocess.h"

MAMediaInfo::MAMediaInfo(const QString &path, QObject *parent, ReadDepth depth)
    : MediaInfoBase(path, parent), m_depth(depth)
{
}

void MAMediaInfo::start()
{
    ReadingProcess::instance().read({path(), m_depth}, this,
                                    [this](const ReadAnswer &answer) { take(answer); });
}

void MAMediaInfo::take(const ReadAnswer &answer)
{
    m_mediaKind = NothingUsable;
    if (answer.outcome == ReadOutcome::Failed) {
        askOther();
        return;
    }
    if (!answer.info) {
        emit error();
        return;
    }
    const MediaKind withoutVideo = answer.info->audios.isEmpty() ? NothingUsable : AudioOnly;
    succeed(answer.info, answer.info->video ? HasVideo : withoutVideo);
}

void MAMediaInfo::askOther()
{
    CLOG(WARNING, "default") << "the media library could not read " << path();
    auto *other = new FFMediaInfo(path(), this);
    connect(other, &MediaInfoBase::error, this, &MediaInfoBase::error);
    connect(other, &MediaInfoBase::got, this,
            [this, other] { succeed(other->mediaInfo(), other->mediaKind()); });
    other->start();
}

void MAMediaInfo::succeed(const QSharedPointer<MediaInfoData> &info, int kind)
{
    m_data = info;
    m_mediaKind = kind;
    emit got();
    emit finish();
}
