// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoCompress/compresssettingsdialog.h"

#include "controls/repolish.h"
#include "MediaKits/FunctionPage/VideoCompress/compressarithmetic.h"
#include "MediaKits/FunctionPage/VideoCompress/compresschoices.h"
#include "MediaKits/FunctionPage/VideoCompress/compressplan.h"
#include "ui_compresssettingsdialog.h"

#include <QEvent>
#include <QSignalBlocker>

#include <algorithm>
#include <cmath>

namespace {

enum SettingsPage { BasePage, HighPage };

constexpr double usualRate = 0.75;

void fill(QComboBox *box, const QVector<CompressChoice> &choices)
{
    for (const CompressChoice &choice : choices)
        box->addItem(choice.text, choice.value);
}

// The source's own value, in front, is shown anyway.
template<class Value>
void select(QComboBox *box, const Value &value)
{
    const int index = box->findData(QVariant::fromValue(value));
    if (index > 0)
        box->setCurrentIndex(index);
}

} // namespace

CompressSettingsDialog::CompressSettingsDialog(QWidget *parent)
    : DialogFrame(parent), m_ui(std::make_unique<Ui::CompressSettingsDialog>())
{
    setUpForm(*m_ui);
    setTitle(tr("压缩设置"));
    m_ui->sbSize->installEventFilter(this);
    connect(m_ui->btnHigh, &QPushButton::toggled, this,
            [this](bool high) { m_ui->swdtSettings->setCurrentIndex(high ? HighPage : BasePage); });
}

CompressSettingsDialog::~CompressSettingsDialog() = default;

void CompressSettingsDialog::setMediaInfo(const MediaInfoData &info)
{
    m_sourceSize = mebibytes(info.format->fileSize);
    m_info = info;
    fillVideoChoices(info.video);
    fillAudioChoices(info.audios);
}

void CompressSettingsDialog::fillVideoChoices(const QSharedPointer<VEncParam> &video)
{
    const VEncParam source = video ? *video : VEncParam();
    fill(m_ui->cbResolution, CompressChoices::resolutions(source));
    fill(m_ui->cbVBitRate, CompressChoices::videoBitrates(source.bitrate));
    fill(m_ui->cbFrameRate, CompressChoices::frameRates(source.frameRate));
    m_ui->lblVEncode->setText(source.fourCC);
}

void CompressSettingsDialog::fillAudioChoices(const QVector<QSharedPointer<AEncParam>> &audios)
{
    m_hasAudio = !audios.isEmpty();
    m_ui->cbABitRate->setEnabled(m_hasAudio);
    m_ui->cbSampleRate->setEnabled(m_hasAudio);
    if (!m_hasAudio) {
        m_ui->lblAEncode->setText(tr("无音频"));
        return;
    }
    const AEncParam &source = *audios.first();
    fill(m_ui->cbABitRate, CompressChoices::audioBitrates(source.bitrate));
    fill(m_ui->cbSampleRate, CompressChoices::sampleRates(source.sampleRate));
    m_ui->lblAEncode->setText(source.fourCC);
}

void CompressSettingsDialog::setParam(const QSharedPointer<CompressSettingsParam> &param)
{
    m_param = param;
    showLeast();
    m_ui->sbSize->setSingleStep(m_sourceSize * (wholeRate - rateOfSlider(-1)));
    const bool advanced = param && param->advanced;
    showRate(advanced || !param ? usualRate : param->rate);
    m_ui->btnBase->setChecked(!advanced);
    m_ui->btnHigh->setChecked(advanced);
    if (advanced && param->encParam)
        showEncParam(*param->encParam);
}

void CompressSettingsDialog::showLeast()
{
    m_smallestShare = smallestShare(m_info, m_param ? m_param->leastPicture : 0);
    m_ui->lblSizeRange->setText(sizeRangeText(m_ui->lblSizeRange->property("txtFormat").toString(),
                                              m_sourceSize, m_smallestShare));
    // A number that is being typed may be any.
    if (m_ui->sbSize->hasFocus())
        return;
    const QSignalBlocker blocker(m_ui->sbSize);
    m_ui->sbSize->setRange(leastSize(), m_sourceSize);
    showRate(m_asked);
}

double CompressSettingsDialog::chosenRate() const
{
    return std::clamp(m_asked, m_smallestShare, wholeRate);
}

