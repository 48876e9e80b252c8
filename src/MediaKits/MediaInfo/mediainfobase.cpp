// SPDX-License-Identifier: MIT
#include "MediaKits/MediaInfo/mediainfobase.h"

#include <QFileInfo>

MediaInfoBase::MediaInfoBase(const QString &path, QObject *parent) : QObject(parent), m_path(path)
{
    qRegisterMetaType<QSharedPointer<MediaInfoData>>("QSharedPointer<MediaInfoData>");
}

QSharedPointer<MediaFormatInfo> newFormatInfo(const QString &path)
{
    auto format = QSharedPointer<MediaFormatInfo>::create();
    format->formatName = QFileInfo(path).suffix().toUpper();
    return format;
}
