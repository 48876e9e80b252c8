// SPDX-License-Identifier: MIT
#include "support/scriptedserver.h"
#include "support/testfile.h"
#include "support/toolrun.h"

#include <QProcess>
#include <QRegularExpression>
#include <QSettings>
#include <QTemporaryDir>
#include <QtTest>

#include <csignal>

namespace {

const QString logMark = QStringLiteral("####启动####");

} // namespace

/// Starts the real program, for a user of the test's own.
class TestStart : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void endsWithoutWindow();
    void secondStart();
    void afterKill();
    void updateQuestion_data();
    void updateQuestion();
    void crash();
    void windowStaysWithinReach();

private:
    QRect shownWindow(const QProcess &process, QSize *least = nullptr) const;
    void begin(QProcess &process, const QStringList &arguments = {}) const;
    int run(const QStringList &arguments) const;
    void makeOwnProgram(const QString &mainIni);
    bool isReady() const;
    void terminate(QProcess &process) const;
    QString log() const;
    QString installTime() const;

    std::unique_ptr<QTemporaryDir> m_user;
    QString m_program;
    int m_scale = 1;
};

void TestStart::init()
{
    m_user = std::make_unique<QTemporaryDir>();
    m_program = builtProgram(QStringLiteral("morvane"));
    m_scale = 1;
}

void TestStart::begin(QProcess &process, const QStringList &arguments) const
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char *name : {"RUNTIME_DIR", "DATA_HOME", "CACHE_HOME", "CONFIG_HOME"}) {
        const QString path = m_user->filePath(QLatin1String(name));
        QVERIFY(QDir().mkpath(path));
        QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        environment.insert(QLatin1String("XDG_") + QLatin1String(name), path);
    }
    if (m_scale != 1)
        environment.insert(QStringLiteral("QT_SCALE_FACTOR"), QString::number(m_scale));
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(m_program, arguments);
}

// The exit code; -1 for a program that doesn't end by itself.
int TestStart::run(const QStringList &arguments) const
{
    QProcess process;
    begin(process, arguments);
    if (process.waitForFinished(4000))
        return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -2;
    process.kill();
    process.waitForFinished();
    return -1;
}

// A copy that reads a main.ini of its own.
void TestStart::makeOwnProgram(const QString &mainIni)
{
    const QString folder = m_user->filePath(QStringLiteral("program/"));
    writeTestFile(folder + QStringLiteral("main.ini"), mainIni.toUtf8());
    for (const char *name : {"morvane", "log.conf"})
        QVERIFY(QFile::copy(builtProgram(QLatin1String(name)), folder + QLatin1String(name)));
    m_program = folder + QStringLiteral("morvane");
}

bool TestStart::isReady() const
{
    return log().contains(logMark) && run({}) == 0;
}

void TestStart::terminate(QProcess &process) const
{
    process.terminate();
    QVERIFY(process.waitForFinished(10000));
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(process.exitCode(), 0);
}

