// SPDX-License-Identifier: MIT
#include "MediaKits/MediaInfo/mediainfobase.h"

MediaInfoBase::MediaInfoBase(const QString &path, QObject *parent) : QObject(parent), m_path(path)
{
    qRegisterMetaType<QSharedPointer<MediaInfoData>>("QSharedPointer<MediaInfoData>");
}
