// SPDX-License-Identifier: MIT
#include "support/casename.h"
#include "support/scriptedserver.h"
#include "support/testfile.h"
#include "support/toolrun.h"

#include <QtTest>

#include <csignal>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

const QString logMark = "####启动####"_s;

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
    void updateQuestion();
    void crash();
    void windowStaysWithinReach();
    void savesARecordingBeforeItIsEnded();

private:
    QRect shownWindow(const QProcess &process, QSize *least = nullptr) const;
    void begin(QProcess &process, const QStringList &arguments = {}) const;
    int run(const QStringList &arguments) const;
    void makeOwnProgram(const QString &mainIni);
    bool isReady() const { return log().contains(logMark) && run({}) == 0; }
    void terminate(QProcess &process) const;
    QString log() const;
    QString installTime() const;
    // Those of a kind that have something in them, wherever they are.
    QStringList userFiles(const QString &pattern) const;

    std::unique_ptr<QTemporaryDir> m_user;
    QString m_program;
    int m_scale = 1;
};

void TestStart::begin(QProcess &process, const QStringList &arguments) const
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char *name : {"RUNTIME_DIR", "DATA_HOME", "CACHE_HOME", "CONFIG_HOME"}) {
        const QString path = m_user->filePath(QLatin1String(name));
        QVERIFY(QDir().mkpath(path));
        QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        environment.insert("XDG_"_s + QLatin1String(name), path);
    }
    if (m_scale != 1)
        environment.insert("QT_SCALE_FACTOR"_s, QString::number(m_scale));
    environment.insert("HOME"_s, m_user->path());
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(m_program, arguments);
}

void TestStart::init()
{
    m_user = std::make_unique<QTemporaryDir>();
    m_program = builtProgram("morvane"_s);
    m_scale = 1;
}

void TestStart::endsWithoutWindow()
{
    QCOMPARE(run({"--preuninst"_s}), 0);
    QCOMPARE(log(), QString());
    QCOMPARE(run({"--unknown"_s}), 1);

    // Of a player that was killed with its program.
    QVERIFY(QDir().mkpath(m_user->filePath("RUNTIME_DIR"_s)));
    const QString left = m_user->filePath("RUNTIME_DIR/morplayer-{a}"_s);
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    qstrncpy(address.sun_path, QFile::encodeName(left).constData(), sizeof address.sun_path);
    const int socket = ::socket(AF_UNIX, SOCK_STREAM, 0);
    QCOMPARE(::bind(socket, reinterpret_cast<const sockaddr *>(&address), sizeof address), 0);
    ::close(socket);

    const QStringList installOnly{"-install"_s, "norun"_s};
    QCOMPARE(run(installOnly), 0);
    QVERIFY(!QFile::exists(left));
    QVERIFY(log().contains(logMark));
    const QString time = installTime();
    QVERIFY(qAbs(time.toLongLong() - QDateTime::currentMSecsSinceEpoch()) < 60000);
    QCOMPARE(run(installOnly), 0);
    QCOMPARE(installTime(), time);
}

void TestStart::secondStart()
{
    QProcess first;
    begin(first, {"--install"_s, "x"_s});
    QTRY_VERIFY(isReady());
    QCOMPARE(run({"--install"_s, "norun"_s}), 0);
    QCOMPARE(log().count(logMark), 1);
    // What only a login needs is not loaded.
    const QByteArray loaded = contentOf("/proc/%1/maps"_s.arg(first.processId()));
    QVERIFY(loaded.contains("libQt5Widgets"));
    for (const char *library : {"WebEngine", "libwebview", "libQt5Quick", "libQt5Qml"})
        QVERIFY2(!loaded.contains(library), library);

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
    // Frozen, it takes no message: whether a second one is wanted is asked first.
    ::kill(pid_t(first.processId()), SIGSTOP);
    QProcess second;
    begin(second);
    QVERIFY(!shownWindow(second).isNull());
    QCOMPARE(log().count(logMark), 1);
    for (QProcess *process : {&first, &second}) {
        process->kill();
        QVERIFY(process->waitForFinished());
    }

    QProcess third;
    begin(third);
    QTRY_COMPARE(log().count(logMark), 2);
    QTRY_VERIFY(isReady());
    terminate(third);
}

void TestStart::updateQuestion()
{
    const auto check = [&](const char *caseName, int asked) {
        const CaseName inCase(caseName);
        init();
        makeOwnProgram("[Service]\nupdate=http://127.0.0.1:1\n"_s);
        QProcess process;
        begin(process, {"--update"_s, QString::fromUtf8(caseName)});
        QTRY_VERIFY(isReady());
        QCOMPARE(log().count("升级"_s), asked);
        terminate(process);
    };
    check("Skip", 1);
    check("skip", 0);
    check("no", 0);
    check("non", 0);
}

