// SPDX-License-Identifier: MIT
#include "platform/screensource.h"
#include "recordingtest.h"
#include "screencap/capturecommand.h"
#include "support/desktop.h"

#include <QScopeGuard>
#include <QSettings>

namespace {

// The test's own display has one size at first.
void setScreenSize(const QString &mode)
{
    static bool isSmallOneKnown = false;
    if (!std::exchange(isSmallOneKnown, true)) {
        runTool("xrandr"_s, "--newmode 800x600 40 800 832 912 1056 600 601 605 628"_s.split(u' '));
        runTool("xrandr"_s, "--addmode screen 800x600"_s.split(u' '));
    }
    const ToolRun run = runTool("xrandr"_s, {"--output"_s, "screen"_s, "--mode"_s, mode});
    QVERIFY2(run.exitCode == 0, run.err.constData());
}

} // namespace

/// What a recording shows.
class TestScreencap : public RecordingTest
{
    Q_OBJECT

private slots:
    void writesTheCommand();
    void tellsTheSource();
    void recordsAreas_data();
    void recordsAreas();
    void recordsEachDefinitionAndFormat_data();
    void recordsEachDefinitionAndFormat();
    void keepsTheScreensShape();
    void showsThePointer();
    void followsAWindow();
    void followsAWindowThatChangesItsSize();
    void leavesPausesOut();
    void followsTheScreensSize_data();
    void followsTheScreensSize();
};

void TestScreencap::writesTheCommand()
{
    CaptureCommand command;
    command.definition = 1;
    command.isPlayedSoundWanted = true;
    command.outputPath = "/tmp/rec_2024-05-01 093000.mp4"_s;
    QCOMPARE(command.text(),
             "-f dshow -i video=\"MorvaneScreenRecorder\"  -f dshow -i "
             "audio=\"MorvaneVirtualAudioCapturer\"  -vcodec libx264 -acodec libmp3lame -s "
             "1920x1080 -y \"/tmp/rec_2024-05-01 093000.mp4\""_s);
    command.isFullScreen = false;
    command.isPlayedSoundWanted = false;
    command.inputs = QStringList{"mic %1"_s, "MorvaneVirtualAudioCapturer"_s};
    QCOMPARE(command.text(), "-f dshow -i video=\"MorvaneScreenRecorder\"  -f dshow -i "
                             "audio=\"mic %1\"  -vcodec libx264 -acodec libmp3lame  -y "
                             "\"/tmp/rec_2024-05-01 093000.mp4\""_s);
}

void TestScreencap::tellsTheSource()
{
    QVector<int> states;
    const auto listening =
        connect(&recorder(), &Screencap::stateChanged, this,
                [&states](Screencap::CapStateEnum state) { states += int(state); });
    QStringList told;
    const auto elapsing = connect(&recorder(), &Screencap::elapse, this, [&](uint seconds) {
        told += "%1 in %2"_s.arg(seconds).arg(int(recorder().state()));
    });
    begin(Screencap::AreaMode, QRect(11, 13, 301, 201));
    QTRY_COMPARE(recorder().state(), Screencap::CapRunning);
    const QSettings settings(captureSettingsPath(), QSettings::IniFormat);
    QCOMPARE(settings.value("start_x"_s).toInt(), 11);
    QCOMPARE(settings.value("start_y"_s).toInt(), 13);
    QCOMPARE(settings.value("capture_width"_s).toInt(), 300);
    QCOMPARE(settings.value("capture_height"_s).toInt(), 200);
    QVERIFY(recorder().outputPath().startsWith(dir() + "/rec_"_s));
    QTRY_COMPARE(recorder().elapsedSeconds(), 1U);
    QVERIFY(!QFileInfo::exists(recorder().outputPath())); // not before it is whole
    QVERIFY(!stop().isEmpty());
    disconnect(listening);
    disconnect(elapsing);
    QCOMPARE(states, (QVector<int>{Screencap::CapStarted, Screencap::CapRunning,
                                   Screencap::CapFinished, Screencap::CapIdle}));
    QCOMPARE(told, (QStringList{"1 in 3"_s, "0 in 0"_s}));
    QVERIFY(QSettings(captureSettingsPath(), QSettings::IniFormat).allKeys().isEmpty());
    QCOMPARE(entriesOf(dir()).size(), 1); // no work folder is left
}

void TestScreencap::recordsAreas_data()
{
    QTest::addColumn<QRect>("area");
    QTest::newRow("even") << QRect(100, 60, 320, 240);
    QTest::newRow("odd") << QRect(101, 61, 317, 241);
    QTest::newRow("at the edge") << QRect(1920 - 161, 1080 - 121, 161, 121);
    QTest::newRow("a pixel beyond") << QRect(1920 - 160, 1080 - 120, 162, 122);
}

