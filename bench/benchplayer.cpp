// SPDX-License-Identifier: MIT
#include "MediaKits/Player/csvideoplayer.h"
#include "resources/look.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QLabel>
#include <QProcess>
#include <QScreen>
#include <QTextStream>
#include <QVBoxLayout>
#include <QWindow>

#include <algorithm>
#include <functional>

namespace {

constexpr int runs = 7;
constexpr int limitMs = 20000;
constexpr int seekTargets[] = {5000, 12000, 2000, 16000, 8000};

// ms until the condition holds; the limit when it never does.
qint64 waitFor(const std::function<bool()> &condition)
{
    QElapsedTimer clock;
    clock.start();
    while (!condition() && clock.elapsed() < limitMs)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 2);
    return clock.elapsed();
}

qint64 median(QVector<qint64> values)
{
    std::sort(values.begin(), values.end());
    return values.isEmpty() ? 0 : values.at(values.size() / 2);
}

// Whether something that isn't the window's own dark colour is drawn in its middle.
bool showsPicture(const QWidget &surface)
{
    const QPoint middle = surface.mapToGlobal(surface.rect().center());
    const QColor colour = QGuiApplication::primaryScreen()
                              ->grabWindow(0, middle.x() - 40, middle.y() - 40, 1, 1)
                              .toImage()
                              .pixelColor(0, 0);
    return colour.value() > 60;
}

struct Window : QWidget
{
    Window()
    {
        auto *layout = new QVBoxLayout(this);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->addWidget(&player);
        resize(640, 360);
        show();
        waitFor([this] { return windowHandle()->isExposed(); });
        // The window manager's own time with a new window isn't the player's.
        QElapsedTimer pause;
        pause.start();
        waitFor([&pause] { return pause.elapsed() > 300; });
    }
    CSVideoPlayer player;
};

qint64 openPlayer(const QString &file)
{
    Window window;
    window.player.start(file, standardPlayerArguments() + QStringList(QStringLiteral("--ao=null")));
    return waitFor([&window] { return showsPicture(*window.player.videoLabel()); });
}

qint64 openPlainMpv(const QString &file)
{
    Window window;
    QProcess mpv;
    mpv.start(QStringLiteral("mpv"),
              QStringList{QStringLiteral("--vo=gpu,x11"),
                          QStringLiteral("--wid=%1").arg(window.player.videoLabel()->winId()),
                          QStringLiteral("--ao=null")} +
                  standardPlayerArguments() + QStringList(file));
    const qint64 ms = waitFor([&window] { return showsPicture(*window.player.videoLabel()); });
    mpv.kill();
    mpv.waitForFinished();
    return ms;
}

qint64 seekTime(const QString &file)
{
    Window window;
    long position = -1;
    QObject::connect(&window.player, &CSVideoPlayer::progressChanged,
                     [&position](long ms) { position = ms; });
    window.player.start(file, standardPlayerArguments() + QStringList(QStringLiteral("--ao=null")));
    waitFor([&position] { return position >= 0; });
    window.player.play(false);
    QVector<qint64> times;
    for (const int target : seekTargets) {
        window.player.seek(target);
        times += waitFor([&position, target] { return position == target; });
    }
    return median(times);
}

} // namespace

// Opens and seeks the file that is named on the command line, twenty seconds long at least.
int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    Look::apply();
    const QString file = QApplication::arguments().value(1);
    QVector<qint64> ours;
    QVector<qint64> plain;
    QVector<qint64> seeks;
    for (int i = 0; i < runs; ++i) {
        ours += openPlayer(file);
        plain += openPlainMpv(file);
        seeks += seekTime(file);
    }
    QTextStream(stdout) << "first picture ms " << median(ours) << "\nof plain mpv ms "
                        << median(plain) << "\nratio "
                        << double(median(ours)) / double(std::max<qint64>(1, median(plain)))
                        << "\nseek to status line ms " << median(seeks) << '\n';
    return 0;
}
