// SPDX-License-Identifier: MIT
// A system that has no more to give: each job ends with a cause that names what is missing, the
// next one has its turn, and nothing is left.
#include "clirun.h"
#include "support/testfile.h"
#include "support/testmedia.h"

#include <QtTest>

#include <unistd.h>

class TestLimits : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        for (const QString &name : {"a.mp4"_s, "b.mp4"_s})
            makeClip(path(name));
        // Others run the program, too.
        for (const QString &name : {"."_s, "a.mp4"_s, "b.mp4"_s, "home"_s}) {
            QDir(m_dir.path()).mkdir("home"_s);
            QFile::setPermissions(path(name),
                                  QFile::Permissions(name.endsWith("4"_s) ? 0x6444 : 0x7777));
        }
    }

    void descriptors() { expect("ulimit -n 16"_s, "打开的文件过多"_s); }

    void processes()
    {
        if (getuid() != 0 || runTool("runuser"_s, {"-u"_s, "nobody"_s, "--"_s,
                                                   builtProgram("morvane-cli"_s), "--help"_s})
                                     .exitCode != 0)
            QSKIP("needs root, and a build that others may run");
        expect("ulimit -u 1"_s, "进程过多"_s, {"runuser"_s, "-u"_s, "nobody"_s, "--"_s});
    }

    void memory()
    {
#ifdef __SANITIZE_ADDRESS__
        QSKIP("the sanitizer takes all addresses");
#endif
        expect("ulimit -v 200000"_s, "内存不足"_s);
    }

    // A text is painted there before it is laid over the film.
    void temporaryFolder()
    {
        const QString shell = "mount -t tmpfs -o size=64k none \"$HOME\" &&"
                              "{ head -c 65536 /dev/zero >\"$HOME/x\"; true; }"_s;
        const QStringList alone{"unshare"_s, "-m"_s};
        if (runTool(alone.first(), {"-m"_s, "sh"_s, "-c"_s, shell}, {"HOME="_s + path("home"_s)})
                .exitCode != 0)
            QSKIP("needs the right to mount");
        expect(shell, "临时文件夹无法写入"_s, alone,
               {"--watermark"_s, R"({"text":"字","rect":[10,10]})"_s});
    }

private:
    QString path(const QString &name) const
    {
        return m_dir.filePath(name);
    }

    void expect(const QString &limit, const QString &cause, const QStringList &launcher = {},
                const QStringList &more = {})
    {
        const QString out = path("home/%1"_s.arg(QLatin1String(QTest::currentTestFunction())));
        // A mount hides what the caller sees as the home folder.
        const QString folder = launcher.value(0) == "unshare"_s ? path("out"_s) : out;
        const QStringList shell{"bash"_s, "-c"_s, limit + " && exec \"$@\""_s, "bash"_s};
        const QStringList convert{builtProgram("morvane-cli"_s),
                                  "convert"_s,
                                  path("a.mp4"_s),
                                  path("b.mp4"_s),
                                  "--preset"_s,
                                  "1003005"_s,
                                  "--json"_s};
        const QStringList command =
            launcher + shell + convert + QStringList{"--out"_s, folder} + more;
        const QString home = path("home"_s);
        const ToolRun run =
            runTool(command.first(), command.mid(1),
                    {"HOME="_s + home, "XDG_CACHE_HOME="_s + home, "XDG_DATA_HOME="_s + home});
        QCOMPARE(run.exitCode, 1);
        const QList<QJsonObject> records = jobRecords(run);
        QCOMPARE(records.size(), 2);
        for (const QJsonObject &record : records) {
            const QString message = record["message"_s].toString();
            QVERIFY2(record["state"_s].toString() == "ERROR"_s && message.contains(cause),
                     qPrintable(message));
        }
        QVERIFY(entriesOf(out).isEmpty());
        QVERIFY(entriesOf(path("out"_s)).isEmpty());
    }

    const QTemporaryDir m_dir;
};

QTEST_GUILESS_MAIN(TestLimits)
#include "tst_limits.moc"
