// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoGif/gifsample.h"

#include "MediaKits/FunctionPage/VideoGif/gifpictures.h"
#include "MediaKits/MediaTasksManager/converttask.h"

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

GifSample::GifSample(QObject *parent) : QObject(parent), m_trial(nullptr)
{
    m_pause.setSingleShot(true);
    m_pause.setInterval(pauseMs);
    connect(&m_pause, &QTimer::timeout, this, &GifSample::begin);
    connect(&m_trial, &TrialConversion::made, this, [this] { emit estimated(wholeSize()); });
    connect(&m_trial, &TrialConversion::failed, this, [this] { emit estimated(-1); });
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
    m_trial.stop();
}

void GifSample::begin()
{
    // What a second takes would tell nothing of the whole.
    if (ConvertTask::outputDuration(m_gif) <= 0) {
        emit estimated(-1);
        return;
    }
    m_span = sampledSpan(m_gif);
    m_trial.start(m_gif, m_span);
}

// The first picture is a whole one; the others hold what moves.
qint64 GifSample::wholeSize() const
{
    const GifBytes sample = gifBytes(m_trial.file());
    if (sample.pictures == 0)
        return -1;
    if (sample.pictures == 1)
        return sample.all;
    const double length = ConvertTask::outputDuration(m_gif);
    const double sampled = m_span.end - m_span.start;
    const double further = (sample.pictures * length / sampled - 1) / (sample.pictures - 1);
    return sample.first + qint64(double(sample.all - sample.first) * std::max(further, 0.0));
}
