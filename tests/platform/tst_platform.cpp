// SPDX-License-Identifier: MIT
#include "platform/childprocess.h"
#include "platform/directorylock.h"
#include "platform/executable.h"
#include "platform/filemanager.h"
#include "platform/fontfile.h"
#include "platform/openfolder.h"
#include "platform/processcontrol.h"
#include "platform/runtimeroot.h"
#include "platform/temporaryroot.h"
#include "platform/utf8locale.h"
#include "support/testfile.h"
#include "support/testmedia.h"
#include "support/toolrun.h"

#include <QtTest>

#include <algorithm>
#include <cstdio>

#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace {
// The arguments that a fake tool in `dir` was run with.
QStringList toolLog(const QTemporaryDir &dir, const QString &name)
{
    const QByteArray log = contentOf(dir.filePath(name) + ".log"_s);
    return log.isNull() ? QStringList() : QString::fromUtf8(log).split(u'\n');
}
} // namespace

// Nobody listens to it yet.
static int boundSocket(const QString &path)
{
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    const QByteArray name = QFile::encodeName(path);
    std::copy(name.begin(), name.end(), address.sun_path);
    const int socket = ::socket(AF_UNIX, SOCK_STREAM, 0);
    ::bind(socket, reinterpret_cast<const sockaddr *>(&address), sizeof address);
    return socket;
}

class TstPlatform : public QObject
{
    Q_OBJECT

private slots:
    void deathOfAProcess()
    {
        const QTemporaryDir dir;
        QProcess helper;
        helper.setProcessEnvironment(environmentWith({"LC_ALL=C"_s}));
        helper.start(executablePath(), {"helper"_s, dir.path()});
        const QList<QByteArray> facts = nextLine(&helper).split(' ');
        QCOMPARE(facts.mid(1), (QList<QByteArray>{"e5a2a8", "C.UTF-8"}));
        const qint64 child = facts[0].toLongLong();
        const auto isGone = [child] {
            return processState(child) == 0 || processState(child) == 'Z';
        };
        QVERIFY(!isGone());
        QVERIFY(!DirectoryLock::tryShared(dir.path()).isHeld());
        helper.kill();
        QVERIFY(helper.waitForFinished());
        QTRY_VERIFY(isGone());
        QVERIFY(DirectoryLock::tryExclusive(dir.path()).isHeld());
    }

    // Also when these aren't tied to it, as they are in their first moment.
    void childEndsWithItsChildren()
    {
        ChildProcess child;
        child.start("sh"_s, {"-c"_s, "sleep 1000 & echo $!; wait"_s});
        const qint64 grandchild = nextLine(&child).toLongLong();
        QVERIFY(processState(grandchild) != 0);
        QVERIFY(child.endNow());
        QTRY_VERIFY(processState(grandchild) == 0 || processState(grandchild) == 'Z');
    }

    void suspendsAndResumes()
    {
        ChildProcess child;
        const int own = ::getpriority(PRIO_PROCESS, 0);
        const int niceness = std::min(own + 3, 19);
        child.setNiceness(niceness);
        child.start("sleep"_s, {"1000"_s});
        QVERIFY(child.waitForStarted());
        const qint64 pid = child.processId();
        QCOMPARE(::getpriority(PRIO_PROCESS, id_t(pid)), niceness);
        QCOMPARE(::getpriority(PRIO_PROCESS, 0), own);
        QVERIFY(suspendProcess(pid));
        QTRY_COMPARE(processState(pid), 'T');
        QVERIFY(resumeProcess(pid));
        QTRY_COMPARE(processState(pid), 'S');
        child.kill();
        QVERIFY(child.waitForFinished());
        QVERIFY(!suspendProcess(pid));
        // The last one would be 0, this process's own group, if it were cut to 32 bits.
        for (const qint64 group : {qint64(0), qint64(-::getpgrp()), qint64(1) << 32})
            QVERIFY(!resumeProcess(group));
    }

