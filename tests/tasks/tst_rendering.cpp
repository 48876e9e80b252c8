// SPDX-License-Identifier: MIT
#include "MediaKits/MediaTasksManager/complexconverttask.h"
#include "support/mediaprobe.h"
#include "tasks/chainrun.h"

#include <QColor>
#include <QFont>
#include <QtTest>

#include <algorithm>

namespace {

using Convert = Watched<ComplexConvertTask>;

QByteArray grayPicture(const QString &path)
{
    return decodedMedia(path, "-frames:v 1 -pix_fmt gray -f rawvideo"_s);
}

} // namespace

// What filters make of a film, decoded again: pictures, music and texts.
class TestRendering : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        makeClip(media("silent.mp4"), {1, 64, 48, 30, 0});
        makeClip(media("music.wav"), {3, 0});
        makePicture(media("red.png"), "red"_s, 8, 8);
        makePicture(media("black.png"), "black"_s, 320, 64);
    }

    // A picture over the film and music under it, both in a folder of that name.
    void rendersFilesOfAnyName()
    {
        for (const QString &name : {"水印 12:30, {y}"_s, "='\"%:,;[]\\墨"_s}) {
            const TestFolder folder;
            QVERIFY(QDir(folder.root.path()).mkdir(name));
            const QString picture = folder.path(name + u'/' + name + ".png"_s);
            const QString music = folder.path(name + u'/' + name + ".wav"_s);
            QVERIFY(QFile::copy(media("red.png"), picture));
            QVERIFY(QFile::copy(media("music.wav"), music));

            ConvertTaskParam *param = folder.convertParam(media("silent.mp4"), "mp4"_s);
            param->durationMs = 1000;
            param->sourceInfo.reset(new MediaInfoData);
            param->sourceInfo->video.reset(new VEncParam{QString(), 64, 48, 0, 0.0, 0.0});
            param->videoFilters += QVariantMap{{"filter"_s, "watermark"_s},
                                               {"rect"_s, QRectF(16, 12, 32, 24)},
                                               {"imagefile"_s, picture}};
            const QVariantMap track{{"filePath"_s, music}, {"volume"_s, 1.0F}, {"startTime"_s, 0}};
            param->audioFilters += QVariantMap{{"filter"_s, "dubbing"_s},
                                               {"musics"_s, QVariantList{track}},
                                               {"videoVolume"_s, 1.0F},
                                               {"isMax"_s, true}};
            Convert convert(param);
            QVERIFY2(convert.run() == MediaTask::FINISHED, qPrintable(convert.cause()));

            const QString path = folder.result("mp4"_s);
            const QByteArray inside =
                decodedMedia(path, "-frames:v 1 -vf format=rgb24,crop=1:1:32:24 -f rawvideo"_s);
            QCOMPARE(inside.size(), 3);
            QVERIFY(uchar(inside[0]) > 200 && uchar(inside[1]) < 60 && uchar(inside[2]) < 60);
            const ProbedFile file = probeMedia(path);
            const double soundSeconds = file.audio["duration"_s].toString().toDouble();
            QVERIFY2(std::abs(soundSeconds - 1.0) < 0.1, qPrintable(QString::number(soundSeconds)));
            QVERIFY(std::abs(file.seconds - 1.0) < 0.1);
            const QByteArray samples = decodedMedia(path, "-ac 1 -f s8"_s);
            QVERIFY(*std::max_element(samples.cbegin(), samples.cend()) > 5);
        }
    }

    // The text looks as it does when ffmpeg reads it from a file and takes every sign as it is.
    void rendersText()
    {
        for (const QString &text : {"墨泉 100%\ntwo lines"_s, ":'\"[]{},;=\\:\\n"_s}) {
            const TestFolder folder;
            QFont font("DejaVu Sans"_s);
            font.setPixelSize(20);
            ConvertTaskParam *param = folder.convertParam(media("black.png"), "png"_s);
            param->videoFilters +=
                QVariantMap{{"filter"_s, "drawtext"_s}, {"rect"_s, QRectF(4, 6, 100, 30)},
                            {"font"_s, font},           {"fontcolor"_s, QColor(Qt::white)},
                            {"opacity"_s, 1.0F},        {"text"_s, text}};
            Convert convert(param);
            QVERIFY2(convert.run() == MediaTask::FINISHED, qPrintable(convert.cause()));

            const QString textFile = folder.path("text"_s);
            const QString expected = folder.path("expected.png"_s);
            writeTestFile(textFile, text.toUtf8());
            const ToolRun run = runTool(
                "ffmpeg"_s, {"-v"_s, "error"_s, "-i"_s, media("black.png"), "-vf"_s,
                             "drawtext=font=DejaVu Sans:fontsize=20:fontcolor=white:x=4:y=6:"
                             "expansion=none:textfile=%1"_s.arg(textFile),
                             expected});
            QVERIFY2(run.exitCode == 0, run.err.constData());
            const QByteArray shown = grayPicture(folder.result("png"_s));
            QCOMPARE(shown.size(), 320 * 64);
            QVERIFY(
                std::any_of(shown.cbegin(), shown.cend(), [](char c) { return uchar(c) > 200; }));
            QVERIFY(shown == grayPicture(expected));
        }
    }

private:
    QString media(const char *name) const { return m_media.filePath(QLatin1String(name)); }

    QTemporaryDir m_media;
};

QTEST_GUILESS_MAIN(TestRendering)
#include "tst_rendering.moc"
