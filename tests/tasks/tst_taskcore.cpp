// SPDX-License-Identifier: MIT
#include "MediaKits/MediaTasksManager/complexconverttask.h"
#include "MediaKits/MediaTasksManager/concatfiletask.h"
#include "MediaKits/MediaTasksManager/concattask.h"
#include "MediaKits/MediaTasksManager/converttask.h"
#include "MediaKits/MediaTasksManager/fileconcattask.h"
#include "MediaKits/MediaTasksManager/groupmediatask.h"
#include "MediaKits/MediaTasksManager/kuxtask.h"
#include "MediaKits/MediaTasksManager/mactask.h"
#include "MediaKits/MediaTasksManager/mediamovetask.h"
#include "MediaKits/MediaTasksManager/mediatasksmanager.h"
#include "MediaKits/MediaTasksManager/qlvtask.h"
#include "MediaKits/MediaTasksManager/qsvtask.h"
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

template<class Task>
void takesOnly(MediaTaskParam *own)
{
    Task task(QStringLiteral("name"), QStringLiteral("group"));
    bool deleted = false;
    StrangeParam strange(&deleted);
    task.setParam(&strange);
    task.setParam(nullptr);
    QVERIFY(!task.param());
    task.start();
    QCOMPARE(task.state(), MediaTask::ERROR);
    QCOMPARE(task.failure().cause, QStringLiteral("未设置参数"));

    task.setParam(own);
    task.setParam(&strange);
    task.setParam(nullptr);
    QCOMPARE(task.param(), own);
    QVERIFY(!deleted);
}

} // namespace

class TestTaskCore : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_journal.clear(); }

    void transitions();
    void failureIsKeptUntilTheNextStart();
    void parameters();
    void mayBeDeletedByAListener();

    void refusesTasks();
    void keepsOrderAndLimit();
    void pauseGivesThePlaceBack();
    void placesAreFreed();
    void freesThePlaceOfATaskWithoutParam();
    void forgetsDestroyedTasks();

private:
    QString m_journal;
};

void TestTaskCore::transitions()
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

void TestTaskCore::failureIsKeptUntilTheNextStart()
{
    FakeTask task(u't', &m_journal, FakeTask::Fails);
    task.start();
    QCOMPARE(task.state(), MediaTask::ERROR);
    QCOMPARE(task.failure().cause, QStringLiteral("t failed"));
    task.setPlan(FakeTask::Waits);
    task.start();
    QVERIFY(task.failure().cause.isEmpty());
    // What fails while it is paused or stopping counts as stopped.
    task.setState(MediaTask::PAUSED);
    task.failAs(QStringLiteral("too late"));
    QCOMPARE(task.state(), MediaTask::STOPED);
    QVERIFY(task.failure().cause.isEmpty());
}

void TestTaskCore::parameters()
{
    const QString text = QStringLiteral("x");
    takesOnly<FFmpegTask>(new FFmpegTaskParam(text, 1));
    takesOnly<FFmpegExTask>(new FFmpegExTaskParam({}));
    takesOnly<ConvertTask>(new ConvertTaskParam);
    takesOnly<ComplexConvertTask>(new ConvertTaskParam);
    takesOnly<ConcatTask>(new ConcatTaskParam);
    takesOnly<FileConcatTask>(new FileConcatTaskParam(text, text));
    takesOnly<ConcatFileTask>(new ConcatFileTaskParam({}, text));
    takesOnly<MediaMoveTask>(new MediaMoveTaskParam(text, text));
    takesOnly<TempDirDeleteTask>(new TempDirDeleteTaskParam);
    takesOnly<KuxTask>(new KuxParam(text, text));
    takesOnly<MacTask>(new MacTaskParam(text, text));
    takesOnly<QlvTask>(new QlvTaskParam(text, text));
    takesOnly<QsvTask>(new QsvTaskParam(text, text, 1));
    takesOnly<TempDirCreateTask>(new TempDirCreateParam);
}

