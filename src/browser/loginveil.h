// SPDX-License-Identifier: MIT
#pragma once

#include "controls/titlebar.h"

#include <QTimer>

class QLabel;

/// A title row of the program's own, for a login window whose page doesn't bring one.
class LoginBar : public TitleBar
{
    Q_OBJECT

public:
    explicit LoginBar(QWidget *parent);

    QString text() const;
    void setText(const QString &text);

signals:
    void closeClicked();

private:
    QLabel *m_text;
};

/// A ring that turns while something is awaited.
class BusyRing : public QWidget
{
    Q_OBJECT

public:
    explicit BusyRing(QWidget *parent);

protected:
    void paintEvent(QPaintEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    QTimer m_turn;
    int m_degrees = 0;
};

/// Lies over the login page until there is something to see of it.
class LoginVeil : public QWidget
{
    Q_OBJECT

public:
    /// Covers the whole of `parent`, whatever its size.
    explicit LoginVeil(QWidget *parent);

    bool eventFilter(QObject *watched, QEvent *event) override;

signals:
    void closeClicked();

protected:
    void paintEvent(QPaintEvent *event) override;
};
