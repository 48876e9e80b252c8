// SPDX-License-Identifier: MIT
#include "MediaKits/MediaTasksManager/complexconverttask.h"
#include "MediaKits/MediaTasksManager/concattask.h"
#include "MediaKits/MediaTasksManager/groupmediatask.h"
#include "support/casename.h"
#include "support/mediaprobe.h"
#include "tasks/chainrun.h"

#include <QDirIterator>
#include <QStorageInfo>
#include <QtTest>

#include <sys/stat.h>

namespace {

using Convert = Watched<ComplexConvertTask>;
using Merge = Watched<ConcatTask>;

QSharedPointer<EncParam> preset(int width, int height)
{
    const QSharedPointer<EncParam> param(new EncParam);
    param->video.reset(new VEncParam{"H264"_s, width, height, 0, 25.0, 0.0});
    param->audio.reset(new AEncParam{"AAC"_s, 2, 44100, 96});
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
    void initTestCase()
    {
        makeClip(media("clip.mp4"));
        ClipPlan longPlan;
        longPlan.seconds = 10;
        makeClip(media("long.mp4"), longPlan);
    }

    void init() { m_folder = std::make_unique<TestFolder>(); }

    void converts()
    {
        ConvertTaskParam *param = m_folder->convertParam(media("clip.mp4"), "mkv"_s);
        param->encParam = preset(160, 90);
        param->outputDir = m_folder->out = m_folder->out + "/新 文件夹"_s;
        Convert convert(param);
        QCOMPARE(convert.run(), MediaTask::FINISHED);

        const ProbedFile file = probeMedia(m_folder->result("mkv"_s));
        QCOMPARE(file.size(), QSize(160, 90));
        QVERIFY2(std::abs(file.seconds - 0.5) < 0.1, qPrintable(QString::number(file.seconds)));
        QCOMPARE(m_folder->outputs(), QStringList("b.mkv"_s));

        QCOMPARE(convert.states, (QVector<MediaTask::State>{MediaTask::START, MediaTask::RUNNING,
                                                            MediaTask::FINISHED}));
        double before = 0.0;
        for (const QList<QVariant> &step : qAsConst(convert.progress)) {
            QVERIFY(step[0].toDouble() >= before);
            before = step[0].toDouble();
        }
        QCOMPARE(before, 1.0);
    }

    void startsAgainAfterErrorUnderAFreeName()
    {
        const QString source = m_folder->path("later.mp4"_s);
        writeTestFile(source, "not a film");
        writeTestFile(m_folder->result("mp3"_s), "mine");
        Convert convert(m_folder->convertParam(source, "mp3"_s));
        QCOMPARE(convert.run(), MediaTask::ERROR);
        QVERIFY(QFile::remove(source));
        QCOMPARE(convert.run(), MediaTask::ERROR);
        QVERIFY(QFile::copy(media("clip.mp4"), source));
        QCOMPARE(convert.run(), MediaTask::FINISHED);
        QCOMPARE(convert.cause(), QString());

        QCOMPARE(m_folder->outputs(), (QStringList{"b(2).mp3"_s, "b.mp3"_s}));
        QCOMPARE(QFileInfo(m_folder->result("mp3"_s)).size(), 4);
        QVERIFY(probeMedia(m_folder->out + "/b(2).mp3"_s).isMedia());
        QCOMPARE(convert.messages.size(), 1);
        QCOMPARE(convert.messages[0][0].toInt(), int(MediaTask::OutputMoved));
        QCOMPARE(convert.messages[0][2].toString(), m_folder->out + "/b(2).mp3"_s);
    }

    void stops()
    {
        const auto check = [&](const char *caseName, QString phase) {
            const CaseName inCase(caseName);
            init();
            Convert convert(slowParam());
            ComplexConvertTask &task = *convert.task;
            connect(&task, &MediaTask::taskStateChanged, this, [&](MediaTask::State state) {
                if (state == MediaTask::RUNNING && phase == "running"_s)
                    task.stop();
            });
            task.start();
            if (phase == "turn"_s)
                task.stop();
            if (phase == "paused"_s) {
                QTRY_VERIFY_WITH_TIMEOUT(convert.progress.size() > 1, endLimitMs);
                QVERIFY(ffmpegRuns());
                task.pause();
                QTRY_COMPARE(task.state(), MediaTask::PAUSED);
                task.stop();
                QVERIFY(!ffmpegRuns());
            }
            QTRY_COMPARE_WITH_TIMEOUT(task.state(), MediaTask::STOPED, 5000);
            QTest::qWait(50); // nothing may follow
            QCOMPARE(task.state(), MediaTask::STOPED);
            QVERIFY(!ffmpegRuns());
            QCOMPARE(m_folder->outputs(), QStringList());

            task.setParam(m_folder->convertParam(media("clip.mp4"), "mp3"_s));
            phase.clear();
            QCOMPARE(convert.run(), MediaTask::FINISHED);
            QCOMPARE(m_folder->outputs(), QStringList("b.mp3"_s));
        };
        for (const char *phase : {"turn", "running", "paused"})
            check(phase, QLatin1String(phase));
    }

    // The moment that the step's tool runs is too short to be met from outside.
    void stopsInTheStep()
    {
        const std::pair<const char *, const char *> rows[] = {{"QLV", "QlvTask"},
                                                              {"QLV", "TsConvertTask"},
                                                              {"QSV", "QsvTask"},
                                                              {"QSV", "TsConvertTask"},
                                                              {"KUX", "ConvertTask"}};
        for (const auto &[source, step] : rows) {
            init();
            ConvertTaskParam *param = m_folder->convertParam(media("long.mp4"), "mp4"_s);
            param->inputFormat = QLatin1String(source);
            OpenConvertTask task;
            task.setParam(param);
            task.start();
            bool stopped = false;
            for (auto *child : task.chain->findChildren<MediaTask *>()) {
                if (child->name() != QLatin1String(step))
                    continue;
                connect(child, &MediaTask::taskStateChanged, this, [&](MediaTask::State state) {
                    if (state != MediaTask::RUNNING || stopped)
                        return;
                    stopped = true;
                    task.stop();
                });
            }
            QTRY_COMPARE_WITH_TIMEOUT(task.state(), MediaTask::STOPED, endLimitMs);
            QVERIFY2(stopped, step);
            QTRY_VERIFY(processesWith(m_folder->out).isEmpty());
            QTRY_COMPARE(m_folder->outputs(), QStringList());
        }
    }

    void diesWhileRunning()
    {
        Convert convert(slowParam());
        convert.task->start();
        QTRY_VERIFY_WITH_TIMEOUT(convert.progress.size() > 1, endLimitMs);
        QVERIFY(ffmpegRuns());
        convert.task.reset();
        QVERIFY(!ffmpegRuns());
        QTRY_COMPARE(m_folder->outputs(), QStringList());
    }

    // A pipe to which nobody writes stands in for a share that no longer answers, and another file
    // system for one that can't rename.
    void copyThatHangsHoldsUpNobody()
    {
        const QString source = m_folder->path("pipe"_s);
        QCOMPARE(mkfifo(QFile::encodeName(source).constData(), 0600), 0);
        const QTemporaryDir other("/dev/shm/tst_chains-XXXXXX"_s);
        if (!other.isValid() || QStorageInfo(other.path()) == QStorageInfo(m_folder->root.path()))
            QSKIP("needs a second file system");
        const QString target = other.filePath("b.mp4"_s);
        const int threads = threadCount();
        Watched<MediaMoveTask> move(new MediaMoveTaskParam(source, target));
        move.task->start();
        QCOMPARE(move.task->state(), MediaTask::RUNNING);
        move.task.reset();
        // The share is back: nothing comes of it.
        QFile writer(source);
        QVERIFY(writer.open(QIODevice::ReadWrite | QIODevice::Unbuffered));
        QVERIFY(writer.write("late") == 4);
        QTRY_COMPARE(threadCount(), threads);
        QVERIFY(entriesOf(other.path()).isEmpty());
    }

    // Somebody moves the folder that the result goes to: it goes along.
    void followsAMovedFolder()
    {
        Convert convert(m_folder->convertParam(media("long.mp4"), "mkv"_s));
        const QString moved = m_folder->path("moved"_s);
        endWithMovedFolder(*convert.task, "*.mkv"_s, moved);
        QVERIFY2(convert.task->state() == MediaTask::FINISHED, qPrintable(convert.cause()));
        QVERIFY(!QFileInfo::exists(m_folder->out));
        QCOMPARE(entriesOf(moved), QStringList{"b.mkv"_s});
        QVERIFY(probeMedia(moved + "/b.mkv"_s).isMedia());
    }

    // The steps of a chain know the folder that was told to them.
    void movedFolderBetweenSteps()
    {
        ConcatTaskParam *param = mergeParam();
        param->files = {mergeInput(media("long.mp4"), 10000), mergeInput(media("long.mp4"), 10000)};
        Merge merge(param);
        ConvertTaskParam *gif = m_folder->convertParam(media("long.mp4"), "gif"_s);
        gif->palette = GifPalette::Own;
        Convert picture(gif);
        for (MediaTask *task : {static_cast<MediaTask *>(merge.task.get()),
                                static_cast<MediaTask *>(picture.task.get())}) {
            const QString moved = m_folder->path("moved"_s);
            endWithMovedFolder(*task, "{*"_s, moved);
            QCOMPARE(task->state(), MediaTask::ERROR);
            const QString cause = task->failure().cause;
            QVERIFY2(cause.contains("移走"_s) && cause.contains(m_folder->out), qPrintable(cause));
            QVERIFY(!QFileInfo::exists(m_folder->out));
            QCOMPARE(entriesOf(moved), QStringList());
            QVERIFY(QDir().rmdir(moved));
        }
    }

    void mergeFails()
    {
        const QString bad = m_folder->path("坏 2.mp4"_s);
        ConcatTaskParam *param = mergeParam();
        param->files = {mergeInput(media("clip.mp4"), 500), mergeInput(bad, 500)};
        Merge merge(param);
        for (const bool exists : {false, true}) {
            if (exists)
                writeTestFile(bad, "not a film");
            QCOMPARE(merge.run(), MediaTask::ERROR);
            QVERIFY2(merge.cause().contains(QDir::toNativeSeparators(bad)),
                     qPrintable(merge.cause()));
            QCOMPARE(m_folder->outputs(), QStringList());
        }
        param->files.removeLast();
        QVERIFY2(merge.run() == MediaTask::FINISHED, qPrintable(merge.cause()));
        QCOMPARE(m_folder->outputs(), QStringList("b.mp4"_s));
    }

private:
    // Moves the output folder as soon as there is something of that name in it.
    void endWithMovedFolder(MediaTask &task, const QString &name, const QString &moved) const
    {
        const auto isBeingWritten = [&] {
            const QDir::Filters all = QDir::Files | QDir::Dirs | QDir::Hidden;
            QDirIterator files(m_folder->out, {name}, all, QDirIterator::Subdirectories);
            return files.hasNext();
        };
        task.start();
        QTRY_VERIFY_WITH_TIMEOUT(isBeingWritten(), endLimitMs);
        QVERIFY(QDir().rename(m_folder->out, moved));
        QVERIFY(waitForEnd(task));
    }

    // Takes minutes when nothing ends it.
    ConvertTaskParam *slowParam() const
    {
        ConvertTaskParam *param = m_folder->convertParam(media("long.mp4"), "mkv"_s);
        param->encParam = preset(3840, 2160);
        param->speed = 9;
        param->durationMs = 10000;
        return param;
    }

    ConcatTaskParam *mergeParam() const
    {
        auto *param = new ConcatTaskParam;
        param->outputName = "b"_s;
        param->outputDir = m_folder->out;
        param->format = "mp4"_s;
        param->encParam = preset(64, 48);
        return param;
    }

    static int threadCount() { return entriesOf("/proc/self/task"_s).size(); }

    QString media(const char *name) const { return m_media.filePath(QLatin1String(name)); }
    bool ffmpegRuns() const { return !processesWith(m_folder->out).isEmpty(); }

    QTemporaryDir m_media;
    std::unique_ptr<TestFolder> m_folder;
};

QTEST_GUILESS_MAIN(TestChains)
#include "tst_chains.moc"
