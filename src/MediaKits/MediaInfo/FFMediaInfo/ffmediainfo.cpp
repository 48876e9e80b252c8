// SPDX-License-Identifier: MIT
#include "MediaKits/MediaInfo/FFMediaInfo/ffmediainfo.h"

#include "MediaKits/Logger/logger.h"
#include "MediaKits/MediaFormats/toolquoting.h"
#include "MediaKits/MediaInfo/Facts/factsstream.h"
#include "MediaKits/MediaInfo/FFMediaInfo/ffprobejson.h"

#include <QJsonDocument>

FFMediaInfo::FFMediaInfo(const QString &path, QObject *parent)
    : MediaInfoBase(path, parent), m_processor(new FFProbeProcessor(this))
{
    connect(m_processor, &MediaProcessor::stateChanged, this, &FFMediaInfo::onProcessorState);
}

void FFMediaInfo::start()
{
    m_processor->setArguments(
        QLatin1String("-v quiet -show_format -show_streams -print_format json ") +
        quoteToolPath(path()));
    m_processor->start();
}

void FFMediaInfo::onProcessorState(MediaProcessor::State state)
{
    if (state == MediaProcessor::ProcessorError) {
        emit error();
        emit finish();
    } else if (state == MediaProcessor::ProcessorFinished) {
        readOutput();
    }
}

void FFMediaInfo::readOutput()
{
    m_mediaKind = NothingUsable;
    QJsonParseError parseError{};
    const QJsonDocument document =
        QJsonDocument::fromJson(m_processor->output().toUtf8(), &parseError);
    if (parseError.error != QJsonParseError::NoError) {
        CLOG(ERROR, "default") << QStringLiteral("无法获取媒体文件信息") << ' ' << path();
    } else {
        m_data = QSharedPointer<MediaInfoData>::create();
        m_data->format = newFormatInfo(path());
        readProbeJson(document.object(), *m_data);
        m_mediaKind = m_data->video ? HasVideo : AudioOnly;
    }
    emit got();
    emit finish();
}
