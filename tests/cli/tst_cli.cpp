// SPDX-License-Identifier: MIT
#include "clirun.h"
#include "support/mediaprobe.h"
#include "support/testmedia.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonDocument>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <memory>

// The command line as a user sees it: what it prints, how it ends, and that it can be ended.
class TestCli : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void usageErrors();
    void lists();
    void probes();
    void convertsSeveralAndGoesOnAfterAFailure();
    void selectsTimeAndLook();
    void dryRunPrintsWhatRuns();
    void merges();
    void twoProcessesShareAFolder();
    void interruptLeavesNothing();
    void killLeavesNoChildAndIsSweptLater();
    void installedTreeRuns();

private:
    std::unique_ptr<QProcess> startLongJob(const QString &outDir);
    static bool hasWorkFile(const QString &outDir);

    QTemporaryDir m_dir;
    QString m_clip;
    QString m_longClip;
};

void TestCli::initTestCase()
{
    m_clip = m_dir.filePath(QStringLiteral("clip.mp4"));
    makeClip(m_clip);
    m_longClip = m_dir.filePath(QStringLiteral("long.mp4"));
    ClipPlan plan;
    plan.seconds = 30.0;
    plan.width = 1280;
    plan.height = 720;
    makeClip(m_longClip, plan);
}

void TestCli::usageErrors()
{
    for (const QStringList &words :
         {QStringList{QStringLiteral("fly")},
          QStringList{QStringLiteral("convert"), m_clip, QStringLiteral("--preset"),
                      QStringLiteral("42")}}) {
        const ToolRun run = runCli(words);
        QCOMPARE(run.exitCode, 2);
        QVERIFY(run.out.isEmpty());
        QCOMPARE(run.err.count('\n'), 1);
    }
    const ToolRun help = runCli({QStringLiteral("--help")});
    QCOMPARE(help.exitCode, 0);
    QVERIFY(help.out.contains("morvane-cli convert"));
}

void TestCli::lists()
{
    const ToolRun categories = runCli({QStringLiteral("categories"), QStringLiteral("--json")});
    QCOMPARE(QJsonDocument::fromJson(categories.out).array().size(), 24);

    const QJsonArray presets = cliPresets();
    QCOMPARE(presets.size(), 201);
    const QJsonObject first = presets.first().toObject();
    QCOMPARE(first[QLatin1String("id")].toInt(), 1003001);
    QCOMPARE(first[QLatin1String("keepSource")].toBool(), true);
    QVERIFY(first[QLatin1String("video")].isNull() && first[QLatin1String("audio")].isNull());
    const QJsonObject second = presets[1].toObject();
    QCOMPARE(QJsonDocument(second).toJson(QJsonDocument::Compact),
             QByteArray("{\"audio\":{\"bitrate\":128,\"channel\":2,\"fourCC\":\"MAAC\","
                        "\"sampleRate\":44100},\"category\":\"MP4\",\"formatId\":1003,"
                        "\"id\":1003002,\"keepSource\":false,\"name\":\"HD 1080P\",\"video\":"
                        "{\"bitrate\":3000,\"fourCC\":\"B264\",\"frameRate\":30,\"height\":1080,"
                        "\"width\":1920}}"));

    const ToolRun wmv =
        runCli({QStringLiteral("presets"), QStringLiteral("--category"), QStringLiteral("wmv")});
    QCOMPARE(wmv.outLines().size(), 6);
    QVERIFY(wmv.out.startsWith("1004004"));
}

void TestCli::probes()
{
    for (const char *reader : {"auto", "ffprobe", "mediainfo"}) {
        const ToolRun run = runCli({QStringLiteral("probe"), m_clip, QStringLiteral("--json"),
                                    QStringLiteral("--reader"), QString::fromLatin1(reader)});
        QCOMPARE(run.exitCode, 0);
        const QJsonObject info = QJsonDocument::fromJson(run.out).array().first().toObject();
        const QJsonObject video = info[QLatin1String("video")].toObject();
        QCOMPARE(video[QLatin1String("width")].toInt(), 320);
        QCOMPARE(video[QLatin1String("height")].toInt(), 240);
        QCOMPARE(info[QLatin1String("audios")].toArray().size(), 1);
        const QJsonObject format = info[QLatin1String("format")].toObject();
        QVERIFY(qAbs(format[QLatin1String("duration")].toInt() - 500) < 60);
        QCOMPARE(format[QLatin1String("fileSize")].toInt(), int(QFileInfo(m_clip).size()));
    }
    const ToolRun text = runCli({QStringLiteral("probe"), m_clip});
    QVERIFY(text.out.contains("320x240"));
    const ToolRun missing = runCli({QStringLiteral("probe"), QStringLiteral("/nowhere.mp4")});
    QCOMPARE(missing.exitCode, 1);
    QVERIFY(missing.err.contains("/nowhere.mp4"));
}

