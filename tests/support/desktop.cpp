// SPDX-License-Identifier: MIT
#include "support/desktop.h"

#include "support/toolrun.h"

#include <QGuiApplication>
#include <QScreen>
#include <QSystemTrayIcon>
#include <QTest>
#include <QWidget>
#include <QWindow>

#include <cstdlib>

namespace {

void xdotool(const QStringList &arguments)
{
    const ToolRun run = runTool("xdotool"_s, arguments);
    QVERIFY2(run.exitCode == 0, run.err.constData());
}

QStringList moveWords(const QPoint &point)
{
    return {"mousemove"_s, QString::number(point.x()), QString::number(point.y())};
}

} // namespace

SystemTray::SystemTray()
{
    m_panel.setStandardErrorFile(QProcess::nullDevice());
    m_panel.start("trayer"_s, {"--edge"_s, "bottom"_s, "--align"_s, "right"_s, "--widthtype"_s,
                               "request"_s, "--height"_s, "24"_s});
    QTRY_VERIFY_WITH_TIMEOUT(QSystemTrayIcon::isSystemTrayAvailable(), 15000);
}

SystemTray::~SystemTray()
{
    m_panel.terminate();
    m_panel.waitForFinished();
    QTRY_VERIFY(!QSystemTrayIcon::isSystemTrayAvailable());
}

QImage Desktop::seen(const QRect &area)
{
    QScreen &screen = *QGuiApplication::primaryScreen();
    const int ratio = int(screen.devicePixelRatio());
    const QPoint corner = area.topLeft() / ratio;
    const QSize size = (area.size() + QSize(ratio, ratio)) / ratio;
    QPixmap pixels = screen.grabWindow(0, corner.x(), corner.y(), size.width(), size.height());
    pixels.setDevicePixelRatio(1);
    return pixels.toImage().copy({area.topLeft() - corner * ratio, area.size()});
}

QColor Desktop::seenAt(const QPoint &point)
{
    return seen({point, QSize(1, 1)}).pixelColor(0, 0);
}

bool Desktop::isLike(const QColor &seen, const QColor &wanted)
{
    constexpr int tolerance = 16;
    return std::abs(seen.red() - wanted.red()) <= tolerance &&
           std::abs(seen.green() - wanted.green()) <= tolerance &&
           std::abs(seen.blue() - wanted.blue()) <= tolerance;
}

void Desktop::pointTo(const QPoint &point)
{
    xdotool(moveWords(point));
}

void Desktop::click(const QPoint &point)
{
    xdotool(moveWords(point) + QStringList{"click"_s, "1"_s});
}

void Desktop::click(const QWidget &widget)
{
    // It may yet move in its layout, and a window that has just come lies below its shadow for a
    // moment.
    const bool isMet = QTest::qWaitFor([&widget] {
        pointTo(widget.mapToGlobal(widget.rect().center()) * widget.devicePixelRatioF());
        return widget.underMouse();
    });
    const QString folder = qEnvironmentVariable("MORVANE_SHOTS");
    if (!isMet && !folder.isEmpty())
        seen(QGuiApplication::primaryScreen()->geometry()).save(folder + "/unmet.png"_s);
    QVERIFY2(isMet, qPrintable(widget.objectName()));
    xdotool({"click"_s, "1"_s});
}

void Desktop::drag(const QPoint &from, const QPoint &to)
{
    constexpr int steps = 5;
    constexpr int handMs = 30; // a step by hand; moves that wait in a queue become one
    constexpr int pressMs = 500;
    xdotool(moveWords(from) + QStringList{"mousedown"_s, "1"_s});
    // A window that is to move hears of the press before it is over; another program's may have it.
    const auto isPressed = [] { return QGuiApplication::mouseButtons() != Qt::NoButton; };
    static_cast<void>(QTest::qWaitFor(isPressed, pressMs));
    for (int step = 1; step <= steps; ++step) {
        xdotool(moveWords(from + (to - from) * step / steps));
        QTest::qWait(handMs);
    }
    xdotool({"mouseup"_s, "1"_s});
}

bool Desktop::hasKeyboard(const QWidget &window)
{
    const QByteArray focus = runTool("xdotool"_s, {"getwindowfocus"_s}).out;
    return focus.trimmed().toULongLong() == window.windowHandle()->winId();
}

void Desktop::key(const char *name)
{
    xdotool({"key"_s, QString::fromLatin1(name)});
}

void Desktop::type(const QString &text)
{
    xdotool({"type"_s, text});
}

void Desktop::order(const char *command, const QWidget &window)
{
    xdotool({QString::fromLatin1(command), QString::number(window.windowHandle()->winId())});
}
