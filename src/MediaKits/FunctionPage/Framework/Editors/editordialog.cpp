// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/Editors/editordialog.h"

#include "controls/edgeresizer.h"
#include "controls/titlebar.h"
#include "MediaKits/FunctionPage/Framework/Dialogs/mediamessagebox.h"
#include "MediaKits/MediaFormats/mediatexts.h"
#include "MediaKits/MediaInfo/mediainfodata.h"
#include "MediaKits/Player/volumedialog.h"
#include "ui_editordialog.h"

#include <QAbstractSpinBox>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QSignalBlocker>

#include <algorithm>

namespace {

constexpr int secondMs = 1000;
constexpr int usualFrameMs = 40;
constexpr double quarterTurn = 90.0;
constexpr int resizeBorder = 4;
constexpr QSize usualSize(748, 537);
constexpr int sidePaneWidth = 288;
constexpr QSize sideGrowth(sidePaneWidth, 63);

// The size of the picture once the player has turned it.
QSize shownSize(const VEncParam &video)
{
    const QSize size(video.width, video.height);
    return qFuzzyCompare(video.rotate, quarterTurn) ? size.transposed() : size;
}

// A key that numbers and times have no use for.
bool isUselessToField(const QKeyEvent &event)
{
    const bool isLetter = event.key() >= Qt::Key_A && event.key() <= Qt::Key_Z;
    const bool isPlain = !(event.modifiers() & ~Qt::ShiftModifier);
    return isPlain && (isLetter || event.key() == Qt::Key_Space);
}

} // namespace

EditorDialog::EditorDialog(QWidget *parent)
    : DialogFrame(parent), m_ui(std::make_unique<Ui::EditorDialog>()), m_frameMs(usualFrameMs)
{
    setUpForm(*m_ui);
    findChild<TitleBar *>()->setObjectName(QStringLiteral("wdtTiltle"));
    body()->setProperty("cls", QStringLiteral("editor"));
    m_ui->wdtSide->hide();
    connectPlayer();
    new EdgeResizer(this, resizeBorder);
    resize(usualSize);
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

QPushButton *EditorDialog::confirmButton() const
{
    return m_ui->btnSave;
}

void EditorDialog::setSidePane(QWidget *pane, QPushButton *action)
{
    m_ui->layoutSide->addWidget(pane);
    m_ui->wdtSide->setFixedWidth(sidePaneWidth);
    m_ui->wdtSide->show();
    // The action ends where the column begins.
    m_ui->wdtActions->setFixedWidth(sidePaneWidth);
    m_ui->layoutButtons->insertWidget(1, action);
    resize(size() + sideGrowth);
}

void EditorDialog::connectPlayer()
{
    CSVideoPlayer *player = m_ui->csPlayer;
    InterceptSlider *slider = m_ui->scrubBar;
    connect(player, &CSVideoPlayer::progressChanged, this,
            [this](long position) { onProgress(int(position)); });
    connect(slider, &QSlider::sliderPressed, player, [player] { player->blockSignals(true); });
    connect(slider, &QSlider::sliderReleased, player, [player] { player->blockSignals(false); });
    connect(slider, &QSlider::sliderMoved, this, &EditorDialog::seek);
}

void EditorDialog::showMedium(const QString &file, const MediaInfoData &info)
{
    load(file, {QStringLiteral("--video-rotate=0")});
    const VEncParam *video = info.video.data();
    setVideo(video && video->width > 0 && video->height > 0 ? video : nullptr);
    setDuration(int(info.format->duration));
}

void EditorDialog::load(const QString &file, const QStringList &extraArgs)
{
    startPlayer(file, standardPlayerArguments() + extraArgs);
}

void EditorDialog::startPlayer(const QString &file, const QStringList &args)
{
    m_ui->csPlayer->start(file, args);
}

void EditorDialog::setVideo(const VEncParam *video)
{
    if (!video)
        return;
    setVideoSize(shownSize(*video));
    setFrameRate(video->frameRate);
}

void EditorDialog::setVideoSize(const QSize &size)
{
    m_ui->csPlayer->setVideoSize(size);
}

void EditorDialog::setDuration(int ms)
{
    m_duration = ms;
    m_ui->csPlayer->setDuration(ms);
    m_ui->scrubBar->setMaximum(ms);
    m_ui->lblDuration->setText(timeText(ms));
    seek(0);
}

void EditorDialog::setFrameRate(double framesPerSecond)
{
    if (framesPerSecond > 0)
        m_frameMs = std::max(1, qRound(secondMs / framesPerSecond));
}

void EditorDialog::seek(int ms)
{
    m_position = std::clamp(ms, 0, m_duration);
    m_standsAtSought = !m_ui->btnPlay->isChecked();
    m_ui->csPlayer->seek(m_position);
    showPosition();
}

// Reports are whole seconds and come late: a preview that stands where it was sent to needs none.
void EditorDialog::onProgress(int ms)
{
    if (m_standsAtSought)
        return;
    m_position = ms;
    showPosition();
}

void EditorDialog::showPosition()
{
    m_ui->lblPos->setText(timeText(m_position));
    const QSignalBlocker blocker(m_ui->scrubBar);
    m_ui->scrubBar->setValue(m_position);
}

bool EditorDialog::handleKey(const QKeyEvent &event)
{
    if (event.modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier))
        return false;
    const int distance = event.modifiers().testFlag(Qt::ShiftModifier) ? m_frameMs : secondMs;
    switch (event.key()) {
    case Qt::Key_Space:
        if (!event.isAutoRepeat())
            m_ui->btnPlay->toggle();
        return true;
    case Qt::Key_Left:
        seek(m_position - distance);
        return true;
    case Qt::Key_Right:
        seek(m_position + distance);
        return true;
    default:
        return false;
    }
}

