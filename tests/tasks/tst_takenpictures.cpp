// SPDX-License-Identifier: MIT
#include "MediaKits/MediaTasksManager/videoimagepicktask.h"
#include "support/casename.h"
#include "support/factsof.h"
#include "tasks/imagetest.h"

// What is seen on the pictures.
class TestTakenPictures : public ImageTest
{
    Q_OBJECT

private slots:
    // Turned and with square pixels, as players show it, at any scale.
    void takesTheShownPicture()
    {
        const QString flat = m_folder->path("flat.mp4"_s);
        makeMedia("-f lavfi -i color=red:s=180x120:d=1,drawbox=0:0:90:120:blue:fill,setsar=4/3 "
                  "-pix_fmt yuv420p @"_s,
                  {flat});
        const QString film = m_folder->path("turned.mp4"_s);
        makeMedia("-i @ -c copy -metadata:s:v:0 rotate=90 @"_s, {flat, film});
        const auto check = [&](float scale, const QSize &size) {
            const CaseName inCase(qPrintable(QString::number(double(scale))));
            QVariantMap map = wanted(m_folder->out, 1);
            map.insert("inputUrl"_s, film);
            map.insert("sourceInfo"_s, QVariant::fromValue(factsOf(film)));
            map.insert("baseName"_s, QString::number(double(scale)));
            map.insert("images"_s, QVariantList{QVariantMap{{"pos"_s, 0}, {"scale"_s, scale}}});
            Watched<MutiImageTask> shots(new MutiImageTaskParam(map));
            QVERIFY2(shots.run() == MediaTask::FINISHED, qPrintable(shots.cause()));
            const QImage picture("%1/%2_1.png"_s.arg(m_folder->out).arg(double(scale)));
            QCOMPARE(picture.size(), size);
            if (scale < 0.5F && scale > 0.0F)
                return;
            const QColor below = picture.pixelColor(size.width() / 2, size.height() * 9 / 10);
            QVERIFY2(below.blue() > 200 && below.red() < 60, qPrintable(below.name()));
        };
        check(1.0F, QSize(120, 240));
        check(0.0F, QSize(120, 240));
        check(2.0F, QSize(240, 480));
        check(0.001F, QSize(1, 1));
    }

    // PNG holds the decoded frame; JPEG is hardly to be told from it.
    void keepsQuality()
    {
        const QByteArray frame =
            decodedMedia(m_clip, "-ss 1 -frames:v 1 -f rawvideo -pix_fmt rgb24"_s);
        const auto difference = [&](const char *format) {
            QVariantMap map = wanted(m_folder->out, 1);
            map.insert("format"_s, QLatin1String(format));
            map.insert("images"_s, QVariantList{QVariantMap{{"pos"_s, 1000}, {"scale"_s, 1.0F}}});
            Watched<MutiImageTask> shots(new MutiImageTaskParam(map));
            if (shots.run() != MediaTask::FINISHED)
                return -1.0;
            const QByteArray taken =
                decodedMedia("%1/a_1.%2"_s.arg(m_folder->out, QLatin1String(format)),
                             "-f rawvideo -pix_fmt rgb24"_s);
            double sum = taken.size() == frame.size() ? 0.0 : -1.0;
            for (int i = 0; i < taken.size() && sum >= 0.0; ++i)
                sum += std::abs(int(quint8(taken[i])) - int(quint8(frame[i])));
            return sum / frame.size();
        };
        QCOMPARE(difference("png"), 0.0);
        QCOMPARE(difference("bmp"), 0.0);
        const double jpeg = difference("jpg");
        QVERIFY2(jpeg > 0.0 && jpeg < 4.0, qPrintable(QString::number(jpeg)));
    }

