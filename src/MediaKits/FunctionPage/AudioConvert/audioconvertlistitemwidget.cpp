// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/AudioConvert/audioconvertlistitemwidget.h"

#include "MediaKits/FunctionPage/AudioConvert/audioconvertlistwidget.h"
#include "MediaKits/FunctionPage/AudioConvert/audiocutdialog.h"
#include "MediaKits/FunctionPage/Framework/Formats/mediaformatdialog.h"

namespace {

constexpr int audioTypes = 1;

// Empty for a rate that isn't known.
QString bitrateText(int kbps)
{
    return kbps > 0 ? QStringLiteral("%1Kbps").arg(kbps) : QString();
}

// Of the first sound; empty when there is none.
QString bitrateOf(const MediaInfoData &info)
{
    if (info.audios.isEmpty())
        return {};
    const int own = info.audios.first()->bitrate;
    const bool isAlone = info.audios.size() == 1 && !info.video && info.format;
    return bitrateText(own <= 0 && isAlone ? info.format->bitrate : own);
}

TaskRowWidget::Kind audioRows()
{
    TaskRowWidget::Kind kind;
    kind.function = MediaFunction::AudioConvert;
    kind.reportsFailures = true;
    kind.form.detail = QLatin1String("Bitrate");
    kind.openEditor =
        static_cast<TaskRowWidget::Slot>(&AudioConvertListItemWidget::on_btnCut_clicked);
    kind.form.editorButton = QLatin1String("btnCut");
    kind.form.editorToolTip = AudioConvertListItemWidget::tr("剪裁");
    return kind;
}

} // namespace

AudioConvertListItemWidget::AudioConvertListItemWidget(QListWidgetItem *item, QWidget *parent)
    : PresetRowWidget(RowItem(item), audioRows(), parent)
{
    connect(task(), &MediaTask::taskStateChanged, this, [this](MediaTask::State state) {
        if (state == MediaTask::START)
            setShown(&RowContent::progressText, QStringLiteral("0.0"));
    });
    probeSource();
}

void AudioConvertListItemWidget::offerAudioOnly(MediaFormatDialog &dialog)
{
    dialog.setFormatTypes(audioTypes, true);
}

void AudioConvertListItemWidget::setUpFormatDialog(MediaFormatDialog &dialog)
{
    offerAudioOnly(dialog);
}

void AudioConvertListItemWidget::onSourceProbed(const MediaInfoData &info)
{
    const QString bitrate = bitrateOf(info);
    if (bitrate.isEmpty())
        return;
    change([&](RowContent &content) {
        content.in.detail = bitrate;
        if (content.out.detail.isEmpty())
            content.out.detail = bitrate;
    });
}

void AudioConvertListItemWidget::onResultProbed(const MediaInfoData &info)
{
    const QString bitrate = bitrateOf(info);
    if (!bitrate.isEmpty())
        change([&](RowContent &content) { content.out.detail = bitrate; });
}

void AudioConvertListItemWidget::applyPreset(const EncParam *preset)
{
    change([preset](RowContent &content) {
        content.out.detail = preset && preset->audio && preset->audio->bitrate > 0
                                 ? bitrateText(preset->audio->bitrate)
                                 : content.in.detail;
    });
}

void AudioConvertListItemWidget::on_btnCut_clicked()
{
    const auto info = sourceInfo();
    if (!info)
        return;
    auto *dialog = new AudioCutDialog(this);
    dialog->start(sourcePath(), {});
    dialog->setDuration(int(info->format->duration));
    dialog->setTimeRange(param().timeRange);
    edit(
        dialog, [](const AudioCutDialog &edited) { return edited.timeRange(); },
        [this](const QSharedPointer<TimeSpan> &range) {
            param().timeRange = range;
            showLength();
        });
}
