// SPDX-License-Identifier: MIT
#include "MediaKits/MediaFormats/mediaformats.h"
#include "MediaKits/MediaFormats/mediatexts.h"
#include "MediaKits/MediaFormats/outputpath.h"
#include "MediaKits/MediaFormats/toolquoting.h"
#include "platform/utf8locale.h"
#include "support/testfile.h"

#include <QtTest>

class TstFormats : public QObject
{
    Q_OBJECT

private slots:
    void texts()
    {
        const std::pair<const char *, QString> rows[] = {
            {"00:59:59", timeText(3599999)},
            {"01:01:01", timeText(90061000)},
            {"1023 B", sizeText(1023)},
            {"1.00 KB", sizeText(1024)},
            {"1024.00 KB", sizeText(1048575)},
            {"1.00 MB", sizeText(1048576)},
            {"5504.00 GB", sizeText(5909874999296)},
        };
        for (const auto &[expected, result] : rows)
            QCOMPARE(result, QLatin1String(expected));
    }

    void classifiesSuffixes()
    {
        QCOMPARE(allFormats().size(), 68);
        QCOMPARE(mediaClassOf("Kux"_s), VideoMediaClass);
        QCOMPARE(mediaClassOf("FLAC"_s), AudioMediaClass);
        QCOMPARE(mediaClassOf("png"_s), UnknownMediaClass);
        QVERIFY(isSpecialFormat("qLv"_s));
    }

    void buildsFilters()
    {
        const QString audio = "*.mp3 *.wav *.m4a *.wma *.aac *.flac *.ac3 *.m4r *.ape "
                              "*.ogg "_s;
        QCOMPARE(fileDialogFilter(AudioFormatClass), "音频文件(%1);;多媒体文件(%1)"_s.arg(audio));
        const QStringList everything = fileDialogFilter(7).split(";;"_s);
        QCOMPARE(everything.size(), 5);
        QVERIFY(everything[0].startsWith("所有格式(*.png *.swf "_s));
        QCOMPARE(everything[2], "专有视频文件(*.qlv *.qsv *.kux )"_s);
    }

    void acceptsFilesOnly()
    {
        const QTemporaryDir dir;
        const QString file = dir.filePath("a#1 %.b.MP4"_s);
        const QString folder = dir.filePath("folder.mp4"_s);
        writeTestFile(file);
        QVERIFY(QDir().mkpath(folder));
        const QUrl remote("http://localhost"_s + dir.path() + "/x.mp4"_s);
        const QUrl missing = QUrl::fromLocalFile(dir.filePath("x.mp4"_s));
        const QList<QUrl> bad = {remote, missing, QUrl::fromLocalFile(folder), QUrl()};
        QVERIFY(!acceptsUrls(bad, allFormats()));
        QVERIFY(acceptsUrls(bad + QList<QUrl>{QUrl::fromLocalFile(file)}, allFormats()));
        QVERIFY(!acceptsUrls({QUrl::fromLocalFile(file)}, audioFormats()));
    }

    void findsFreeNames()
    {
        const std::tuple<const char *, const char *, const char *> rows[] = {
            {"a.mp4", "b.mp4", "a.mp4"},
            {"a(2).mp4", "a(2).mp4", "a(2)(2).mp4"},
            {"a.b.mp4", "a.b.mp4", "a.b(2).mp4"},
            {"a", "a", "a(2)"},
            {"%2 %1.mp4", "%2 %1.mp4", "%2 %1(2).mp4"},
            {"合并视频.mp4", "合并视频.mp4|合并视频(2).mp4", "合并视频(3).mp4"},
        };
        // As files, then as links that lead nowhere.
        for (const bool asLink : {false, true}) {
            for (const auto &[wanted, existing, free] : rows) {
                const QTemporaryDir dir(QDir::tempPath() + "/%3XXXXXX"_s);
                for (const QString &name : QString::fromUtf8(existing).split(u'|')) {
                    if (asLink)
                        QVERIFY(QFile::link(dir.filePath("none"_s), dir.filePath(name)));
                    else
                        writeTestFile(dir.filePath(name));
                }
                QCOMPARE(uniqueOutputPath(dir.filePath(QString::fromUtf8(wanted))),
                         dir.filePath(QString::fromUtf8(free)));
            }
        }
    }

    void measuresNamesInBytes()
    {
        const QString folder = QString(300, u'd') + u'/';
        QVERIFY(fileNameFits(folder + QString(85, QChar(0x58a8))));
        QVERIFY(!fileNameFits(QString(86, QChar(0x58a8))));
    }

    void quotesPaths()
    {
        const auto check = [](const char *path, const char *expected) {
            const QString line = "-i %1 x"_s.arg(quoteToolPath(QString::fromUtf8(path)));
            QCOMPARE(QProcess::splitCommand(line).mid(1),
                     QStringList({QString::fromUtf8(expected), "x"_s}));
        };
        for (const char *path : {"/a b/c  d.mp4", "\"\"a b\"\"c\"\"", "\"", "it's", "a\nb\tc",
                                 "%1 %2", "墨泉/😀.mp4", "a\\b\\", "a ", "/-a", "/a:b", "a/b:c"})
            check(path, path);
        check("-y", "./-y");
        check("a:b/c", "./a:b/c");
        check("-a:\"b c", "./-a:\"b c");
    }
};

int main(int argc, char *argv[])
{
    ensureUtf8Locale();
    const QCoreApplication application(argc, argv);
    TstFormats test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_formats.moc"