// In any state that it tells, and from the middle of what it does.
void TestTaskCore::mayBeDeletedByAListener()
{
    const QTemporaryDir dir;
    const auto conversion = [&](const QString &input) {
        auto *param = new ConvertTaskParam;
        param->inputFile = input;
        param->outputDir = dir.path();
        param->outputName = param->format = QStringLiteral("x");
        return param;
    };
    const std::function<MediaTask *()> makers[] = {
        [&] { return new TempDirCreateTask(QString(), QString()); },
        [] { return new FFmpegTask(QString(), QString()); },
        [] { return new ComplexConvertTask(QString(), QString()); },
        [] { return new ComplexConvertTask(QString(), QString()); },
    };
    const std::function<MediaTaskParam *()> params[] = {
        [&] { return new TempDirCreateParam(dir.filePath(QStringLiteral("made"))); },
        [] { return new FFmpegTaskParam(QStringLiteral("-version"), 0); },
        [&] { return conversion(QCoreApplication::applicationFilePath()); },
        [&] { return conversion(dir.filePath(QStringLiteral("missing"))); },
    };
    for (size_t kind = 0; kind < std::size(makers); ++kind) {
        for (const MediaTask::State state :
             {MediaTask::START, MediaTask::RUNNING, MediaTask::FINISHED, MediaTask::ERROR}) {
            QPointer<MediaTask> task = makers[kind]();
            task->setParam(params[kind]());
            connect(task, &MediaTask::taskStateChanged, this, [task, state](MediaTask::State now) {
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

void TestTaskCore::refusesTasks()
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

void TestTaskCore::keepsOrderAndLimit()
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
    QTest::qWait(30);
    QCOMPARE(m_journal, QStringLiteral("ac"));

    c.setState(MediaTask::FINISHED);
    QTRY_COMPARE(d.state(), MediaTask::RUNNING);
    manager.stopTimer();
    a.stop();
    QTest::qWait(30);
    QCOMPARE(b.state(), MediaTask::UNSTARTED);
    manager.startTimer();
    QTRY_COMPARE(m_journal, QStringLiteral("acda!b"));
}

void TestTaskCore::pauseGivesThePlaceBack()
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
    QTest::qWait(30);
    QCOMPARE(a.state(), MediaTask::PAUSED);
    b.setState(MediaTask::FINISHED);
    QTRY_COMPARE(a.state(), MediaTask::RESUMED);
    QCOMPARE(m_journal, QStringLiteral("ab"));
}

void TestTaskCore::placesAreFreed()
{
    // States that the first task is driven through; it ends inside its start where there are none,
    // and is destroyed for "X".
    for (const QString &end :
         {QString(), QStringLiteral("E"), QStringLiteral("gD"), QStringLiteral("X")}) {
        m_journal.clear();
        MediaTasksManager manager(1, 1);
        manager.startTimer();
        auto first = std::make_unique<FakeTask>(u'a', &m_journal,
                                                end.isEmpty() ? FakeTask::Fails : FakeTask::Waits);
        FakeTask second(u'b', &m_journal);
        FakeTask third(u'c', &m_journal);
        for (FakeTask *task : {first.get(), &second, &third})
            QVERIFY(manager.addTask(task));
        QTRY_VERIFY(first->operate() == MediaTask::OperateDispatched);
        if (end == QLatin1String("X")) {
            first.reset();
        } else {
            for (const QChar letter : end)
                first->setState(stateOf(letter));
            QVERIFY(!first->manager());
        }
        QTRY_COMPARE(second.state(), MediaTask::RUNNING);
        // A place is given back once only: the second task fills the limit.
        QTest::qWait(30);
        QCOMPARE(m_journal, QStringLiteral("ab"));
    }
}

// Its second failure is no change of state.
void TestTaskCore::freesThePlaceOfATaskWithoutParam()
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

void TestTaskCore::forgetsDestroyedTasks()
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

QTEST_GUILESS_MAIN(TestTaskCore)
#include "tst_taskcore.moc"
