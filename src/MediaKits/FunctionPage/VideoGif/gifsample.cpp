// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoGif/gifsample.h"

#include "MediaKits/AppInstance/LocalStore/workfolder.h"
#include "MediaKits/FunctionPage/VideoGif/gifpictures.h"
#include "MediaKits/MediaTasksManager/converttask.h"
#include "MediaKits/MediaTasksManager/grouptaskfactory.h"

#include <QFile>

#include <algorithm>

namespace {

constexpr int secondMs = 1000;
// While a number is typed or a handle is dragged, nothing needs to be converted.
constexpr int pauseMs = 400;

// A second in the middle, or all of a shorter one.
TimeSpan sampledSpan(const ConvertTaskParam &gif)
{
    const TimeSpan whole = gif.timeRange ? *gif.timeRange : TimeSpan{0, gif.durationMs};
    const int length = whole.end - whole.start;
    const int start = whole.start + std::max(length - secondMs, 0) / 2;
    return {start, start + std::min(length, secondMs)};
}

} // namespace

GifSample::GifSample(QObject *parent) : QObject(parent)
{
    m_pause.setSingleShot(true);
    m_pause.setInterval(pauseMs);
    connect(&m_pause, &QTimer::timeout, this, &GifSample::begin);
}

GifSample::~GifSample()
{
    cancel();
}

void GifSample::take(const ConvertTaskParam &gif)
{
    cancel();
    m_gif = gif;
    m_pause.start();
}

void GifSample::cancel()
{
    m_pause.stop();
    if (m_task)
        m_task->disconnect(this);
    m_task.reset();
}

QString GifSample::sampleFile() const
{
    return m_folder->filePath(QStringLiteral("%1.%2").arg(m_number).arg(m_gif.format));
}

void GifSample::begin()
{
    // What a second takes would tell nothing of the whole.
    if (ConvertTask::outputDuration(m_gif) <= 0) {
        emit estimated(-1);
        return;
    }
    if (!m_folder)
        m_folder = std::make_unique<WorkFolder>();
    m_span = sampledSpan(m_gif);
    auto *param = new ConvertTaskParam(m_gif);
    param->timeRange = QSharedPointer<TimeSpan>::create(m_span);
    param->outputDir = m_folder->path();
    param->outputName = QString::number(++m_number);
    m_task.reset(createGroupTask(ComplexConvertKind));
    m_task->setParam(param);
    connect(m_task.get(), &MediaTask::taskStateChanged, this, [this](MediaTask::State state) {
        if (MediaTask::isFinal(state))
            end();
    });
    m_task->start();
}

void GifSample::end()
{
    MediaTask *ended = m_task.release();
    ended->disconnect(this);
    const qint64 bytes = ended->state() == MediaTask::FINISHED ? wholeSize() : -1;
    ended->deleteLater();
    QFile::remove(sampleFile());
    emit estimated(bytes);
}

// The first picture is a whole one; the others hold what moves.
qint64 GifSample::wholeSize() const
{
    const GifBytes sample = gifBytes(sampleFile());
    if (sample.pictures == 0)
        return -1;
    if (sample.pictures == 1)
        return sample.all;
    const double length = ConvertTask::outputDuration(m_gif);
    const double sampled = m_span.end - m_span.start;
    const double further = (sample.pictures * length / sampled - 1) / (sample.pictures - 1);
    return sample.first + qint64(double(sample.all - sample.first) * std::max(further, 0.0));
}
