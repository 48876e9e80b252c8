// SPDX-License-Identifier: MIT
#pragma once

#include <QTimer>
#include <QWidget>

#include <functional>

/// Takes the program's window from the screen for as long as the screen is recorded.
class WindowRetreat : public QObject
{
    Q_OBJECT

public:
    /// @param page whose window is meant; the owner
    explicit WindowRetreat(QWidget *page);

    /// Minimises the window, and remembers how it stood the first time.
    /// @param then called once it can't be seen any more, and what lay below has been painted
    void leave(const std::function<void()> &then);
    /// Puts it back to how it stood before `leave`, as after an act that was called off.
    void restore();
    /// Brings it to the front, wherever it is.
    void comeToFront();

private:
    void lookAgain();
    void callOff();
    QWidget *top() const { return m_page->window(); }

    QWidget *m_page;
    QTimer m_looks;
    QTimer m_repaint; // runs while the other programs paint
    int m_looksLeft = 0;
    std::function<void()> m_then;
    bool m_isAway = false;
    bool m_wasShown = false;
};
