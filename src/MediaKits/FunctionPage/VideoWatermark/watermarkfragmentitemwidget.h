// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

#include <memory>

class QListWidgetItem;

namespace Ui {
class WatermarkFragmentItemWidget;
}

/// Data of the items of the list of marks.
enum MarkItemRole {
    MarkRole = Qt::UserRole + 1, ///< `Mark`
    MaskItemRole =
        Qt::UserRole + 2 ///< `WatermarkMaskAdapterItem *`, null when nothing can be shown
};

/// One mark in the list: what it is and when it is seen.
class WatermarkFragmentItemWidget : public QWidget
{
    Q_OBJECT

public:
    /// @param item goes when the user deletes the row
    WatermarkFragmentItemWidget(QListWidgetItem *item, QWidget *parent);
    ~WatermarkFragmentItemWidget() override;

    /// Shows what the mark is now.
    void refresh();

signals:
    /// The text is to be edited.
    void editActive();

private slots:
    void on_btnDel_clicked();

private:
    const std::unique_ptr<Ui::WatermarkFragmentItemWidget> m_ui;
    QListWidgetItem *const m_item;
};
