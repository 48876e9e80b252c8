// SPDX-License-Identifier: MIT
#include "support/mediaprobe.h"
#include "support/testmedia.h"

#include <QDateTime>
#include <QDir>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QtTest>

#include <csignal>

namespace {

// A recording of the command line, in a world of its own.
class Recording
{
public:
    explicit Recording(const QString &dir, const QStringList &more = {})
    {
        m_program.start(builtProgram("morvane-cli"_s),
                        QStringList{"record"_s, "--area"_s, "10,10,320,240"_s, "--sound"_s,
                                    "none"_s, "--out"_s, dir} +
                            more);
        m_clock.start();
    }
    ~Recording()
    {
        m_program.kill();
        m_program.waitForFinished();
    }

    qint64 elapsedMs() const { return m_clock.elapsed(); }
    void send(int signal) { ::kill(pid_t(m_program.processId()), signal); }

    bool waitForEnd()
    {
        return m_program.state() == QProcess::NotRunning || m_program.waitForFinished();
    }
    int exitCode() const { return m_program.exitCode(); }
    QString printed() { return QString::fromUtf8(m_program.readAllStandardOutput()).trimmed(); }
    QString said() { return QString::fromUtf8(m_program.readAllStandardError()); }

private:
    QProcess m_program;
    QElapsedTimer m_clock;
};

QStringList filmsIn(const QString &dir)
{
    return QDir(dir).entryList(QDir::Files, QDir::Time);
}

} // namespace

class TestRecordCommand : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void recordsSeconds();
    void endsWhenInterrupted();
    void leavesARepairAlone();
    void keepsNamesApart();
    void refuses_data();
    void refuses();
    void survivesKills();
};

// A shell has what it runs beside itself ignore an interruption.
void TestRecordCommand::initTestCase()
{
    ::signal(SIGINT, SIG_DFL);
}

void TestRecordCommand::recordsSeconds()
{
    const QTemporaryDir dir;
    Recording recording(dir.path(), {"--seconds"_s, "2"_s});
    QVERIFY(recording.waitForEnd());
    QCOMPARE(recording.exitCode(), 0);
    const ProbedFile film = probeMedia(recording.printed());
    QVERIFY2(film.seconds > 1.7 && film.seconds < 2.6, qPrintable(QString::number(film.seconds)));
    QCOMPARE(film.size(), QSize(320, 240));
}

void TestRecordCommand::endsWhenInterrupted()
{
    const QTemporaryDir dir;
    Recording recording(dir.path(), {"--json"_s});
    QTest::qWait(2500);
    recording.send(SIGINT);
    QVERIFY(recording.waitForEnd());
    QCOMPARE(recording.exitCode(), 0);
    QCOMPARE(filmsIn(dir.path()).size(), 1);
    QVERIFY(recording.printed().contains(filmsIn(dir.path()).first()));
    QVERIFY(probeMedia(dir.filePath(filmsIn(dir.path()).first())).seconds > 0.5);
}

// One that takes long has been left.
void TestRecordCommand::leavesARepairAlone()
{
    const QTemporaryDir dir;
    {
        Recording killed(dir.path());
        QTest::qWait(2500);
        killed.send(SIGKILL);
        QVERIFY(killed.waitForEnd());
    }
    QDirIterator pieces(dir.path(), {"0001.mkv"_s}, QDir::Files | QDir::Hidden,
                        QDirIterator::Subdirectories);
    const QString first = pieces.next();
    for (int i = 2; i < 2000; ++i)
        QFile::link(first, QFileInfo(first).path() + "/%1.mkv"_s.arg(i, 4, 10, QChar(u'0')));
    Recording recording(dir.path(), {"--seconds"_s, "1"_s});
    QString printed;
    QTRY_VERIFY_WITH_TIMEOUT(!(printed += recording.printed()).isEmpty(), 20000);
    recording.send(SIGINT);
    QVERIFY(recording.waitForEnd());
    QCOMPARE(recording.exitCode(), 0);
    QCOMPARE(filmsIn(dir.path()), QStringList{QFileInfo(printed).fileName()});
    QVERIFY(QFileInfo::exists(first)); // for the next start
}

