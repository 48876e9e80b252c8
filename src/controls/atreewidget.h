// SPDX-License-Identifier: MIT
#pragma once

#include <QTreeWidget>

/// A tree whose style sheet sees changed dynamic properties at the next painting.
class ATreeWidget : public QTreeWidget
{
    Q_OBJECT

public:
    explicit ATreeWidget(QWidget *parent = nullptr);

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    bool m_polishDue = true;
};
