// SPDX-License-Identifier: MIT
// Every displayed preset converts a real clip, and the result is what the preset says. With the
// argument "large" only the 4K presets run, else only the others.
#include "catalogue/encparamcatalog.h"
#include "clirun.h"
#include "support/mediaprobe.h"
#include "support/testmedia.h"

#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

namespace {

constexpr int large = 3840; // picture width in pixels from which a preset counts as large

bool runLarge = false;

struct Known
{
    const char *given;
    const char *expected;
};

QString lookUp(const QString &key, std::initializer_list<Known> table)
{
    for (const Known &row : table) {
        if (key == QLatin1String(row.given))
            return QLatin1String(row.expected);
    }
    return {};
}

// What ffprobe calls the container behind a suffix.
QString containerOf(const QString &suffix)
{
    return lookUp(
        suffix, {{"mp4", "mov,mp4"},   {"mov", "mov,mp4"}, {"m4v", "mov,mp4"}, {"f4v", "mov,mp4"},
                 {"3gp", "mov,mp4"},   {"m4a", "mov,mp4"}, {"m4r", "mov,mp4"}, {"mkv", "matroska"},
                 {"webm", "matroska"}, {"avi", "avi"},     {"wmv", "asf"},     {"wma", "asf"},
                 {"mpeg", "mpeg"},     {"vob", "mpeg"},    {"ogv", "ogg"},     {"ogg", "ogg"},
                 {"flv", "flv"},       {"swf", "swf"},     {"mp3", "mp3"},     {"wav", "wav"},
                 {"aac", "aac"},       {"flac", "flac"},   {"ac3", "ac3"}});
}

// The codec behind an encoder's name; without an encoder the container's own choice.
QString videoCodec(const QString &encoder, const QString &suffix)
{
    if (suffix == QLatin1String("swf"))
        return QStringLiteral("flv1");
    if (encoder.isEmpty())
        return suffix == QLatin1String("webm") ? QStringLiteral("vp9") : QString();
    const QString codec = lookUp(encoder, {{"libx264", "h264"},
                                           {"libxvid", "mpeg4"},
                                           {"msmpeg4", "msmpeg4v3"},
                                           {"libvpx", "vp8"},
                                           {"libtheora", "theora"}});
    return codec.isEmpty() ? encoder : codec;
}

QString audioCodec(const QString &encoder, const QString &suffix)
{
    if (suffix == QLatin1String("3gp") || suffix == QLatin1String("m4r"))
        return QStringLiteral("aac");
    if (encoder.isEmpty()) {
        return lookUp(suffix, {{"mp4", "aac"},
                               {"mov", "aac"},
                               {"m4v", "aac"},
                               {"f4v", "aac"},
                               {"m4a", "aac"},
                               {"aac", "aac"},
                               {"mkv", "vorbis"},
                               {"avi", "mp3"},
                               {"mpeg", "mp2"},
                               {"swf", "mp3"},
                               {"wav", "pcm_s16le"},
                               {"ac3", "ac3"}});
    }
    const QString codec = lookUp(encoder, {{"libmp3lame", "mp3"}, {"libvorbis", "vorbis"}});
    return codec.isEmpty() ? encoder : codec;
}

double rate(const QJsonObject &stream)
{
    const QStringList parts =
        stream[QLatin1String("avg_frame_rate")].toString().split(QLatin1Char('/'));
    return parts.size() == 2 ? parts[0].toDouble() / parts[1].toDouble() : 0.0;
}

QString codecOf(const QJsonObject &stream)
{
    return stream[QLatin1String("codec_name")].toString();
}

bool isDisplayed(const QJsonObject &preset)
{
    const QString category = preset[QLatin1String("category")].toString();
    return !category.isEmpty() && category != QLatin1String("APE");
}

} // namespace

class TestPresets : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void dryRunGivesTheOptions();
    void converts_data();
    void converts();
    void keepsOddSources_data();
    void keepsOddSources();

private:
    QString clip(const char *name) const { return m_dir.filePath(QLatin1String(name)); }
    void checkVideo(const QJsonObject &preset, const QString &suffix, const ProbedFile &result);
    void checkAudio(const QJsonObject &preset, const QString &suffix, const ProbedFile &result);

    QTemporaryDir m_dir;
    QJsonArray m_presets;
};

