// SPDX-License-Identifier: MIT
// Special sources and APE output through the tools of the module folder, from end to end.
#include "clirun.h"
#include "support/mediaprobe.h"
#include "support/testmedia.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <memory>

class TestSpecialFormats : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void sources_data();
    void sources();
    void strangersEndInError_data();
    void strangersEndInError();
    void apeKeepsEverySample_data();
    void apeKeepsEverySample();
    void halfAnApeIsNone();
    void stopLeavesNothing_data();
    void stopLeavesNothing();
    void toolsRefuseOtherArguments();

private:
    QTemporaryDir m_dir;
    QString m_clip;
};

namespace {

constexpr int mp4Preset = 1003005;
constexpr int apePreset = 1207001;

// What ffmpeg decodes from a file's sound, as 16 bit stereo.
QByteArray samplesOf(const QString &path)
{
    return runTool(QStringLiteral("ffmpeg"),
                   {QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-i"), path,
                    QStringLiteral("-vn"), QStringLiteral("-ac"), QStringLiteral("2"),
                    QStringLiteral("-ar"), QStringLiteral("44100"), QStringLiteral("-f"),
                    QStringLiteral("s16le"), QStringLiteral("-")})
        .out;
}

} // namespace

void TestSpecialFormats::initTestCase()
{
    m_clip = m_dir.filePath(QStringLiteral("clip.mp4"));
    makeClip(m_clip);
}

void TestSpecialFormats::sources_data()
{
    QTest::addColumn<QString>("name");
    for (const char *suffix : {"kux", "KUX", "qlv", "qsv"}) {
        QTest::newRow(suffix) << QStringLiteral("片|段's \"%1\".") + QLatin1String(suffix);
    }
}

void TestSpecialFormats::sources()
{
    QFETCH(QString, name);
    const QTemporaryDir out;
    // The tools are told their paths in one text, divided by this letter.
    const QString folder = out.filePath(QStringLiteral("a|b"));
    const QString source = m_dir.filePath(name);
    QVERIFY(QFile::copy(m_clip, source));
    const QJsonObject record = convertOne(source, mp4Preset, folder);
    const QString output = record[QLatin1String("output")].toString();
    QVERIFY2(!output.isEmpty(), qPrintable(record[QLatin1String("message")].toString()));
    const ProbedFile result = probeMedia(output);
    QCOMPARE(result.video[QLatin1String("width")].toInt(), 640);
    QVERIFY(!result.audio.isEmpty());
    QVERIFY(qAbs(result.seconds - 0.5) < 0.15);
    QCOMPARE(entriesOf(folder).size(), 1);
}

void TestSpecialFormats::strangersEndInError_data()
{
    QTest::addColumn<QString>("suffix");
    QTest::newRow("kux") << QStringLiteral("kux");
    QTest::newRow("qlv") << QStringLiteral("qlv");
    QTest::newRow("qsv") << QStringLiteral("qsv");
}

void TestSpecialFormats::strangersEndInError()
{
    QFETCH(QString, suffix);
    const QTemporaryDir out;
    const QString source = m_dir.filePath(QStringLiteral("enciphered.") + suffix);
    QFile file(source);
    QVERIFY(file.open(QIODevice::WriteOnly));
    for (int i = 0; i < 50000; ++i)
        file.putChar(char((i * 7919) >> 5));
    file.close();
    const QJsonObject record = convertOne(source, mp4Preset, out.path());
    QCOMPARE(record[QLatin1String("state")].toString(), QStringLiteral("ERROR"));
    QVERIFY(record[QLatin1String("message")].toString().contains(source));
    QVERIFY(!record[QLatin1String("report")].toArray().isEmpty());
    QVERIFY(entriesOf(out.path()).isEmpty());
}

void TestSpecialFormats::apeKeepsEverySample_data()
{
    QTest::addColumn<QString>("source");
    for (const char *suffix : {"mp4", "mp3", "wav"})
        QTest::newRow(suffix) << QStringLiteral("歌 曲.") + QLatin1String(suffix);
}

void TestSpecialFormats::apeKeepsEverySample()
{
    QFETCH(QString, source);
    const QTemporaryDir out;
    const QString path = m_dir.filePath(source);
    makeClip(path, ClipPlan{0.5, source.endsWith(QLatin1String("mp4")) ? 320 : 0});
    const QJsonObject record = convertOne(path, apePreset, out.path());
    const QString output = record[QLatin1String("output")].toString();
    QVERIFY2(!output.isEmpty(), qPrintable(record[QLatin1String("message")].toString()));
    QCOMPARE(probeMedia(output).audio[QLatin1String("codec_name")].toString(),
             QStringLiteral("ape"));
    const QByteArray samples = samplesOf(output);
    QVERIFY(samples.size() > 80000);
    QVERIFY(samples == samplesOf(path));
    QCOMPARE(entriesOf(out.path()).size(), 1);
}

