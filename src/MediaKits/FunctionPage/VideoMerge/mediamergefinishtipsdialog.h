// SPDX-License-Identifier: MIT
#pragma once

#include "controls/dialogframe.h"
#include "MediaKits/MediaTasksManager/mediatask.h"

/// Tells that a merge has finished, and offers to show its file in the desktop's file manager.
class MediaMergeFinishTipsDialog : public DialogFrame
{
    Q_OBJECT

public:
    /// @param remarks what the result lacks
    MediaMergeFinishTipsDialog(const QString &path, const TaskRemarks &remarks,
                               QWidget *parent = nullptr);

private slots:
    void on_btnOpen_clicked();
    void on_btnCancel_clicked();
    void on_btnDetails_clicked();

private:
    const QString m_path;
    const TaskRemarks m_remarks;
};
