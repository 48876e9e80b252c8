// SPDX-License-Identifier: MIT
#include "MediaKits/MediaTasksManager/videoimagepicktask.h"

#include "MediaKits/Logger/logger.h"
#include "MediaKits/MediaFormats/toolquoting.h"
#include "MediaKits/MediaInfo/FFMediaInfo/ffmediainfo.h"

#include <QFileInfo>

#include <limits>

namespace {

// Where the pictures begin; ffmpeg is to read on until it finds one.
QString pictureSpan(int fromMs)
{
    constexpr double secondMs = 1000.0;
    constexpr int longestFrame = 10;
    return fromMs > 0 ? QStringLiteral("-ss %1 -t %2")
                            .arg(QString::number(fromMs / secondMs, 'f', 3))
                            .arg(longestFrame)
                      : QStringLiteral("-t 0.001");
}

} // namespace

VideoImagePickTask::VideoImagePickTask(QObject *parent) : ParamTask(QString(), QString(), parent) {}

QString VideoImagePickTask::commandText(const VideoImagePickTaskParam &param)
{
    const QString suffix = QFileInfo(param.target).suffix().toUpper();
    QString pattern;
    if (suffix == QLatin1String("JPG"))
        pattern = QStringLiteral(" -ss 1 -t 0.001 -i %1 -f mjpeg -vf scale=300:-1 -y %2");
    else if (suffix == QLatin1String("PNG"))
        pattern = QLatin1Char(' ') + pictureSpan(param.fromMs) +
                  QStringLiteral(" -i %1 -vframes 1  -f image2  -vf scale=300:-1 -y %2");
    else
        return {};
    return pattern.arg(quoteToolPath(param.path), quoteToolPath(param.target));
}

void VideoImagePickTask::prepare()
{
    FFmpegTask::prepare();
    tellSource(m_param->sourceInfo);
}

void VideoImagePickTask::start()
{
    if (!m_param) {
        CLOG(ERROR, "default") << QStringLiteral("参数为空");
        return;
    }
    const QString command = commandText(*m_param);
    if (command.isEmpty()) {
        fail(tr("不支持的图片格式：%1").arg(m_param->target));
        return;
    }
    setBaseParam(new FFmpegTaskParam(command, std::numeric_limits<int>::max()));
    if (m_param->sourceInfo)
        ParamTask::start();
    else
        readSource();
}

// In a process of its own: the library would keep this thread waiting for a slow disk.
void VideoImagePickTask::readSource()
{
    m_reader = new FFMediaInfo(m_param->path, this);
    connect(m_reader, &MediaInfoBase::finish, this, [this] {
        m_param->sourceInfo = m_reader->mediaInfo();
        m_reader->deleteLater();
        m_reader.clear();
        ParamTask::start();
    });
    m_reader->start();
}

void VideoImagePickTask::stop()
{
    if (!m_reader) {
        ParamTask::stop();
        return;
    }
    delete m_reader;
    setState(STOPED);
}
