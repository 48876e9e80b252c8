// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/ScreenRecord/windowretreat.h"

#include "platform/windowmanager.h"
#include "platform/windowtree.h"

#include <QWindow>

#include <utility>

namespace {
constexpr int lookMs = 20;
// A window manager that minimises nothing isn't waited for any longer.
constexpr int mostLooks = 50;
// What the other programs need to paint what the window had covered.
constexpr int repaintMs = 150;
} // namespace

WindowRetreat::WindowRetreat(QWidget *page) : QObject(page), m_page(page)
{
    m_looks.setInterval(lookMs);
    connect(&m_looks, &QTimer::timeout, this, &WindowRetreat::lookAgain);
    m_repaint.setSingleShot(true);
    m_repaint.setInterval(repaintMs);
    connect(&m_repaint, &QTimer::timeout, this, [this] {
        if (m_then)
            std::exchange(m_then, nullptr)();
    });
}

void WindowRetreat::leave(const std::function<void()> &then)
{
    const bool isShown = top()->isVisible() && !top()->isMinimized();
    if (!std::exchange(m_isAway, true))
        m_wasShown = isShown;
    callOff();
    if (!isShown) {
        then();
        return;
    }
    m_then = then;
    m_looksLeft = mostLooks;
    top()->showMinimized();
    m_looks.start();
}

void WindowRetreat::lookAgain()
{
    if (--m_looksLeft > 0 && isShownOnServer(top()->windowHandle()->winId()))
        return;
    m_looks.stop();
    m_repaint.start();
}

void WindowRetreat::callOff()
{
    m_looks.stop();
    m_repaint.stop();
    m_then = nullptr;
}

void WindowRetreat::restore()
{
    callOff();
    if (std::exchange(m_isAway, false) && m_wasShown)
        comeToFront();
}

void WindowRetreat::comeToFront()
{
    callOff();
    m_isAway = false;
    noteUserAction();
    top()->setWindowState(top()->windowState() & ~Qt::WindowMinimized);
    top()->show();
    top()->raise();
    top()->activateWindow();
}
