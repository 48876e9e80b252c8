// SPDX-License-Identifier: MIT
#include "MediaKits/MediaTasksManager/groupmediatask.h"
#include "tasks/faketask.h"

#include <QtTest>

#include <memory>

namespace {

struct Chain
{
    // @param plans a letter for each of the tasks "a", "b" …: 'F' finishes, 'E' fails, 'W' waits
    Chain(const char *plans, bool cleanupLast, const QVector<double> &weights = {})
    {
        QVector<TaskItem> items;
        for (const QChar plan : QString(QLatin1String(plans))) {
            tasks += new FakeTask(QChar(ushort(u'a' + items.size())), &journal,
                                  plan == u'W'   ? FakeTask::Waits
                                  : plan == u'E' ? FakeTask::Fails
                                                 : FakeTask::Finishes);
            items.append({tasks.last(), weights.value(items.size(), 1.0)});
        }
        group = std::make_unique<GroupMediaTask>(items, cleanupLast);
        states = std::make_unique<QSignalSpy>(group.get(), &MediaTask::taskStateChanged);
    }

    QString journal;
    QVector<FakeTask *> tasks;
    std::unique_ptr<GroupMediaTask> group;
    std::unique_ptr<QSignalSpy> states;
};

} // namespace

class TestGroupTask : public QObject
{
    Q_OBJECT

private slots:
    void runsItsSteps()
    {
        const struct
        {
            const char *plans;
            bool cleanupLast;
            const char *steps;
            const char *states;
            const char *cause;
        } rows[] = {
            {"FFF", true, "abc", "SRF", ""},          {"EFF", true, "ac", "SRE", "a failed"},
            {"FEFF", true, "abd", "SRE", "b failed"}, {"FEF", false, "ab", "SRE", "b failed"},
            {"FE", true, "abb", "SRE", "b failed"},   {"FEE", true, "abc", "SRE", "b failed"},
        };
        for (const auto &row : rows) {
            Chain chain(row.plans, row.cleanupLast);
            chain.group->start();
            QTRY_VERIFY(MediaTask::isFinal(chain.group->state()));
            QCoreApplication::processEvents();
            QCOMPARE(chain.journal, QString(QLatin1String(row.steps)));
            QCOMPARE(statesSeen(*chain.states), QString(QLatin1String(row.states)));
            QCOMPARE(chain.group->failure().cause, QString(QLatin1String(row.cause)));
        }
    }

    void weighsProgress()
    {
        Chain chain("WWW", false, {1.0, 3.0, 1.0});
        QSignalSpy progress(chain.group.get(), &MediaTask::taskProgress);
        const auto last = [&] { return progress.isEmpty() ? -1.0 : progress.last()[0].toDouble(); };
        chain.group->start();
        emit chain.tasks[0]->taskProgress(0.5);
        QTRY_COMPARE(last(), 0.1);
        emit chain.tasks[1]->taskProgress(0.5);
        QTRY_COMPARE(last(), 0.5);
        emit chain.tasks[2]->taskProgress(0.0);
        QTRY_COMPARE(last(), 0.8);
        for (FakeTask *task : qAsConst(chain.tasks)) {
            QTRY_COMPARE(task->state(), MediaTask::RUNNING);
            task->setState(MediaTask::FINISHED);
        }
        QTRY_COMPARE(chain.group->state(), MediaTask::FINISHED);
        QCOMPARE(last(), 1.0);
    }

    void progressNeverFalls()
    {
        Chain chain("WW", false);
        QSignalSpy progress(chain.group.get(), &MediaTask::taskProgress);
        chain.group->start();
        QTRY_COMPARE(chain.group->state(), MediaTask::RUNNING);
        for (const double told : {-0.5, 0.6, 0.4, 1.5, 0.9})
            emit chain.tasks[0]->taskProgress(told);
        emit chain.tasks[1]->taskProgress(0.2);
        QTRY_VERIFY(!progress.isEmpty() && progress.last()[0].toDouble() >= 0.6);
        double before = 0.0;
        for (const QList<QVariant> &step : qAsConst(progress)) {
            QVERIFY(step[0].toDouble() >= before);
            before = step[0].toDouble();
        }
        QCOMPARE(before, 0.6);
    }

    void stopsInEveryPhase()
    {
        // The task and the state that it has just told when the stop is called, or nothing for the
        // turn of the start; the steps; the chain's end.
        const char *const rows[][3] = {
            {"", "ad", "D"},      {"aS", "ad", "D"},    {"aF", "abb!d", "D"},
            {"bR", "abb!d", "D"}, {"bP", "abb!d", "D"}, {"bF", "abcd", "D"},
            {"bE", "abd", "E"},   {"dS", "abcd", "D"},  {"dF", "abcd", "F"},
        };
        for (const auto &row : rows) {
            const QString phase = QLatin1String(row[0]);
            Chain chain("FWFF", true);
            GroupMediaTask *group = chain.group.get();
            FakeTask *work = chain.tasks[1];
            for (FakeTask *task : qAsConst(chain.tasks)) {
                const auto stopInPhase = [=](MediaTask::State state) {
                    if (phase == task->name() + stateLetters[state])
                        group->stop();
                };
                connect(task, &MediaTask::taskStateChanged, group, stopInPhase,
                        Qt::QueuedConnection);
            }
            group->start();
            if (phase.isEmpty())
                group->stop();
            // Without a stop while it works, the work step is driven to the row's own state.
            const QChar drive = phase.startsWith(u'b') ? phase.back() : QChar(u'F');
            connect(work, &MediaTask::taskStateChanged, work,
                    [work, drive](MediaTask::State state) {
                        if (state == MediaTask::RUNNING && drive != u'R')
                            work->setState(stateOf(drive));
                    });
            QTRY_VERIFY(MediaTask::isFinal(group->state()));
            QTest::qWait(10); // no step may follow
            QCOMPARE(chain.journal, QString(QLatin1String(row[1])));
            QCOMPARE(group->state(), stateOf(QLatin1Char(*row[2])));
        }
    }

    // What a task tells of itself comes later than a stop of its group.
    void aStopIsNotUndone()
    {
        for (const bool isPausing : {true, false}) {
            Chain chain("WF", true);
            chain.group->start();
            QTRY_COMPARE(chain.group->state(), MediaTask::RUNNING);
            chain.group->pause();
            if (!isPausing) {
                QTRY_COMPARE(chain.group->state(), MediaTask::PAUSED);
                chain.group->resume();
            }
            chain.group->stop();
            QTRY_VERIFY(MediaTask::isFinal(chain.group->state()));
            QCOMPARE(statesSeen(*chain.states), isPausing ? "SRgD"_s : "SRPgD"_s);
        }
    }
};

QTEST_GUILESS_MAIN(TestGroupTask)
#include "tst_grouptask.moc"
