// SPDX-License-Identifier: MIT
#include "MediaKits/MediaInfo/FFMediaInfo/ffprobejson.h"
#include "MediaKits/MediaInfo/MAMediaInfo/readingprocess.h"
#include "MediaKits/MediaInfo/mediainfo.h"
#include "MediaKits/MediaInfo/shownpicture.h"

#include "platform/utf8locale.h"
#include "support/casename.h"
#include "support/factsof.h"
#include "support/testmedia.h"
#include "support/toolrun.h"

#include <QtTest>

#include <csignal>
#include <memory>
#include <vector>

#include <sys/stat.h>

namespace {

// A record in one line, so that tables can state it: "suffix ms bytes kbit/s streams | picture:
// codec size kbit/s rate angle | sound: codec channels Hz kbit/s".
QString described(const MediaInfoData &data)
{
    QString text;
    QTextStream stream(&text);
    stream.setRealNumberPrecision(10);
    if (const auto format = data.format)
        stream << format->formatName << ' ' << format->duration << ' ' << format->fileSize << ' '
               << format->bitrate << ' ' << format->streamCount;
    if (const auto video = data.video)
        stream << " | " << video->fourCC << ' ' << video->width << 'x' << video->height << ' '
               << video->bitrate << ' ' << video->frameRate << ' ' << video->rotate;
    for (const auto &audio : data.audios)
        stream << " | " << audio->fourCC << ' ' << audio->channel << ' ' << audio->sampleRate << ' '
               << audio->bitrate;
    stream.flush();
    return text;
}

// Formats that make the program choose ffprobe and the library.
const QString byFfprobe = "QSV"_s;
const QString byLibrary = "AVI"_s;

// One probe with the names of its signals in the order they came.
struct Probe
{
    Probe(const QString &format, const QString &path)
        : reader(createMediaInfo(format, path, nullptr))
    {
        const auto note = [this](const char *name) {
            return [this, name] { signalled += QLatin1String(name); };
        };
        QObject::connect(reader.get(), &MediaInfoBase::got, note("got"));
        QObject::connect(reader.get(), &MediaInfoBase::error, note("error"));
        QObject::connect(reader.get(), &MediaInfoBase::finish, note("finish"));
        reader->start();
        QTRY_VERIFY_WITH_TIMEOUT(!signalled.isEmpty(), 20000);
    }

    std::unique_ptr<MediaInfoBase> reader;
    QStringList signalled;
};

const QStringList success = {"got"_s, "finish"_s};

} // namespace

