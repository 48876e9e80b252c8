// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/tasklistwidget.h"

#include "MediaKits/FunctionPage/Framework/taskrowwidget.h"
#include "MediaKits/MediaTasksManager/grouptaskfactory.h"

#include <QApplication>
#include <QEvent>
#include <QListWidget>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QVariant>
#include <QVBoxLayout>

namespace {

constexpr int rowHeight = 112;
// Rows beyond the edges that keep their widgets, so that small scrolls make none.
constexpr int rowsBeyond = 8;
constexpr int sightDelayMs = 120;
// A row's widgets take some 10 ms to make; more at once would be felt.
constexpr int rowsAtOnce = 2;

} // namespace

TaskListWidget::TaskListWidget(QWidget *parent) : TaskRowsWidget(parent), m_list(new QListWidget)
{
    m_list->setObjectName(QStringLiteral("convertList"));
    m_list->setFocusPolicy(Qt::NoFocus);
    m_list->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_list->setSelectionMode(QAbstractItemView::NoSelection);
    m_list->setProperty("showDropIndicator", false);
    m_list->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_list->verticalScrollBar()->setSingleStep(rowHeight / 4);
    m_list->setUniformItemSizes(true);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_list);
    watchSight();
}

void TaskListWidget::watchSight()
{
    m_sightTimer.setSingleShot(true);
    connect(&m_sightTimer, &QTimer::timeout, this, &TaskListWidget::updateSight);
    connect(m_list->verticalScrollBar(), &QScrollBar::valueChanged, this, [this] {
        if (!m_sightTimer.isActive())
            updateSight();
    });
    m_list->viewport()->installEventFilter(this);
}

bool TaskListWidget::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Resize)
        lookSoon();
    return TaskRowsWidget::eventFilter(watched, event);
}

bool TaskListWidget::focusNextPrevChild(bool next)
{
    if (!TaskRowsWidget::focusNextPrevChild(next))
        return false;
    for (QWidget *widget = QApplication::focusWidget(); widget; widget = widget->parentWidget()) {
        if (const auto *row = qobject_cast<TaskRowWidget *>(widget))
            m_list->scrollToItem(row->item().listItem());
    }
    return true;
}

void TaskListWidget::lookSoon()
{
    if (!m_sightTimer.isActive())
        m_sightTimer.start(sightDelayMs);
}

void TaskListWidget::updateSight()
{
    const int top = m_list->verticalScrollBar()->value();
    const int first = top / rowHeight;
    const int last = (top + m_list->viewport()->height()) / rowHeight;
    int made = 0;
    for (int i = 0; i < m_list->count(); ++i) {
        TaskRowWidget *row = rowOf(m_list->item(i));
        if (!row)
            continue;
        const bool inSight = i >= first && i <= last;
        if (inSight && made >= rowsAtOnce)
            m_sightTimer.start(0);
        else if (inSight)
            made += int(row->setInSight(true));
        else if (i < first - rowsBeyond || i > last + rowsBeyond)
            row->setInSight(false);
    }
}

TaskListWidget::~TaskListWidget()
{
    // While all that the tasks' last signals reach still lives; the page may be half gone.
    const QSignalBlocker blocker(this);
    TaskListWidget::clear();
}

void TaskListWidget::addFile(const QString &path)
{
    auto *item = new QListWidgetItem;
    item->setData(SourcePathRole, path);
    item->setData(TaskRole, QVariant::fromValue(createTask(path)));
    item->setData(Qt::SizeHintRole, QSize(-1, rowHeight));
    m_list->addItem(item);
    m_list->scrollToItem(item);
    TaskRowWidget *row = createRow(item);
    m_list->setItemWidget(item, row);
    adoptRow(row);
    // The rows of a long import are only in sight once it has come to rest.
    if (m_list->count() <= rowsBeyond)
        updateSight();
    else
        m_sightTimer.start(sightDelayMs);
    if (m_list->count() == 1)
        emit mediaListEmptyChanged(false);
}

QSharedPointer<MediaTask> TaskListWidget::createConversion(const QString &path) const
{
    auto *param = new ConvertTaskParam;
    param->inputFile = path;
    param->outputDir = outPath();
    QSharedPointer<MediaTask> task(createGroupTask(ComplexConvertKind));
    task->setParam(param);
    return task;
}

TaskRowWidget *TaskListWidget::rowOf(QListWidgetItem *item) const
{
    return qobject_cast<TaskRowWidget *>(m_list->itemWidget(item));
}

QVector<TaskRowWidget *> TaskListWidget::rows() const
{
    QVector<TaskRowWidget *> all;
    all.reserve(m_list->count());
    for (int i = 0; i < m_list->count(); ++i) {
        if (TaskRowWidget *row = rowOf(m_list->item(i)))
            all += row;
    }
    return all;
}

void TaskListWidget::deleteRow(TaskRowWidget *row)
{
    QListWidgetItem *item = row->item().listItem();
    row->clearItem();
    delete item;
    lookSoon();
}

void TaskListWidget::clear()
{
    if (isEmpty())
        return;
    for (TaskRowWidget *row : rows())
        row->clearItem();
    m_list->clear();
    emit mediaListEmptyChanged(true);
}

bool TaskListWidget::isEmpty() const
{
    return m_list->count() == 0;
}
