// SPDX-License-Identifier: MIT
#include "MediaKits/MediaTasksManager/complexconverttask.h"
#include "support/mediaprobe.h"
#include "tasks/chainrun.h"

#include <QColor>
#include <QDir>
#include <QFont>
#include <QRectF>
#include <QtTest>

#include <algorithm>

namespace {

using Convert = Watched<ComplexConvertTask>;

// What ffmpeg decodes from a file, in its raw form.
QByteArray decoded(const QString &path, const char *options)
{
    return runTool(QStringLiteral("ffmpeg"),
                   QStringList{QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-i"),
                               path} +
                       QString(QLatin1String(options)).split(QLatin1Char(' ')) +
                       QStringList(QStringLiteral("-")))
        .out;
}

QByteArray grayPicture(const QString &path)
{
    return decoded(path, "-frames:v 1 -pix_fmt gray -f rawvideo");
}

} // namespace

// What filters make of a film, decoded again: pictures, music and texts.
class TestRendering : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void rendersFilesOfAnyName();
    void rendersText();

private:
    QString media(const char *name) const { return m_media.filePath(QLatin1String(name)); }

    QTemporaryDir m_media;
};

void TestRendering::initTestCase()
{
    ClipPlan silent;
    silent.seconds = 1;
    silent.width = 64;
    silent.height = 48;
    silent.channels = 0;
    makeClip(media("silent.mp4"), silent);
    ClipPlan music;
    music.seconds = 3;
    music.width = 0;
    makeClip(media("music.wav"), music);
    makePicture(media("red.png"), QStringLiteral("red"), 8, 8);
    makePicture(media("black.png"), QStringLiteral("black"), 320, 64);
}

// A picture over the film and music under it, both in a folder of that name.
void TestRendering::rendersFilesOfAnyName()
{
    for (const QString &name : {utf8("水印 12:30, {y}"), utf8("='\"%:,;[]\\墨")}) {
        const TestFolder folder;
        QVERIFY(QDir(folder.root.path()).mkdir(name));
        const QString picture = folder.path(name + QLatin1Char('/') + name + QLatin1String(".png"));
        const QString music = folder.path(name + QLatin1Char('/') + name + QLatin1String(".wav"));
        QVERIFY(QFile::copy(media("red.png"), picture));
        QVERIFY(QFile::copy(media("music.wav"), music));

        ConvertTaskParam *param = folder.convertParam(media("silent.mp4"), QStringLiteral("mp4"));
        param->durationMs = 1000;
        param->sourceInfo.reset(new MediaInfoData);
        param->sourceInfo->video.reset(new VEncParam{QString(), 64, 48, 0, 0.0, 0.0});
        param->videoFilters += QVariantMap{{QStringLiteral("filter"), QStringLiteral("watermark")},
                                           {QStringLiteral("rect"), QRectF(16, 12, 32, 24)},
                                           {QStringLiteral("imagefile"), picture}};
        const QVariantMap track{{QStringLiteral("filePath"), music},
                                {QStringLiteral("volume"), 1.0F},
                                {QStringLiteral("startTime"), 0}};
        param->audioFilters += QVariantMap{{QStringLiteral("filter"), QStringLiteral("dubbing")},
                                           {QStringLiteral("musics"), QVariantList{track}},
                                           {QStringLiteral("videoVolume"), 1.0F},
                                           {QStringLiteral("isMax"), true}};
        Convert convert(param);
        QVERIFY2(convert.run() == MediaTask::FINISHED, qPrintable(convert.cause()));

        const QString path = folder.result(QStringLiteral("mp4"));
        const QByteArray inside =
            decoded(path, "-frames:v 1 -vf format=rgb24,crop=1:1:32:24 -f rawvideo");
        QCOMPARE(inside.size(), 3);
        QVERIFY(uchar(inside[0]) > 200 && uchar(inside[1]) < 60 && uchar(inside[2]) < 60);
        const ProbedFile file = probeMedia(path);
        const double soundSeconds = file.audio[QLatin1String("duration")].toString().toDouble();
        QVERIFY2(std::abs(soundSeconds - 1.0) < 0.1, qPrintable(QString::number(soundSeconds)));
        QVERIFY(std::abs(file.seconds - 1.0) < 0.1);
        const QByteArray samples = decoded(path, "-ac 1 -f s8");
        QVERIFY(*std::max_element(samples.cbegin(), samples.cend()) > 5);
    }
}

// The text looks as it does when ffmpeg reads it from a file and takes every sign as it is.
void TestRendering::rendersText()
{
    for (const QString &text : {utf8("墨泉 100%\ntwo lines"), utf8(":'\"[]{},;=\\:\\n")}) {
        const TestFolder folder;
        QFont font(QStringLiteral("DejaVu Sans"));
        font.setPixelSize(20);
        ConvertTaskParam *param = folder.convertParam(media("black.png"), QStringLiteral("png"));
        param->videoFilters += QVariantMap{{QStringLiteral("filter"), QStringLiteral("drawtext")},
                                           {QStringLiteral("rect"), QRectF(4, 6, 100, 30)},
                                           {QStringLiteral("font"), font},
                                           {QStringLiteral("fontcolor"), QColor(Qt::white)},
                                           {QStringLiteral("opacity"), 1.0F},
                                           {QStringLiteral("text"), text}};
        Convert convert(param);
        QVERIFY2(convert.run() == MediaTask::FINISHED, qPrintable(convert.cause()));

        const QString textFile = folder.path(QStringLiteral("text"));
        const QString expected = folder.path(QStringLiteral("expected.png"));
        writeTestFile(textFile, text.toUtf8());
        const ToolRun run =
            runTool(QStringLiteral("ffmpeg"),
                    {QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-i"),
                     media("black.png"), QStringLiteral("-vf"),
                     QStringLiteral("drawtext=font=DejaVu Sans:fontsize=20:fontcolor=white:x=4:y=6:"
                                    "expansion=none:textfile=%1")
                         .arg(textFile),
                     expected});
        QVERIFY2(run.exitCode == 0, run.err.constData());
        const QByteArray shown = grayPicture(folder.result(QStringLiteral("png")));
        QCOMPARE(shown.size(), 320 * 64);
        QVERIFY(std::any_of(shown.cbegin(), shown.cend(), [](char c) { return uchar(c) > 200; }));
        QVERIFY(shown == grayPicture(expected));
    }
}

QTEST_GUILESS_MAIN(TestRendering)
#include "tst_rendering.moc"