void TestStart::crash()
{
    const ScriptedServer collector(R"({"code":"200"})");
    const ScriptedServer events(R"({"message":"success","ssid":"s"})");
    makeOwnProgram("[Service]\ncollector=%1\nevents=%2\n"_s.arg(
        QString::fromStdString(collector.host()), QString::fromStdString(events.host())));
    QProcess process;
    begin(process);
    QTRY_VERIFY(isReady());
    ::kill(pid_t(process.processId()), SIGSEGV);
    QVERIFY(process.waitForFinished(15000));
    QCOMPARE(process.exitStatus(), QProcess::CrashExit);
    QCOMPARE(process.exitCode(), SIGSEGV);
    QVERIFY(log().contains("软件崩溃"_s));
    QVERIFY(collector.requests().back().body.find("benkui_page_custom_penkui") !=
            std::string::npos);
    QVERIFY(events.requests().back().body.find("主程序") != std::string::npos);
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
        QSettings ini(m_user->filePath("DATA_HOME/MorvaneLocal/Data/app.ini"_s),
                      QSettings::IniFormat);
        ini.setValue("Window/Place"_s, noted);
        ini.sync();
        QProcess process;
        begin(process);
        const QRect place = shownWindow(process);
        QVERIFY(screen.contains(place));
        QCOMPARE(place == noted, noted == wanted);
        terminate(process);
        ini.sync();
        QCOMPARE(ini.value("Window/Place"_s).toRect(), place);
    }
}

// As a desktop does that is left.
void TestStart::savesARecordingBeforeItIsEnded()
{
    QProcess process;
    begin(process);
    QTRY_VERIFY(isReady());
    runTool("xdotool"_s, {"key"_s, "ctrl+alt+r"_s});
    // No sound is played here, which is told first.
    const QStringList warning = "search --onlyvisible --name 警告"_s.split(u' ');
    QTRY_COMPARE(runTool("xdotool"_s, warning).exitCode, 0);
    runTool("xdotool"_s, warning + QStringList{"key"_s, "Return"_s});
    const QString piece = "0*.mkv"_s;
    QTRY_COMPARE_WITH_TIMEOUT(userFiles(piece).size(), 1, 20000);
    terminate(process);
    QCOMPARE(userFiles("rec_*.mp4"_s).size(), 1);
    QCOMPARE(userFiles(piece).size(), 0);
}

// The main window of a start, once it is on the screen, in the screen's pixels.
QRect TestStart::shownWindow(const QProcess &process, QSize *least) const
{
    const auto ask = [](const QString &tool, const QStringList &words, const char *pattern) {
        const QString answer = QString::fromUtf8(runTool(tool, words).out);
        return QRegularExpression(QLatin1String(pattern)).match(answer);
    };
    const QString xdotool = "xdotool"_s;
    QRegularExpressionMatch id;
    const bool isThere = QTest::qWaitFor(
        [&] {
            id = ask(xdotool,
                     {"search"_s, "--all"_s, "--onlyvisible"_s, "--pid"_s,
                      QString::number(process.processId()), "--name"_s, "墨泉影音工坊"_s},
                     "\\d+");
            return id.hasMatch();
        },
        15000);
    if (!isThere)
        return {};
    if (least != nullptr) {
        const auto size = ask("xprop"_s, {"-id"_s, id.captured(), "WM_NORMAL_HINTS"_s},
                              "minimum size: (\\d+) by (\\d+)");
        *least = QSize(size.captured(1).toInt(), size.captured(2).toInt());
    }
    const auto place = ask(xdotool, {"getwindowgeometry"_s, "--shell"_s, id.captured()},
                           "X=(-?\\d+)\\nY=(-?\\d+)\\nWIDTH=(\\d+)\\nHEIGHT=(\\d+)");
    return {place.captured(1).toInt(), place.captured(2).toInt(), place.captured(3).toInt(),
            place.captured(4).toInt()};
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
    const QString folder = m_user->filePath("program/"_s);
    writeTestFile(folder + "main.ini"_s, mainIni.toUtf8());
    for (const char *name : {"morvane", "log.conf"})
        QVERIFY(QFile::copy(builtProgram(QLatin1String(name)), folder + QLatin1String(name)));
    m_program = folder + "morvane"_s;
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
    return QString::fromUtf8(
        contentOf(m_user->filePath("CACHE_HOME/MorvaneLocal/Log/morvane.log"_s)));
}

QString TestStart::installTime() const
{
    const QSettings ini(m_user->filePath("DATA_HOME/MorvaneLocal/Data/app.ini"_s),
                        QSettings::IniFormat);
    return ini.value("Init/InstallTime"_s).toString();
}

QStringList TestStart::userFiles(const QString &pattern) const
{
    QStringList files;
    QDirIterator found(m_user->path(), {pattern}, QDir::Files | QDir::Hidden,
                       QDirIterator::Subdirectories);
    while (found.hasNext()) {
        const QString path = found.next();
        if (QFileInfo(path).size() > 0)
            files += path;
    }
    return files;
}

QTEST_MAIN(TestStart)
#include "tst_start.moc"