    void locksFolders()
    {
        const QTemporaryDir dir;
        DirectoryLock first = DirectoryLock::tryExclusive(dir.path());
        QVERIFY(first.isHeld());
        DirectoryLock moved = std::move(first);
        QVERIFY(!DirectoryLock::tryShared(dir.path()).isHeld());
        ChildProcess child;
        child.start("sleep"_s, {"1000"_s});
        QVERIFY(child.waitForStarted());
        moved = DirectoryLock();
        // The child, started under the lock, must not have it.
        QVERIFY(DirectoryLock::tryExclusive(dir.path()).isHeld());
        const DirectoryLock shared = DirectoryLock::tryShared(dir.path());
        QVERIFY(DirectoryLock::tryShared(dir.path()).isHeld());
        QVERIFY(!DirectoryLock::tryExclusive(dir.path()).isHeld());
        const QString link = dir.filePath("link"_s);
        QVERIFY(QFile::link(QDir::tempPath(), link));
        QVERIFY(!DirectoryLock::tryExclusive(link).isHeld());
    }

    void revealsOddNames()
    {
        const QTemporaryDir media;
        const QTemporaryDir tools;
        const auto reveal = [&](const QString &path) {
            // Unlike QProcess, env looks for a program in the new PATH.
            revealInDesktop(path, [&](const QString &program, const QStringList &arguments) {
                const QString toolPath = "PATH=%1:/usr/bin:/bin"_s.arg(tools.path());
                const QStringList command = QStringList{toolPath, program} + arguments;
                return runTool("env"_s, command).exitCode == 0;
            });
        };
        const QString bus = "dbus-send"_s;
        const QString opener = "xdg-open"_s;
        const QByteArray noteArguments = "printf '%s\\n' \"$@\" > \"$0.log\"";
        writeTestProgram(tools.filePath(bus), noteArguments);
        writeTestProgram(tools.filePath(opener), noteArguments);
        const QString folder = media.filePath("a,'b\"$(d)`e`5%20 #1?墨"_s);
        const QString file = folder + "/f.mp4"_s;
        writeTestFile(file);
        reveal(file);
        const QString url = "/a%2C%27b%22%24%28d%29%60e%605%2520%20%231%3F%E5%A2%A8/f.mp4"_s;
        const QString uris = "array:string:file://"_s + media.path() + url;
        QVERIFY2(toolLog(tools, bus).contains(uris), qPrintable(toolLog(tools, bus).join(u' ')));
        QVERIFY(toolLog(tools, opener).isEmpty());

        writeTestProgram(tools.filePath(bus), "exit 1");
        reveal(file);
        QCOMPARE(toolLog(tools, opener).value(0), folder);
        reveal(media.filePath("gone.mp4"_s));
        QCOMPARE(toolLog(tools, opener).value(0), media.path());
    }

    void temporaryRootAvoidsForeignFolders()
    {
        const QTemporaryDir cache;
        const QString plain = cache.filePath("MorvaneLocal"_s);
        const QString own = plain + u'-' + QString::number(::getuid());
        qputenv("XDG_CACHE_HOME", QFile::encodeName(cache.path()));
        QVERIFY(QDir().mkpath(plain));
        QCOMPARE(temporaryRoot(), plain);
        const uid_t nobody = 65534;
        if (::chown(QFile::encodeName(plain).constData(), nobody, nobody) == 0)
            QCOMPARE(temporaryRoot(), own);
        QVERIFY(QDir().rmdir(plain));
        QVERIFY(QFile::link(cache.filePath("nowhere"_s), plain));
        QCOMPARE(temporaryRoot(), own);

        QVERIFY(QFile::link(cache.filePath("nowhere"_s), own + "x"_s));
        QVERIFY(!makePrivateFolder(own + "x"_s));
        QVERIFY(!QFile::exists(cache.filePath("nowhere"_s)));
        QVERIFY(QFile::remove(own + "x"_s));
        QVERIFY(QFile::setPermissions(own, QFile::Permissions(QFlag(0x7777))));
        QCOMPARE(temporaryRoot(), own);
        QCOMPARE(int(QFile::permissions(own) & (QFile::Permissions(QFlag(0x0077)))), 0);

        qputenv("XDG_CACHE_HOME", "relative");
        QVERIFY(temporaryRoot().startsWith(QDir::tempPath() + "/MorvaneLocal"_s));
        qunsetenv("XDG_CACHE_HOME");
    }

