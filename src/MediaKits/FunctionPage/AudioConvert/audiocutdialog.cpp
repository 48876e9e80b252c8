// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/AudioConvert/audiocutdialog.h"

#include "MediaKits/FunctionPage/Framework/Editors/timespanbinding.h"
#include "MediaKits/MediaFormats/mediaformats.h"
#include "MediaKits/Player/csvideoplayer.h"

#include <QFileInfo>
#include <QPushButton>

AudioCutDialog::AudioCutDialog(QWidget *parent) : TimeSpanEditor(parent)
{
    setTitle(tr("音频剪裁"));
    connect(confirmButton(), &QPushButton::clicked, this, &AudioCutDialog::on_btnSave_clicked);
}

void AudioCutDialog::start(const QString &path, const QStringList &options)
{
    QStringList args;
    if (isAudioFormat(QFileInfo(path).suffix()))
        args += soundWaveArgument();
    startPlayer(path, args + options + standardPlayerArguments());
}

void AudioCutDialog::setTimeRange(const QSharedPointer<TimeSpan> &range)
{
    m_timeRange = range;
    span().setSpan(range);
}

QSharedPointer<TimeSpan> AudioCutDialog::marked() const
{
    return span().span(TimeSpanBinding::endTolerance);
}

bool AudioCutDialog::isChanged() const
{
    return !isSameSelection(marked(), m_timeRange);
}

void AudioCutDialog::on_btnSave_clicked()
{
    m_timeRange = marked();
    accept();
}
