// SPDX-License-Identifier: MIT
#include "MediaKits/MediaProcessor/ffmpegprocessor.h"
#include "MediaKits/MediaProcessor/kuxprocessor.h"

#include "support/mediaprobe.h"
#include "support/testfile.h"
#include "support/testmedia.h"
#include "support/toolrun.h"

#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <csignal>
#include <memory>

namespace {

using States = QVector<MediaProcessor::State>;

const States begun = {MediaProcessor::ProcessorStarted, MediaProcessor::ProcessorRunning};
const States finished = begun + States{MediaProcessor::ProcessorFinished};
const States failed = begun + States{MediaProcessor::ProcessorError};

// A started command and everything that its processor signals.
struct Run
{
    explicit Run(const QString &command, quint32 durationMs = 1000)
    {
        QObject::connect(processor.get(), &MediaProcessor::stateChanged,
                         [this](MediaProcessor::State state) { states += state; });
        QObject::connect(processor.get(), &MediaProcessor::progressChanged,
                         [this](double value) { progress += value; });
        processor->setCommand(command, durationMs, true);
        processor->start();
    }
    Q_DISABLE_COPY(Run)

    bool ends() const
    {
        return QTest::qWaitFor([this] { return processor->isFinal(); }, 20000);
    }

    States states;
    QVector<double> progress;
    std::unique_ptr<FFMpegProcessor> processor = std::make_unique<FFMpegProcessor>();
};

class LostTool : public FFMpegProcessor
{
public:
    void start() override { launch(QStringLiteral("/nowhere/tool -x")); }
};

// A tool that only ends when a file is there.
class UnendableTool : public FFMpegProcessor
{
public:
    void startUntil(const QString &file)
    {
        launch(builtProgram(QStringLiteral("unendable")), {file});
    }

    bool isHeld = false;

protected:
    void childOutput(const QByteArray &bytes) override
    {
        isHeld = isHeld || bytes.contains("held");
    }
};

} // namespace

class TstFfmpegProcessor : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void runsToTheEnd();
    void failsWithItsCause();
    void failsWithoutTool();
    void pausesAndGoesOn();
    void stopKillsAtOnce();
    void nobodyWaitsForDeadDisks_data();
    void nobodyWaitsForDeadDisks();
    void stopLetsFinishFile();
    void endsWithItsChild();
    void kuxProgressStaysInRange();
    void blockingRunNeedsNoEventLoop();

private:
    QTemporaryDir m_dir;
    QString m_output = m_dir.filePath(QStringLiteral("out put.mp4"));
    // The report tells this name and the title below: they must not be taken for its verdict.
    QString m_clip = m_dir.filePath(QStringLiteral("No space left on device 短 片.mkv"));
    // Real-time, so that a test can act in the middle; reports ten times a second.
    QString m_paced = QStringLiteral("-y -stats_period 0.1 -re %1 \"%2\"");
    QString m_short = m_paced.arg(
        QStringLiteral("-i \"%1\" -metadata title=\"Error writing trailer of \"").arg(m_clip),
        m_output);
    QString m_long = m_paced.arg(QStringLiteral("-f lavfi -i testsrc=d=60:s=160x120"), m_output);
};

void TstFfmpegProcessor::initTestCase()
{
    ClipPlan plan;
    plan.seconds = 2;
    makeClip(m_clip, plan);
}

void TstFfmpegProcessor::runsToTheEnd()
{
    // Without a length the report tells it; too short a one makes progress wait for the end.
    for (const quint32 durationMs : {0, 300}) {
        Run run(m_short, durationMs);
        QVERIFY(run.ends());
        QCOMPARE(run.states, finished);
        QCOMPARE(qRound(probeMedia(m_output).seconds), 2);
        QVERIFY(run.progress.size() >= 3);
        QVERIFY(std::is_sorted(run.progress.cbegin(), run.progress.cend()));
        QVERIFY(run.progress.constLast() >= 0.9);
        QVERIFY(run.progress.constLast() <= (durationMs == 0 ? 1.0 : 0.999));
    }
}

void TstFfmpegProcessor::failsWithItsCause()
{
    const QString noSpace = QStringLiteral("/dev/full: No space left on device");
    const QStringList causes[] = {
        {QStringLiteral("-i \"%1.no\" -f null -"), QStringLiteral("短 片.mkv.no: No such file")},
        {QStringLiteral("-i \"%1\" -c:v nocodec -f null -"), QStringLiteral("'nocodec'")},
        {QStringLiteral("-y -i \"%1\" -c:v rawvideo -f avi /dev/full"), noSpace},
        // Here ffmpeg ends as if all were well.
        {QStringLiteral("-y -i \"%1\" -t 0.1 -f mpegts /dev/full"), noSpace},
    };
    for (const QStringList &each : causes) {
        Run run(each[0].arg(m_clip));
        QVERIFY(run.ends());
        run.processor->stop(true);
        QCOMPARE(run.states, failed);
        const QString told = run.processor->lastLines(3).join(QLatin1Char('\n'));
        QVERIFY2(told.contains(each[1]), qPrintable(told));
    }
}

void TstFfmpegProcessor::failsWithoutTool()
{
    LostTool processor;
    processor.start();
    QTRY_COMPARE(processor.state(), MediaProcessor::ProcessorError);
    QVERIFY(!processor.lastLines(1).isEmpty());
}

