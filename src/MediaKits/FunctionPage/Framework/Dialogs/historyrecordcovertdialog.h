// SPDX-License-Identifier: MIT
#pragma once

#include "controls/dialogframe.h"

#include <memory>

namespace Ui {
class HistoryRecordCovertDialog;
}

/// The finished conversions, newest first; a click on a file shows it in the desktop's file
/// manager.
class HistoryRecordCovertDialog : public DialogFrame
{
    Q_OBJECT

public:
    explicit HistoryRecordCovertDialog(QWidget *parent = nullptr);
    ~HistoryRecordCovertDialog() override;

private slots:
    void on_tableWidget_cellClicked(int row, int column);
    void on_btnClearData_clicked();

private:
    void fillTable();
    void addWidgets();
    void setPathWidget(int row, int column);

    const std::unique_ptr<Ui::HistoryRecordCovertDialog> m_ui;
    int m_rowsWithWidgets = 0;
};