class TstProbing : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY(QDir::setCurrent(m_dir.path()));
        makeClip("both.avi"_s);
        ClipPlan soundOnly;
        soundOnly.width = 0;
        soundOnly.channels = 1;
        makeClip("sound.MP3"_s, soundOnly);
        ClipPlan silent;
        silent.channels = 0;
        makeClip("silent.mp4"_s, silent);
        const QString turned = "-i silent.mp4 -c copy -metadata:s:v rotate=90 turned.mp4"_s;
        const QString soundFirst = "-i both.avi -map 0:a -map 0:v -map 0:a -c copy "
                                   "-c:a:0 aac -ac:a:0 1 soundfirst.mkv"_s;
        const QString wide = "-i turned.mp4 -c copy -aspect 16:9 wide.mp4"_s;
        for (const QString &arguments : {turned, soundFirst, wide})
            QCOMPARE(runTool("ffmpeg"_s, arguments.split(u' ')).exitCode, 0);
        QVERIFY(QDir::current().mkdir("folder.mp4"_s));
        QFile text("text.mp4"_s);
        QVERIFY(text.open(QIODevice::WriteOnly));
        text.write("no media\n");
    }

    void readsJson()
    {
        const auto check = [&](const char *caseName, const QByteArray &json,
                               const QString &expected) {
            const CaseName inCase(caseName);
            const QJsonDocument document = QJsonDocument::fromJson(json);
            QVERIFY(document.isObject());
            MediaInfoData data;
            data.format = QSharedPointer<MediaFormatInfo>::create();
            data.format->formatName = "X"_s;
            readProbeJson(document.object(), data);
            QCOMPARE(described(data), expected);
        };

        const auto row = [&](const char *name, const QByteArray &json, const char *expected) {
            check(name, QByteArray(json).replace('\'', '"'), QString::fromUtf8(expected));
        };
        row("all fields",
            "{'format':{'format_name':'mov,mp4','duration':'12.3459','size':'5000000000',"
            "'bit_rate':'1999999','nb_streams':2},'streams':["
            "{'index':0,'codec_type':'video','codec_name':'h264','width':1920,'height':1080,"
            "'bit_rate':'1500999','r_frame_rate':'30000/1001','tags':{'rotate':'270'}},"
            "{'index':1,'codec_type':'audio','codec_name':'aac','sample_rate':'48000','channels':6,"
            "'bit_rate':'1999'}]}",
            "X 12345 5000000000 1999 2 | H264 1920x1080 1500 29.97002997 270 | AAC 6 48000 1");
        row("no format and no list", "{'streams':{'codec_type':'audio'}}", "");
        row("unreadable numbers",
            "{'format':{'duration':'N/"
            "A','size':'x','bit_rate':'','nb_streams':'3'},'streams':[{'codec_type':'video','r_"
            "frame_"
            "rate':'25'}]}",
            "X 0 0 0 0 |  0x0 0 0 0");
        row("bitrate of the container",
            "{'format':{'bit_rate':'900999'},'streams':[{'codec_type':'audio','index':1},"
            "{'codec_type':'video','index':0,'tags':{},'r_frame_rate':'25/0'}]}",
            "X 0 0 900 0 |  0x0 900 0 0 |  0 0 0");
        row("what no file has",
            "{'format':{'duration':'1e300','bit_rate':'9223372036854775807','nb_streams':-3},"
            "'streams':[{'codec_type':'video','index':0,'width':-5,'height':2147483647,"
            "'r_frame_rate':'inf/1','tags':{'rotate':'nan'},'bit_rate':'-99999'},"
            "{'codec_type':'audio','channels':-1,'sample_rate':'-2147483648'}]}",
            "X 0 0 0 0 |  0x2147483647 0 0 0 |  0 0 0");
        row("a picture of too many pixels",
            "{'streams':[{'codec_type':'video','index':0,'width':65536,'height':65536}]}",
            " |  0x0 0 0 0");
        row("picture further back and other kinds",
            "{'streams':[{'codec_type':'subtitle','index':0},7,{'codec_type':'audio','index':1},"
            "{'codec_type':'video','index':2,'codec_name':'mjpeg'}]}",
            " |  0 0 0");
    }

    // The tool reads strangers' files, so that what it answers need not be its own words.
    void messagesAreChecked()
    {
        ReadAnswer answer{ReadOutcome::Read, QSharedPointer<MediaInfoData>::create()};
        answer.info->format = newFormatInfo("a.mp4"_s);
        answer.info->video = QSharedPointer<VEncParam>::create();
        answer.info->video->frameRate = qQNaN();
        answer.info->video->pixelAspect = -0.0;
        answer.info->content.toldMs = -5;
        QByteArray message = packed(answer);
        const ReadAnswer told = unpackedAnswer(message);
        QCOMPARE(told.info->video->frameRate, 0.0);
        QCOMPARE(told.info->video->pixelAspect, 1.0);
        QCOMPARE(told.info->content.toldMs, qint64(0));
        message[0] = 7;
        QCOMPARE(unpackedAnswer(message.left(1)).outcome, ReadOutcome::Failed);
        QByteArray request = packed(ReadRequest{"/a"_s, ReadDepth::Headers});
        request[0] = 7;
        QCOMPARE(unpackedRequest(request).depth, ReadDepth::Streams);
    }

    // The library calls it cut off, and its header is one that isn't read here.
    void cutOffWithoutAKnownSize()
    {
        const QTemporaryDir dir;
        const QString path = dir.filePath("a.wav"_s);
        makeMedia("-f lavfi -i sine=d=4 -rf64 always -f wav @"_s, {path});
        QVERIFY(QFile::resize(path, QFileInfo(path).size() / 2));
        QCOMPARE(factsOf(path, ReadDepth::Headers)->content.toldMs, qint64(0));
    }

    // The length of a file is that of its longest stream.
    void subtitlesHideTheLength()
    {
        for (const char *kind : {"data", "subtitle"}) {
            const QByteArray json = "{\"format\":{\"format_name\":\"matroska,webm\",\"duration\":"
                                    "\"20\"},\"streams\":[{\"codec_type\":\"" +
                                    QByteArray(kind) + "\"}]}";
            MediaInfoData data;
            data.format = QSharedPointer<MediaFormatInfo>::create();
            readProbeJson(QJsonDocument::fromJson(json).object(), data);
            QCOMPARE(data.content.toldMs, qint64(*kind == 'd' ? 20000 : 0));
        }
    }

    void readsClips()
    {
        const auto check = [&](const char *caseName, const QStringList &facts) {
            const CaseName inCase(caseName);
            const QString path = QString::fromUtf8(caseName);
            for (const QString &format : {byFfprobe, byLibrary}) {
                const Probe probe(format, path);
                QCOMPARE(probe.signalled, success);
                const auto data = probe.reader->mediaInfo();
                QVERIFY(data && data->format);
                QCOMPARE(data->format->fileSize, QFileInfo(path).size());
                QVERIFY2(qAbs(data->format->duration - 500) <= 100, qPrintable(described(*data)));
                // The encoder's version decides the length and the bitrate of the picture.
                const QString steady =
                    described(*data)
                        .replace(QRegularExpression("^(\\w+) \\d+ \\d+ \\d+"_s), "\\1"_s)
                        .replace(QRegularExpression("(\\d+x\\d+) \\d+"_s), "\\1"_s);
                QCOMPARE("%1: %2"_s.arg(probe.reader->mediaKind()).arg(steady),
                         facts[format == byLibrary]);
            }
        };
        const auto row = [&](const char *path, const char *ofFfprobe, const char *ofLibrary) {
            check(path,
                  QStringList{QString::fromLatin1(ofFfprobe), QString::fromLatin1(ofLibrary)});
        };
        // A stream of an AVI file has no tags, and none about a turn.
        row("both.avi", "1: AVI 2 | MPEG4 320x240 30 0 | MP3 2 44100 128",
            "1: AVI 1 | MPEG-4 Visual 320x240 30 0 | MPEG Audio 2 44100 128");
        row("sound.MP3", "2: MP3 1 | MP3 1 44100 64", "2: MP3 1 | MPEG Audio 1 44100 64");
        row("silent.mp4", "1: MP4 1 | H264 320x240 30 0", "1: MP4 1 | AVC 320x240 30 0");
        // Newer versions of ffprobe tell the angle of an MP4 file elsewhere than in its tags.
        row("turned.mp4", "1: MP4 1 | H264 320x240 30 270", "1: MP4 1 | AVC 320x240 30 270");
        row("soundfirst.mkv", "2: MKV 3 | AAC 1 44100 0 | MP3 2 44100 128",
            "1: MKV 1 | MPEG-4 Visual 320x240 30 0 | AAC 1 44100 0 | MPEG Audio 2 44100 128");
    }

    // Upright by its tag, and with pixels that are wider than high as they are coded.
    void tellsHowPicturesAreShown()
    {
        for (const QString &format : {byFfprobe, byLibrary}) {
            const Probe probe(format, "wide.mp4"_s);
            const auto video = probe.reader->mediaInfo()->video;
            QVERIFY(isUpright(*video));
            QCOMPARE(turnedSize(*video), QSize(240, 320));
            QVERIFY2(std::abs(turnedPixelAspect(*video) - 0.75) < 0.001,
                     qPrintable(QString::number(video->pixelAspect)));
            QCOMPARE(shownSize(*video), QSize(240, 427));
        }
        VEncParam video;
        video.width = 720;
        video.height = 576;
        video.rotate = 180.0;
        video.pixelAspect = 64.0 / 45.0;
        QCOMPARE(shownSize(video), QSize(1024, 576));
        video.rotate = -90.0;
        QCOMPARE(turnedSize(video), QSize(576, 720));
    }

    void meetsUnusableFiles()
    {
        for (const char *name : {"missing.mp4", "folder.mp4", "text.mp4"}) {
            const QString path = QString::fromLatin1(name);
            const Probe ffprobe(byFfprobe, path);
            QCOMPARE(ffprobe.signalled, success);
            const auto data = ffprobe.reader->mediaInfo();
            QVERIFY(data && !data->format && !data->video && data->audios.isEmpty());

            const Probe library(byLibrary, path);
            QCOMPARE(library.reader->mediaKind(), int(MediaInfoBase::NothingUsable));
            const auto ofLibrary = library.reader->mediaInfo();
            // The library opens a text and finds no stream in it.
            const bool opens = QFileInfo(path).isFile();
            QCOMPARE(library.signalled, opens ? success : QStringList{"error"_s});
            QCOMPARE(!ofLibrary.isNull(), opens);
            QVERIFY(!opens || (!ofLibrary->video && ofLibrary->audios.isEmpty()));
        }
    }

    void choosesReader()
    {
        QFile file("sparse"_s);
        QVERIFY(file.open(QIODevice::WriteOnly));
        const auto usesFfprobe = [&file, this](const QString &format) {
            return createMediaInfo(format, file.fileName(), this)->inherits("FFMediaInfo");
        };
        QVERIFY(usesFfprobe(byFfprobe));
        constexpr qint64 limit = qint64(3) << 30;
        if (!file.resize(limit))
            QSKIP("the file system holds no file of that size");
        QVERIFY(usesFfprobe(byLibrary));
        QVERIFY(file.resize(limit - 1));
        QVERIFY(!usesFfprobe(byLibrary));
    }

    // The library crashes on one file and hangs on another; the reader is killed before.
    void survivesTheLibrary()
    {
        for (const char *name : {"crash.avi", "hang.avi", "well.avi"})
            QVERIFY(QFile::copy("both.avi"_s, QLatin1String(name)));
        const pid_t reader = pid_t(ReadingProcess::instance().processId());
        QVERIFY(reader > 0);
        qputenv("LD_PRELOAD", SHAKY_LIBRARY);
        ::kill(reader, SIGKILL);
        std::vector<std::unique_ptr<MediaInfoBase>> readers;
        QMap<QString, int> widths;
        for (const char *name : {"crash.avi", "hang.avi", "well.avi"}) {
            const QString path = QLatin1String(name) + QString();
            readers.emplace_back(createMediaInfo(byLibrary, path, nullptr));
            connect(readers.back().get(), &MediaInfoBase::got, this,
                    [&widths, path, reader = readers.back().get()] {
                        widths[path] = reader->mediaInfo()->video->width;
                    });
            readers.back()->start();
        }
        QTRY_COMPARE_WITH_TIMEOUT(widths.size(), 3, 30000);
        QCOMPARE(widths.values(), QList<int>({320, 320, 320}));
        qunsetenv("LD_PRELOAD");
    }

    // A list of a film's parts is read alone, not what it names.
    void opensNoOtherFile()
    {
        QFile list("list.m3u8"_s);
        QVERIFY(list.open(QIODevice::WriteOnly));
        list.write("#EXTM3U\n#EXT-X-TARGETDURATION:3\n#EXTINF:3,\nboth.avi\n#EXT-X-ENDLIST\n");
        list.close();
        const Probe probe(byLibrary, list.fileName());
        const auto info = probe.reader->mediaInfo();
        QVERIFY(!info || !info->video);
        QVERIFY(mkfifo("pipe.avi", 0600) == 0);
        QCOMPARE(Probe(byLibrary, "pipe.avi"_s).signalled, QStringList{"error"_s});
    }

    void readsOddNameAndMayBeDeleted()
    {
        const QString name = "- \"it's\" \"  墨泉 🎬\n100%1\\:#?b*[c]{d} $HOME `x`;&| .avi"_s;
        QVERIFY(QFile::copy("both.avi"_s, name));
        for (const QString &format : {byFfprobe, byLibrary}) {
            QPointer<MediaInfoBase> reader = createMediaInfo(format, name, this);
            QSharedPointer<MediaInfoData> kept;
            connect(reader, &MediaInfoBase::got, this, [&] {
                kept = reader->mediaInfo();
                reader->deleteLater();
            });
            reader->start();
            QTRY_VERIFY_WITH_TIMEOUT(reader.isNull(), 20000);
            QVERIFY(kept && kept->video);
            QCOMPARE(kept->video->width, 320);
        }
    }

private:
    QTemporaryDir m_dir;
};

int main(int argc, char *argv[])
{
    // File names in any script, whatever the shell's locale is.
    ensureUtf8Locale();
    const QCoreApplication application(argc, argv);
    TstProbing test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_probing.moc"