void TestScreencap::recordsAreas()
{
    QFETCH(const QRect, area);
    const Paper paper(area);
    const QString film = recordShortly(Screencap::AreaMode, area);
    const ProbedFile probed = probeMedia(film);
    const QRect visible = area & QRect(0, 0, 1920, 1080);
    QCOMPARE(probed.size(), QSize(visible.width() & ~1, visible.height() & ~1));
    QCOMPARE(probed.video["codec_name"_s].toString(), "h264"_s);
    QCOMPARE(probed.video["pix_fmt"_s].toString(), "yuv420p"_s);
    QVERIFY(probed.seconds > 0.7);
    const QImage frame = frameAt(film, 0.5);
    for (int i = 0; i < 4; ++i)
        QVERIFY2(hasColour(frame, paper.quarter(i), Paper::colours[i]), qPrintable("quarter"_s));
}

void TestScreencap::recordsEachDefinitionAndFormat_data()
{
    QTest::addColumn<int>("definition");
    QTest::addColumn<QString>("suffix");
    QTest::addColumn<QSize>("size");
    for (const char *const suffix : {".mp4", ".flv"}) {
        QTest::addRow("standard %s", suffix)
            << 0 << QString::fromLatin1(suffix) << QSize(1280, 720);
        QTest::addRow("high %s", suffix) << 1 << QString::fromLatin1(suffix) << QSize(1920, 1080);
        QTest::addRow("source %s", suffix) << 2 << QString::fromLatin1(suffix) << QSize(1920, 1080);
    }
}

void TestScreencap::recordsEachDefinitionAndFormat()
{
    QFETCH(const int, definition);
    QFETCH(const QString, suffix);
    QFETCH(const QSize, size);
    const Paper paper(QRect(960, 540, 960, 540)); // the lower right quarter
    recorder().setDefinition(definition, {-1, -1});
    recorder().setFileSuffix(suffix);
    const QString film = recordShortly(Screencap::FullMode);
    QVERIFY(film.endsWith(suffix));
    const ProbedFile probed = probeMedia(film);
    QCOMPARE(probed.size(), size);
    QVERIFY(probed.container.contains(suffix.mid(1)));
    QVERIFY(probed.audio.isEmpty());
    QCOMPARE(probed.video["color_space"_s].toString(), "bt709"_s);
    const QImage frame = frameAt(film, probed.seconds / 2);
    const double scale = size.width() / 1920.0;
    for (int i = 0; i < 4; ++i) {
        const QPointF center = QPointF(paper.pos() + paper.quarter(i).center()) * scale;
        const QRect point(center.toPoint(), QSize(1, 1));
        QVERIFY2(hasColour(frame, point, Paper::colours[i]),
                 qPrintable(frame.pixelColor(point.topLeft()).name()));
    }
}

// The program's texts name one size for every screen.
void TestScreencap::keepsTheScreensShape()
{
    QTemporaryDir out;
    const ToolRun run =
        runTool("/bin/sh"_s, {"-c"_s,
                              "Xvfb -displayfd 3 -screen 0 1000x799x24 -nolisten tcp 3>$0/d "
                              "2>/dev/null & server=$!; until [ -s $0/d ]; do sleep 0.05; done; "
                              "DISPLAY=:$(cat $0/d) MORVANE_RECORDING=$0/film.mkv \"$1\" "
                              "-f dshow -i video=MorvaneScreenRecorder -vcodec libx264 -s 1280x720 "
                              "-t 1 -y $0/x.mp4; kill $server"_s,
                              out.path(), builtProgram("module/ffmpeg/ffmpeg"_s)});
    const QSize size = probeMedia(out.filePath("film.mkv"_s)).size();
    QVERIFY2(size == QSize(900, 720) || size == QSize(902, 720), run.err.constData());
}

void TestScreencap::showsThePointer()
{
    const QRect area(400, 300, 200, 200);
    Paper paper(area);
    paper.fill(Qt::yellow);
    Desktop::pointTo(area.center());
    const QImage frame = frameAt(recordShortly(Screencap::AreaMode, area), 0.5);
    int others = 0;
    for (int y = 80; y < 130; ++y) {
        for (int x = 80; x < 130; ++x)
            others += hasColour(frame, QRect(x, y, 1, 1), Qt::yellow) ? 0 : 1;
    }
    QVERIFY(others > 20);
    QVERIFY(hasColour(frame, QRect(20, 20, 20, 20), Qt::yellow));
}

