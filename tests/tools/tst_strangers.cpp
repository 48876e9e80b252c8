// SPDX-License-Identifier: MIT
// Files that name other files and addresses in their content, given to everything of ours that
// opens files, under strace: by the kernel's own account nothing that they name is opened, and
// nobody is called.
#include "support/testfile.h"
#include "support/testmedia.h"
#include "support/toolrun.h"

#include <QDataStream>
#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

#include <sys/stat.h>

namespace {

// What strace has told; the lists are lines of it.
struct Account
{
    QByteArrayList opened;  ///< what was opened of the folder of strangers
    QByteArrayList network; ///< sockets of the network
    int refused = 0;        ///< tries at either that came to nothing
    int processes = 0;      ///< and threads
};

// Kind of a file by its suffix, and what it says; "@" stands for what it names.
const QVector<QPair<QString, QByteArray>> scripts{
    {"m3u"_s, "#EXTM3U\n#EXTINF:1,a\n@\n"},
    {"m3u8"_s, "#EXTM3U\n#EXT-X-TARGETDURATION:1\n#EXTINF:1,\n@\n#EXT-X-ENDLIST\n"},
    {"key.m3u8"_s, "#EXTM3U\n#EXT-X-TARGETDURATION:1\n#EXT-X-KEY:METHOD=AES-128,URI=\"@\"\n"
                   "#EXTINF:1,\nfilm.ts\n#EXT-X-ENDLIST\n"},
    {"all.m3u8"_s, "#EXTM3U\n#EXT-X-STREAM-INF:BANDWIDTH=90000\n@\n"},
    {"pls"_s, "[playlist]\nNumberOfEntries=1\nFile1=@\n"},
    {"asx"_s, "<asx version=\"3.0\"><entry><ref href=\"@\"/></entry></asx>\n"},
    {"asf"_s, "[Reference]\r\nRef1=@\r\n"},
    {"sdp"_s, "v=0\no=- 0 0 IN IP4 127.0.0.1\ns=@\nc=IN IP4 127.0.0.1\nt=0 0\n"
              "m=video 5004 RTP/AVP 96\na=rtpmap:96 H264/90000\na=control:@\n"},
    {"edl"_s, "# mpv EDL v0\n@,0,1\n"},
    {"ffconcat"_s, "ffconcat version 1.0\nfile '@'\n"},
    {"mpd"_s, "<?xml version=\"1.0\"?><MPD xmlns=\"urn:mpeg:dash:schema:mpd:2011\" type=\"static\" "
              "mediaPresentationDuration=\"PT1S\"><Period><AdaptationSet mimeType=\"video/mp4\">"
              "<Representation id=\"1\" bandwidth=\"9\"><BaseURL>@</BaseURL><SegmentBase/>"
              "</Representation></AdaptationSet></Period></MPD>\n"},
    {"smil"_s, "<smil><body><video src=\"@\"/></body></smil>\n"},
    {"srt"_s, "1\n00:00:00,000 --> 00:00:01,000\n<img src=\"@\">\n"},
    {"ass"_s, "[Script Info]\nScriptType: v4.00+\n[Aegisub Project Garbage]\nVideo File: @\n"
              "[Events]\nDialogue: 0,0:00:00.00,0:00:01.00,,,0,0,0,,@\n"},
};

QByteArray atom(const char *type, const QByteArray &content)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream << quint32(content.size() + 8);
    return bytes + type + content;
}

// A QuickTime film whose pictures are elsewhere.
QByteArray referringFilm(const QByteArray &place)
{
    const QByteArray none(4, '\0');
    const QByteArray one("\0\0\0\1", 4);
    const QByteArray coded = QByteArray(7, '\0') + '\1' + QByteArray(70, '\0');
    const QByteArray table = atom("stsd", none + one + atom("avc1", coded)) +
                             atom("stts", none + one + one + one) +
                             atom("stsc", none + one + one + one + one) +
                             atom("stsz", none + one + one) + atom("stco", none + one + none);
    const QByteArray places = atom("dref", none + one + atom("url ", none + place + '\0'));
    const QByteArray film = atom("mdhd", none + none + none + one + one + none) +
                            atom("hdlr", none + "mhlrvide" + QByteArray(13, '\0')) +
                            atom("minf", atom("vmhd", QByteArray(12, '\0')) + atom("dinf", places) +
                                             atom("stbl", table));
    return atom("ftyp", "qt  " + none + "qt  ") +
           atom("moov",
                atom("mvhd", none + none + none + one + one + QByteArray(80, '\0')) +
                    atom("trak", atom("tkhd", one + QByteArray(80, '\0')) + atom("mdia", film)));
}

} // namespace

