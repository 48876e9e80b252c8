// SPDX-License-Identifier: MIT
#include "dubbing/heardsound.h"
#include "recordingtest.h"
#include "support/testfile.h"

#include <QLocalServer>
#include <QScopeGuard>

#include <cstring>

namespace {

// A sound server of the test's own. What is played on its default output can be recorded, and its
// microphone hears what is played on another.
class SoundServer
{
public:
    SoundServer()
    {
        m_server.start("pulseaudio"_s,
                       {"-n"_s, "--daemonize=no"_s, "--exit-idle-time=-1"_s, "-L"_s,
                        "module-native-protocol-unix"_s, "-L"_s,
                        "module-null-sink sink_name=speakers"_s, "-L"_s,
                        "module-null-sink sink_name=room"_s, "-L"_s,
                        "module-remap-source master=room.monitor source_name=mic"_s});
        const bool isUp = QTest::qWaitFor(
            [] { return Screencap::listAudioDevices(1) == QStringList{"mic"_s}; }, 10000);
        QVERIFY2(isUp, m_server.readAllStandardError().constData());
    }
    ~SoundServer()
    {
        m_server.kill();
        m_server.waitForFinished();
    }

private:
    QProcess m_server;
};

// Flashes and clicks at the same moments.
class FlashClick
{
public:
    explicit FlashClick(int everyMs, const QString &sink = "speakers"_s, int hertz = 1000)
    {
        m_program.setProcessEnvironment(environmentWith({"PULSE_SINK="_s + sink}));
        m_program.start(builtProgram("flashclick"_s),
                        {QString::number(everyMs), "0,0,160,120"_s, QString::number(hertz)});
        const QByteArray first = nextLine(&m_program);
        QVERIFY(!first.isEmpty());
    }
    ~FlashClick()
    {
        m_program.kill();
        m_program.waitForFinished();
    }

private:
    QProcess m_program;
};

const QRect flashArea(0, 0, 160, 120);

// In seconds.
QVector<double> flashesIn(const QString &film)
{
    QVector<double> times;
    const QByteArray greys = greysOf(film);
    for (int i = 1; i < greys.size(); ++i) {
        if (uchar(greys[i]) > 127 && uchar(greys[i - 1]) <= 127)
            times += i / 100.0;
    }
    return times;
}

QVector<double> clicksIn(const QString &film)
{
    constexpr int rate = 44100;
    constexpr qint16 loud = 1500;
    constexpr int quietSamples = rate / 10;
    // By the number of the sample, as players that mind no time stamps have it.
    const QByteArray raw = decodedMedia(film, "-vn -ac 1 -ar 44100 -f s16le"_s);
    QVector<double> times;
    int lastLoud = -quietSamples;
    for (int i = 0; i < raw.size() / 2; ++i) {
        qint16 sample = 0;
        std::memcpy(&sample, raw.constData() + 2 * i, sizeof sample);
        if (qAbs(sample) < loud)
            continue;
        if (i - lastLoud > quietSamples)
            times += double(i) / rate;
        lastLoud = i;
    }
    return times;
}

double nearest(const QVector<double> &times, double time)
{
    double found = -1e9;
    for (const double candidate : times)
        found = qAbs(candidate - time) < qAbs(found - time) ? candidate : found;
    return found;
}

bool isToneIn(const HeardSound &sound, int hertz)
{
    constexpr double window = 0.05;
    double loudest = 0.0;
    for (double at = 0.0; at + window <= sound.seconds(); at += window)
        loudest = std::max(loudest, sound.level(hertz, at, at + window));
    return loudest > 0.15; // of 0.37
}

} // namespace

class TestRecordSound : public RecordingTest
{
    Q_OBJECT

private slots:
    void initTestCase();
    void recordsWithoutAServer();
    void asksAHangingServerOnce();
    void keepsSoundAndPictureTogether_data();
    void keepsSoundAndPictureTogether();
    void mixesAllSounds();
    void goesOnWithoutItsSound();
};

void TestRecordSound::initTestCase()
{
    qunsetenv("PULSE_SERVER");
}

void TestRecordSound::recordsWithoutAServer()
{
    recorder().setAudioFlags(Screencap::SystemSound | Screencap::Microphones);
    QStringList warnings;
    recorder().setWarner([&warnings](const QString &text) { warnings += text; });
    const QString film = recordShortly(Screencap::AreaMode, flashArea);
    recorder().setWarner({});
    QVERIFY(warnings.join(u' ').contains("声音服务"_s));
    QVERIFY(!Screencap::sourcesRegistered());
    QVERIFY(probeMedia(film).seconds > 0.5);
    QVERIFY(probeMedia(film).audio.isEmpty());
}

