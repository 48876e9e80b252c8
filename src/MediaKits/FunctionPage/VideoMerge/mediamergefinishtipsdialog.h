// SPDX-License-Identifier: MIT
#pragma once

#include "controls/dialogframe.h"

/// Tells that a merge has finished, and offers to show its file in the desktop's file manager.
class MediaMergeFinishTipsDialog : public DialogFrame
{
    Q_OBJECT

public:
    explicit MediaMergeFinishTipsDialog(const QString &path, QWidget *parent = nullptr);

private slots:
    void on_btnOpen_clicked();
    void on_btnCancel_clicked();

private:
    const QString m_path;
};