    // One colour throughout, stored in ways that files of pictures don't know.
    void keepsColours_data()
    {
        QTest::addColumn<QString>("coding");
        const QString light =
            "zscale=tin=bt709:pin=bt709:min=gbr:rin=full:t=linear:npl=203:p=bt2020,"
            "format=gbrpf32le,zscale=tin=linear:pin=bt2020:min=gbr:rin=full:npl="
            "203:t=%1:m=bt2020nc:r=limited,format=yuv420p10 -c:v libx265 "
            "-x265-params log-level=none:crf=8"_s;
        QTest::newRow("hlg.mkv") << light.arg("arib-std-b67"_s);
        QTest::newRow("pq.mp4") << light.arg("smpte2084"_s);
        QTest::newRow("untold.mov") << "zscale=m=bt709:r=limited,setparams=colorspace=unknown,"
                                       "format=yuv422p10 -c:v prores_ks"_s;
        QTest::newRow("odd.mkv") << "crop=1279:719,zscale=m=bt709:r=limited,format=yuv444p,"
                                    "format=yuv420p -c:v ffv1"_s;
    }

    void keepsColours()
    {
        QFETCH(QString, coding);
        const QString film = m_folder->path(QString::fromLatin1(QTest::currentDataTag()));
        makeMedia("-f lavfi -i color=0xa02828:s=1280x720:d=0.4 -vf format=gbrp,"_s + coding +
                      " @"_s,
                  {film});
        const auto check = [](const QString &picture) {
            const QImage image = QImage(picture).scaled(1, 1, {}, Qt::SmoothTransformation);
            QVERIFY2(!image.isNull(), qPrintable(picture));
            const QColor mean = image.pixelColor(0, 0);
            constexpr int limit = 8; // 3 % of the whole range
            QVERIFY2(qAbs(mean.red() - 0xa0) < limit && qAbs(mean.green() - 0x28) < limit &&
                         qAbs(mean.blue() - 0x28) < limit,
                     qPrintable(picture + u' ' + mean.name()));
        };
        for (const char *format : {"png", "jpg", "bmp"}) {
            QVariantMap map = wanted(m_folder->out, 1);
            map.insert("inputUrl"_s, film);
            map.insert("sourceInfo"_s, QVariant::fromValue(factsOf(film)));
            map.insert("format"_s, QLatin1String(format));
            Watched<MutiImageTask> shots(new MutiImageTaskParam(map));
            QVERIFY2(shots.run() == MediaTask::FINISHED, qPrintable(shots.cause()));
            check(m_folder->out + "/a_1."_s + QLatin1String(format));
        }
        const QString mark = m_folder->path("mark.png"_s);
        makePicture(mark, "0xa02828"_s, 40, 40);
        QVariantMap map = wanted(m_folder->out, 2);
        map.insert("inputUrl"_s, film);
        map.insert("sourceInfo"_s, QVariant::fromValue(factsOf(film)));
        map.insert("isPiiic"_s, true);
        map.insert("watermark"_s, mark);
        Watched<MutiImageTask> stitched(new MutiImageTaskParam(map));
        QVERIFY2(stitched.run() == MediaTask::FINISHED, qPrintable(stitched.cause()));
        check(m_folder->out + "/a.png"_s);
        const QString thumbnail = m_folder->path("t.png"_s);
        Watched<VideoImagePickTask> pick(new VideoImagePickTaskParam(film, thumbnail));
        QCOMPARE(pick.run(), MediaTask::FINISHED);
        check(thumbnail);
    }

    void picksAThumbnail()
    {
        const auto check = [&](const char *caseName, const QString &target, bool made) {
            const CaseName inCase(caseName);
            init();
            const QString picture = m_folder->path(target);
            Watched<VideoImagePickTask> pick(new VideoImagePickTaskParam(m_clip, picture));
            QCOMPARE(pick.run(), made ? MediaTask::FINISHED : MediaTask::ERROR);
            QCOMPARE(QImage(picture).width(), made ? 300 : 0);
        };
        check("png", "t.png"_s, true);
        check("jpg", "t.JPG"_s, true);
        check("bmp", "t.bmp"_s, false);
    }
};

QTEST_GUILESS_MAIN(TestTakenPictures)
#include "tst_takenpictures.moc"
