// SPDX-License-Identifier: MIT
#include "MediaKits/MediaTasksManager/complexconverttask.h"
#include "MediaKits/MediaTasksManager/concattask.h"
#include "MediaKits/MediaTasksManager/groupmediatask.h"
#include "support/mediaprobe.h"
#include "tasks/chainrun.h"

#include <QDir>
#include <QtTest>

namespace {

using Convert = Watched<ComplexConvertTask>;
using Merge = Watched<ConcatTask>;

QSharedPointer<EncParam> preset(int width, int height)
{
    const QSharedPointer<EncParam> param(new EncParam);
    param->video.reset(new VEncParam{QStringLiteral("H264"), width, height, 0, 25.0, 0.0});
    param->audio.reset(new AEncParam{QStringLiteral("AAC"), 2, 44100, 96});
    return param;
}

QSharedPointer<InputFileMediaParam> mergeInput(const QString &file, int durationMs)
{
    const QSharedPointer<InputFileMediaParam> input(new InputFileMediaParam);
    input->file = file;
    input->format = QFileInfo(file).suffix().toUpper();
    input->durationMs = durationMs;
    return input;
}

// Hands the chain out, so that its steps can be watched.
class OpenConvertTask : public ComplexConvertTask
{
public:
    GroupMediaTask *chain = nullptr;

protected:
    GroupMediaTask *buildGroup() override
    {
        chain = ComplexConvertTask::buildGroup();
        return chain;
    }
};

} // namespace

// Whole chains through the built module folder and the installed ffmpeg: their ends.
class TestChains : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init() { m_folder = std::make_unique<TestFolder>(); }

    void converts_data();
    void converts();
    void startsAgainAfterErrorUnderAFreeName();
    void stops_data();
    void stops();
    void stopsInTheStep_data();
    void stopsInTheStep();
    void pausesTheTool();
    void diesWhileRunning();
    void failsWithACause_data();
    void failsWithACause();
    void merges();
    void mergeFails();

private:
    ConvertTaskParam *slowParam() const;
    ConcatTaskParam *mergeParam() const;
    QString media(const char *name) const { return m_media.filePath(QLatin1String(name)); }
    bool ffmpegRuns() const { return !processesWith(m_folder->out).isEmpty(); }

    QTemporaryDir m_media;
    std::unique_ptr<TestFolder> m_folder;
};

void TestChains::initTestCase()
{
    makeClip(media("clip.mp4"));
    ClipPlan longPlan;
    longPlan.seconds = 10;
    makeClip(media("long.mp4"), longPlan);
}

// Takes minutes when nothing ends it.
ConvertTaskParam *TestChains::slowParam() const
{
    ConvertTaskParam *param = m_folder->convertParam(media("long.mp4"), QStringLiteral("mkv"));
    param->encParam = preset(3840, 2160);
    param->speed = 9;
    param->durationMs = 10000;
    return param;
}

ConcatTaskParam *TestChains::mergeParam() const
{
    auto *param = new ConcatTaskParam;
    param->outputName = QStringLiteral("b");
    param->outputDir = m_folder->out;
    param->format = QStringLiteral("mp4");
    param->encParam = preset(64, 48);
    return param;
}

void TestChains::converts_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<int>("width");
    QTest::addColumn<QString>("container");
    QTest::addColumn<QString>("videoCodec");
    QTest::newRow("to a size") << "mkv" << 160 << "matroska,webm"
                               << "h264";
    QTest::newRow("as the source") << "MP4" << 0 << "mov,mp4,m4a,3gp,3g2,mj2"
                                   << "h264";
    QTest::newRow("sound only") << "mp3" << 0 << "mp3"
                                << "";
}

void TestChains::converts()
{
    QFETCH(QString, format);
    QFETCH(int, width);
    QFETCH(QString, container);
    QFETCH(QString, videoCodec);
    ConvertTaskParam *param = m_folder->convertParam(media("clip.mp4"), format);
    if (width > 0)
        param->encParam = preset(width, 90);
    param->outputDir = m_folder->out = m_folder->out + utf8("/新 文件夹");
    Convert convert(param);
    QCOMPARE(convert.run(), MediaTask::FINISHED);

    const ProbedFile file = probeMedia(m_folder->result(format));
    QCOMPARE(file.container, container);
    QCOMPARE(file.video[QLatin1String("codec_name")].toString(), videoCodec);
    if (!videoCodec.isEmpty())
        QCOMPARE(file.video[QLatin1String("width")].toInt(), width > 0 ? width : 320);
    QVERIFY(!file.audio.isEmpty());
    QVERIFY2(std::abs(file.seconds - 0.5) < 0.1, qPrintable(QString::number(file.seconds)));
    QCOMPARE(m_folder->outputs(), QStringList(QLatin1String("b.") + format));

    QCOMPARE(convert.states, (QVector<MediaTask::State>{MediaTask::START, MediaTask::RUNNING,
                                                        MediaTask::FINISHED}));
    double before = 0.0;
    for (const QList<QVariant> &step : qAsConst(convert.progress)) {
        QVERIFY(step[0].toDouble() >= before);
        before = step[0].toDouble();
    }
    QCOMPARE(before, 1.0);
}