void TestCli::convertsSeveralAndGoesOnAfterAFailure()
{
    const QTemporaryDir out;
    const ToolRun run =
        runCli({QStringLiteral("convert"), m_clip, QStringLiteral("/nowhere.mp4"), m_clip, m_clip,
                QStringLiteral("--preset"), QStringLiteral("1200002"), QStringLiteral("--jobs"),
                QStringLiteral("2"), QStringLiteral("--out"), out.path()});
    QCOMPARE(run.exitCode, 1);
    const QStringList expected{QStringLiteral("clip(2).mp3"), QStringLiteral("clip(3).mp3"),
                               QStringLiteral("clip.mp3")};
    QCOMPARE(entriesOf(out.path()), expected);
    QStringList printed = run.outLines();
    printed.sort();
    QCOMPARE(printed.size(), 3);
    QCOMPARE(printed.first(), out.filePath(expected.first()));
    QVERIFY2(run.err.contains("/nowhere.mp4"), run.err.constData());
    // Standard error is no terminal here, so no bar may be drawn on it.
    QVERIFY(!run.err.contains('\r'));

    const ToolRun json = runCli({QStringLiteral("convert"), m_clip, QStringLiteral("/nowhere.mp4"),
                                 QStringLiteral("--preset"), QStringLiteral("1200002"),
                                 QStringLiteral("--json"), QStringLiteral("--out"), out.path()});
    QHash<QString, QJsonObject> byInput;
    const QList<QJsonObject> records = jobRecords(json);
    for (const QJsonObject &record : records)
        byInput.insert(record[QLatin1String("input")].toString(), record);
    QCOMPARE(byInput[m_clip][QLatin1String("state")].toString(), QStringLiteral("FINISHED"));
    QVERIFY(byInput[m_clip][QLatin1String("seconds")].toDouble() > 0.0);
    const QJsonObject failed = byInput[QStringLiteral("/nowhere.mp4")];
    QCOMPARE(failed[QLatin1String("state")].toString(), QStringLiteral("ERROR"));
    QVERIFY(failed[QLatin1String("output")].isNull());
    QVERIFY(failed[QLatin1String("message")].toString().contains(QStringLiteral("文件不存在")));
}

void TestCli::selectsTimeAndLook()
{
    const QTemporaryDir out;
    const QJsonObject record =
        convertOne(m_longClip, 1003005, out.path(),
                   {QStringLiteral("--from"), QStringLiteral("00:00:02"), QStringLiteral("--to"),
                    QStringLiteral("3.5"), QStringLiteral("--crop"), QStringLiteral("0,0,640,480"),
                    QStringLiteral("--beauty"), QStringLiteral("rotate=1,speed=1.5"),
                    QStringLiteral("--speed"), QStringLiteral("1"), QStringLiteral("--name"),
                    QStringLiteral("段")});
    QCOMPARE(record[QLatin1String("output")].toString(), out.filePath(QStringLiteral("段.mp4")));
    const ProbedFile result = probeMedia(record[QLatin1String("output")].toString());
    QVERIFY2(qAbs(result.seconds - 1.0) < 0.15, qPrintable(QString::number(result.seconds)));
    // The crop fills the frame of 640 by 480, and then stands on its side.
    QCOMPARE(result.video[QLatin1String("width")].toInt(), 640);

    const QJsonObject past =
        convertOne(m_clip, 1003005, out.path(), {QStringLiteral("--from"), QStringLiteral("60")});
    QVERIFY(past[QLatin1String("message")].toString().contains(QStringLiteral("超出了片长")));
}

// The command of the convert step itself, not of what was asked in other words.
void TestCli::dryRunPrintsWhatRuns()
{
    const auto printed = [this](const QString &options) {
        const QString words = QStringLiteral("convert % --dry-run ") + options;
        return QString::fromUtf8(
            runCli(words.split(QLatin1Char(' ')).replaceInStrings(QStringLiteral("%"), m_clip))
                .out);
    };
    const QString cropped = printed(QStringLiteral("--preset 1003001 --crop 10,20,100,50"));
    QVERIFY2(cropped.contains(QStringLiteral("\"[0:v]crop=w=100:h=50:x=10:y=20[vrt0]\"")),
             qPrintable(cropped));
    const QString sound =
        printed(QStringLiteral("--preset 1205001 --beauty rotate=1,saturation=0,speed=2"));
    QVERIFY2(sound.contains(QStringLiteral("\"[0:a]atempo=2.00[art0]\" -vn")), qPrintable(sound));
}

