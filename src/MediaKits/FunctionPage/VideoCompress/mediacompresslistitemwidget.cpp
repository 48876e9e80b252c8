// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoCompress/mediacompresslistitemwidget.h"

#include "controls/runmodal.h"
#include "controls/toast.h"
#include "MediaKits/FunctionPage/Framework/Rows/taskbatch.h"
#include "MediaKits/FunctionPage/VideoCompress/compressarithmetic.h"
#include "MediaKits/FunctionPage/VideoCompress/compresscontainer.h"
#include "MediaKits/FunctionPage/VideoCompress/compressplan.h"
#include "MediaKits/FunctionPage/VideoCompress/compresssettingsdialog.h"
#include "MediaKits/FunctionPage/VideoCompress/leastratetrials.h"
#include "MediaKits/MediaFormats/mediatexts.h"
#include "MediaKits/MediaInfo/mediainfobase.h"

#include <QFileInfo>

namespace {

constexpr int mismatchShownMs = 3000;

TaskRowWidget::Kind compressRows()
{
    TaskRowWidget::Kind kind;
    kind.function = MediaFunction::Compress;
    kind.reportsFailures = false;
    kind.form.detail = QLatin1String("Res");
    kind.form.settingsButton = QLatin1String("btnCompressSet");
    kind.form.sizeName = MediaCompressListItemWidget::tr("预计大小：");
    kind.form.finishedSizeName = MediaCompressListItemWidget::tr("大小：");
    return kind;
}

// A result that takes as much room as its source isn't what the page is for.
QString comparedSize(qint64 size, const MediaInfoData &source)
{
    const QString text = sizeText(size);
    return size < source.format->fileSize
               ? text
               : MediaCompressListItemWidget::tr("%1（不会更小）").arg(text);
}

} // namespace

MediaCompressListItemWidget::MediaCompressListItemWidget(QListWidgetItem *item,
                                                         LeastRateTrials *trials, QWidget *parent)
    : ConvertRowWidget(RowItem(item), compressRows(), parent), m_trials(trials)
{
    connect(trials, &LeastRateTrials::measured, this, [this](QObject *asker, int kbps) {
        if (asker == this)
            onMeasured(kbps);
    });
    const QString suffix = compressContainer(sourceSuffix()).suffix;
    param().format = suffix;
    change([&](RowContent &content) {
        content.out.format = suffix.toUpper();
        content.outputSuffix = QLatin1Char('.') + suffix;
        content.settings = tr("压缩设置");
    });
    setWanted(nullptr, tr("正在读取文件"));
    probeSource();
}

void MediaCompressListItemWidget::connectForm(TaskRowForm &form)
{
    connect(&form, &TaskRowForm::settingsPressed, this,
            &MediaCompressListItemWidget::on_btnCompressSet_clicked);
}

bool MediaCompressListItemWidget::acceptsSource(const MediaInfoBase &reader)
{
    if (reader.mediaKind() != MediaInfoBase::NothingUsable)
        return true;
    Toast::showToast(tr("文件格式与内容不匹配"), mismatchShownMs, Toast::centred, Toast::centred,
                     window());
    return false;
}

void MediaCompressListItemWidget::missSource()
{
    setWanted(nullptr, tr("无法读取该文件"));
}

void MediaCompressListItemWidget::onSourceProbed(const MediaInfoData &info)
{
    change([&](RowContent &content) {
        content.in.detail = MediaFacts::sizeInPixels(info.video);
        content.out.duration.clear();
    });
    applyRate(settings()->rate);
}

QSharedPointer<CompressSettingsParam> MediaCompressListItemWidget::settings() const
{
    return item().data(CompressSettingsRole).value<QSharedPointer<CompressSettingsParam>>();
}

void MediaCompressListItemWidget::applyRate(double rate)
{
    const auto present = settings();
    present->advanced = false;
    present->rate = rate;
    present->encParam.clear();
    applySettings(present);
}

void MediaCompressListItemWidget::applySettings(
    const QSharedPointer<CompressSettingsParam> &settings)
{
    const auto info = sourceInfo();
    if (!info)
        return;
    setWanted(encParamFor(*settings, *info), tr("无法按比例压缩，请用高级设置"));
    RowItem(item()).setData(CompressSettingsRole, QVariant::fromValue(settings));
    showSettings(*settings, *info);
    if (leastNeedsTrial(*info) && (settings->advanced || leastMatters(settings->rate, *info)))
        measureLeast(*info);
}

void MediaCompressListItemWidget::measureLeast(const MediaInfoData &info)
{
    CompressSettingsParam small;
    small.rate = smallestRate;
    const auto wanted = encParamFor(small, info);
    if (!wanted || settings()->leastPicture > 0)
        return;
    ConvertTaskParam film = param();
    film.encParam = withEncodersOf(compressContainer(sourceSuffix()), *wanted);
    film.encParam->video->bitrate = 1;
    film.encParam->video->rateOptions.clear();
    m_trials->ask(this, film);
}

// A job that has begun keeps what it was told.
void MediaCompressListItemWidget::onMeasured(int kbps)
{
    const auto present = settings();
    present->leastPicture = kbps;
    if (task() && TaskBatch::takesChoices(*task()))
        applySettings(present);
    emit leastMeasured();
}

// Without anything to ask for, the conversion would run, but compress nothing.
void MediaCompressListItemWidget::setWanted(const QSharedPointer<EncParam> &wanted,
                                            const QString &hindrance)
{
    const bool isWanted = !wanted.isNull();
    param().encParam =
        isWanted ? withEncodersOf(compressContainer(sourceSuffix()), *wanted) : wanted;
    task()->setEnabled(isWanted);
    setShown(&RowContent::hindrance, isWanted ? QString() : hindrance);
}

void MediaCompressListItemWidget::showSettings(const CompressSettingsParam &settings,
                                               const MediaInfoData &info)
{
    const qint64 size = estimatedSize(settings, info);
    const auto wanted = param().encParam;
    const QString pixels = wanted ? MediaFacts::sizeInPixels(wanted->video) : QString();
    change([&](RowContent &content) {
        content.out.size = size < 0 ? tr("无法预估") : comparedSize(size, info);
        content.out.detail = pixels.isEmpty() ? content.in.detail : pixels;
    });
}

void MediaCompressListItemWidget::on_btnCompressSet_clicked()
{
    const auto info = sourceInfo();
    if (!info)
        return;
    auto *dialog = new CompressSettingsDialog(this);
    dialog->setMediaInfo(*info);
    dialog->setParam(settings());
    connect(this, &MediaCompressListItemWidget::leastMeasured, dialog,
            &CompressSettingsDialog::showLeast);
    if (leastNeedsTrial(*info))
        measureLeast(*info);
    const auto chosen =
        runModal(dialog, [](const CompressSettingsDialog &edited) { return edited.param(); });
    if (chosen && task())
        applySettings(*chosen);
}

void MediaCompressListItemWidget::readResult()
{
    const auto info = sourceInfo();
    const qint64 size = QFileInfo(outputPath()).size();
    change([&](RowContent &content) {
        content.out.size = info ? comparedSize(size, *info) : sizeText(size);
    });
}
