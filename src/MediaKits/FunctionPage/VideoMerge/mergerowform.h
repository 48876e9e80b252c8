// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/Rows/rowform.h"

#include <memory>

namespace Ui {
class MergeRowForm;
}

/// The widgets of one row of the merge list.
class MergeRowForm : public RowForm
{
    Q_OBJECT

public:
    /// @param audio whether the file is one of sound alone
    MergeRowForm(bool audio, QWidget *parent);
    ~MergeRowForm() override;

    /// `out` tells what the input is cut to: the picture's size and the time.
    void showContent(const RowContent &content) override;
    /// @param position a `MediaMergeListItemWidget::Position`
    void setPosition(int position);
    /// @param operate a `MediaMergeListItemWidget::ItemOperate`
    /// @return null where the row can't be moved that way
    QWidget *moveButton(int operate) const;

signals:
    void upPressed();
    void downPressed();
    void cutPressed();

private:
    const std::unique_ptr<Ui::MergeRowForm> m_ui;
};
