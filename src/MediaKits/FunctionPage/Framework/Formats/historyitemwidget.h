// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

class QListWidgetItem;

/// A preset used lately with its category and a delete button, in the format dialog's recent list.
class HistoryItemWidget : public QWidget
{
    Q_OBJECT

public:
    enum Operation {
        DeleteOperation = 0,
    };
    Q_ENUM(Operation)

    /// Reads the records of `item`, which must be set, once.
    explicit HistoryItemWidget(const QListWidgetItem &item, QWidget *parent = nullptr);

signals:
    void operationActivate(Operation operation);

private slots:
    void on_btnDel_clicked();
};