// Moved, covered, and partly beside the screen.
void TestScreencap::followsAWindow()
{
    Paper window(QRect(100, 100, 301, 201));
    begin(Screencap::WindowMode, quint32(window.winId()));
    QTRY_COMPARE(recorder().elapsedSeconds(), 1U);
    window.move(600, 400);
    Paper cover(QRect(580, 380, 400, 300));
    cover.fill(Qt::black);
    QTRY_COMPARE(recorder().elapsedSeconds(), 2U);
    window.move(1920 - 150, 1080 - 100);
    QTRY_COMPARE(recorder().elapsedSeconds(), 3U);
    recordFor(500);
    const QString film = stop();
    QCOMPARE(probeMedia(film).size(), QSize(300, 200));
    for (const double second : {0.5, 1.6, 2.6}) {
        const QImage frame = frameAt(film, second);
        for (int i = 0; i < 4; ++i)
            QVERIFY2(hasColour(frame, window.quarter(i), Paper::colours[i]),
                     qPrintable(QString::number(second)));
    }
}

void TestScreencap::followsAWindowThatChangesItsSize()
{
    Paper window(QRect(100, 100, 300, 200));
    begin(Screencap::WindowMode, quint32(window.winId()));
    QTRY_COMPARE(recorder().elapsedSeconds(), 1U);
    window.resize(150, 160);
    QTest::qWait(2000);
    window.hide();
    QTest::qWait(1000);
    window.show();
    const uint before = recorder().elapsedSeconds();
    QTRY_VERIFY(recorder().elapsedSeconds() >= before + 2);
    const QString film = stop();
    const ProbedFile probed = probeMedia(film);
    QCOMPARE(probed.size(), QSize(300, 200));
    QVERIFY(probed.seconds > 3.0);
    const QImage frame = frameAt(film, probed.seconds - 0.5);
    const QRect picture(56, 0, 188, 200); // the window's shape within the film's
    const QRect upperLeft(picture.topLeft(), picture.size() / 2);
    QVERIFY(hasColour(frame, upperLeft, Qt::red));
    QVERIFY(hasColour(frame, QRect(0, 0, 50, 200), Qt::black));
}

void TestScreencap::leavesPausesOut()
{
    const QRect area(100, 100, 160, 120);
    Paper paper(area);
    paper.fill(Qt::white);
    QSignalSpy pauses(&recorder(), &Screencap::pausedChanged);
    begin(Screencap::AreaMode, area);
    QTRY_COMPARE(recorder().elapsedSeconds(), 1U);
    recorder().pause();
    QCOMPARE(recorder().state(), Screencap::CapPaused);
    QTest::qWait(300);
    paper.fill(Qt::black);
    QTest::qWait(4000);
    QCOMPARE(recorder().elapsedSeconds(), 1U);
    paper.fill(Qt::white);
    recorder().resume();
    QTRY_COMPARE(recorder().elapsedSeconds(), 2U);
    // Before the piece has ended, and more than once.
    recorder().pause();
    recorder().resume();
    QTRY_COMPARE(recorder().elapsedSeconds(), 3U);
    recorder().pause();
    const QString film = stop();
    QCOMPARE(pauses.size(), 5);
    const double seconds = probeMedia(film).seconds;
    QVERIFY2(seconds > 2.5 && seconds < 4.0, qPrintable(QString::number(seconds)));
    for (const char grey : greysOf(film))
        QVERIFY(uchar(grey) > 200);
}

void TestScreencap::followsTheScreensSize_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<QRect>("area");
    QTest::addColumn<QSize>("size");
    QTest::newRow("whole") << int(Screencap::FullMode) << QRect() << QSize(1280, 720);
    QTest::newRow("area that is cut")
        << int(Screencap::AreaMode) << QRect(600, 400, 400, 300) << QSize(400, 300);
    QTest::newRow("area that goes")
        << int(Screencap::AreaMode) << QRect(1000, 700, 400, 300) << QSize(400, 300);
}

void TestScreencap::followsTheScreensSize()
{
    QFETCH(const int, mode);
    QFETCH(const QRect, area);
    QFETCH(const QSize, size);
    const bool isGoing = area.left() > 800;
    recorder().setDefinition(Screencap::StandardDefinition, {-1, -1});
    begin(mode, area);
    QTRY_COMPARE(recorder().elapsedSeconds(), 2U);
    setScreenSize("800x600"_s);
    const auto restore = qScopeGuard([] { setScreenSize("1920x1080"_s); });
    if (!isGoing)
        QTRY_VERIFY_WITH_TIMEOUT(recorder().elapsedSeconds() >= 5, 15000);
    const QString film = isGoing ? waitForEnd() : stop();
    QVERIFY2(recorder().failureReason().isEmpty() != isGoing,
             qPrintable(recorder().failureReason()));
    const ProbedFile probed = probeMedia(film);
    QCOMPARE(probed.size(), size);
    QVERIFY(probed.seconds > (isGoing ? 0.5 : 3.0));
    QVERIFY(!frameAt(film, probed.seconds - 0.4).isNull());
}

QTEST_MAIN(TestScreencap)
#include "tst_screencap.moc"