void TestPresets::initTestCase()
{
    m_presets = cliPresets();
    QCOMPARE(m_presets.size(), 201);
    makeClip(clip("stereo.mp4"));
    ClipPlan surround;
    surround.frameRate = 15;
    surround.channels = 6;
    surround.sampleRate = 48000;
    makeClip(clip("surround.mp4"), surround);
    ClipPlan silent;
    silent.channels = 0;
    makeClip(clip("silent.mp4"), silent);
    ClipPlan blind;
    blind.width = 0;
    makeClip(clip("blind.m4a"), blind);
}

// All 201 presets, also those that no dialog shows.
void TestPresets::dryRunGivesTheOptions()
{
    if (runLarge)
        QSKIP("once is enough");
    const EncParamCatalog &catalogue = EncParamCatalog::instance();
    for (const QJsonValue &value : qAsConst(m_presets)) {
        const QJsonObject preset = value.toObject();
        const QString id = QString::number(preset[QLatin1String("id")].toInt());
        const ToolRun run = runCli({QStringLiteral("convert"), clip("stereo.mp4"),
                                    QStringLiteral("--preset"), id, QStringLiteral("--dry-run")});
        QCOMPARE(run.exitCode, 0);
        const QStringList words = QProcess::splitCommand(QString::fromUtf8(run.out).trimmed());
        QStringList options = words.mid(words.indexOf(clip("stereo.mp4")) + 1);
        const bool isM4r = words.last().endsWith(QLatin1String(".m4r"));

        QStringList expected;
        const QJsonObject video = preset[QLatin1String("video")].toObject();
        const auto add = [&](const char *name, const QString &text) {
            if (!text.isEmpty() && text != QLatin1String("0"))
                expected << QLatin1String(name) << text;
        };
        const auto number = [](const QJsonObject &record, const char *key, const char *unit) {
            const int n = record[QLatin1String(key)].toInt();
            return n > 0 ? QString::number(n) + QLatin1String(unit) : QString();
        };
        add("-c:v", catalogue.encoderOf(video[QLatin1String("fourCC")].toString()));
        if (video[QLatin1String("width")].toInt() > 0) {
            add("-s", number(video, "width", "x") +
                          QString::number(video[QLatin1String("height")].toInt()));
        }
        add("-b:v", number(video, "bitrate", "k"));
        add("-r", QString::number(video[QLatin1String("frameRate")].toDouble()));
        const QJsonObject audio = preset[QLatin1String("audio")].toObject();
        if (isM4r) {
            add("-f", QStringLiteral("mp4"));
        } else {
            add("-c:a", catalogue.encoderOf(audio[QLatin1String("fourCC")].toString()));
            add("-ac", number(audio, "channel", ""));
        }
        add("-ar", number(audio, "sampleRate", ""));
        add("-b:a", number(audio, "bitrate", "k"));
        QCOMPARE(options.mid(0, expected.size()), expected);
        QVERIFY2(!options.mid(expected.size()).contains(QStringLiteral("-c:v")), qPrintable(id));
        QCOMPARE(options.indexOf(QStringLiteral("-max_muxing_queue_size")), options.size() - 3);
    }
}

void TestPresets::converts_data()
{
    QTest::addColumn<QJsonObject>("preset");
    int displayed = 0;
    for (const QJsonValue &value : qAsConst(m_presets)) {
        const QJsonObject preset = value.toObject();
        if (!isDisplayed(preset))
            continue;
        ++displayed;
        const int width = preset[QLatin1String("video")].toObject()[QLatin1String("width")].toInt();
        if ((width >= large) != runLarge)
            continue;
        QTest::addRow("%d %s", preset[QLatin1String("id")].toInt(),
                      qPrintable(preset[QLatin1String("category")].toString()))
            << preset;
    }
    QCOMPARE(displayed, 107);
}

void TestPresets::converts()
{
    QFETCH(QJsonObject, preset);
    const QTemporaryDir out;
    const QJsonObject record =
        convertOne(clip("stereo.mp4"), preset[QLatin1String("id")].toInt(), out.path());
    const QString output = record[QLatin1String("output")].toString();
    QVERIFY2(!output.isEmpty(), qPrintable(record[QLatin1String("message")].toString()));
    QCOMPARE(record[QLatin1String("warnings")].toArray(), QJsonArray());
    QCOMPARE(entriesOf(out.path()), QStringList(QFileInfo(output).fileName()));

    const QString suffix = QFileInfo(output).suffix();
    QCOMPARE(suffix, preset[QLatin1String("category")].toString().toLower());
    const ProbedFile result = probeMedia(output);
    QVERIFY2(result.container.contains(containerOf(suffix)), qPrintable(result.container));
    if (preset[QLatin1String("video")].isObject())
        checkVideo(preset, suffix, result);
    if (preset[QLatin1String("audio")].isObject())
        checkAudio(preset, suffix, result);
    if (preset[QLatin1String("keepSource")].toBool())
        QVERIFY(!result.audio.isEmpty());
}

