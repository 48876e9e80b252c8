// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/editordialog.h"

#include "MediaKits/MediaFormats/mediatexts.h"
#include "MediaKits/Player/volumedialog.h"
#include "ui_editordialog.h"

#include <QKeyEvent>
#include <QSignalBlocker>

#include <algorithm>

namespace {

constexpr int secondMs = 1000;
constexpr int usualFrameMs = 40;

} // namespace

EditorDialog::EditorDialog(QWidget *parent)
    : DialogFrame(parent), m_ui(std::make_unique<Ui::EditorDialog>()), m_frameMs(usualFrameMs)
{
    setUpForm(*m_ui);
    connectPlayer();
}

EditorDialog::~EditorDialog()
{
    m_ui->csPlayer->disconnect(this);
}

CSVideoPlayer &EditorDialog::player() const
{
    return *m_ui->csPlayer;
}

InterceptSlider &EditorDialog::scrubBar() const
{
    return *m_ui->scrubBar;
}

QWidget *EditorDialog::editorArea() const
{
    return m_ui->wdtEditor;
}

void EditorDialog::connectPlayer()
{
    CSVideoPlayer *player = m_ui->csPlayer;
    InterceptSlider *slider = m_ui->scrubBar;
    connect(player, &CSVideoPlayer::progressChanged, this, [this, slider](long position) {
        m_position = int(position);
        m_ui->lblPos->setText(timeText(m_position));
        const QSignalBlocker blocker(slider);
        slider->setValue(m_position);
    });
    connect(slider, &QSlider::sliderPressed, player, [player] { player->blockSignals(true); });
    connect(slider, &QSlider::sliderReleased, player, [player] { player->blockSignals(false); });
    connect(slider, &QSlider::sliderMoved, this, [this](int ms) {
        m_ui->csPlayer->seek(ms);
        m_ui->lblPos->setText(timeText(ms));
    });
}

void EditorDialog::setDuration(int ms)
{
    m_duration = ms;
    m_ui->csPlayer->setDuration(ms);
    m_ui->scrubBar->setMaximum(ms);
    m_ui->lblDuration->setText(timeText(ms));
    m_ui->csPlayer->seek(0);
}

void EditorDialog::setFrameRate(double framesPerSecond)
{
    if (framesPerSecond > 0)
        m_frameMs = std::max(1, int(secondMs / framesPerSecond));
}

void EditorDialog::startPlayer(const QString &file, const QStringList &args)
{
    m_ui->csPlayer->start(file, args);
}

void EditorDialog::step(int ms)
{
    m_position = std::clamp(m_position + ms, 0, m_duration);
    m_ui->csPlayer->seek(m_position);
    const QSignalBlocker blocker(m_ui->scrubBar);
    m_ui->scrubBar->setValue(m_position);
    m_ui->lblPos->setText(timeText(m_position));
}

void EditorDialog::keyPressEvent(QKeyEvent *event)
{
    const int distance = event->modifiers().testFlag(Qt::ShiftModifier) ? m_frameMs : secondMs;
    switch (event->key()) {
    case Qt::Key_Space:
        m_ui->btnPlay->toggle();
        break;
    case Qt::Key_Left:
        step(-distance);
        break;
    case Qt::Key_Right:
        step(distance);
        break;
    default:
        DialogFrame::keyPressEvent(event);
        break;
    }
}

void EditorDialog::on_btnPlay_toggled(bool checked)
{
    m_ui->csPlayer->play(checked);
}

void EditorDialog::on_btnVolume_clicked()
{
    showVolumePopup(*m_ui->csPlayer, *m_ui->btnVolume);
}

void EditorDialog::on_btnCancel_clicked()
{
    reject();
}
