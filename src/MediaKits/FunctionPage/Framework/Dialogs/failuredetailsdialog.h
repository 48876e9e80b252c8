// SPDX-License-Identifier: MIT
#pragma once

#include "controls/dialogframe.h"
#include "MediaKits/MediaTasksManager/mediatask.h"

#include <memory>

namespace Ui {
class FailureDetailsDialog;
}

/// Why a task failed, with the tool's last lines, to be read and copied.
class FailureDetailsDialog : public DialogFrame
{
    Q_OBJECT

public:
    explicit FailureDetailsDialog(const TaskFailure &failure, QWidget *parent = nullptr);
    ~FailureDetailsDialog() override;

private slots:
    void on_btnCopy_clicked();
    void on_btnOK_clicked();

private:
    const std::unique_ptr<Ui::FailureDetailsDialog> m_ui;
};
