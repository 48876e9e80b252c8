// SPDX-License-Identifier: MIT
#pragma once

#include "screencap/screencap.h"
#include "support/guisupport.h"
#include "support/mediaprobe.h"
#include "support/testmedia.h"

#include <QDir>
#include <QPainter>
#include <QSignalSpy>
#include <QTemporaryDir>

/// A piece of paper on the screen, a colour in each quarter; no window manager minds it.
class Paper : public QWidget
{
public:
    static constexpr Qt::GlobalColor colours[] = {Qt::red, Qt::green, Qt::blue, Qt::yellow};

    explicit Paper(const QRect &place) : QWidget(nullptr, Qt::Tool | Qt::X11BypassWindowManagerHint)
    {
        setGeometry(place);
        show();
        // A compositor may show it later than the window knows.
        [[maybe_unused]] const bool isSeen = QTest::qWaitFor([this] {
            const QImage seen = screenPart(*this);
            return seen.pixelColor(quarter(3).center()) == colours[3];
        });
    }

    /// One colour in place of the four.
    void fill(const QColor &colour)
    {
        m_colour = colour;
        repaint();
    }

    QRect quarter(int index) const
    {
        const QSize half = size() / 2;
        return {QPoint(index % 2 * half.width(), index / 2 * half.height()), half};
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        for (int i = 0; i < 4; ++i)
            painter.fillRect(quarter(i), m_colour.isValid() ? m_colour : QColor(colours[i]));
    }

private:
    QColor m_colour;
};

/// The recorder, told to record into a folder of its own, as a page drives it.
class RecordingTest : public QObject
{
    Q_OBJECT

protected:
    Screencap &recorder() { return Screencap::instance(); }
    QString dir() const { return m_dir.path(); }
    QStringList files() const { return QDir(dir()).entryList(QDir::Files, QDir::Name); }

    void begin(int mode, const QVariant &target = {})
    {
        recorder().setCapture(mode, target);
        recorder().start();
    }

    /// Until so much has been recorded since the last call or the start.
    void recordFor(int ms) { QTest::qWait(ms); }

    /// Starts, records a little and stops.
    /// @return path of the file; empty after a failure
    QString recordShortly(int mode, const QVariant &target = {}, int ms = 1500)
    {
        begin(mode, target);
        recordFor(ms);
        return stop();
    }

    QString stop()
    {
        recorder().stop();
        return waitForEnd();
    }

    QString waitForEnd()
    {
        QSignalSpy states(&recorder(), &Screencap::stateChanged);
        const bool isOver = QTest::qWaitFor(
            [this] { return recorder().state() == Screencap::CapIdle; }, endTimeoutMs);
        const bool isFinished =
            std::any_of(states.cbegin(), states.cend(), [](const QList<QVariant> &state) {
                return state.first().value<Screencap::CapStateEnum>() == Screencap::CapFinished;
            });
        return isOver && isFinished ? recorder().outputPath() : QString();
    }

    void useDefaults()
    {
        m_folder.reset(new QTemporaryDir);
        m_dir = QDir(m_folder->path());
        recorder().setOutputDir(dir());
        recorder().setFilePrefix("rec_"_s);
        recorder().setFileSuffix(".mp4"_s);
        recorder().setAudioFlags(Screencap::NoSound);
        recorder().setDefinition(Screencap::SourceDefinition, {-1, -1});
    }

    static constexpr int endTimeoutMs = 30000;

private slots:
    void init() { useDefaults(); }

private:
    std::unique_ptr<QTemporaryDir> m_folder;
    QDir m_dir;
};

/// The picture of a film at a time, in seconds.
inline QImage frameAt(const QString &film, double seconds)
{
    const QTemporaryDir dir;
    const QString picture = dir.filePath("frame.png"_s);
    makeMedia("-ss %1 -i @ -frames:v 1 @"_s.arg(seconds), {film, picture});
    return QImage(picture);
}

/// Whether the middle of an area has that colour, as nearly as films have.
inline bool hasColour(const QImage &frame, const QRect &area, const QColor &wanted)
{
    const QColor seen = frame.pixelColor(area.center());
    const int tolerance = 40;
    return qAbs(seen.red() - wanted.red()) < tolerance &&
           qAbs(seen.green() - wanted.green()) < tolerance &&
           qAbs(seen.blue() - wanted.blue()) < tolerance;
}

/// The mean grey of each hundredth of a second of a film, 0 to 255.
inline QByteArray greysOf(const QString &film)
{
    return decodedMedia(film, "-vf fps=100:start_time=0,scale=1:1:flags=area,format=gray -f "
                              "rawvideo"_s);
}