void TestChains::startsAgainAfterErrorUnderAFreeName()
{
    const QString source = m_folder->path(QStringLiteral("later.mp4"));
    writeTestFile(source, "not a film");
    writeTestFile(m_folder->result(QStringLiteral("mp3")), "mine");
    Convert convert(m_folder->convertParam(source, QStringLiteral("mp3")));
    QCOMPARE(convert.run(), MediaTask::ERROR);
    QVERIFY(QFile::remove(source));
    QCOMPARE(convert.run(), MediaTask::ERROR);
    QVERIFY(QFile::copy(media("clip.mp4"), source));
    QCOMPARE(convert.run(), MediaTask::FINISHED);
    QCOMPARE(convert.cause(), QString());

    QCOMPARE(m_folder->outputs(),
             (QStringList{QStringLiteral("b(2).mp3"), QStringLiteral("b.mp3")}));
    QCOMPARE(QFileInfo(m_folder->result(QStringLiteral("mp3"))).size(), 4);
    QVERIFY(probeMedia(m_folder->out + QLatin1String("/b(2).mp3")).isMedia());
    QCOMPARE(convert.messages.size(), 1);
    QCOMPARE(convert.messages[0][0].toInt(), int(MediaTask::OutputMoved));
    QCOMPARE(convert.messages[0][2].toString(), m_folder->out + QLatin1String("/b(2).mp3"));
}

void TestChains::stops_data()
{
    QTest::addColumn<QString>("phase");
    for (const char *phase : {"turn", "running", "paused"})
        QTest::newRow(phase) << phase;
}

void TestChains::stops()
{
    QFETCH(QString, phase);
    Convert convert(slowParam());
    ComplexConvertTask &task = *convert.task;
    connect(&task, &MediaTask::taskStateChanged, this, [&](MediaTask::State state) {
        if (state == MediaTask::RUNNING && phase == QLatin1String("running"))
            task.stop();
    });
    task.start();
    if (phase == QLatin1String("turn"))
        task.stop();
    if (phase == QLatin1String("paused")) {
        QTRY_VERIFY_WITH_TIMEOUT(convert.progress.size() > 1, endLimitMs);
        QVERIFY(ffmpegRuns());
        task.pause();
        QTRY_COMPARE(task.state(), MediaTask::PAUSED);
        task.stop();
        QVERIFY(!ffmpegRuns());
    }
    QTRY_COMPARE_WITH_TIMEOUT(task.state(), MediaTask::STOPED, 5000);
    QTest::qWait(50);
    QCOMPARE(task.state(), MediaTask::STOPED);
    QVERIFY(!ffmpegRuns());
    QCOMPARE(m_folder->outputs(), QStringList());

    task.setParam(m_folder->convertParam(media("clip.mp4"), QStringLiteral("mp3")));
    phase.clear();
    QCOMPARE(convert.run(), MediaTask::FINISHED);
    QCOMPARE(m_folder->outputs(), QStringList(QStringLiteral("b.mp3")));
}

void TestChains::stopsInTheStep_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<QString>("step");
    QTest::newRow("rewrap of QLV") << "QLV"
                                   << "QlvTask";
    QTest::newRow("QLV to TS") << "QLV"
                               << "TsConvertTask";
    QTest::newRow("rewrap of QSV") << "QSV"
                                   << "QsvTask";
    QTest::newRow("QSV to TS") << "QSV"
                               << "TsConvertTask";
    QTest::newRow("KUX") << "KUX"
                         << "ConvertTask";
}

// The moment that the step's tool runs is too short to be met from outside.
void TestChains::stopsInTheStep()
{
    QFETCH(QString, format);
    QFETCH(QString, step);
    ConvertTaskParam *param = m_folder->convertParam(media("long.mp4"), QStringLiteral("mp4"));
    param->inputFormat = format;
    OpenConvertTask task;
    task.setParam(param);
    task.start();
    bool stopped = false;
    for (auto *child : task.chain->findChildren<MediaTask *>()) {
        if (child->name() != step)
            continue;
        connect(child, &MediaTask::taskStateChanged, this, [&](MediaTask::State state) {
            if (state != MediaTask::RUNNING || stopped)
                return;
            stopped = true;
            task.stop();
        });
    }
    QTRY_COMPARE_WITH_TIMEOUT(task.state(), MediaTask::STOPED, endLimitMs);
    QVERIFY(stopped);
    QTRY_VERIFY(processesWith(m_folder->out).isEmpty());
    QTRY_COMPARE(m_folder->outputs(), QStringList());
}