void EditorDialog::keyPressEvent(QKeyEvent *event)
{
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    // In a field it ends the typing alone.
    const bool endsTyping = isEnter && qobject_cast<QAbstractSpinBox *>(focusWidget());
    if (handleKey(*event) || endsTyping)
        return;
    if (event->key() != Qt::Key_Escape)
        DialogFrame::keyPressEvent(event);
    else if (mayLeave())
        reject();
}

void EditorDialog::showEvent(QShowEvent *event)
{
    DialogFrame::showEvent(event);
    setUpFocus();
}

void EditorDialog::setUpFocus()
{
    for (QAbstractSpinBox *field : findChildren<QAbstractSpinBox *>())
        field->installEventFilter(this);
    for (QPushButton *button : body()->findChildren<QPushButton *>()) {
        button->installEventFilter(this);
        button->setAutoDefault(false);
        // A click on a button must not take the keys away from the preview.
        if (button->focusPolicy() == Qt::StrongFocus)
            button->setFocusPolicy(Qt::TabFocus);
    }
    scrubBar().installEventFilter(this);
    confirmButton()->setDefault(true);
    m_ui->csPlayer->setFocus();
}

void EditorDialog::showHint(const QString &hint)
{
    m_ui->lblHint->setFullText(hint);
}

// Ends what is being typed; true when it doesn't stay as it was typed.
bool EditorDialog::correctsTyped()
{
    if (!qobject_cast<QAbstractSpinBox *>(focusWidget()))
        return false;
    showHint({});
    m_ui->csPlayer->setFocus();
    return !m_ui->lblHint->fullText().isEmpty();
}

bool EditorDialog::eventFilter(QObject *watched, QEvent *event)
{
    // What has become of a typed number is to be seen before a button makes use of it.
    const bool leavesField =
        event->type() == QEvent::MouseButtonPress && !qobject_cast<QAbstractSpinBox *>(watched);
    if (leavesField && watched != m_ui->btnCancel && correctsTyped())
        return true;
    if (event->type() != QEvent::KeyPress)
        return DialogFrame::eventFilter(watched, event);
    const auto &key = *static_cast<QKeyEvent *>(event);
    const bool isField = qobject_cast<QAbstractSpinBox *>(watched) != nullptr;
    // Space presses a button that was reached by the keyboard.
    const bool isOurs = isField ? isUselessToField(key) : key.key() != Qt::Key_Space;
    return (isOurs && handleKey(key)) || DialogFrame::eventFilter(watched, event);
}

void EditorDialog::closeEvent(QCloseEvent *event)
{
    if (mayLeave())
        DialogFrame::closeEvent(event);
    else
        event->ignore();
}

bool EditorDialog::mayLeave()
{
    return !isVisible() || !isChanged() ||
           MediaMessageBox::ask(tr("提示"), tr("放弃所做的修改？"), this);
}

void EditorDialog::on_btnPlay_toggled(bool checked)
{
    m_standsAtSought = false;
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
