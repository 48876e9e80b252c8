// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/AudioConvert/audiocutdialog.h"

#include "MediaKits/FunctionPage/Framework/timespanbinding.h"
#include "MediaKits/FunctionPage/Framework/timespanedit.h"
#include "MediaKits/MediaFormats/mediaformats.h"
#include "MediaKits/Player/csvideoplayer.h"

#include <QFileInfo>
#include <QVBoxLayout>

namespace {

// An end this near to the sound's own, in ms, cuts nothing.
constexpr int endTolerance = 499;

} // namespace

AudioCutDialog::AudioCutDialog(QWidget *parent) : EditorDialog(parent)
{
    setTitle(tr("音频剪裁"));
    auto *edit = new TimeSpanEdit;
    auto *layout = new QVBoxLayout(editorArea());
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(edit);
    m_span = new TimeSpanBinding({edit->start(), edit->end(), &scrubBar(), &player()}, this);
    connect(edit, &TimeSpanEdit::startCaptured, this, &AudioCutDialog::on_btnSCapture_clicked);
    connect(edit, &TimeSpanEdit::endCaptured, this, &AudioCutDialog::on_btnECapture_clicked);
}

void AudioCutDialog::start(const QString &path, const QStringList &options)
{
    QStringList args;
    if (isAudioFormat(QFileInfo(path).completeSuffix()))
        args += soundWaveArgument();
    startPlayer(path, args + options + standardPlayerArguments());
}

void AudioCutDialog::setDuration(int ms)
{
    EditorDialog::setDuration(ms);
    m_span->setDuration(ms);
}

void AudioCutDialog::setTimeRange(const QSharedPointer<TimeSpan> &range)
{
    m_timeRange = range;
    m_span->setSpan(range);
}

void AudioCutDialog::on_btnSCapture_clicked()
{
    m_span->setStart(position());
}

void AudioCutDialog::on_btnECapture_clicked()
{
    m_span->setEnd(position());
}

void AudioCutDialog::on_btnSave_clicked()
{
    m_timeRange = m_span->span(endTolerance);
    accept();
}
