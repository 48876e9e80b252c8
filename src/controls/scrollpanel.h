// SPDX-License-Identifier: MIT
#pragma once

#include <QScrollArea>

class QBoxLayout;

/// Controls that take the height of their content where there is room for it, and are scrolled
/// where there isn't.
class ScrollPanel : public QScrollArea
{
    Q_OBJECT

public:
    explicit ScrollPanel(QWidget *parent = nullptr);

    /// Parts of the content that stand side by side where they fit, else one below the other.
    void setColumns(QBoxLayout *columns);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void arrange();

    QBoxLayout *m_columns = nullptr;
};
