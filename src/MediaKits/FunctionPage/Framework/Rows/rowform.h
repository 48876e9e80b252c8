// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/Rows/rowcontent.h"

#include <QWidget>

class QPushButton;
class RowPictureWidget;

/// Base of the widgets of one row, which exist only while the row is in sight.
class RowForm : public QWidget
{
    Q_OBJECT

public:
    using QWidget::QWidget;

    virtual void showContent(const RowContent &content) = 0;
    /// Whether something is being typed, which must not be lost.
    virtual bool isEditing() const { return false; }

signals:
    void deletePressed();
    void playSourcePressed();

protected:
    /// Connects the buttons that all rows have; the one that deletes keeps its place at the right
    /// top corner.
    void setUpButtons(QPushButton *deleteButton, const RowPictureWidget &picture);
    void resizeEvent(QResizeEvent *event) override;

private:
    QPushButton *m_deleteButton = nullptr;
};
