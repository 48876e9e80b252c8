// SPDX-License-Identifier: MIT
#include "platform/screensource.h"
#include "recordingtest.h"

#include <QScopeGuard>

namespace {

// All of the screen in motion.
class NoisyScreen
{
public:
    NoisyScreen()
    {
        m_program.start(builtProgram("bench_movingscreen"_s), QStringList());
        QVERIFY(m_program.waitForStarted());
    }
    ~NoisyScreen()
    {
        m_program.kill();
        m_program.waitForFinished();
    }

private:
    QProcess m_program;
};

} // namespace

/// Recordings that end by themselves, or come to nothing.
class TestRecordingEnd : public RecordingTest
{
    Q_OBJECT

private slots:
    void endsWithTheWindow();
    void savesAShortestRecording();
    void watchesTheSpace();
    void keepsWhatADeadToolHasRecorded();
    void survivesAFullDisk();
    void recordsNothingElse_data();
    void recordsNothingElse();
    void tellsWhyNothingCame();
};

void TestRecordingEnd::endsWithTheWindow()
{
    auto window = std::make_unique<Paper>(QRect(100, 100, 300, 200));
    begin(Screencap::WindowMode, quint32(window->winId()));
    QTRY_COMPARE(recorder().elapsedSeconds(), 1U);
    window.reset();
    const QString film = waitForEnd();
    QVERIFY(probeMedia(film).seconds > 0.5);
    QVERIFY(hasColour(frameAt(film, 0.3), QRect(0, 0, 150, 100), Qt::red));
    QVERIFY(recorder().failureReason().contains("窗口已关闭"_s));
}

void TestRecordingEnd::savesAShortestRecording()
{
    begin(Screencap::AreaMode, QRect(0, 0, 100, 100));
    const QString film = stop();
    QVERIFY(probeMedia(film).seconds > 0.05);
    recorder().stop(); // harmless
    QCOMPARE(recorder().state(), Screencap::CapIdle);
}

void TestRecordingEnd::watchesTheSpace()
{
    qint64 bytes = 499 * 1024 * 1024;
    QString asked;
    recorder().setSpaceSource([&](const QString &folder) {
        asked = folder;
        return bytes;
    });
    QSignalSpy warnings(&recorder(), &Screencap::spaceLow);
    begin(Screencap::AreaMode, QRect(0, 0, 100, 100));
    recorder().setOutputDir("/elsewhere"_s); // for the next one
    QTRY_COMPARE(recorder().elapsedSeconds(), 2U);
    QCOMPARE(warnings.size(), 1);
    QCOMPARE(asked, dir());
    bytes = 99 * 1024 * 1024;
    const QString film = waitForEnd();
    recorder().setSpaceSource([](const QString &) { return qint64(-1); });
    QVERIFY(probeMedia(film).seconds > 1.5);
    QVERIFY(recorder().failureReason().contains("磁盘空间不足"_s));
}

void TestRecordingEnd::keepsWhatADeadToolHasRecorded()
{
    begin(Screencap::AreaMode, QRect(0, 0, 100, 100));
    QTRY_COMPARE(recorder().elapsedSeconds(), 3U);
    const QList<qint64> tools = processesWith(dir());
    QCOMPARE(tools.size(), 1);
    runTool("kill"_s, {"-KILL"_s, QString::number(tools.first())});
    const QString film = waitForEnd();
    QVERIFY(probeMedia(film).seconds > 1.0);
    QVERIFY(!recorder().failureReason().isEmpty());
}

// With room for some seconds only, and none for a second copy.
void TestRecordingEnd::survivesAFullDisk()
{
    const QTemporaryDir volume;
    if (runTool("mount"_s, {"-t"_s, "tmpfs"_s, "-o"_s, "size=12m"_s, "tmpfs"_s, volume.path()})
            .exitCode != 0)
        QSKIP("only root may mount a small volume");
    const auto unmount = qScopeGuard([&] { runTool("umount"_s, {"-l"_s, volume.path()}); });
    recorder().setSpaceSource([](const QString &) { return qint64(-1); });
    recorder().setOutputDir(volume.path());
    const NoisyScreen noise;
    begin(Screencap::FullMode);
    const QString film = waitForEnd();
    // It was never closed, so that only its frames tell how long it is.
    QVERIFY(decodedMedia(film, "-vf scale=1:1,format=gray -f rawvideo"_s).size() > 8);
    QVERIFY(recorder().failureReason().contains("磁盘空间不足"_s));
}

// Each of these would be a recording of the whole screen.
void TestRecordingEnd::recordsNothingElse_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<QVariant>("target");
    QTest::addColumn<bool>("isSettingBarred");
    QTest::newRow("area beside the screen")
        << int(Screencap::AreaMode) << QVariant(QRect(1920, 0, 100, 100)) << false;
    QTest::newRow("area of one pixel")
        << int(Screencap::AreaMode) << QVariant(QRect(5, 5, 1, 1)) << false;
    QTest::newRow("no window") << int(Screencap::WindowMode) << QVariant() << false;
    QTest::newRow("settings that can't be written")
        << int(Screencap::AreaMode) << QVariant(QRect(0, 0, 100, 100)) << true;
}

void TestRecordingEnd::recordsNothingElse()
{
    QFETCH(const int, mode);
    QFETCH(const QVariant, target);
    QFETCH(const bool, isSettingBarred);
    if (isSettingBarred) {
        QFile::remove(captureSettingsPath());
        QVERIFY(QDir().mkpath(captureSettingsPath()));
    }
    const QString film = recordShortly(mode, target);
    QDir().rmdir(captureSettingsPath());
    QCOMPARE(film, QString());
    QVERIFY(!recorder().failureReason().isEmpty());
    QCOMPARE(entriesOf(dir()), QStringList());
}

void TestRecordingEnd::tellsWhyNothingCame()
{
    QFile file(dir() + "/taken"_s);
    QVERIFY(file.open(QIODevice::WriteOnly));
    recorder().setOutputDir(file.fileName());
    QSignalSpy states(&recorder(), &Screencap::stateChanged);
    recorder().start();
    QCOMPARE(states.size(), 2);
    QCOMPARE(states.first().first().value<Screencap::CapStateEnum>(), Screencap::CapFailed);
    QVERIFY(recorder().failureReason().contains("taken"_s));
    recorder().setOutputDir(dir());
    recorder().setSpaceSource([](const QString &) { return qint64(1); });
    recorder().start();
    QCOMPARE(states.size(), 4);
    QVERIFY(recorder().failureReason().contains("磁盘空间不足"_s));
    recorder().setSpaceSource([](const QString &) { return qint64(-1); });
    qputenv("WAYLAND_DISPLAY", "wayland-0");
    recorder().start();
    qunsetenv("WAYLAND_DISPLAY");
    QCOMPARE(states.size(), 6);
    QVERIFY(recorder().failureReason().contains("Wayland"_s));
    QVERIFY(entriesOf(dir()).isEmpty() || entriesOf(dir()) == QStringList{"taken"_s});
}

QTEST_MAIN(TestRecordingEnd)
#include "tst_recordingend.moc"