void TestChains::pausesTheTool()
{
    ConvertTaskParam *param = m_folder->convertParam(media("long.mp4"), QStringLiteral("mp4"));
    param->encParam = preset(1280, 720);
    param->durationMs = 10000;
    Convert convert(param);
    convert.task->start();
    QTRY_VERIFY_WITH_TIMEOUT(convert.lastProgress() > 0.001, endLimitMs);
    const QList<qint64> pids = processesWith(m_folder->out);
    QCOMPARE(pids.size(), 1);
    convert.task->pause();
    QTRY_COMPARE(convert.task->state(), MediaTask::PAUSED);
    QTRY_COMPARE(processState(pids[0]), 'T');
    // What ffmpeg had written before may still be on its way; after that nothing comes, although
    // it reports twice a second.
    QTest::qWait(100);
    const int reports = convert.progress.size();
    QTest::qWait(1500);
    QCOMPARE(convert.progress.size(), reports);
    QVERIFY(convert.lastProgress() < 1.0);

    convert.task->resume();
    QTRY_COMPARE(convert.task->state(), MediaTask::RESUMED);
    QVERIFY(waitForEnd(*convert.task));
    QCOMPARE(convert.task->state(), MediaTask::FINISHED);
    QVERIFY(std::abs(probeMedia(m_folder->result(QStringLiteral("mp4"))).seconds - 10.0) < 0.2);
}

void TestChains::diesWhileRunning()
{
    Convert convert(slowParam());
    convert.task->start();
    QTRY_VERIFY_WITH_TIMEOUT(convert.progress.size() > 1, endLimitMs);
    QVERIFY(ffmpegRuns());
    convert.task.reset();
    QVERIFY(!ffmpegRuns());
    QTRY_COMPARE(m_folder->outputs(), QStringList());
}

void TestChains::failsWithACause_data()
{
    QTest::addColumn<QString>("suffix");
    QTest::addColumn<QString>("format");
    QTest::newRow("unknown container") << "mp4"
                                       << "xyz";
    // What these hold can't be read by the first step.
    for (const char *suffix : {"txt", "kux", "QLV", "qsv"})
        QTest::newRow(suffix) << suffix << "mp4";
}

void TestChains::failsWithACause()
{
    QFETCH(QString, suffix);
    QFETCH(QString, format);
    const QString source = m_folder->path(utf8("源.") + suffix);
    if (suffix == QLatin1String("mp4"))
        QVERIFY(QFile::copy(media("clip.mp4"), source));
    else
        writeTestFile(source, "not a film");
    Convert convert(m_folder->convertParam(source, format));
    QCOMPARE(convert.run(), MediaTask::ERROR);
    const QString about = QDir::toNativeSeparators(source) + utf8("：");
    QVERIFY2(convert.cause().startsWith(about), qPrintable(convert.cause()));
    QVERIFY2(convert.cause().size() > about.size(), qPrintable(convert.cause()));
    QCOMPARE(m_folder->outputs(), QStringList());
    QCOMPARE(convert.messages.size(), 0);
}

void TestChains::merges()
{
    const QString odd = m_folder->path(utf8("it's 一.mp4"));
    QVERIFY(QFile::copy(media("clip.mp4"), odd));
    ConcatTaskParam *param = mergeParam();
    param->files = {mergeInput(media("clip.mp4"), 500), mergeInput(odd, 500),
                    mergeInput(media("long.mp4"), 10000)};
    param->files[2]->timeRange.reset(new TimeSpan{2000, 3000});
    Merge merge(param);
    QVERIFY2(merge.run() == MediaTask::FINISHED, qPrintable(merge.cause()));

    const ProbedFile file = probeMedia(m_folder->result(QStringLiteral("mp4")));
    QVERIFY2(std::abs(file.seconds - 2.0) < 0.25, qPrintable(QString::number(file.seconds)));
    QCOMPARE(file.video[QLatin1String("width")].toInt(), 64);
    QCOMPARE(file.video[QLatin1String("height")].toInt(), 48);
    QVERIFY(!file.audio.isEmpty());
    QCOMPARE(m_folder->outputs(), QStringList(QStringLiteral("b.mp4")));
    QCOMPARE(merge.messages.size(), 1);
    QCOMPARE(merge.messages[0][2].toString(), m_folder->result(QStringLiteral("mp4")));
    QCOMPARE(merge.lastProgress(), 1.0);
}

void TestChains::mergeFails()
{
    const QString bad = m_folder->path(utf8("坏 2.mp4"));
    ConcatTaskParam *param = mergeParam();
    param->files = {mergeInput(media("clip.mp4"), 500), mergeInput(bad, 500)};
    Merge merge(param);
    for (const bool exists : {false, true}) {
        if (exists)
            writeTestFile(bad, "not a film");
        QCOMPARE(merge.run(), MediaTask::ERROR);
        QVERIFY2(merge.cause().contains(QDir::toNativeSeparators(bad)), qPrintable(merge.cause()));
        QCOMPARE(m_folder->outputs(), QStringList());
    }
    param->files.removeLast();
    QVERIFY2(merge.run() == MediaTask::FINISHED, qPrintable(merge.cause()));
    QCOMPARE(m_folder->outputs(), QStringList(QStringLiteral("b.mp4")));
}

QTEST_GUILESS_MAIN(TestChains)
#include "tst_chains.moc"