void CompressSettingsDialog::showRate(double rate)
{
    const QSignalBlocker sizeBlocker(m_ui->sbSize);
    const QSignalBlocker sliderBlocker(m_ui->compressSlider);
    m_asked = rate;
    m_ui->sbSize->setValue(m_sourceSize * chosenRate());
    m_ui->compressSlider->setValue(sliderOfRate(chosenRate()));
    markRange(false);
}

void CompressSettingsDialog::markRange(bool missed)
{
    m_missed = missed;
    m_ui->lblSizeRange->setProperty("cls",
                                    missed ? QStringLiteral("error") : QStringLiteral("sub"));
    repolish(m_ui->lblSizeRange);
}

// Numbers beyond the range may stand there on the way to one within it.
bool CompressSettingsDialog::eventFilter(QObject *watched, QEvent *event)
{
    constexpr double widest = 999999.99;
    if (watched == m_ui->sbSize && event->type() == QEvent::FocusIn)
        m_ui->sbSize->setRange(0.0, widest);
    return DialogFrame::eventFilter(watched, event);
}

void CompressSettingsDialog::on_sbSize_editingFinished()
{
    const double typed = m_ui->sbSize->value();
    const double fitting = std::clamp(typed, leastSize(), m_sourceSize);
    // Limits are shown with two decimals.
    constexpr double shownStep = 0.01;
    if (!m_ui->sbSize->hasFocus())
        m_ui->sbSize->setRange(leastSize(), m_sourceSize);
    if (std::abs(fitting - typed) < shownStep)
        return;
    showRate(fitting / m_sourceSize);
    markRange(true);
}

void CompressSettingsDialog::showEncParam(const EncParam &wanted)
{
    if (wanted.video) {
        select(m_ui->cbResolution, QSize(wanted.video->width, wanted.video->height));
        select(m_ui->cbVBitRate, wanted.video->bitrate);
        select(m_ui->cbFrameRate, wanted.video->frameRate);
    }
    if (wanted.audio) {
        select(m_ui->cbABitRate, wanted.audio->bitrate);
        select(m_ui->cbSampleRate, wanted.audio->sampleRate);
    }
}

void CompressSettingsDialog::on_compressSlider_valueChanged(int value)
{
    m_asked = rateOfSlider(value);
    const QSignalBlocker blocker(m_ui->sbSize);
    m_ui->sbSize->setValue(chosenRate() * m_sourceSize);
    markRange(false);
}

void CompressSettingsDialog::on_sbSize_valueChanged(double size)
{
    if (m_sourceSize <= 0.0)
        return;
    m_asked = size / m_sourceSize;
    const QSignalBlocker blocker(m_ui->compressSlider);
    m_ui->compressSlider->setValue(sliderOfRate(chosenRate()));
    markRange(false);
}

void CompressSettingsDialog::on_btnCancel_clicked()
{
    reject();
}

void CompressSettingsDialog::on_btnOK_clicked()
{
    // A size that isn't the typed one is to be seen before it is taken.
    if (m_missed && m_ui->btnBase->isChecked()) {
        m_missed = false;
        return;
    }
    if (!m_param)
        m_param = QSharedPointer<CompressSettingsParam>::create();
    m_param->advanced = !m_ui->btnBase->isChecked();
    if (m_param->advanced) {
        if (!m_param->encParam)
            m_param->encParam = makeEncParam(m_hasAudio ? VideoPart | AudioPart : VideoPart);
        fillEncParam(*m_param->encParam);
    } else {
        m_param->rate = chosenRate();
        m_param->encParam.clear();
    }
    accept();
}

void CompressSettingsDialog::fillEncParam(EncParam &wanted) const
{
    const QSize size = m_ui->cbResolution->currentData().toSize();
    wanted.video->width = size.width();
    wanted.video->height = size.height();
    wanted.video->frameRate = m_ui->cbFrameRate->currentData().toDouble();
    wanted.video->bitrate = m_ui->cbVBitRate->currentData().toInt();
    if (!m_hasAudio)
        return;
    wanted.audio->bitrate = m_ui->cbABitRate->currentData().toInt();
    wanted.audio->sampleRate = m_ui->cbSampleRate->currentData().toInt();
}