void TstFfmpegProcessor::pausesAndGoesOn()
{
    Run run(m_short, 2000);
    FFMpegProcessor &processor = *run.processor;
    QSignalSpy progress(&processor, &MediaProcessor::progressChanged);
    QTRY_VERIFY(!run.progress.isEmpty());

    processor.pause();
    QTRY_COMPARE(processState(processor.processId()), 'T');
    // What the tool had written before comes first.
    QCoreApplication::processEvents();
    QVERIFY(!progress.wait(500));

    processor.resume();
    QVERIFY(progress.wait());
    QVERIFY(run.ends());
    QCOMPARE(run.states,
             (begun + States{MediaProcessor::ProcessorPaused, MediaProcessor::ProcessorResumed,
                             MediaProcessor::ProcessorFinished}));
    QCOMPARE(qRound(probeMedia(m_output).seconds), 2);
}

void TstFfmpegProcessor::stopKillsAtOnce()
{
    // A process may be stopped or paused while it is still starting.
    for (const bool running : {false, true}) {
        for (const bool paused : {false, true}) {
            Run run(m_long, 60000);
            if (running)
                QTRY_VERIFY(!run.progress.isEmpty());
            const qint64 pid = run.processor->processId();
            QVERIFY(processState(pid) != 0);
            States expected = running ? begun : States{MediaProcessor::ProcessorStarted};
            if (paused) {
                expected += MediaProcessor::ProcessorPaused;
                run.processor->pause();
                QTRY_COMPARE(processState(pid), 'T');
            }

            run.processor->stop(true);
            QTRY_COMPARE(processState(pid), char(0));
            run.processor->stop(false);
            QSignalSpy later(run.processor.get(), &MediaProcessor::stateChanged);
            QVERIFY(!later.wait(200));
            QCOMPARE(run.states, expected + States{MediaProcessor::ProcessorFinished});
        }
    }
}

void TstFfmpegProcessor::nobodyWaitsForDeadDisks_data()
{
    QTest::addColumn<bool>("isStopped");
    QTest::newRow("stopped") << true;
    QTest::newRow("deleted") << false;
}

void TstFfmpegProcessor::nobodyWaitsForDeadDisks()
{
    QFETCH(bool, isStopped);
    const QTemporaryDir dir;
    const QString end = dir.filePath(QStringLiteral("end"));
    auto processor = std::make_unique<UnendableTool>();
    processor->startUntil(end);
    QTRY_VERIFY(processor->isHeld || processor->isFinal());
    if (!processor->isHeld)
        QSKIP("this system lets no process hold another");
    const qint64 pid = processor->processId();
    if (isStopped) {
        processor->stop(true);
        QCOMPARE(processor->state(), MediaProcessor::ProcessorFinished);
        QCOMPARE(processor->processId(), 0);
    }
    processor.reset();
    // Dead, but not gone.
    QCOMPARE(processState(pid), 'Z');
    writeTestFile(end);
    QTRY_COMPARE(processState(pid), char(0));
}

void TstFfmpegProcessor::stopLetsFinishFile()
{
    Run run(m_long, 60000);
    QTRY_VERIFY(!run.progress.isEmpty() && run.progress.constLast() > 0.005);
    const qint64 pid = run.processor->processId();
    // A paused tool has to be woken to hear of it.
    run.processor->pause();
    run.processor->stop(false);
    QCOMPARE(run.processor->state(), MediaProcessor::ProcessorFinished);
    QVERIFY(processState(pid) != 0);
    QTRY_COMPARE_WITH_TIMEOUT(processState(pid), char(0), 20000);
    // An MP4 file can't be played before its end is written.
    const ProbedFile file = probeMedia(m_output);
    QVERIFY(file.seconds > 0.2 && file.seconds < 30);
}

void TstFfmpegProcessor::endsWithItsChild()
{
    Run killed(m_long, 60000);
    QTRY_VERIFY(!killed.progress.isEmpty());
    QCOMPARE(::kill(pid_t(killed.processor->processId()), SIGKILL), 0);
    QVERIFY(killed.ends());
    QTRY_COMPARE(killed.processor->processId(), 0);
    QCOMPARE(killed.states, failed);

    Run deleted(m_long, 60000);
    QTRY_COMPARE(deleted.states, begun);
    const qint64 pid = deleted.processor->processId();
    QVERIFY(processState(pid) != 0);
    deleted.processor.reset();
    QCOMPARE(processState(pid), char(0));
}

// Its length is an upper bound that longer films pass.
void TstFfmpegProcessor::kuxProgressStaysInRange()
{
    struct OpenKux : KuxProcessor
    {
        using KuxProcessor::progressAt;
    };
    const OpenKux kux;
    QCOMPARE(kux.progressAt(500000000, 1000000), 0.5);
    QVERIFY(kux.progressAt(1500000000, 1000000) < 1.0);
    QVERIFY(kux.progressAt(1500000000, 1000000) >= kux.progressAt(999000000, 1000000));
}

void TstFfmpegProcessor::blockingRunNeedsNoEventLoop()
{
    FFMpegProcessor processor;
    QSignalSpy progress(&processor, &MediaProcessor::progressChanged);
    processor.setCommand(m_short, 1000, false);
    processor.setBlocking(true);
    processor.start();
    QCOMPARE(processor.state(), MediaProcessor::ProcessorFinished);
    QVERIFY(progress.isEmpty());
}

QTEST_GUILESS_MAIN(TstFfmpegProcessor)
#include "tst_ffmpegprocessor.moc"
