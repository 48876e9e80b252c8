// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/Editors/editordialog.h"

#include "controls/edgeresizer.h"
#include "controls/scrollpanel.h"
#include "controls/titlebar.h"
#include "MediaKits/FunctionPage/Framework/Dialogs/mediamessagebox.h"
#include "MediaKits/MediaFormats/mediatexts.h"
#include "MediaKits/MediaInfo/Facts/mediainfodata.h"
#include "MediaKits/MediaInfo/shownpicture.h"
#include "MediaKits/Player/volumedialog.h"
#include "ui_editordialog.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QButtonGroup>
#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QKeyEvent>
#include <QSignalBlocker>

#include <algorithm>
#include <limits>

namespace {

constexpr int secondMs = 1000;
constexpr int usualFrameMs = 40;
// The player takes a frame this short before the place that it is sent to for the one there.
constexpr int playerToleranceMs = 5;
constexpr int resizeBorder = 4;
constexpr QSize usualSize(748, 537);
constexpr int sidePaneWidth = 288;
constexpr QSize sideGrowth(sidePaneWidth, 63);

// A control that the mouse works and that needs no keys after it.
bool isPressedOrPulled(const QWidget &control)
{
    const auto *choice = qobject_cast<const QComboBox *>(&control);
    return qobject_cast<const QAbstractButton *>(&control) ||
           qobject_cast<const QAbstractSlider *>(&control) ||
           qobject_cast<const QAbstractItemView *>(&control) || (choice && !choice->isEditable());
}

// A key that numbers and times have no use for.
bool isUselessToField(const QKeyEvent &event)
{
    const bool isLetter = event.key() >= Qt::Key_A && event.key() <= Qt::Key_Z;
    const bool isPlain = !(event.modifiers() & ~Qt::ShiftModifier);
    return isPlain && (isLetter || event.key() == Qt::Key_Space);
}

// One of several, which arrows choose from.
bool isOneOfGroup(const QAbstractButton &button)
{
    return button.isCheckable() && button.group() && button.group()->exclusive();
}

// Whether a key goes to the editor although a control has the focus.
bool isForEditor(const QObject &control, const QKeyEvent &event)
{
    const bool isSpace = event.key() == Qt::Key_Space;
    if (qobject_cast<const QAbstractSpinBox *>(&control))
        return isUselessToField(event);
    const auto *button = qobject_cast<const QAbstractButton *>(&control);
    if (button && isOneOfGroup(*button))
        return false;
    // Space presses a button that was reached by the keyboard; arrows move a slider or a choice.
    return button ? !isSpace : isSpace;
}

} // namespace

