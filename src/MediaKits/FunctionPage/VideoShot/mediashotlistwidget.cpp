// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoShot/mediashotlistwidget.h"

#include "MediaKits/FunctionPage/VideoShot/mediashotlistitemwidget.h"
#include "MediaKits/MediaTasksManager/grouptaskfactory.h"
#include "MediaKits/MediaTasksManager/mutiimagetask.h"

QSharedPointer<MediaTask> MediaShotListWidget::createTask(const QString &)
{
    QSharedPointer<MediaTask> task(createGroupTask(MutiImageKind));
    task->setParam(new MutiImageTaskParam({{QStringLiteral("outputDir"), outPath()}}));
    return task;
}

TaskRowWidget *MediaShotListWidget::createRow(QListWidgetItem *item)
{
    return new MediaShotListItemWidget(item, this);
}

QString MediaShotListWidget::startHindrance() const
{
    const QString hindrance = TaskListWidget::startHindrance();
    for (const TaskRowWidget *row : rows()) {
        const bool lacksMoments = !hindrance.isEmpty() && !row->task()->isEnabled();
        if (lacksMoments && row->content().hindrance.isEmpty())
            return tr("请先点击“截图设置”，选取要截取的画面");
    }
    return hindrance;
}
