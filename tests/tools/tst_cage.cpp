// SPDX-License-Identifier: MIT
// What a file may make the tools do that open it: nothing beyond itself. Each case is tried on the
// tool as the system has it, too, where it does the harm.
#include "support/testfile.h"
#include "support/testmedia.h"
#include "support/toolrun.h"

#include <QFile>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QtTest>

namespace {

const QStringList quiet{"-v"_s, "error"_s, "-nostdin"_s, "-y"_s};

// A server that counts who comes, and answers nobody.
class Listener : public QTcpServer
{
public:
    Listener() { listen(QHostAddress::LocalHost); }
    QByteArray address() const { return "http://127.0.0.1:" + QByteArray::number(serverPort()); }

    /// Runs a program to its end, and sends all visitors away meanwhile.
    /// @return how many there were, -1 when the program did not start or end
    int visitorsOf(const QString &program, const QStringList &arguments)
    {
        QProcess process;
        process.start(program, arguments);
        const bool ended = QTest::qWaitFor(
            [&] { return visitors() < 0 || process.state() == QProcess::NotRunning; }, 60000);
        return ended && process.error() != QProcess::FailedToStart ? visitors() : -1;
    }

private:
    int visitors()
    {
        while (hasPendingConnections() || waitForNewConnection(50)) {
            while (QTcpSocket *visitor = nextPendingConnection()) {
                ++m_visitors;
                visitor->abort();
            }
        }
        return m_visitors;
    }

    int m_visitors = 0;
};

} // namespace

class TestCage : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        const ToolRun run = runTool(builtProgram("module/ffmpeg/ffmpeg"_s), {"-version"_s});
        if (run.err.contains("this system"))
            QSKIP("the kernel confines nothing");
        qunsetenv("http_proxy");
        makeMedia("-f lavfi -i testsrc2=d=1:s=160x120:r=10 @"_s, {m_secret});
    }

    // A script that takes the name of a film, and names another file.
    void filesThatNameFiles()
    {
        writeTestFile(m_script, "ffconcat version 1.0\nfile secret.mp4\n");
        for (const QString &tool : {"/usr/bin/ffmpeg"_s, builtProgram("module/ffmpeg/ffmpeg"_s),
                                    builtProgram("module/kux/ffmpeg"_s)}) {
            const QString made = m_other.filePath("made.mkv"_s);
            QFile::remove(made);
            const ToolRun run = runTool(tool, quiet + QStringList{"-i"_s, m_script, made});
            QCOMPARE(run.exitCode == 0, tool.startsWith("/usr"_s));
            QCOMPARE(QFile::exists(made), tool.startsWith("/usr"_s));
        }
        const ToolRun probe = runTool(builtProgram("module/ffmpeg/ffprobe"_s),
                                      {"-v"_s, "error"_s, "-show_streams"_s, m_script});
        QVERIFY(!probe.out.contains("codec_name"));
    }

    void filesThatNameAddresses()
    {
        const QString playlist = path("list.m3u8"_s);
        for (const QString &tool : {"/usr/bin/ffmpeg"_s, builtProgram("module/ffmpeg/ffmpeg"_s)}) {
            Listener listener;
            writeTestFile(playlist, "#EXTM3U\n#EXT-X-TARGETDURATION:1\n#EXTINF:1,\n" +
                                        listener.address() + "/a.ts\n#EXT-X-ENDLIST\n");
            // As a version would that trusts more than this one.
            const int visitors = listener.visitorsOf(
                tool, quiet + QStringList{"-protocol_whitelist"_s, "file,http,tcp"_s, "-i"_s,
                                          playlist, m_other.filePath("a.mkv"_s)});
            QVERIFY(visitors >= 0);
            QCOMPARE(visitors > 0, tool.startsWith("/usr"_s));
        }
    }

    void playerOfPlaylists()
    {
        const QByteArray lists[] = {"#EXTM3U\n#EXTINF:1,song\n%1/a.mp3\n",
                                    "[playlist]\nNumberOfEntries=1\nFile1=%1/a.mp3\n",
                                    "v=0\no=- 0 0 IN IP4 127.0.0.1\nc=IN IP4 127.0.0.1\nt=0 0\n"
                                    "m=video 5004 RTP/AVP 96\na=control:%1/a\n",
                                    "# mpv EDL v0\n%1/a.mp4,0,5\n"};
        for (const QString &tool :
             {"/usr/bin/mpv"_s, builtProgram("module/morplayer/morplayer"_s)}) {
            int visitors = 0;
            for (const QByteArray &list : lists) {
                Listener listener;
                const QString song = path("song.mp3"_s);
                writeTestFile(song, QByteArray(list).replace("%1", listener.address()));
                const int found = listener.visitorsOf(
                    tool, {"--no-config"_s, "--vo=null"_s, "--ao=null"_s, "--"_s, song});
                QVERIFY(found >= 0);
                visitors += found;
            }
            QCOMPARE(visitors > 0, tool.startsWith("/usr"_s));
        }
    }

    void playerOfAddresses()
    {
        for (const QString &tool :
             {"/usr/bin/mplayer"_s, builtProgram("module/mplayer/mplayer"_s)}) {
            Listener listener;
            const int visitors =
                listener.visitorsOf(tool, {"-vo"_s, "null"_s, "-ao"_s, "null"_s,
                                           QString::fromLatin1(listener.address()) + "/a.mp3"_s});
            QVERIFY(visitors >= 0);
            QCOMPARE(visitors > 0, tool.startsWith("/usr"_s));
        }
    }

    // The library that encodes Monkey's Audio runs in a machine that can be told to write a log.
    void encoderWritesItsResultAlone()
    {
        const QString log = m_other.filePath("log"_s);
        const QStringList logging{"JAVA_TOOL_OPTIONS=-Xlog:gc:file="_s + log};
        const QString sound = path("sound.wav"_s);
        makeMedia("-f lavfi -i sine=d=1 @"_s, {sound});
        const QStringList words{sound, m_other.filePath("made.ape"_s), "-c1000"_s};
        QCOMPARE(runTool(builtProgram("module/mac/mac"_s), words).exitCode, 0);
        QVERIFY(QFile::remove(words[1]));
        QVERIFY(runTool("/usr/bin/java"_s, {"-version"_s}, logging).exitCode == 0);
        QVERIFY(QFile::remove(log));
        // Not even beside the result's folder.
        QVERIFY(QDir(m_other.path()).mkdir("result"_s));
        runTool(builtProgram("module/mac/mac"_s),
                {sound, m_other.filePath("result/made.ape"_s), "-c1000"_s}, logging);
        QVERIFY(!QFile::exists(log));
    }

    // Written is only beside the outputs.
    void nothingElsewhere()
    {
        for (const QString &tool : {"/usr/bin/ffmpeg"_s, builtProgram("module/ffmpeg/ffmpeg"_s)}) {
            const QString list = m_other.filePath("list.txt"_s);
            runTool(tool, quiet + QStringList{"-i"_s, m_secret, "-f"_s, "segment"_s,
                                              "-segment_list"_s, list, path("part%d.mkv"_s)});
            QCOMPARE(QFile::exists(list), tool.startsWith("/usr"_s));
            QFile::remove(list);
        }
    }

private:
    QString path(const QString &name) const { return m_folder.filePath(name); }

    QTemporaryDir m_folder;
    QTemporaryDir m_other;
    const QString m_secret = path("secret.mp4"_s);
    const QString m_script = path("film.mp4"_s);
};

QTEST_GUILESS_MAIN(TestCage)
#include "tst_cage.moc"
