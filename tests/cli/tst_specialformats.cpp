// SPDX-License-Identifier: MIT
// Special sources and APE output through the tools of the module folder, from end to end.
#include "clirun.h"
#include "support/casename.h"
#include "support/mediaprobe.h"
#include "support/testfile.h"
#include "support/testmedia.h"

#include <QtTest>

namespace {

constexpr int mp4Preset = 1003005;
constexpr int apePreset = 1207001;

// As 16 bit stereo.
QByteArray samplesOf(const QString &path)
{
    return decodedMedia(path, "-vn -ac 2 -ar 44100 -f s16le"_s);
}

} // namespace

class TestSpecialFormats : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        m_clip = m_dir.filePath("clip.mp4"_s);
        makeClip(m_clip);
    }

    void sources()
    {
        const auto check = [&](const char *caseName, const QString &name) {
            const CaseName inCase(caseName);
            const QTemporaryDir out;
            // The tools are told their paths in one text, divided by this letter.
            const QString folder = out.filePath("a|b"_s);
            const QString source = m_dir.filePath(name);
            QVERIFY(QFile::copy(m_clip, source));
            const QJsonObject record = convertOne(source, mp4Preset, folder);
            const QString output = record["output"_s].toString();
            QVERIFY2(!output.isEmpty(), qPrintable(record["message"_s].toString()));
            const ProbedFile result = probeMedia(output);
            QCOMPARE(result.video["width"_s].toInt(), 640);
            QVERIFY(!result.audio.isEmpty());
            QVERIFY(qAbs(result.seconds - 0.5) < 0.15);
            QCOMPARE(entriesOf(folder).size(), 1);
        };
        for (const char *suffix : {"kux", "KUX", "qlv", "qsv"}) {
            check(suffix, "片|段's \"%1\"."_s + QLatin1String(suffix));
        }
    }

    void strangersEndInError()
    {
        QByteArray noise(50000, '\0');
        for (int i = 0; i < noise.size(); ++i)
            noise[i] = char((i * 7919) >> 5);
        for (const char *suffix : {"kux", "qlv", "qsv"}) {
            const QTemporaryDir out;
            const QString source = m_dir.filePath("enciphered."_s + QLatin1String(suffix));
            writeTestFile(source, noise);
            const QJsonObject record = convertOne(source, mp4Preset, out.path());
            QCOMPARE(record["state"_s].toString(), "ERROR"_s);
            QVERIFY2(record["message"_s].toString().startsWith(source), suffix);
            QVERIFY2(!record["report"_s].toArray().isEmpty(), suffix);
            QVERIFY(entriesOf(out.path()).isEmpty());
        }
    }

    void apeKeepsEverySample()
    {
        const auto check = [&](const char *caseName, const QString &source) {
            const CaseName inCase(caseName);
            const QTemporaryDir out;
            const QString path = m_dir.filePath(source);
            makeClip(path, ClipPlan{0.5, source.endsWith("mp4"_s) ? 320 : 0});
            const QJsonObject record = convertOne(path, apePreset, out.path());
            const QString output = record["output"_s].toString();
            QVERIFY2(!output.isEmpty(), qPrintable(record["message"_s].toString()));
            QCOMPARE(probeMedia(output).audio["codec_name"_s].toString(), "ape"_s);
            const QByteArray samples = samplesOf(output);
            QVERIFY(samples.size() > 80000);
            QVERIFY(samples == samplesOf(path));
            QCOMPARE(entriesOf(out.path()).size(), 1);
        };
        for (const char *suffix : {"mp4", "mp3", "wav"})
            check(suffix, "歌 曲."_s + QLatin1String(suffix));
    }

    // The encoder's library ends with 0 also when it could not write all.
    void halfAnApeIsNone()
    {
        const QTemporaryDir work;
        const QString wav = work.filePath("in.wav"_s);
        ClipPlan sound;
        sound.width = 0;
        makeClip(wav, sound);
        const QString ape = work.filePath("out.ape"_s);
        const QString mac = builtProgram("module/mac/mac"_s);
        QCOMPARE(runTool(mac, {wav, ape, "-c3000"_s}).exitCode, 0);
        QVERIFY(QFile::remove(ape));
        const ToolRun limited = runTool(
            "bash"_s, {"-c"_s, "ulimit -f 8; exec \"$0\" \"$1\" \"$2\" -c3000"_s, mac, wav, ape});
        QVERIFY(limited.exitCode != 0);
        QVERIFY(!limited.err.isEmpty());
        QVERIFY(!QFile::exists(ape));

        QVERIFY(QFile::resize(wav, QFileInfo(wav).size() - 100));
        const ToolRun cut = runTool(mac, {wav, ape, "-c3000"_s});
        QCOMPARE(cut.exitCode, 1);
        QVERIFY(cut.err.contains(wav.toUtf8()));
        QVERIFY(!QFile::exists(ape));
        QVERIFY(runTool(mac, {ape, wav, "-c3000"_s}).exitCode != 0);
    }

    // The tool's own child goes with it.
    void stopOfApeLeavesNothing()
    {
        const QTemporaryDir out;
        const QString source = m_dir.filePath("long.wav"_s);
        makeClip(source, {120, 0});
        QProcess process;
        process.start(
            builtProgram("morvane-cli"_s),
            {"convert"_s, source, "--preset"_s, QString::number(apePreset), "--out"_s, out.path()});
        const auto encodes = [&] {
            const QDir marker(out.path() + "/~~MRVN_Temp~~"_s);
            const QStringList works = marker.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
            return !works.isEmpty() && marker.exists(works.first() + "/m.ape"_s);
        };
        QTRY_VERIFY_WITH_TIMEOUT(encodes(), 30000);
        process.terminate();
        QVERIFY(process.waitForFinished(30000));
        QVERIFY(entriesOf(out.path()).isEmpty());
        QTRY_VERIFY_WITH_TIMEOUT(processesWith(out.path()).isEmpty(), 1000);
    }

    void toolsRefuseOtherArguments()
    {
        for (const char *tool : {"module/ffmpeg/tool", "module/ffmpeg/tool2"}) {
            for (const QStringList &arguments :
                 {QStringList(), QStringList("/a|/b"_s), QStringList({"-i"_s, m_clip})}) {
                const ToolRun run = runTool(builtProgram(QLatin1String(tool)), arguments);
                QCOMPARE(run.exitCode, 2);
                QVERIFY(!run.err.isEmpty());
            }
        }
    }

private:
    QTemporaryDir m_dir;
    QString m_clip;
};

QTEST_GUILESS_MAIN(TestSpecialFormats)

#include "tst_specialformats.moc"