void TestPresets::checkVideo(const QJsonObject &preset, const QString &suffix,
                             const ProbedFile &result)
{
    const QJsonObject video = preset[QLatin1String("video")].toObject();
    const int width = video[QLatin1String("width")].toInt();
    const int height = video[QLatin1String("height")].toInt();
    QCOMPARE(result.video[QLatin1String("width")].toInt(), width > 0 ? width / 2 * 2 : 320);
    QCOMPARE(result.video[QLatin1String("height")].toInt(), height > 0 ? height / 2 * 2 : 240);
    const QString encoder =
        EncParamCatalog::instance().encoderOf(video[QLatin1String("fourCC")].toString());
    QCOMPARE(codecOf(result.video), videoCodec(encoder, suffix));
    // ASF keeps no frame rate, and ffprobe's guess from half a second is too coarse.
    const double wanted = video[QLatin1String("frameRate")].toDouble();
    if (suffix != QLatin1String("wmv"))
        QVERIFY2(qAbs(rate(result.video) - wanted) < 0.7,
                 qPrintable(QString::number(rate(result.video))));
}

void TestPresets::checkAudio(const QJsonObject &preset, const QString &suffix,
                             const ProbedFile &result)
{
    const QJsonObject audio = preset[QLatin1String("audio")].toObject();
    const QString encoder =
        EncParamCatalog::instance().encoderOf(audio[QLatin1String("fourCC")].toString());
    QCOMPARE(codecOf(result.audio), audioCodec(encoder, suffix));
    QCOMPARE(result.audio[QLatin1String("sample_rate")].toString().toInt(),
             audio[QLatin1String("sampleRate")].toInt());
    QCOMPARE(result.audio[QLatin1String("channels")].toInt(),
             audio[QLatin1String("channel")].toInt());
}

void TestPresets::keepsOddSources_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<QString>("source");
    if (runLarge)
        QSKIP("no 4K preset keeps its source");
    for (const QJsonValue &value : qAsConst(m_presets)) {
        const QJsonObject preset = value.toObject();
        const int id = preset[QLatin1String("id")].toInt();
        const bool named = preset[QLatin1String("name")].toString() == QStringLiteral("同原文件");
        if (!named || !isDisplayed(preset))
            continue;
        for (const char *source : {"surround.mp4", "silent.mp4", "blind.m4a"}) {
            QTest::addRow("%d %s", id, source) << id << QString::fromLatin1(source);
        }
    }
}

void TestPresets::keepsOddSources()
{
    QFETCH(int, id);
    QFETCH(QString, source);
    const QTemporaryDir out;
    const QJsonObject record = convertOne(m_dir.filePath(source), id, out.path());
    const QString message = record[QLatin1String("message")].toString();
    const QString output = record[QLatin1String("output")].toString();
    if (id == 1200000 && source == QLatin1String("silent.mp4")) {
        QVERIFY2(message.contains(QStringLiteral("没有此格式能容纳的内容")), qPrintable(message));
        QVERIFY(entriesOf(out.path()).isEmpty());
        return;
    }
    QVERIFY2(!output.isEmpty(), qPrintable(message));
    const ProbedFile result = probeMedia(output);
    const bool wantsVideo = id != 1200000 && source != QLatin1String("blind.m4a");
    QCOMPARE(!result.video.isEmpty(), wantsVideo);
    QCOMPARE(!result.audio.isEmpty(), source != QLatin1String("silent.mp4"));
    if (wantsVideo) {
        QCOMPARE(result.video[QLatin1String("width")].toInt(), 320);
        QCOMPARE(result.video[QLatin1String("height")].toInt(), 240);
    }
}

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    runLarge = argc > 1 && QByteArray(argv[argc - 1]) == "large";
    TestPresets tests;
    return QTest::qExec(&tests, runLarge ? argc - 1 : argc, argv);
}

#include "tst_presets.moc"