    // Sockets of this user: who can reach them commands the player.
    void runtimeRootIsPrivateAndShort()
    {
        const QTemporaryDir login;
        const QTemporaryDir cache;
        const QByteArray before = qgetenv("XDG_RUNTIME_DIR");
        qputenv("XDG_RUNTIME_DIR", QFile::encodeName(login.path()));
        qputenv("XDG_CACHE_HOME", QFile::encodeName(cache.path()));
        QCOMPARE(runtimeRoot(), login.path());
        QFile::setPermissions(login.path(), QFile::Permissions(QFlag(0x7755)));
        QCOMPARE(runtimeRoot(), cache.filePath("MorvaneLocal"_s));
        qputenv("XDG_CACHE_HOME", QFile::encodeName(cache.filePath(QString(60, u'l'))));
        QVERIFY(runtimeRoot().size() < 58);
        QCOMPARE(int(QFile::permissions(runtimeRoot()) & QFile::Permissions(QFlag(0x0077))), 0);

        QFile::setPermissions(login.path(), QFile::Permissions(QFlag(0x7700)));
        const int alive = boundSocket(login.filePath("player-alive"_s));
        QCOMPARE(::listen(alive, 1), 0);
        writeTestFile(login.filePath("player-note"_s));
        for (const char *name : {"player-dead", "other-dead"})
            ::close(boundSocket(login.filePath(QLatin1String(name))));
        // Where earlier versions had them, and another user's.
        const QTemporaryDir temporary;
        const QByteArray temporaryBefore = qgetenv("TMPDIR");
        qputenv("TMPDIR", QFile::encodeName(temporary.path()));
        for (const char *name : {"player-old", "player-theirs"})
            ::close(boundSocket(temporary.filePath(QLatin1String(name))));
        const bool isRoot = ::chown(qPrintable(temporary.filePath("player-theirs"_s)), 1, 1) == 0;
        removeDeadSockets("player-*"_s);
        temporaryBefore.isNull() ? qunsetenv("TMPDIR") : qputenv("TMPDIR", temporaryBefore);
        QCOMPARE(entriesOf(temporary.path()),
                 isRoot ? QStringList("player-theirs"_s) : QStringList());
        QCOMPARE(QDir(login.path()).entryList(QDir::Files | QDir::System, QDir::Name),
                 QStringList({"other-dead"_s, "player-alive"_s, "player-note"_s}));
        ::close(alive);
        before.isNull() ? qunsetenv("XDG_RUNTIME_DIR") : qputenv("XDG_RUNTIME_DIR", before);
        qunsetenv("XDG_CACHE_HOME");
    }

    void findsFontFiles()
    {
        QVERIFY(fontFileOfFamily("No Such Family 墨"_s).isEmpty());

        const ToolRun list = runTool("fc-list"_s, {":"_s, "family"_s});
        const QString family = list.outLines().value(0).section(u',', 0, 0);
        if (family.isEmpty())
            QSKIP("fontconfig's tools or fonts aren't installed");
        const QString file = fontFileOfFamily(family);
        QVERIFY2(QFile::exists(file), qPrintable(family));
        QCOMPARE(fontFileOfFamily(family.toUpper()), file);
    }
};

// The other process of the tests above, with a folder to lock.
static int runHelper(const QString &dir)
{
    const DirectoryLock lock = DirectoryLock::tryExclusive(dir);
    ChildProcess child;
    child.start("sleep"_s, {"1000"_s});
    const qint64 pid = lock.isHeld() && child.waitForStarted() ? child.processId() : 0;
    std::printf("%lld %s %s\n", pid, QFile::encodeName("墨"_s).toHex().constData(),
                qgetenv("LC_ALL").constData());
    std::fflush(stdout);
    return QCoreApplication::exec();
}

int main(int argc, char *argv[])
{
    ensureUtf8Locale();
    const QCoreApplication application(argc, argv);
    if (argc > 2 && qstrcmp(argv[1], "helper") == 0)
        return runHelper(QCoreApplication::arguments().at(2));
    TstPlatform test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_platform.moc"
