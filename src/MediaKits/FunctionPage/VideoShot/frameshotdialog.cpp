// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoShot/frameshotdialog.h"

#include "controls/interceptslider.h"
#include "controls/repolish.h"
#include "MediaKits/FunctionPage/Framework/Editors/Fragments/fragmentpane.h"
#include "MediaKits/FunctionPage/Framework/Editors/timespanbinding.h"
#include "MediaKits/FunctionPage/Framework/Editors/timespanedit.h"
#include "MediaKits/FunctionPage/VideoShot/framefragmentitemwidget.h"
#include "MediaKits/FunctionPage/VideoShot/momentlist.h"
#include "MediaKits/FunctionPage/VideoShot/shotintervaledit.h"
#include "MediaKits/FunctionPage/VideoShot/shotpictureedit.h"
#include "MediaKits/MediaInfo/shownpicture.h"
#include "MediaKits/Player/csvideoplayer.h"

#include <QAbstractSpinBox>
#include <QButtonGroup>
#include <QElapsedTimer>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>

#include <algorithm>

namespace {

constexpr int momentRole = 257;
constexpr int thumbnailWidth = FrameFragmentItemWidget::imageWidth;
constexpr QSize usualSize(1036, 660);
constexpr int tabGap = 8;

// Rows that are added without a look at the user's events, in ms of work.
constexpr int addingSliceMs = 8;

// A player that was paused tells its frame well before.
constexpr int settlingAtMostMs = 500;

const QString posKey = QStringLiteral("pos");
const QString scaleKey = QStringLiteral("scale");
const QString imagesKey = QStringLiteral("images");

FragmentPane *newPane(QWidget *parent)
{
    FragmentPane::Kind kind;
    kind.role = momentRole;
    kind.hasCurrent = true;
    kind.clearButton = QLatin1String("btnClear");
    return new FragmentPane(kind, parent);
}

} // namespace

FrameShotDialog::FrameShotDialog(QWidget *parent)
    : TimeSpanEditor(parent),
      m_interval(new ShotIntervalEdit),
      m_picture(new ShotPictureEdit),
      m_pane(newPane(this)),
      m_moments(new MomentList(m_pane->list(), this))
{
    setObjectName(QStringLiteral("FrameShotDialog"));
    setTitle(tr("截图设置"));
    countFrames();
    addButtonRow(makeTabs());
    setUpTimeSection();
    addSection(m_picture);
    setSidePane(m_pane, m_pane->addButton());
    setUpList();
    confirmButton()->setObjectName(QStringLiteral("btnOk"));
    connect(confirmButton(), &QPushButton::clicked, this, &FrameShotDialog::on_btnOk_clicked);
    connect(m_picture, &ShotPictureEdit::stitchToggled, this,
            &FrameShotDialog::on_cbIsPiiic_toggled);
    m_settleTimer.setSingleShot(true);
    m_settleTimer.setInterval(settlingAtMostMs);
    connect(&m_settleTimer, &QTimer::timeout, this, &FrameShotDialog::addSeen);
    connect(this, &EditorDialog::positionChanged, this, &FrameShotDialog::onSettled);
    connect(m_moments, &MomentList::pictureTold, this, &FrameShotDialog::showAdding);
    m_addTimer.setSingleShot(true);
    connect(&m_addTimer, &QTimer::timeout, this, &FrameShotDialog::addWaiting);
    showKind(false);
    m_shown = options();
    resize(usualSize);
}

// Pictures on their way belong to the rows.
FrameShotDialog::~FrameShotDialog()
{
    const QSignalBlocker blocker(list());
    m_pane->clear();
    delete m_moments;
}

QWidget *FrameShotDialog::makeTabs()
{
    auto *tabs = new QWidget(this);
    auto *row = new QHBoxLayout(tabs);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(tabGap);
    auto *group = new QButtonGroup(tabs);
    const auto addTab = [&](const char *name, const QString &text) {
        auto *tab = new QPushButton(text, tabs);
        tab->setObjectName(QLatin1String(name));
        tab->setProperty("cls", QStringLiteral("tab"));
        tab->setCheckable(true);
        group->addButton(tab);
        row->addWidget(tab);
        return tab;
    };
    addTab("btnOneSelect", tr("单张截图"))->setChecked(true);
    m_seriesTab = addTab("btnSequenceSelect", tr("连续截图"));
    row->addStretch(1);
    connect(m_seriesTab, &QPushButton::toggled, this, &FrameShotDialog::showKind);
    return tabs;
}

