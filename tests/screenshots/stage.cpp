// SPDX-License-Identifier: MIT
#include "screenshots/stage.h"

#include "controls/toast.h"
#include "MediaKits/MediaInfo/mediainfobase.h"
#include "MediaKits/Player/csvideoplayer.h"
#include "support/utf8.h"

#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QElapsedTimer>
#include <QPushButton>
#include <QScreen>
#include <QSignalSpy>
#include <QTest>

namespace {

const QRgb backdropColour = 0xffc9d3de;
// Between two looks at the screen, and until one is taken of a window that never keeps still.
const int lookEvery = 250;
const int lookAtMost = 3000;
const int readingAtMost = 30000;
// Room around the windows, in pixels.
const int margin = 24;

} // namespace

Stage::Stage(const QString &mediaDir)
{
    m_backdrop.setWindowFlags(Qt::FramelessWindowHint | Qt::WindowStaysOnBottomHint);
    m_backdrop.setAttribute(Qt::WA_ShowWithoutActivating);
    m_backdrop.setPalette(QPalette(QColor(backdropColour)));
    m_backdrop.setGeometry(QGuiApplication::primaryScreen()->geometry());
    m_backdrop.show();

    m_window.open();
    for (const QFileInfo &file : QDir(mediaDir).entryInfoList(QDir::Files, QDir::Name))
        m_media += file.absoluteFilePath();
}

QString Stage::longestFilm() const
{
    return m_media.filter(".avi"_s).value(0);
}

void Stage::awaitReading() const
{
    const bool isRead = QTest::qWaitFor(
        [this] { return m_window.findChildren<MediaInfoBase *>().isEmpty(); }, readingAtMost);
    if (!isRead)
        qFatal("files are still being read");
}

void Stage::awaitPicture(const QWidget &window)
{
    QSignalSpy progress(window.findChild<CSVideoPlayer *>(), &CSVideoPlayer::progressChanged);
    for (int i = 0; i < 3; ++i)
        progress.wait();
}

void Stage::pausePlayer(const QWidget &window)
{
    awaitPicture(window);
    child<QPushButton>(window, "btnPlay").click();
}

void Stage::press(const char *button)
{
    child<QPushButton>(m_window, button).click();
}

void Stage::show(QWidget *window)
{
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->show();
}

bool Stage::save(const QString &path)
{
    QScreen *screen = QGuiApplication::primaryScreen();
    QElapsedTimer waited;
    waited.start();
    QImage before;
    QImage now;
    do {
        before = now;
        QTest::qWait(lookEvery);
        const QRect area = shownArea();
        now = screen->grabWindow(0, area.x(), area.y(), area.width(), area.height()).toImage();
    } while (now != before && waited.elapsed() < lookAtMost);
    return now.save(path);
}

void Stage::tidy()
{
    for (QWidget *widget : QApplication::topLevelWidgets()) {
        const bool own = widget == &m_window || widget == &m_backdrop;
        const bool passing =
            qobject_cast<QDialog *>(widget) != nullptr || widget->windowType() == Qt::Popup ||
            widget->inherits("MediaPreviewWnd") || widget->inherits("WindowCapWidget");
        if (own || !passing || !widget->isVisible())
            continue;
        // An editor would ask whether to lose what it shows.
        if (auto *dialog = qobject_cast<QDialog *>(widget))
            dialog->done(QDialog::Rejected);
        else
            widget->close();
    }
    qDeleteAll(m_window.findChildren<Toast *>());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

QRect Stage::shownArea() const
{
    QRect area;
    for (const QWidget *widget : QApplication::topLevelWidgets()) {
        if (widget != &m_backdrop && widget->isVisible())
            area |= widget->frameGeometry();
    }
    return area.adjusted(-margin, -margin, margin, margin) & m_backdrop.geometry();
}
