// SPDX-License-Identifier: MIT
#include "MediaKits/MediaProcessor/ffmpegprocessor.h"
#include "MediaKits/MediaProcessor/kuxprocessor.h"

#include "support/casename.h"
#include "support/mediaprobe.h"
#include "support/testfile.h"
#include "support/testmedia.h"
#include "support/toolrun.h"

#include <QtTest>

#include <algorithm>
#include <csignal>
#include <memory>

#include <sys/resource.h>

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
    void start() override { launch("/nowhere/tool"_s, {"-x"_s}); }
};

class FloodingTool : public FFMpegProcessor
{
public:
    void start() override
    {
        launch("/bin/sh"_s, {"-c"_s, "yes 'it is broken' | head -c 40000000 >&2;"
                                     "head -c 40000000 /dev/zero"_s});
    }
};

// A tool that only ends when a file is there.
class UnendableTool : public FFMpegProcessor
{
public:
    void startUntil(const QString &file) { launch(builtProgram("unendable"_s), {file}); }

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
    void initTestCase()
    {
        ClipPlan plan;
        plan.seconds = 2;
        makeClip(m_clip, plan);
    }

    void runsToTheEnd()
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

    void failsWithItsCause()
    {
        const QString noSpace = "/dev/full: No space left on device"_s;
        const QStringList causes[] = {
            {"-i \"%1.no\" -f null -"_s, "短 片.mkv.no: No such file"_s},
            {"-i \"%1\" -c:v nocodec -f null -"_s, "'nocodec'"_s},
            {"-y -i \"%1\" -c:v rawvideo -f avi /dev/full"_s, noSpace},
            // Here ffmpeg ends as if all were well.
            {"-y -i \"%1\" -t 0.1 -f mpegts /dev/full"_s, noSpace},
        };
        for (const QStringList &each : causes) {
            Run run(each[0].arg(m_clip));
            QVERIFY(run.ends());
            run.processor->stop(true);
            QCOMPARE(run.states, failed);
            const QString told = run.processor->lastLines(3).join(u'\n');
            QVERIFY2(told.contains(each[1]), qPrintable(told));
        }
    }

    void failsWithoutTool()
    {
        LostTool processor;
        processor.start();
        QTRY_COMPARE(processor.state(), MediaProcessor::ProcessorError);
        QVERIFY(!processor.lastLines(1).isEmpty());
    }

    // A source may make a tool complain without end before its first progress.
    void floodTakesNoMemory()
    {
        const auto mostKb = [] {
            rusage usage{};
            getrusage(RUSAGE_SELF, &usage);
            return usage.ru_maxrss;
        };
        const long before = mostKb();
        FloodingTool processor;
        processor.setCommand({}, 1000, true);
        processor.start();
        QTRY_COMPARE_WITH_TIMEOUT(processor.state(), MediaProcessor::ProcessorFinished, 60000);
        QVERIFY2(mostKb() - before < 24 * 1024, qPrintable(QString::number(mostKb() - before)));
    }

    void pausesAndGoesOn()
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

    void stopKillsAtOnce()
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

    void nobodyWaitsForDeadDisks()
    {
        const auto check = [&](const char *caseName, bool isStopped) {
            const CaseName inCase(caseName);
            const QTemporaryDir dir;
            const QString end = dir.filePath("end"_s);
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
        };
        check("stopped", true);
        check("deleted", false);
    }

    void stopLetsFinishFile()
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

    void endsWithItsChild()
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
    void kuxProgressStaysInRange()
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

    void blockingRunNeedsNoEventLoop()
    {
        FFMpegProcessor processor;
        QSignalSpy progress(&processor, &MediaProcessor::progressChanged);
        processor.setCommand(m_short, 1000, false);
        processor.setBlocking(true);
        processor.start();
        QCOMPARE(processor.state(), MediaProcessor::ProcessorFinished);
        QVERIFY(progress.isEmpty());
    }

private:
    QTemporaryDir m_dir;
    QString m_output = m_dir.filePath("out put.mp4"_s);
    // The report tells this name and the title below: they must not be taken for its verdict.
    QString m_clip = m_dir.filePath("No space left on device 短 片.mkv"_s);
    // Real-time, so that a test can act in the middle; reports ten times a second.
    QString m_paced = "-y -stats_period 0.1 -re %1 \"%2\""_s;
    QString m_short = m_paced.arg(
        "-i \"%1\" -metadata title=\"Error writing trailer of \""_s.arg(m_clip), m_output);
    QString m_long = m_paced.arg("-f lavfi -i testsrc=d=60:s=160x120"_s, m_output);
};

QTEST_GUILESS_MAIN(TstFfmpegProcessor)
#include "tst_ffmpegprocessor.moc"