void TestRecordCommand::keepsNamesApart()
{
    const QTemporaryDir dir;
    const QStringList second{"--seconds"_s, "1"_s};
    const QString wanted = dir.filePath(
        QDateTime::currentDateTime().addSecs(1).toString("'rec_'yyyy-MM-dd hhmmss'.mp4'"_s));
    QTRY_VERIFY(QDateTime::currentDateTime().toString("'rec_'yyyy-MM-dd hhmmss'.mp4'"_s) ==
                QFileInfo(wanted).fileName());
    Recording one(dir.path(), second);
    Recording other(dir.path(), second);
    QVERIFY(one.waitForEnd() && other.waitForEnd());
    const QStringList films = filmsIn(dir.path());
    QCOMPARE(films.size(), 2);
    for (const QString &film : films)
        QVERIFY(probeMedia(dir.filePath(film)).seconds > 0.5);
}

void TestRecordCommand::refuses_data()
{
    QTest::addColumn<QStringList>("words");
    QTest::addColumn<int>("exitCode");
    QTest::newRow("area beyond the screen") << QStringList{"--area"_s, "1800,0,200,100"_s} << 1;
    QTest::newRow("no such window") << QStringList{"--window"_s, "0x7f000001"_s} << 1;
    QTest::newRow("both") << QStringList{"--area"_s, "0,0,9,9"_s, "--window"_s, "1"_s} << 2;
    QTest::newRow("sound") << QStringList{"--sound"_s, "loud"_s} << 2;
    QTest::newRow("time") << QStringList{"--seconds"_s, "0"_s} << 2;
}

void TestRecordCommand::refuses()
{
    QFETCH(const QStringList, words);
    QFETCH(const int, exitCode);
    const QTemporaryDir dir;
    const ToolRun run = runTool(builtProgram("morvane-cli"_s),
                                QStringList{"record"_s, "--out"_s, dir.path()} + words);
    QCOMPARE(run.exitCode, exitCode);
    QVERIFY(!run.err.isEmpty());
    QVERIFY(entriesOf(dir.path()).isEmpty());
}

// Of the program, whose recording the next one finds, and of ffmpeg under it, in turn.
void TestRecordCommand::survivesKills()
{
    bool isNumber = false;
    const int given = qEnvironmentVariableIntValue("MORVANE_KILLS", &isNumber);
    const int kills = isNumber ? given : 4;
    for (int i = 0; i < kills; ++i) {
        const QTemporaryDir dir;
        qint64 recordedMs = 0;
        {
            Recording recording(dir.path());
            QTest::qWait(2500 + QRandomGenerator::global()->bounded(3500));
            const QList<qint64> tools = processesWith(dir.path() + "/~~MRVN_Temp~~"_s);
            QCOMPARE(tools.size(), 1);
            recordedMs = recording.elapsedMs() - 500;
            if (i % 2 == 0) {
                recording.send(SIGKILL);
                QVERIFY(recording.waitForEnd());
                QTRY_VERIFY(processState(tools.first()) == char(0));
                QCOMPARE(filmsIn(dir.path()).size(), 0);
                Recording next(dir.path(), {"--seconds"_s, "1"_s});
                QVERIFY(next.waitForEnd());
                QVERIFY(next.said().contains(dir.path()));
                QFile::remove(next.printed());
            } else {
                ::kill(pid_t(tools.first()), SIGKILL);
                QVERIFY(recording.waitForEnd());
                QVERIFY(!recording.said().isEmpty());
            }
        }
        QCOMPARE(filmsIn(dir.path()).size(), 1);
        const QString film = dir.filePath(filmsIn(dir.path()).first());
        QVERIFY(!decodedMedia(film, "-vf scale=2:2 -f rawvideo"_s).isEmpty());
        const double lost = double(recordedMs) / 1000.0 - probeMedia(film).seconds;
        qInfo("%d: killed after %.1f s, %.2f s of it lost", i, double(recordedMs) / 1000.0, lost);
        QVERIFY(lost < 2.0);
    }
}

QTEST_GUILESS_MAIN(TestRecordCommand)
#include "tst_recordcommand.moc"