// It takes connections and never says a word.
void TestRecordSound::asksAHangingServerOnce()
{
    QLocalServer server;
    QVERIFY(server.listen(dir() + "/pulse"_s));
    QSignalSpy questions(&server, &QLocalServer::newConnection);
    qputenv("PULSE_SERVER", "unix:" + server.fullServerName().toUtf8());
    const auto restore = qScopeGuard([] { qunsetenv("PULSE_SERVER"); });
    recorder().setAudioFlags(Screencap::SystemSound | Screencap::Microphones);
    begin(Screencap::AreaMode, flashArea);
    QTRY_COMPARE(recorder().elapsedSeconds(), 1U);
    recorder().pause();
    recorder().resume();
    QTRY_COMPARE(recorder().elapsedSeconds(), 2U);
    const QString film = stop();
    QCOMPARE(questions.size(), 1);
    QVERIFY(probeMedia(film).audio.isEmpty());
}

void TestRecordSound::keepsSoundAndPictureTogether_data()
{
    QTest::addColumn<int>("pauses");
    QTest::addColumn<QString>("suffix");
    QTest::newRow("without a pause") << 0 << ".mp4"_s;
    QTest::newRow("five pauses") << 5 << ".mp4"_s;
    QTest::newRow("two pauses, Flash") << 2 << ".flv"_s;
}

void TestRecordSound::keepsSoundAndPictureTogether()
{
    QFETCH(const int, pauses);
    QFETCH(const QString, suffix);
    const SoundServer server;
    QVERIFY(Screencap::sourcesRegistered());
    const FlashClick film(700);
    recorder().setAudioFlags(Screencap::SystemSound);
    recorder().setFileSuffix(suffix);
    begin(Screencap::AreaMode, flashArea);
    for (int i = 0; i < pauses; ++i) {
        recordFor(2100);
        recorder().pause();
        QTest::qWait(700 + 130 * i);
        recorder().resume();
    }
    recordFor(3500);
    const QString path = stop();
    const QVector<double> flashes = flashesIn(path);
    const QVector<double> clicks = clicksIn(path);
    QVERIFY(flashes.size() > 2 + pauses);
    int matched = 0;
    for (const double flash : flashes) {
        const double offMs = (nearest(clicks, flash) - flash) * 1000.0;
        qInfo("flash at %.2f s, sound %+.0f ms", flash, offMs);
        matched += qAbs(offMs) < 40.0 ? 1 : 0;
    }
    // Each pause and the end may have cut off the beginning of either.
    QVERIFY(matched >= flashes.size() - pauses - 1);
}

void TestRecordSound::mixesAllSounds()
{
    const SoundServer server;
    const FlashClick played(900, "speakers"_s, 1000);
    const FlashClick spoken(900, "room"_s, 3000);
    const auto isHeard = [this](int flags) {
        recorder().setAudioFlags(flags);
        const HeardSound sound(recordShortly(Screencap::AreaMode, flashArea, 4000));
        return QVector<bool>{isToneIn(sound, 1000), isToneIn(sound, 3000)};
    };
    QCOMPARE(isHeard(Screencap::SystemSound), (QVector<bool>{true, false}));
    QCOMPARE(isHeard(Screencap::Microphones), (QVector<bool>{false, true}));
    QCOMPARE(isHeard(Screencap::SystemSound | Screencap::Microphones), (QVector<bool>{true, true}));
}

// As when a headset is pulled out.
void TestRecordSound::goesOnWithoutItsSound()
{
    auto server = std::make_unique<SoundServer>();
    recorder().setAudioFlags(Screencap::SystemSound | Screencap::Microphones);
    begin(Screencap::AreaMode, flashArea);
    QTRY_COMPARE(recorder().elapsedSeconds(), 2U);
    server.reset();
    QTRY_VERIFY_WITH_TIMEOUT(recorder().elapsedSeconds() >= 5, 15000);
    const QString film = stop();
    QVERIFY2(recorder().failureReason().contains("声音设备断开"_s),
             qPrintable(recorder().failureReason()));
    QVERIFY(probeMedia(film).seconds > 3.5);
    QVERIFY(!probeMedia(film).audio.isEmpty());
}

QTEST_MAIN(TestRecordSound)
#include "tst_recordsound.moc"