// The encoder's library ends with 0 also when it could not write all.
void TestSpecialFormats::halfAnApeIsNone()
{
    const QTemporaryDir work;
    const QString wav = work.filePath(QStringLiteral("in.wav"));
    ClipPlan sound;
    sound.width = 0;
    makeClip(wav, sound);
    const QString ape = work.filePath(QStringLiteral("out.ape"));
    const QString mac = builtProgram(QStringLiteral("module/mac/mac"));
    QCOMPARE(runTool(mac, {wav, ape, QStringLiteral("-c3000")}).exitCode, 0);
    QVERIFY(QFile::remove(ape));
    const ToolRun limited =
        runTool(QStringLiteral("bash"),
                {QStringLiteral("-c"),
                 QStringLiteral("ulimit -f 8; exec \"$0\" \"$1\" \"$2\" -c3000"), mac, wav, ape});
    QVERIFY(limited.exitCode != 0);
    QVERIFY(!limited.err.isEmpty());
    QVERIFY(!QFile::exists(ape));

    QVERIFY(QFile::resize(wav, QFileInfo(wav).size() - 100));
    const ToolRun cut = runTool(mac, {wav, ape, QStringLiteral("-c3000")});
    QCOMPARE(cut.exitCode, 1);
    QVERIFY(cut.err.contains(wav.toUtf8()));
    QVERIFY(!QFile::exists(ape));
    QVERIFY(runTool(mac, {ape, wav, QStringLiteral("-c3000")}).exitCode != 0);
}

void TestSpecialFormats::stopLeavesNothing_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<int>("preset");
    QTest::addColumn<QString>("workFile"); // the stop comes when this one is there
    QTest::newRow("kux") << QStringLiteral("long.kux") << mp4Preset << QStringLiteral("kux.mp4");
    QTest::newRow("qlv") << QStringLiteral("long.qlv") << mp4Preset << QStringLiteral("qlv.mp4");
    QTest::newRow("qsv") << QStringLiteral("long.qsv") << mp4Preset << QStringLiteral("qsv.t");
    QTest::newRow("ape") << QStringLiteral("long.wav") << apePreset << QStringLiteral("m.ape");
}

void TestSpecialFormats::stopLeavesNothing()
{
    QFETCH(QString, source);
    QFETCH(int, preset);
    QFETCH(QString, workFile);
    const QTemporaryDir out;
    const QString path = m_dir.filePath(source);
    ClipPlan plan;
    plan.seconds = 120.0;
    plan.width = source.endsWith(QLatin1String(".wav")) ? 0 : 320;
    const QString film = m_dir.filePath(plan.width == 0 ? source : QStringLiteral("long.mp4"));
    if (!QFile::exists(film))
        makeClip(film, plan);
    if (film != path)
        QVERIFY(QFile::copy(film, path));

    QProcess process;
    process.start(builtProgram(QStringLiteral("morvane-cli")),
                  {QStringLiteral("convert"), path, QStringLiteral("--preset"),
                   QString::number(preset), QStringLiteral("--out"), out.path()});
    const auto worksAt = [&] {
        const QDir marker(out.path() + QStringLiteral("/~~MRVN_Temp~~"));
        const QStringList works = marker.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
        return !works.isEmpty() && marker.exists(works.first() + QLatin1Char('/') + workFile);
    };
    QTRY_VERIFY_WITH_TIMEOUT(worksAt(), 30000);
    ::kill(pid_t(process.processId()), SIGINT);
    QVERIFY(process.waitForFinished(30000));
    QCOMPARE(process.exitCode(), 130);
    QVERIFY(entriesOf(out.path()).isEmpty());
    // The tools' own children go with them.
    QTRY_VERIFY_WITH_TIMEOUT(processesWith(out.path()).isEmpty(), 1000);
}

void TestSpecialFormats::toolsRefuseOtherArguments()
{
    for (const char *tool : {"module/ffmpeg/tool", "module/ffmpeg/tool2"}) {
        for (const QStringList &arguments : {QStringList(), QStringList(QStringLiteral("/a|/b")),
                                             QStringList({QStringLiteral("-i"), m_clip})}) {
            const ToolRun run = runTool(builtProgram(QLatin1String(tool)), arguments);
            QCOMPARE(run.exitCode, 2);
            QVERIFY(!run.err.isEmpty());
        }
    }
}

QTEST_GUILESS_MAIN(TestSpecialFormats)

#include "tst_specialformats.moc"
