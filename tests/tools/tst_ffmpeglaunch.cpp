// SPDX-License-Identifier: MIT
#include "support/mediaprobe.h"
#include "support/testfile.h"
#include "support/toolrun.h"

#include <QtTest>

#include <csignal>
#include <initializer_list>

namespace {

QStringList utf8(std::initializer_list<const char *> words)
{
    QStringList result;
    for (const char *word : words)
        result.append(QString::fromUtf8(word));
    return result;
}

QString launcher()
{
    return builtProgram("module/ffmpeg/ffmpeg"_s);
}

QStringList realFfmpeg(const QString &path)
{
    return {"MORVANE_REAL_FFMPEG="_s + path};
}

} // namespace

// Runs the launcher itself: with a script in the place of ffmpeg, and with the installed ffmpeg.
class TestFfmpegLaunch : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        // Arguments are UTF-8 whatever locale the test runs in.
        QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
        QVERIFY2(QFile::exists(launcher()), qPrintable(launcher()));
    }

    void passesArguments()
    {
        const QStringList rows[] = {
            {},
            utf8({"", "-metadata", "title=", "", "x.nut", ""}),
            utf8({"-i", " a\n\t\"b\" 'c' \r\n", "\\\\x\\", "$HOME `id` *", "-", "--", "-z.nut"}),
            utf8({"-i", "墨泉/影音 工坊.mp4", "-vf", "drawtext=text='😀'"}),
            utf8({"-filter_complex", "[0:v]null[o", "-lavfi", "", "x.nut"}),
        };
        writeTestProgram(tool(), "[ $# = 0 ] || printf '%s\\0' \"$@\"");
        for (const QStringList &arguments : rows) {
            const ToolRun run = runTool(launcher(), arguments, realFfmpeg(tool()));
            QByteArray expected;
            for (const QString &argument : arguments)
                expected += argument.toUtf8() + '\0';
            QCOMPARE(run.out, expected);
            QCOMPARE(run.err, QByteArray());
        }
    }

    void passesStreamsAndExitCode()
    {
        QProcess process;
        startTool(process, "read line; echo \"out $line\"; echo \"err $line\" >&2; exit 69");
        process.write("q\n");
        QVERIFY(process.waitForFinished());
        QCOMPARE(process.exitCode(), 69);
        QCOMPARE(process.readAllStandardOutput(), QByteArray("out q\n"));
        QCOMPARE(process.readAllStandardError(), QByteArray("err q\n"));
    }

    void isTheSameProcess()
    {
        QProcess process;
        startTool(process, "echo $$; read line");
        QCOMPARE(nextLine(&process).toLongLong(), process.processId());
        process.terminate();
        QVERIFY(process.waitForFinished());
        QCOMPARE(process.exitStatus(), QProcess::CrashExit);
        QCOMPARE(process.exitCode(), SIGTERM);
    }

    void failsWithoutFfmpeg()
    {
        for (const QString &path : {"/nowhere/ffmpeg"_s, launcher()}) {
            const ToolRun run = runTool(launcher(), utf8({"-version"}), realFfmpeg(path));
            QCOMPARE(run.exitCode, 127);
            QVERIFY(run.err.contains("no ffmpeg found"));
        }
    }

    void convertsWithInstalledFfmpeg()
    {
        const QStringList sources =
            utf8({"-hide_banner", "-nostdin", "-y", "-f", "lavfi", "-i", "testsrc=s=128x96:d=0.3",
                  "-f", "lavfi", "-i", "sine=r=48000:d=0.3"});
        const auto convert = [&](const char *options, const char *codecs, const char *note) {
            QStringList arguments = sources + QString::fromLatin1(options).split(u' ');
            const QString output = m_folder.filePath(arguments.takeLast());
            const ToolRun run = runTool(launcher(), arguments + QStringList{output});
            QVERIFY2(run.exitCode == 0, run.err.constData());
            QCOMPARE(run.err.contains("ffmpeg launcher: "), *note != 0);
            QVERIFY2(run.err.contains(note), run.err.constData());
            const ProbedFile probed = probeMedia(output);
            const QLatin1String codec("codec_name");
            QCOMPARE(probed.video[codec].toString() + u' ' + probed.audio[codec].toString(),
                     QLatin1String(codecs));
        };
        convert("-filter_complex [0:v]scale=64:48[vrt0];[1:a]volume=2[art0] a.mkv", "h264 vorbis",
                "");
        convert("-c:v libxvid -c:a libopencore_amrnb -ac 1 -ar 8000 -b:a 12k b.3gp", "mpeg4 aac",
                "AMR");
        convert("-c:v libx264 -preset superfast d.swf", "flv1 mp3", "44100");
    }

    void laysOutTheModuleFolder()
    {
        for (const char *path : {"ffmpeg/ffprobe", "kux/ffmpeg"}) {
            const ToolRun run =
                runTool(builtProgram("module/"_s + QLatin1String(path)), {"-version"_s});
            QVERIFY2(run.out.startsWith("ff") && run.out.contains(" version "), path);
        }
        // What it starts need not be installed here.
        QVERIFY(QFileInfo(builtProgram("module/mplayer/mplayer"_s)).isExecutable());
    }

private:
    void startTool(QProcess &process, const QByteArray &script)
    {
        writeTestProgram(tool(), script);
        process.setProcessEnvironment(environmentWith(realFfmpeg(tool())));
        process.start(launcher(), QStringList());
    }

    QString tool() const { return m_folder.filePath("tool"_s); }

    QTemporaryDir m_folder;
};

QTEST_GUILESS_MAIN(TestFfmpegLaunch)
#include "tst_ffmpeglaunch.moc"