void FrameShotDialog::setUpTimeSection()
{
    timeSection().title()->hide(); // the tabs say it
    timeSection().addRow(m_interval);
    auto *hint = new QLabel(tr("播放或拖动到要截取的画面，按回车键截取。"
                               "方向键移动一秒，加 Shift 键移动一帧。"));
    hint->setObjectName(QStringLiteral("lblOneHint"));
    hint->setProperty("cls", QStringLiteral("sub"));
    hint->setWordWrap(true);
    timeSection().addRow(hint);
    connect(m_seriesTab, &QPushButton::toggled, hint, &QWidget::setHidden);
    connect(m_interval, &ShotIntervalEdit::changed, this, &FrameShotDialog::showCount);
    connect(&span(), &TimeSpanBinding::pointChanged, this, &FrameShotDialog::showCount);
}

void FrameShotDialog::setUpList()
{
    m_pane->setTexts(tr("截取片段列表"), tr("在预览中找到想要的画面，点击“截取到列表”，"
                                            "或用“连续截图”按间隔截取。"));
    list()->setFocusPolicy(Qt::TabFocus);
    // Their widgets have gone by then.
    connect(list()->model(), &QAbstractItemModel::rowsRemoved, this, &FrameShotDialog::showAdding,
            Qt::QueuedConnection);
    connect(m_pane->addButton(), &QPushButton::clicked, this,
            &FrameShotDialog::on_btnFragmentAdd_clicked);
    connect(m_pane->findChild<QPushButton *>(QStringLiteral("btnClear")), &QPushButton::clicked,
            this, &FrameShotDialog::on_btnClear_clicked);
    connect(list(), &QListWidget::currentItemChanged, this,
            [this](QListWidgetItem *current, QListWidgetItem *previous) {
                for (QListWidgetItem *item : {previous, current}) {
                    auto *row = item ? list()->itemWidget(item) : nullptr;
                    if (row)
                        static_cast<FrameFragmentItemWidget *>(row)->setCurrent(item == current);
                }
            });
    connect(list(), &QListWidget::itemPressed, this, [this](const QListWidgetItem *item) {
        seek(item->data(momentRole).toMap().value(posKey).toInt());
    });
}

QListWidget *FrameShotDialog::list() const
{
    return m_pane->list();
}

void FrameShotDialog::showSource(const QString &file, const QSharedPointer<MediaInfoData> &info)
{
    m_moments->pictures().setSource(file, info, qRound(thumbnailWidth * devicePixelRatioF()));
    showMedium(file, *info);
    if (duration() <= 0)
        m_moments->pictures().requestLength([this](int ms) { setDuration(ms); });
}

void FrameShotDialog::setPicture(const QSize &size, double pixelAspect)
{
    TimeSpanEditor::setPicture(size, pixelAspect);
    const QSize shown = squarePixelSize(size, pixelAspect);
    const int height = qRound(double(shown.height()) * thumbnailWidth / std::max(shown.width(), 1));
    list()->setStyleSheet(QStringLiteral("#listWidget::item {margin: 0 20px 6px;height: %1px;}\r\n"
                                         "#listWidget[isPiiic=\"true\"]::item{margin: 0 20px;}")
                              .arg(height));
}

void FrameShotDialog::setDuration(int ms)
{
    TimeSpanEditor::setDuration(ms);
    showCount();
}

void FrameShotDialog::showKind(bool isSeries)
{
    for (QWidget *row :
         {timeSection().startRow(), timeSection().endRow(), static_cast<QWidget *>(m_interval)})
        row->setVisible(isSeries);
    scrubBar().setRangeVisible(isSeries, isSeries);
}

ShotSeries FrameShotDialog::series() const
{
    return {span().start(), ShotSeries::lastBefore(span().end(), duration()),
            m_interval->intervalMs()};
}

void FrameShotDialog::showCount()
{
    m_interval->showCount(series().count());
}

