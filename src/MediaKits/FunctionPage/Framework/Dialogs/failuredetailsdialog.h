// SPDX-License-Identifier: MIT
#pragma once

#include "controls/dialogframe.h"
#include "MediaKits/MediaTasksManager/mediatask.h"

#include <memory>

namespace Ui {
class FailureDetailsDialog;
}

/// Why a task failed, or what its result lacks, with the tool's last lines, to be read and copied.
class FailureDetailsDialog : public DialogFrame
{
    Q_OBJECT

public:
    explicit FailureDetailsDialog(const TaskFailure &failure, QWidget *parent = nullptr);
    explicit FailureDetailsDialog(const TaskRemarks &remarks, QWidget *parent = nullptr);
    ~FailureDetailsDialog() override;

private slots:
    void on_btnCopy_clicked();
    void on_btnOK_clicked();

private:
    FailureDetailsDialog(const QString &title, const QString &text, const QStringList &report,
                         QWidget *parent);

    const std::unique_ptr<Ui::FailureDetailsDialog> m_ui;
};
