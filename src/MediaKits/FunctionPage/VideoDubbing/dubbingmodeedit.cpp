// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoDubbing/dubbingmodeedit.h"

#include "ui_dubbingmodeedit.h"

#include <algorithm>
#include <cmath>

namespace {

// What the bars reach from and to, in LUFS: hardly to be heard, and louder than any film.
constexpr double quietest = -60.0;
constexpr double loudest = 0.0;
constexpr double dbOfTen = 20.0;

} // namespace

DubbingModeEdit::DubbingModeEdit(QWidget *parent)
    : QWidget(parent), m_ui(std::make_unique<Ui::DubbingModeEdit>())
{
    m_ui->setupUi(this);
    for (QProgressBar *bar : {m_ui->pbVideo, m_ui->pbMusic}) {
        bar->setRange(int(quietest), int(loudest));
        showSound(bar, {});
    }
    showMixState(MixPreview::Off);
    connect(m_ui->rbMix, &QRadioButton::toggled, this, &DubbingModeEdit::modeChanged);
    connect(m_ui->btnMix, &QPushButton::clicked, this, &DubbingModeEdit::mixToggled);
}

DubbingModeEdit::~DubbingModeEdit() = default;

bool DubbingModeEdit::isMixed() const
{
    return m_ui->rbMix->isChecked();
}

void DubbingModeEdit::setMixed(bool mixed)
{
    (mixed ? m_ui->rbMix : m_ui->rbNoOrigin)->setChecked(true);
}

void DubbingModeEdit::showVideo(const Sound &sound)
{
    showSound(m_ui->pbVideo, sound);
}

void DubbingModeEdit::showMusic(const Sound &sound)
{
    showSound(m_ui->pbMusic, sound);
}

void DubbingModeEdit::showSound(QProgressBar *bar, const Sound &sound)
{
    const bool isHeard = sound.loudness && sound.factor > 0.0F;
    const double level =
        isHeard ? *sound.loudness + dbOfTen * std::log10(double(sound.factor)) : quietest;
    bar->setValue(qRound(std::clamp(level, quietest, loudest)));
    if (!sound.isThere)
        bar->setFormat(tr("—"));
    else if (!sound.isKnown)
        bar->setFormat(tr("分析中…"));
    else if (isHeard && level > quietest)
        bar->setFormat(tr("%1 dB").arg(qRound(level)));
    else
        bar->setFormat(tr("无声"));
}

void DubbingModeEdit::showMixState(MixPreview::State state)
{
    m_ui->btnMix->setText(state == MixPreview::Off         ? tr("试听混音")
                          : state == MixPreview::Preparing ? tr("正在准备…")
                                                           : tr("停止试听"));
}

void DubbingModeEdit::setMixEnabled(bool enabled)
{
    m_ui->btnMix->setEnabled(enabled);
}
