// SPDX-License-Identifier: MIT
#pragma once

#include "controls/dialogframe.h"

/// Tells that a merge has finished, and offers to show its file in the desktop's file manager.
class MediaMergeFinishTipsDialog : public DialogFrame
{
    Q_OBJECT

public:
    /// @param remarks what the result lacks, one a line; empty when it is all that was asked for
    MediaMergeFinishTipsDialog(const QString &path, const QString &remarks,
                               QWidget *parent = nullptr);

private slots:
    void on_btnOpen_clicked();
    void on_btnCancel_clicked();

private:
    const QString m_path;
};