EditorDialog::EditorDialog(QWidget *parent)
    : DialogFrame(parent), m_ui(std::make_unique<Ui::EditorDialog>()), m_frameMs(usualFrameMs)
{
    setUpForm(*m_ui);
    findChild<TitleBar *>()->setObjectName(QStringLiteral("wdtTiltle"));
    body()->setProperty("cls", QStringLiteral("editor"));
    m_ui->wdtEditor->setAutoFillBackground(false); // the cards lie on the dialog's own grey
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

void EditorDialog::setColumns(QBoxLayout *columns)
{
    m_ui->scpEditor->setColumns(columns);
}

QPushButton *EditorDialog::confirmButton() const
{
    return m_ui->btnSave;
}

void EditorDialog::addButtonRow(QWidget *row)
{
    m_ui->layoutMain->insertWidget(m_ui->layoutMain->indexOf(m_ui->scpEditor), row);
}

void EditorDialog::offerForAll()
{
    m_forAll = new QCheckBox(tr("应用到全部"), this);
    m_forAll->setObjectName(QStringLiteral("cbForAll"));
    m_forAll->setToolTip(tr("列表中尚未开始的文件都采用这些设置"));
    m_ui->layoutButtons->insertWidget(1, m_forAll);
}

bool EditorDialog::isForAll() const
{
    return m_forAll && m_forAll->isChecked();
}

void EditorDialog::setSidePane(QWidget *pane, QPushButton *action)
{
    m_ui->layoutSide->addWidget(pane);
    m_ui->wdtSide->setFixedWidth(sidePaneWidth);
    m_ui->wdtSide->show();
    // The action ends where the column begins.
    m_ui->wdtActions->setFixedWidth(sidePaneWidth);
    if (action)
        m_ui->layoutButtons->insertWidget(1, action);
    resize(size() + sideGrowth);
}

void EditorDialog::connectPlayer()
{
    CSVideoPlayer *player = m_ui->csPlayer;
    InterceptSlider *slider = m_ui->scrubBar;
    player->setRestarting(true);
    slider->setRangeVisible(false, false);
    connect(player, &CSVideoPlayer::progressChanged, this,
            [this, player](long position, long total) {
                if (m_duration <= 0 && total > 0)
                    showLength(int(total));
                // The ms are rounded, and a frame begins no later than its position.
                onProgress(m_leadMs > 0 ? std::max(player->toldPosition() - 1, 0) : int(position));
            });
    connect(player, &CSVideoPlayer::finished, this,
            [this] { showHint(tr("预览已中断，设置仍然可以保存")); });
    connect(slider, &QSlider::sliderPressed, player, [player] { player->blockSignals(true); });
    connect(slider, &QSlider::sliderReleased, player, [player] { player->blockSignals(false); });
    connect(slider, &QSlider::sliderMoved, this, &EditorDialog::seek);
    connect(slider, &QSlider::actionTriggered, this, [this, slider](int action) {
        if (action != QSlider::SliderMove) // by the wheel
            seek(slider->sliderPosition());
    });
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
    setPicture(turnedSize(*video), turnedPixelAspect(*video));
    setFrameRate(video->frameRate);
}

void EditorDialog::setPicture(const QSize &size, double pixelAspect)
{
    m_ui->csPlayer->setVideoSize(squarePixelSize(size, pixelAspect));
}

void EditorDialog::setDuration(int ms)
{
    m_duration = ms;
    m_ui->csPlayer->setDuration(ms);
    showLength(ms);
    seek(0);
}

// Where a probe knows none, the player may find one out.
void EditorDialog::showLength(int ms)
{
    m_ui->scrubBar->setMaximum(ms);
    m_ui->lblDuration->setText(timeText(ms));
}

void EditorDialog::setFrameRate(double framesPerSecond)
{
    if (framesPerSecond > 0)
        m_frameMs = std::max(1, qRound(secondMs / framesPerSecond));
}

void EditorDialog::countFrames()
{
    m_leadMs = playerToleranceMs;
    m_ui->csPlayer->tellFrames();
}

bool EditorDialog::isSettling() const
{
    return m_leadMs > 0 && !m_ui->btnPlay->isChecked() && !m_standsAtSought;
}

void EditorDialog::seek(int ms)
{
    const int last = m_duration > 0 ? m_duration : std::numeric_limits<int>::max();
    m_position = std::clamp(ms, 0, last);
    m_standsAtSought = !m_ui->btnPlay->isChecked();
    m_ui->csPlayer->seek(m_position < last - m_leadMs ? m_position + m_leadMs : last);
    showPosition();
}

void EditorDialog::setPlaying(bool playing)
{
    m_ui->btnPlay->setChecked(playing);
}

// Reports are whole seconds and come late: a preview that stands where it was sent to needs none.
void EditorDialog::onProgress(int ms)
{
    if (m_standsAtSought)
        return;
    // What is told of a player that was paused may be the frame before or behind the one on the
    // screen.
    if (m_leadMs > 0 && !m_ui->btnPlay->isChecked()) {
        seek(ms);
        return;
    }
    m_position = ms;
    showPosition();
}

void EditorDialog::showPosition()
{
    m_ui->lblPos->setText(timeText(m_position));
    const QSignalBlocker blocker(m_ui->scrubBar);
    m_ui->scrubBar->setValue(m_position);
    emit positionChanged(m_position);
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
    for (QPushButton *button : body()->findChildren<QPushButton *>())
        button->setAutoDefault(false);
    for (QWidget *control : body()->findChildren<QWidget *>()) {
        if (!isPressedOrPulled(*control))
            continue;
        control->installEventFilter(this);
        // A click on it must not take the keys away from the preview.
        if (control->focusPolicy() & Qt::ClickFocus)
            control->setFocusPolicy(Qt::TabFocus);
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
    return (isForEditor(*watched, key) && handleKey(key)) ||
           DialogFrame::eventFilter(watched, event);
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
