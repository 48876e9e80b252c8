// SPDX-License-Identifier: MIT
#include "clirun.h"
#include "support/mediaprobe.h"
#include "support/testfile.h"
#include "support/testmedia.h"

#include <QImage>
#include <QtTest>

#include <csignal>
#include <memory>

// The command line as a user sees it: what it prints, how it ends, and that it can be ended.
class TestCli : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        m_clip = m_dir.filePath("clip.mp4"_s);
        makeClip(m_clip);
        m_longClip = m_dir.filePath("long.mp4"_s);
        ClipPlan plan;
        plan.seconds = 30.0;
        plan.width = 1280;
        plan.height = 720;
        makeClip(m_longClip, plan);
    }

    void usageErrors()
    {
        for (const QStringList &words :
             {QStringList{"fly"_s}, QStringList{"convert"_s, m_clip, "--preset"_s, "42"_s}}) {
            const ToolRun run = runCli(words);
            QCOMPARE(run.exitCode, 2);
            QVERIFY(run.out.isEmpty());
            QCOMPARE(run.err.count('\n'), 1);
        }
        const ToolRun help = runCli({"--help"_s});
        QCOMPARE(help.exitCode, 0);
        QVERIFY(help.out.contains("morvane-cli convert"));
    }

    void lists()
    {
        const ToolRun categories = runCli({"categories"_s, "--json"_s});
        QCOMPARE(QJsonDocument::fromJson(categories.out).array().size(), 24);

        const QJsonArray presets = cliPresets();
        QCOMPARE(presets.size(), 201);
        const QJsonObject first = presets.first().toObject();
        QCOMPARE(first["id"_s].toInt(), 1003001);
        QCOMPARE(first["keepSource"_s].toBool(), true);
        QVERIFY(first["video"_s].isNull() && first["audio"_s].isNull());
        const QJsonObject second = presets[1].toObject();
        QCOMPARE(
            QJsonDocument(second).toJson(QJsonDocument::Compact),
            QByteArray("{\"audio\":{\"bitrate\":128,\"channel\":2,\"fourCC\":\"MAAC\","
                       "\"sampleRate\":44100},\"category\":\"MP4\",\"formatId\":1003,"
                       "\"id\":1003002,\"keepSource\":false,\"name\":\"HD 1080P\",\"video\":"
                       "{\"bitrate\":3000,\"fourCC\":\"B264\",\"frameRate\":30,\"height\":1080,"
                       "\"width\":1920}}"));

        const ToolRun wmv = runCli({"presets"_s, "--category"_s, "wmv"_s});
        QCOMPARE(wmv.outLines().size(), 6);
        QVERIFY(wmv.out.startsWith("1004004"));
    }

    void probes()
    {
        for (const char *reader : {"auto", "ffprobe", "mediainfo"}) {
            const ToolRun run =
                runCli({"probe"_s, m_clip, "--json"_s, "--reader"_s, QString::fromLatin1(reader)});
            QCOMPARE(run.exitCode, 0);
            const QJsonObject info = QJsonDocument::fromJson(run.out).array().first().toObject();
            const QJsonObject video = info["video"_s].toObject();
            QCOMPARE(video["width"_s].toInt(), 320);
            QCOMPARE(video["height"_s].toInt(), 240);
            QCOMPARE(info["audios"_s].toArray().size(), 1);
            const QJsonObject format = info["format"_s].toObject();
            QVERIFY(qAbs(format["duration"_s].toInt() - 500) < 60);
            QCOMPARE(format["fileSize"_s].toInt(), int(QFileInfo(m_clip).size()));
        }
        const ToolRun text = runCli({"probe"_s, m_clip});
        QVERIFY(text.out.contains("320x240"));
        const ToolRun missing = runCli({"probe"_s, "/nowhere.mp4"_s});
        QCOMPARE(missing.exitCode, 1);
        QVERIFY(missing.err.contains("/nowhere.mp4"));
    }

    void convertsSeveralAndGoesOnAfterAFailure()
    {
        const QTemporaryDir out;
        const ToolRun run =
            runCli({"convert"_s, m_clip, "/nowhere.mp4"_s, m_clip, m_clip, "--preset"_s,
                    "1200002"_s, "--jobs"_s, "2"_s, "--out"_s, out.path()});
        QCOMPARE(run.exitCode, 1);
        const QStringList expected{"clip(2).mp3"_s, "clip(3).mp3"_s, "clip.mp3"_s};
        QCOMPARE(entriesOf(out.path()), expected);
        QStringList printed = run.outLines();
        printed.sort();
        QCOMPARE(printed.size(), 3);
        QCOMPARE(printed.first(), out.filePath(expected.first()));
        QVERIFY2(run.err.contains("/nowhere.mp4"), run.err.constData());
        // Standard error is no terminal here, so no bar may be drawn on it.
        QVERIFY(!run.err.contains('\r'));

        const ToolRun json = runCli({"convert"_s, m_clip, "/nowhere.mp4"_s, "--preset"_s,
                                     "1200002"_s, "--json"_s, "--out"_s, out.path()});
        QHash<QString, QJsonObject> byInput;
        const QList<QJsonObject> records = jobRecords(json);
        for (const QJsonObject &record : records)
            byInput.insert(record["input"_s].toString(), record);
        QCOMPARE(byInput[m_clip]["state"_s].toString(), "FINISHED"_s);
        QVERIFY(byInput[m_clip]["seconds"_s].toDouble() > 0.0);
        const QJsonObject failed = byInput["/nowhere.mp4"_s];
        QCOMPARE(failed["state"_s].toString(), "ERROR"_s);
        QVERIFY(failed["output"_s].isNull());
        QVERIFY(failed["message"_s].toString().contains("文件不存在"_s));
    }

    void selectsTimeAndLook()
    {
        const QTemporaryDir out;
        const QJsonObject record = convertOne(
            m_longClip, 1003005, out.path(),
            {"--from"_s, "00:00:02"_s, "--to"_s, "3.5"_s, "--crop"_s, "0,0,640,480"_s, "--beauty"_s,
             "rotate=1,speed=1.5"_s, "--speed"_s, "1"_s, "--name"_s, "段"_s});
        QCOMPARE(record["output"_s].toString(), out.filePath("段.mp4"_s));
        const ProbedFile result = probeMedia(record["output"_s].toString());
        QVERIFY2(qAbs(result.seconds - 1.0) < 0.15, qPrintable(QString::number(result.seconds)));
        // The crop fills the frame of 640 by 480, and then stands on its side.
        QCOMPARE(result.video["width"_s].toInt(), 640);

        const QJsonObject past = convertOne(m_clip, 1003005, out.path(), {"--from"_s, "60"_s});
        QVERIFY(past["message"_s].toString().contains("超出了片长"_s));
        const QStringList beyond{"--crop"_s, "1200,0,100,40"_s};
        const QString said =
            convertOne(m_longClip, 1003005, out.path(), beyond)["message"_s].toString();
        QVERIFY2(said.contains("1280×720"_s) && said.contains("(1200, 0) 起 100×40"_s),
                 qPrintable(said));
        QCOMPARE(convertOne(m_longClip, 1200002, out.path(), beyond)["state"_s].toString(),
                 "FINISHED"_s);
    }

    // The command of the convert step itself, not of what was asked in other words.
    void dryRunPrintsWhatRuns()
    {
        const auto printed = [this](const QString &options) {
            const QString words = "convert % --dry-run "_s + options;
            return QString::fromUtf8(runCli(words.split(u' ').replaceInStrings("%"_s, m_clip)).out);
        };
        const QString cropped = printed("--preset 1003001 --crop 10,20,100,50"_s);
        QVERIFY2(cropped.contains("\"[0:v]crop=w=100:h=50:x=10:y=20[vrt0]\""_s),
                 qPrintable(cropped));
        const QString sound = printed("--preset 1205001 --beauty rotate=1,saturation=0,speed=2"_s);
        QVERIFY2(sound.contains("\"[0:a]atempo=2.00[art0]\" -vn"_s), qPrintable(sound));
    }

    // A picture, a text and a removal, each where it was told to be, and the picture in its time.
    void marks()
    {
        const QTemporaryDir out;
        const QString film = out.filePath("in.mp4"_s);
        makeMedia("-f lavfi -i color=gray:s=320x240:d=2:r=10,drawbox=250:30:20:20:white:fill "
                  "-pix_fmt yuv420p @"_s,
                  {film});
        const QString logo = out.filePath("it's = 50%.png"_s);
        makePicture(logo, "red"_s, 40, 20);
        const auto json = [](QString text) { return text.replace(u'`', u'"'); };
        const ToolRun run = runCli(
            {"convert"_s, film, "--preset"_s, "1003001"_s, "--out"_s, out.filePath("out"_s),
             "--delogo"_s, json("{`rect`:[244,24,32,32]}"_s), "--watermark"_s,
             json("{`image`:`%1`,`rect`:[40,60,80,40],`from`:0,`to`:1}"_s.arg(logo)),
             "--watermark"_s, json("{`text`:`HHHH`,`rect`:[20,150,160,60],`color`:`#0000ff`}"_s)});
        QVERIFY2(run.exitCode == 0, run.err.constData());
        const auto frameAt = [&](const char *second) {
            const QString picture = out.filePath("frame.png"_s);
            makeMedia("-y -ss %1 -i @ -frames:v 1 @"_s.arg(QLatin1String(second)),
                      {run.outLines().value(0), picture});
            return QImage(picture);
        };
        const auto isRed = [](const QColor &colour) {
            return colour.red() > 200 && colour.green() < 60 && colour.blue() < 60;
        };
        const QImage early = frameAt("0.5");
        QCOMPARE(early.size(), QSize(320, 240));
        for (const QPoint &inside : {QPoint(42, 62), QPoint(117, 97)})
            QVERIFY2(isRed(early.pixelColor(inside)), qPrintable(early.pixelColor(inside).name()));
        for (const QPoint &beside : {QPoint(37, 62), QPoint(123, 97), QPoint(42, 57)})
            QVERIFY2(!isRed(early.pixelColor(beside)), qPrintable(early.pixelColor(beside).name()));
        QVERIFY(early.pixelColor(260, 40).lightness() < 150);
        // The text fills its rectangle from one end to the other.
        QVector<int> blue;
        for (int x = 0; x < early.width(); ++x) {
            const QColor colour = early.pixelColor(x, 180);
            if (colour.blue() > 150 && colour.red() < 90)
                blue += x;
        }
        QVERIFY(blue.size() > 15 && blue.first() < 40 && blue.last() > 160);
        QVERIFY(!isRed(frameAt("1.9").pixelColor(80, 80)));
    }

    void shoots()
    {
        const QTemporaryDir out;
        const auto names = [&](const QStringList &options) {
            const ToolRun run =
                runCli(QStringList{"shots"_s, m_clip, "--out"_s, out.path()} + options);
            QStringList found{QString::number(run.exitCode)};
            for (const QString &path : run.outLines())
                found += QFileInfo(path).size() > 0 ? QFileInfo(path).suffix() : path;
            return found;
        };
        QCOMPARE(names({"--at"_s, "0,0.2"_s}), (QStringList{"0"_s, "png"_s, "png"_s}));
        QCOMPARE(names({"--every"_s, "0.1"_s, "--to"_s, "0.2"_s, "--format"_s, "jpg"_s}),
                 (QStringList{"0"_s, "jpg"_s, "jpg"_s, "jpg"_s}));
        QCOMPARE(names({"--at"_s, "0,0.2,0.3"_s, "--sheet"_s, "2"_s, "--scale"_s, "0.5"_s}),
                 (QStringList{"0"_s, "png"_s}));
        for (const char *wrong : {"", "--at 1 --every 2", "--at x", "--at 1 --scale 6",
                                  "--at 1 --format gif", "--at 1 --long --sheet 2"})
            QCOMPARE(names(QString::fromLatin1(wrong).split(u' ', Qt::SkipEmptyParts)),
                     QStringList("2"_s));
    }

    // A film that was never finished tells no length.
    void shootsASeriesOfUnknownLength()
    {
        const QTemporaryDir out;
        const QString film = out.filePath("odd.webm"_s);
        writeTestFile(film, runFfmpeg("-f lavfi -i testsrc2=s=64x48:r=25:d=4 -c:v libvpx "
                                      "-live 1 -f webm pipe:1"_s,
                                      {})
                                .out);
        const ToolRun run =
            runCli({"shots"_s, film, "--every"_s, "1"_s, "--out"_s, out.filePath("out"_s)});
        QVERIFY2(run.exitCode == 0, run.err.constData());
        QCOMPARE(run.outLines().size(), 4);
    }

    void merges()
    {
        const QTemporaryDir out;
        const ToolRun run = runCli({"merge"_s, m_clip, m_clip, m_clip, "--preset"_s, "1003005"_s,
                                    "--name"_s, "it's all"_s, "--out"_s, out.path()});
        QCOMPARE(run.exitCode, 0);
        QCOMPARE(run.outLines(), QStringList(out.filePath("it's all.mp4"_s)));
        QVERIFY(qAbs(probeMedia(run.outLines().first()).seconds - 1.5) < 0.2);
        QCOMPARE(entriesOf(out.path()).size(), 1);
    }

    void twoProcessesShareAFolder()
    {
        const QTemporaryDir out;
        const auto slow = startLongJob(out.path());
        QTRY_VERIFY_WITH_TIMEOUT(hasWorkFile(out.path()), 20000);
        const QJsonObject quick = convertOne(m_clip, 1200002, out.path());
        QCOMPARE(quick["state"_s].toString(), "FINISHED"_s);
        QVERIFY2(hasWorkFile(out.path()), "the work of the other process is gone");
        slow->terminate();
        QVERIFY(slow->waitForFinished(20000));
        QCOMPARE(entriesOf(out.path()), QStringList("clip.mp3"_s));
    }

    void interruptLeavesNothing()
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

    void killLeavesNoChildAndIsSweptLater()
    {
        const QTemporaryDir out;
        const auto process = startLongJob(out.path());
        QTRY_VERIFY_WITH_TIMEOUT(hasWorkFile(out.path()), 20000);
        QCOMPARE(processesWith(out.path()).size(), 2);
        ::kill(pid_t(process->processId()), SIGKILL);
        QVERIFY(process->waitForFinished(20000));
        QTRY_VERIFY_WITH_TIMEOUT(processesWith(out.path()).isEmpty(), 1000);
        // Any later start of the program takes away what the dead one left.
        runCli({"categories"_s});
        QVERIFY2(entriesOf(out.path()).isEmpty(), qPrintable(entriesOf(out.path()).join(u' ')));
    }

    // Of pictures, the finished ones stay.
    void killedShotsAreSweptLater()
    {
        const QTemporaryDir out;
        QProcess process;
        process.start(builtProgram("morvane-cli"_s),
                      {"shots"_s, m_longClip, "--every"_s, "0.1"_s, "--format"_s, "bmp"_s,
                       "--out"_s, out.path()});
        QTRY_VERIFY_WITH_TIMEOUT(QFileInfo::exists(out.filePath("long_2.bmp"_s)), 20000);
        process.kill();
        QVERIFY(process.waitForFinished(20000));
        QTRY_VERIFY_WITH_TIMEOUT(processesWith(out.path()).isEmpty(), 1000);
        QVERIFY(entriesOf(out.path()).contains("~~MRVN_Temp~~"_s));
        runCli({"categories"_s});
        for (const QString &name : entriesOf(out.path()))
            QVERIFY2(QImage(out.filePath(name)).size() == QSize(1280, 720), qPrintable(name));
    }

    void installedTreeRuns()
    {
        const QTemporaryDir prefix;
        const ToolRun install = runTool(
            QStringLiteral(MORVANE_CMAKE),
            {"--install"_s, QStringLiteral(MORVANE_BUILD_DIR), "--prefix"_s, prefix.path()});
        QVERIFY2(install.exitCode == 0, install.err.constData());
        const QTemporaryDir out;
        const ToolRun run =
            runTool(prefix.filePath("bin/morvane-cli"_s),
                    {"convert"_s, m_clip, "--preset"_s, "1003005"_s, "--out"_s, out.path()});
        QVERIFY2(run.exitCode == 0, run.err.constData());
        const QString library = prefix.filePath(QStringLiteral(MORVANE_INSTALL_DIR));
        for (const char *file : {"log.conf", "module/ffmpeg/ffmpeg", "module/ffmpeg/ffprobe"})
            QVERIFY2(QFileInfo::exists(library + u'/' + QLatin1String(file)), file);
    }

private:
    std::unique_ptr<QProcess> startLongJob(const QString &outDir)
    {
        auto process = std::make_unique<QProcess>();
        process->start(builtProgram("morvane-cli"_s),
                       {"convert"_s, m_longClip, "--preset"_s, "1003002"_s, "--speed"_s, "9"_s,
                        "--out"_s, outDir});
        return process;
    }

    static bool hasWorkFile(const QString &outDir)
    {
        const QDir marker(outDir + "/~~MRVN_Temp~~"_s);
        const QStringList works = marker.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
        return !works.isEmpty() && marker.exists(works.first() + "/convert.mp4"_s);
    }

    QTemporaryDir m_dir;
    QString m_clip;
    QString m_longClip;
};

QTEST_GUILESS_MAIN(TestCli)

#include "tst_cli.moc"