class TestStrangers : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        // The leak check of a sanitized build stops a program that is traced.
        qputenv("ASAN_OPTIONS", "detect_leaks=0");
        qunsetenv("http_proxy");
        if (traced("true"_s, {}).processes == 0)
            QSKIP("strace is missing or may not trace");
        const ToolRun run = runTool(builtProgram("module/ffmpeg/ffmpeg"_s), {"-version"_s});
        if (run.err.contains("this system"))
            QSKIP("the kernel confines nothing");
        QVERIFY(QDir().mkpath(path("below"_s)));
        makeMedia("-f lavfi -i testsrc2=d=1:s=160x120 -f lavfi -i sine=d=1 -pix_fmt yuv420p @"_s,
                  {m_film});
        QVERIFY(QFile::copy(m_film, path("below/canary.mp4"_s)));
        makeMedia("-i @ -frames:v 1 @"_s, {m_film, path("below/canary.png"_s)});
        makeHostileFiles();
    }

    // That strace sees what the rest has to be free of.
    void plainToolsReachThem()
    {
        QVERIFY(!traced("/usr/bin/ffprobe"_s, {path("0.ffconcat"_s)}).opened.isEmpty());
        QVERIFY(!traced("/usr/bin/ffprobe"_s,
                        {"-protocol_whitelist"_s, "file,http,tcp"_s, path("2.m3u8"_s)})
                     .network.isEmpty());
    }

    // Each goes through the library, ffprobe and ffmpeg.
    void sources()
    {
        expectNothing("morvane-cli"_s, QStringList{"convert"_s, "--preset"_s, "1003005"_s,
                                                   "--jobs"_s, "2"_s, "--out"_s, path("out"_s)} +
                                           m_files + makeNoFiles());
        QVERIFY(!QDir(path("out"_s)).exists() || entriesOf(path("out"_s)).isEmpty());
    }

    void whatIsAddedToFilms()
    {
        // The second is one that never answers.
        const QByteArray image = "<image width=\"9\" height=\"9\" xlink:href=\"@\"/>";
        const QString drawing = path("mark.svg"_s);
        writeTestFile(drawing,
                      "<svg width=\"90\" height=\"90\">" +
                          QByteArray(image).replace('@', path("below/canary.png"_s).toUtf8()) +
                          QByteArray(image).replace('@', makeNoFiles().first().toUtf8()) +
                          "<rect width=\"90\" height=\"90\"/></svg>");
        const QString mark = R"({"image":"%1","rect":[0,0,90,90]})"_s;
        const QString song = R"({"file":"%1"})"_s;
        QStringList words{"convert"_s, "--preset"_s, "1003005"_s, "--out"_s, path("out"_s), m_film};
        expectNothing("morvane-cli"_s, words + QStringList{"--watermark"_s, mark.arg(drawing)});
        QCOMPARE(entriesOf(path("out"_s)), QStringList("film.mp4"_s));
        words += "--dub"_s;
        for (const char *name : {"0.ffconcat", "1.m3u8", "1.mov"})
            expectNothing("morvane-cli"_s,
                          words + QStringList(song.arg(path(QLatin1String(name)))));
    }

    void player()
    {
        expectNothing("module/morplayer/morplayer"_s,
                      QStringList{"--no-config"_s, "--vo=null"_s, "--ao=null"_s, "--"_s} + m_files);
    }

private:
    QString path(const QString &name) const { return m_folder.filePath(name); }

    // Tools tell files by their content, the library by suffixes as well: each script comes under
    // its own and as a film.
    void makeHostileFiles()
    {
        const QByteArray places[] = {"below/canary.mp4", path("below/canary.mp4"_s).toUtf8(),
                                     "http://127.0.0.1:9/canary.mp4"};
        for (int i = 0; i < 3; ++i) {
            for (const auto &[kind, text] : scripts)
                add("%1.%2"_s.arg(i).arg(kind), QByteArray(text).replace('@', places[i]));
            add("%1.mov"_s.arg(i), referringFilm(places[i]));
        }
        const QStringList made = m_files;
        for (int i = 0; i < made.size(); i += 2) {
            m_files[i] += ".mp4"_s;
            QVERIFY(QFile::copy(made[i], m_files[i]));
        }
        // Those that go through other tools first.
        for (const char *suffix : {"kux", "qlv", "qsv"})
            add("special."_s + QLatin1String(suffix), contentOf(path("0.ffconcat"_s)));
    }
    // A pipe, and links to it and to other things that are no files.
    QStringList makeNoFiles() const
    {
        QStringList made{path("pipe.mp4"_s)};
        ::mkfifo(qPrintable(made.first()), 0600);
        for (const QString &target :
             {made.first(), "/dev/zero"_s, path("link3.mp4"_s), m_folder.path()}) {
            made += path("link%1.mp4"_s.arg(made.size()));
            QFile::link(target, made.last());
        }
        return made;
    }
    void add(const QString &name, const QByteArray &content)
    {
        writeTestFile(path(name), content);
        m_files += path(name);
    }

    static Account traced(const QString &program, const QStringList &arguments)
    {
        const QTemporaryDir traces;
        runTool("strace"_s, QStringList{"-ff"_s, "--seccomp-bpf"_s, "-y"_s, "-qq"_s, "-o"_s,
                                        traces.filePath("of"_s), "-e"_s,
                                        "trace=socket,open,openat,openat2"_s, program} +
                                arguments);
        Account account;
        for (const QString &name : QDir(traces.path()).entryList(QDir::Files)) {
            ++account.processes;
            for (const QByteArray &line : contentOf(traces.filePath(name)).split('\n'))
                count(line, account);
        }
        return account;
    }
    static void count(const QByteArray &line, Account &account)
    {
        const bool isStranger = line.contains("/canary");
        if (!isStranger && !line.contains("(AF_INET"))
            return;
        if (line.contains(" = -1 "))
            ++account.refused;
        else
            (isStranger ? account.opened : account.network) += line;
    }

    static void expectNothing(const QString &program, const QStringList &arguments)
    {
        const Account account = traced(builtProgram(program), arguments);
        qInfo("processes and threads %d, refused tries %d", account.processes, account.refused);
        QVERIFY(account.processes > 0);
        QVERIFY2(account.opened.isEmpty(), account.opened.join('\n').constData());
        QVERIFY2(account.network.isEmpty(), account.network.join('\n').constData());
    }

    QTemporaryDir m_folder;
    const QString m_film = path("film.mp4"_s);
    QStringList m_files;
};

QTEST_GUILESS_MAIN(TestStrangers)
#include "tst_strangers.moc"