QString TestStart::log() const
{
    QFile file(m_user->filePath(QStringLiteral("CACHE_HOME/MorvaneLocal/Log/morvane.log")));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QString TestStart::installTime() const
{
    const QSettings ini(m_user->filePath(QStringLiteral("DATA_HOME/MorvaneLocal/Data/app.ini")),
                        QSettings::IniFormat);
    return ini.value(QStringLiteral("Init/InstallTime")).toString();
}

void TestStart::endsWithoutWindow()
{
    QCOMPARE(run({QStringLiteral("--preuninst")}), 0);
    QCOMPARE(log(), QString());
    QCOMPARE(run({QStringLiteral("--unknown")}), 1);

    const QStringList installOnly{QStringLiteral("-install"), QStringLiteral("norun")};
    QCOMPARE(run(installOnly), 0);
    QVERIFY(log().contains(logMark));
    const QString time = installTime();
    QVERIFY(qAbs(time.toLongLong() - QDateTime::currentMSecsSinceEpoch()) < 60000);
    QCOMPARE(run(installOnly), 0);
    QCOMPARE(installTime(), time);
}

void TestStart::secondStart()
{
    QProcess first;
    begin(first, {QStringLiteral("--install"), QStringLiteral("x")});
    QTRY_VERIFY(isReady());
    QCOMPARE(run({QStringLiteral("--install"), QStringLiteral("norun")}), 0);
    QCOMPARE(log().count(logMark), 1);

    // Another session of the user.
    const std::unique_ptr<QTemporaryDir> user = std::move(m_user);
    m_user = std::make_unique<QTemporaryDir>();
    QCOMPARE(run({}), -1);
    terminate(first);
}

void TestStart::afterKill()
{
    QProcess first;
    begin(first);
    QTRY_VERIFY(isReady());
    // Frozen, it takes no message: a second window is better than none.
    ::kill(pid_t(first.processId()), SIGSTOP);
    QProcess second;
    begin(second);
    QTRY_COMPARE_WITH_TIMEOUT(log().count(logMark), 2, 10000);
    for (QProcess *process : {&first, &second}) {
        process->kill();
        QVERIFY(process->waitForFinished());
    }

    QProcess third;
    begin(third);
    QTRY_COMPARE(log().count(logMark), 3);
    QTRY_VERIFY(isReady());
    terminate(third);
}

void TestStart::updateQuestion_data()
{
    QTest::addColumn<int>("asked");
    QTest::newRow("Skip") << 1;
    QTest::newRow("skip") << 0;
    QTest::newRow("no") << 0;
    QTest::newRow("non") << 0;
}

void TestStart::updateQuestion()
{
    makeOwnProgram(QStringLiteral("[Service]\nupdate=http://127.0.0.1:1\n"));
    QProcess process;
    begin(process, {QStringLiteral("--update"), QString::fromLatin1(QTest::currentDataTag())});
    QTRY_VERIFY(isReady());
    QTEST(log().count(QStringLiteral("升级")), "asked");
    terminate(process);
}

void TestStart::crash()
{
    const ScriptedServer collector(R"({"code":"200"})");
    const ScriptedServer events(R"({"message":"success","ssid":"s"})");
    makeOwnProgram(
        QStringLiteral("[Service]\ncollector=%1\nevents=%2\n")
            .arg(QString::fromStdString(collector.host()), QString::fromStdString(events.host())));
    QProcess process;
    begin(process);
    QTRY_VERIFY(isReady());
    ::kill(pid_t(process.processId()), SIGSEGV);
    QVERIFY(process.waitForFinished(15000));
    QCOMPARE(process.exitStatus(), QProcess::CrashExit);
    QCOMPARE(process.exitCode(), SIGSEGV);
    QVERIFY(log().contains(QStringLiteral("软件崩溃")));
    QVERIFY(collector.requests().back().body.find("benkui_page_custom_penkui") !=
            std::string::npos);
    QVERIFY(events.requests().back().body.find("主程序") != std::string::npos);
}

// The main window of a start, once it is on the screen, in the screen's pixels.
QRect TestStart::shownWindow(const QProcess &process, QSize *least) const
{
    const auto ask = [](const QString &tool, const QStringList &words, const char *pattern) {
        const QString answer = QString::fromUtf8(runTool(tool, words).out);
        return QRegularExpression(QLatin1String(pattern)).match(answer);
    };
    const QString xdotool = QStringLiteral("xdotool");
    QRegularExpressionMatch id;
    const bool isThere = QTest::qWaitFor(
        [&] {
            id = ask(xdotool,
                     {QStringLiteral("search"), QStringLiteral("--all"),
                      QStringLiteral("--onlyvisible"), QStringLiteral("--pid"),
                      QString::number(process.processId()), QStringLiteral("--name"),
                      QStringLiteral("墨泉影音工坊")},
                     "\\d+");
            return id.hasMatch();
        },
        15000);
    if (!isThere)
        return {};
    if (least != nullptr) {
        const auto size =
            ask(QStringLiteral("xprop"),
                {QStringLiteral("-id"), id.captured(), QStringLiteral("WM_NORMAL_HINTS")},
                "minimum size: (\\d+) by (\\d+)");
        *least = QSize(size.captured(1).toInt(), size.captured(2).toInt());
    }
    const auto place = ask(
        xdotool, {QStringLiteral("getwindowgeometry"), QStringLiteral("--shell"), id.captured()},
        "X=(-?\\d+)\\nY=(-?\\d+)\\nWIDTH=(\\d+)\\nHEIGHT=(\\d+)");
    return {place.captured(1).toInt(), place.captured(2).toInt(), place.captured(3).toInt(),
            place.captured(4).toInt()};
}

// On a display whose lines are few for what is shown enlarged; on one that has shrunk since.
void TestStart::windowStaysWithinReach()
{
    const QRect screen(0, 0, 1920, 1080);
    m_scale = 2;
    QSize least;
    {
        QProcess process;
        begin(process);
        const QRect place = shownWindow(process, &least);
        QVERIFY(!place.isEmpty() && screen.contains(place));
        QVERIFY(least.isValid() && least.width() <= 1920 && least.height() <= 1080);
        terminate(process);
    }
    m_scale = 1;
    const QRect wanted(110, 90, 1300, 800);
    for (const QRect &noted : {wanted, QRect(5000, -900, 4000, 3000)}) {
        QSettings ini(m_user->filePath(QStringLiteral("DATA_HOME/MorvaneLocal/Data/app.ini")),
                      QSettings::IniFormat);
        ini.setValue(QStringLiteral("Window/Place"), noted);
        ini.sync();
        QProcess process;
        begin(process);
        const QRect place = shownWindow(process);
        QVERIFY(screen.contains(place));
        QCOMPARE(place == noted, noted == wanted);
        terminate(process);
        ini.sync();
        QCOMPARE(ini.value(QStringLiteral("Window/Place")).toRect(), place);
    }
}

QTEST_MAIN(TestStart)
#include "tst_start.moc"