QVariantMap FrameShotDialog::moment(int ms) const
{
    return {{posKey, ms}, {scaleKey, m_picture->scale()}};
}

bool FrameShotDialog::isAdding() const
{
    return m_byButton && (!m_waiting.isEmpty() || m_moments->isSeriesWaiting());
}

void FrameShotDialog::on_btnFragmentAdd_clicked()
{
    const bool isSeries = m_seriesTab->isChecked();
    if (isAdding() && isSeries) {
        stopAdding();
        return;
    }
    if (!isSeries) {
        if (isSettling())
            m_settleTimer.start();
        else
            addSeen();
        return;
    }
    // Those of an earlier result are no part of the series.
    while (!m_waiting.isEmpty())
        m_moments->add(m_waiting.takeFirst().toMap(), false, false);
    m_byButton = true;
    const ShotSeries wanted = series();
    for (int i = 0; i < wanted.count(); ++i)
        m_waiting += moment(wanted.moment(i));
    addWaiting();
}

void FrameShotDialog::onSettled()
{
    if (m_settleTimer.isActive() && !isSettling())
        addSeen();
}

// What is added is what is seen: a preview that hasn't told its frame is sent to one.
void FrameShotDialog::addSeen()
{
    m_settleTimer.stop();
    if (isSettling())
        seek(position());
    m_moments->add(moment(position()), true, false);
    showAdding();
}

// What has come so far stays.
void FrameShotDialog::stopAdding()
{
    m_waiting.clear();
    m_moments->stopSeries();
    showAdding();
}

// A long series takes its time, in which the window has to answer.
void FrameShotDialog::addWaiting()
{
    QElapsedTimer clock;
    clock.start();
    while (!m_waiting.isEmpty() && clock.elapsed() < addingSliceMs)
        m_moments->add(m_waiting.takeFirst().toMap(), m_byButton, m_byButton);
    if (!m_waiting.isEmpty())
        m_addTimer.start();
    showAdding();
}

void FrameShotDialog::showAdding()
{
    if (!isAdding())
        m_moments->endSeries();
    const bool canStop = isAdding() && m_seriesTab->isChecked();
    m_pane->addButton()->setText(canStop ? tr("停止截取") : tr("截取到列表 >>"));
}

void FrameShotDialog::setOptions(const QVariantMap &options)
{
    if (options.isEmpty())
        return;
    m_picture->setOptions(options);
    m_byButton = false;
    m_waiting += options.value(imagesKey).toList();
    m_shown = this->options();
    addWaiting();
}

QVariantMap FrameShotDialog::options() const
{
    QVariantMap all = m_picture->options();
    all.insert(imagesKey, m_moments->moments() + m_waiting);
    return all;
}

bool FrameShotDialog::isChanged() const
{
    return options() != m_shown;
}

void FrameShotDialog::on_btnOk_clicked()
{
    if (m_settleTimer.isActive())
        addSeen();
    m_shown = options();
    accept();
}

void FrameShotDialog::on_btnClear_clicked()
{
    m_waiting.clear();
    m_moments->endSeries();
    m_pane->clear();
    showAdding();
}

void FrameShotDialog::on_cbIsPiiic_toggled(bool checked)
{
    list()->setProperty("isPiiic", checked);
    repolish(list());
}

void FrameShotDialog::removeCurrent()
{
    delete list()->currentItem();
    showAdding();
}

bool FrameShotDialog::handleKey(const QKeyEvent &event)
{
    const bool isInField = qobject_cast<QAbstractSpinBox *>(focusWidget());
    const auto *button = qobject_cast<QPushButton *>(focusWidget());
    const bool isOtherButton = button && button != m_pane->addButton();
    const bool isEnter = event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
    if (isEnter && !isInField && !isOtherButton && !event.isAutoRepeat())
        on_btnFragmentAdd_clicked();
    else if (event.key() == Qt::Key_Delete && !isInField && !event.isAutoRepeat())
        removeCurrent();
    else
        return TimeSpanEditor::handleKey(event);
    return true;
}

// Enter adds; what is saved is looked at before.
void FrameShotDialog::showEvent(QShowEvent *event)
{
    TimeSpanEditor::showEvent(event);
    m_pane->addButton()->setDefault(true);
}
