// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaInfo/Facts/mediainfodata.h"

#include <QObject>

/// One probe of one file. Connect `got` and `error`, then call `start`: the signals may come
/// before it returns. A handler may call `deleteLater` on the reader.
class MediaInfoBase : public QObject
{
    Q_OBJECT

public:
    enum MediaKind { NothingUsable = 0, HasVideo = 1, AudioOnly = 2 };

    MediaInfoBase(const QString &path, QObject *parent);

    virtual void start() = 0;

    /// The result, null until a reader succeeded; after `got` it can still be null or lack its
    /// format record, which both mean that the file could not be read.
    QSharedPointer<MediaInfoData> mediaInfo() const { return m_data; }
    int mediaKind() const { return m_mediaKind; }

signals:
    void got();
    void error();
    void finish();

protected:
    QString path() const { return m_path; }

    int m_mediaKind = NothingUsable;
    QSharedPointer<MediaInfoData> m_data;

private:
    QString m_path;
};
