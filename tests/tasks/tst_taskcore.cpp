// SPDX-License-Identifier: MIT
#include "MediaKits/MediaTasksManager/complexconverttask.h"
#include "MediaKits/MediaTasksManager/ffmpegtask.h"
#include "MediaKits/MediaTasksManager/groupmediatask.h"
#include "MediaKits/MediaTasksManager/mediatasksmanager.h"
#include "MediaKits/MediaTasksManager/tempdircreatetask.h"
#include "MediaKits/MediaTasksManager/tempdirdeletetask.h"
#include "tasks/faketask.h"

#include <QtTest>

#include <functional>
#include <memory>

namespace {

// A parameter that no task takes.
struct StrangeParam : MediaTaskParam
{
    explicit StrangeParam(bool *deleted) : MediaTaskParam(99), m_deleted(deleted) {}
    ~StrangeParam() override { *m_deleted = true; }

    bool *m_deleted;
};

// For what must not happen, however often the manager looks: it does so each millisecond.
void letTicksPass()
{
    QTest::qWait(30);
}

} // namespace

class TestTaskCore : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_journal.clear(); }

    void transitions()
    {
        // The way to a state, then what each wanted state gives there, in the order of the states:
        // UNSTARTED, START, RUNNING, STOPING, STOPED, PAUSED, RESUMED, FINISHED, ERROR, DESTORIED.
        const char *const rows[][2] = {
            {"U", "USRUDPMFEX"},    {"S", "USRSDPMFEX"},    {"SR", "USRgDPMFEX"},
            {"SRg", "USRgDPMDDX"},  {"SRgD", "USRDDPMDDX"}, {"SRP", "USRgDPMDDX"},
            {"SRPM", "USRgDPMFEX"}, {"SRF", "USRFFPMFFX"},  {"SRE", "USREEPMEEX"},
            {"X", "USRXDPMFEX"},
        };
        for (const auto &row : rows) {
            const QLatin1String way(row[0]);
            for (const QChar wanted : stateLetters) {
                FakeTask task(u't', &m_journal);
                for (const QChar letter : QString(way))
                    task.setState(stateOf(letter));
                QCOMPARE(stateLetters[task.state()], QChar(way.back()));
                QSignalSpy spy(&task, &MediaTask::taskStateChanged);
                task.setState(stateOf(wanted));
                const QChar expected = QLatin1Char(row[1][stateLetters.indexOf(wanted)]);
                QCOMPARE(stateLetters[task.state()], expected);
                QCOMPARE(statesSeen(spy), expected == way.back() ? QString() : QString(expected));
            }
        }
    }

    void failureIsKeptUntilTheNextStart()
    {
        FakeTask task(u't', &m_journal, FakeTask::Fails);
        task.start();
        QCOMPARE(task.state(), MediaTask::ERROR);
        QCOMPARE(task.failure().cause, "t failed"_s);
        task.setPlan(FakeTask::Waits);
        task.start();
        QVERIFY(task.failure().cause.isEmpty());
        // What fails while it is paused or stopping counts as stopped.
        task.setState(MediaTask::PAUSED);
        task.failAs("too late"_s);
        QCOMPARE(task.state(), MediaTask::STOPED);
        QVERIFY(task.failure().cause.isEmpty());
    }

    void parameters()
    {
        TempDirDeleteTask task("name"_s, "group"_s);
        bool deleted = false;
        StrangeParam strange(&deleted);
        task.setParam(&strange);
        task.setParam(nullptr);
        QVERIFY(!task.param());
        task.start();
        QCOMPARE(task.state(), MediaTask::ERROR);
        QCOMPARE(task.failure().cause, "未设置参数"_s);

        auto *own = new TempDirDeleteTaskParam;
        task.setParam(own);
        task.setParam(&strange);
        task.setParam(nullptr);
        QCOMPARE(task.param(), own);
        QVERIFY(!deleted);
    }

    // In any state that it tells, and from the middle of what it does.
    void mayBeDeletedByAListener()
    {
        const QTemporaryDir dir;
        const auto conversion = [&](const QString &input) {
            auto *param = new ConvertTaskParam;
            param->inputFile = input;
            param->outputDir = dir.path();
            param->outputName = param->format = "x"_s;
            return param;
        };
        const std::function<MediaTask *()> makers[] = {
            [&] { return new TempDirCreateTask(QString(), QString()); },
            [] { return new FFmpegTask(QString(), QString()); },
            [] { return new ComplexConvertTask(QString(), QString()); },
            [] { return new ComplexConvertTask(QString(), QString()); },
        };
        const std::function<MediaTaskParam *()> params[] = {
            [&] { return new TempDirCreateParam(dir.filePath("made"_s)); },
            [] { return new FFmpegTaskParam("-version"_s, 0); },
            [&] { return conversion(QCoreApplication::applicationFilePath()); },
            [&] { return conversion(dir.filePath("missing"_s)); },
        };
        for (size_t kind = 0; kind < std::size(makers); ++kind) {
            for (const MediaTask::State state :
                 {MediaTask::START, MediaTask::RUNNING, MediaTask::FINISHED, MediaTask::ERROR}) {
                QPointer<MediaTask> task = makers[kind]();
                task->setParam(params[kind]());
                connect(task, &MediaTask::taskStateChanged, this,
                        [task, state](MediaTask::State now) {
                            if (now == state)
                                delete task.data();
                        });
                task->start();
                QTRY_VERIFY(task.isNull() || MediaTask::isFinal(task->state()));
                delete task.data();
            }
        }
        // So may one that is just told to stop.
        QPointer<MediaTask> stopped = new FakeTask(u't', &m_journal);
        QPointer<GroupMediaTask> group = new GroupMediaTask({{stopped, 1.0}}, false);
        group->start();
        QTRY_COMPARE(group->state(), MediaTask::RUNNING);
        connect(group, &MediaTask::taskStateChanged, this, [group](MediaTask::State now) {
            if (now == MediaTask::STOPING)
                delete group.data();
        });
        group->stop();
        QVERIFY(group.isNull() && stopped.isNull());
    }

    void refusesTasks()
    {
        MediaTasksManager manager(1, 1);
        MediaTasksManager other(1, 1);
        FakeTask task(u'a', &m_journal);
        FakeTask disabled(u'b', &m_journal);
        disabled.setEnabled(false);

        QVERIFY(!manager.addTask(nullptr));
        QVERIFY(!manager.addTask(&disabled));
        QVERIFY(manager.addTask(&task));
        QCOMPARE(task.manager(), &manager);
        QVERIFY(!manager.addTask(&task));
        QVERIFY(!other.addTask(&task));
        QVERIFY(other.removeTask(&task));
        QCOMPARE(task.operate(), MediaTask::OperateQueued);

        QVERIFY(!manager.removeTask(&task));
        QCOMPARE(task.operate(), MediaTask::OperateDequeued);
        QVERIFY(!task.manager());
        QVERIFY(manager.removeTask(&task));
        QVERIFY(other.addTask(&task));
    }

    void keepsOrderAndLimit()
    {
        FakeTask a(u'a', &m_journal);
        FakeTask b(u'b', &m_journal);
        FakeTask c(u'c', &m_journal);
        FakeTask d(u'd', &m_journal);
        MediaTasksManager manager(1, 2);
        for (FakeTask *task : {&a, &b, &c, &d})
            QVERIFY(manager.addTask(task));
        QVERIFY(!manager.removeTask(&b));
        QVERIFY(manager.addTask(&b));
        manager.startTimer();

        QTRY_COMPARE(c.state(), MediaTask::RUNNING);
        QCOMPARE(a.operate(), MediaTask::OperateDispatched);
        QVERIFY(!manager.addTask(&a));
        // The limit holds for many further ticks.
        letTicksPass();
        QCOMPARE(m_journal, "ac"_s);

        c.setState(MediaTask::FINISHED);
        QTRY_COMPARE(d.state(), MediaTask::RUNNING);
        manager.stopTimer();
        a.stop();
        letTicksPass();
        QCOMPARE(b.state(), MediaTask::UNSTARTED);
        manager.startTimer();
        QTRY_COMPARE(m_journal, "acda!b"_s);
    }

    void pauseGivesThePlaceBack()
    {
        FakeTask a(u'a', &m_journal);
        FakeTask b(u'b', &m_journal);
        MediaTasksManager manager(1, 1);
        manager.startTimer();
        QVERIFY(manager.addTask(&a));
        QVERIFY(manager.addTask(&b));
        QTRY_COMPARE(a.state(), MediaTask::RUNNING);
        a.pause();
        QVERIFY(!a.manager());
        QTRY_COMPARE(b.state(), MediaTask::RUNNING);
        QVERIFY(manager.addTask(&a));
        letTicksPass();
        QCOMPARE(a.state(), MediaTask::PAUSED);
        b.setState(MediaTask::FINISHED);
        QTRY_COMPARE(a.state(), MediaTask::RESUMED);
        QCOMPARE(m_journal, "ab"_s);
    }

    void placesAreFreed()
    {
        // States that the first task is driven through; it ends inside its start where there are
        // none, and is destroyed for "X".
        for (const QString &end : {QString(), "E"_s, "gD"_s, "X"_s}) {
            m_journal.clear();
            MediaTasksManager manager(1, 1);
            manager.startTimer();
            auto first = std::make_unique<FakeTask>(
                u'a', &m_journal, end.isEmpty() ? FakeTask::Fails : FakeTask::Waits);
            FakeTask second(u'b', &m_journal);
            FakeTask third(u'c', &m_journal);
            for (FakeTask *task : {first.get(), &second, &third})
                QVERIFY(manager.addTask(task));
            QTRY_VERIFY(first->operate() == MediaTask::OperateDispatched);
            if (end == "X"_s) {
                first.reset();
            } else {
                for (const QChar letter : end)
                    first->setState(stateOf(letter));
                QVERIFY(!first->manager());
            }
            QTRY_COMPARE(second.state(), MediaTask::RUNNING);
            // A place is given back once only: the second task fills the limit.
            letTicksPass();
            QCOMPARE(m_journal, "ab"_s);
        }
    }

    // Its second failure is no change of state.
    void freesThePlaceOfATaskWithoutParam()
    {
        FFmpegTask told({}, {});
        told.start();
        FakeTask second(u'b', &m_journal);
        MediaTasksManager manager(1, 1);
        manager.startTimer();
        QVERIFY(manager.addTask(&told));
        QVERIFY(manager.addTask(&second));
        QTRY_COMPARE(second.state(), MediaTask::RUNNING);
        QVERIFY(!told.manager());
    }

    void forgetsDestroyedTasks()
    {
        FakeTask last(u'b', &m_journal);
        auto manager = std::make_unique<MediaTasksManager>(1, 1);
        auto queued = std::make_unique<FakeTask>(u'a', &m_journal);
        QVERIFY(manager->addTask(queued.get()));
        QVERIFY(manager->addTask(&last));
        queued.reset();
        manager->startTimer();
        QTRY_COMPARE(last.state(), MediaTask::RUNNING);
        // A manager that goes takes none of its tasks with it and leaves them free for another.
        manager.reset();
        QCOMPARE(last.state(), MediaTask::RUNNING);
        MediaTasksManager another(1, 1);
        QVERIFY(another.addTask(&last));
    }

private:
    QString m_journal;
};

QTEST_GUILESS_MAIN(TestTaskCore)
#include "tst_taskcore.moc"