void TestCli::merges()
{
    const QTemporaryDir out;
    const ToolRun run =
        runCli({QStringLiteral("merge"), m_clip, m_clip, m_clip, QStringLiteral("--preset"),
                QStringLiteral("1003005"), QStringLiteral("--name"), QStringLiteral("it's all"),
                QStringLiteral("--out"), out.path()});
    QCOMPARE(run.exitCode, 0);
    QCOMPARE(run.outLines(), QStringList(out.filePath(QStringLiteral("it's all.mp4"))));
    QVERIFY(qAbs(probeMedia(run.outLines().first()).seconds - 1.5) < 0.2);
    QCOMPARE(entriesOf(out.path()).size(), 1);
}

std::unique_ptr<QProcess> TestCli::startLongJob(const QString &outDir)
{
    auto process = std::make_unique<QProcess>();
    process->start(builtProgram(QStringLiteral("morvane-cli")),
                   {QStringLiteral("convert"), m_longClip, QStringLiteral("--preset"),
                    QStringLiteral("1003002"), QStringLiteral("--speed"), QStringLiteral("9"),
                    QStringLiteral("--out"), outDir});
    return process;
}

bool TestCli::hasWorkFile(const QString &outDir)
{
    const QDir marker(outDir + QStringLiteral("/~~MRVN_Temp~~"));
    const QStringList works = marker.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    return !works.isEmpty() && marker.exists(works.first() + QStringLiteral("/convert.mp4"));
}

void TestCli::twoProcessesShareAFolder()
{
    const QTemporaryDir out;
    const auto slow = startLongJob(out.path());
    QTRY_VERIFY_WITH_TIMEOUT(hasWorkFile(out.path()), 20000);
    const QJsonObject quick = convertOne(m_clip, 1200002, out.path());
    QCOMPARE(quick[QLatin1String("state")].toString(), QStringLiteral("FINISHED"));
    QVERIFY2(hasWorkFile(out.path()), "the work of the other process is gone");
    slow->terminate();
    QVERIFY(slow->waitForFinished(20000));
    QCOMPARE(entriesOf(out.path()), QStringList(QStringLiteral("clip.mp3")));
}

void TestCli::interruptLeavesNothing()
{
    const QTemporaryDir out;
    const auto process = startLongJob(out.path());
    QTRY_VERIFY_WITH_TIMEOUT(hasWorkFile(out.path()), 20000);
    ::kill(pid_t(process->processId()), SIGINT);
    QVERIFY(process->waitForFinished(20000));
    QCOMPARE(process->exitStatus(), QProcess::NormalExit);
    QCOMPARE(process->exitCode(), 130);
    QVERIFY(process->readAllStandardOutput().isEmpty());
    QVERIFY(QDir(out.path()).exists());
    QVERIFY(entriesOf(out.path()).isEmpty());
    QVERIFY(processesWith(out.path()).isEmpty());
}

void TestCli::killLeavesNoChildAndIsSweptLater()
{
    const QTemporaryDir out;
    const auto process = startLongJob(out.path());
    QTRY_VERIFY_WITH_TIMEOUT(hasWorkFile(out.path()), 20000);
    QCOMPARE(processesWith(out.path()).size(), 2);
    ::kill(pid_t(process->processId()), SIGKILL);
    QVERIFY(process->waitForFinished(20000));
    QTRY_VERIFY_WITH_TIMEOUT(processesWith(out.path()).isEmpty(), 1000);
    // Any later start of the program takes away what the dead one left.
    runCli({QStringLiteral("categories")});
    QVERIFY2(entriesOf(out.path()).isEmpty(), qPrintable(entriesOf(out.path()).join(u' ')));
}

void TestCli::installedTreeRuns()
{
    const QTemporaryDir prefix;
    const ToolRun install = runTool(QStringLiteral(MORVANE_CMAKE),
                                    {QStringLiteral("--install"), QStringLiteral(MORVANE_BUILD_DIR),
                                     QStringLiteral("--prefix"), prefix.path()});
    QVERIFY2(install.exitCode == 0, install.err.constData());
    const QTemporaryDir out;
    const ToolRun run = runTool(prefix.filePath(QStringLiteral("bin/morvane-cli")),
                                {QStringLiteral("convert"), m_clip, QStringLiteral("--preset"),
                                 QStringLiteral("1003005"), QStringLiteral("--out"), out.path()});
    QVERIFY2(run.exitCode == 0, run.err.constData());
    const QString library = prefix.filePath(QStringLiteral(MORVANE_INSTALL_DIR));
    for (const char *file : {"log.conf", "module/ffmpeg/ffmpeg", "module/ffmpeg/ffprobe"})
        QVERIFY2(QFileInfo::exists(library + QLatin1Char('/') + QLatin1String(file)), file);
}

QTEST_GUILESS_MAIN(TestCli)

#include "tst_cli.moc"
