// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/VideoDubbing/musicentry.h"

#include <QWidget>

#include <memory>

class QListWidgetItem;

namespace Ui {
class DubbingFragmentItemWidget;
}

/// The row of one piece of music.
class DubbingFragmentItemWidget : public QWidget
{
    Q_OBJECT

public:
    /// Role of the item that holds the `MusicEntry`.
    static constexpr int entryRole = 257;

    /// @param item goes when the user deletes the row
    DubbingFragmentItemWidget(QListWidgetItem *item, QWidget *parent);
    ~DubbingFragmentItemWidget() override;

    /// Shows the entry anew.
    void refresh();
    /// Whether the row is the current one.
    void setChecked(bool checked);

private slots:
    void on_btnDel_clicked();

private:
    const std::unique_ptr<Ui::DubbingFragmentItemWidget> m_ui;
    QListWidgetItem *const m_item;
};
