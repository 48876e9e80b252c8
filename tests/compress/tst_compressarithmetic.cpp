// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoCompress/compressarithmetic.h"
#include "MediaKits/FunctionPage/VideoCompress/compresschoices.h"
#include "MediaKits/FunctionPage/VideoCompress/compressplan.h"
#include "support/utf8.h"

#include <QtTest>

namespace {

MediaInfoData source(int videoKbps, int wholeKbps, const QVector<int> &audioKbps)
{
    MediaInfoData info;
    info.format = QSharedPointer<MediaFormatInfo>::create();
    info.format->duration = 1000;
    info.format->fileSize = qint64(wholeKbps) * 125;
    info.video = QSharedPointer<VEncParam>::create();
    info.video->bitrate = videoKbps;
    for (const int kbps : audioKbps) {
        info.audios += QSharedPointer<AEncParam>::create();
        info.audios.last()->bitrate = kbps;
    }
    return info;
}

CompressSettingsParam byRate(double rate)
{
    CompressSettingsParam settings;
    settings.rate = rate;
    return settings;
}

} // namespace

class TestCompressArithmetic : public QObject
{
    Q_OBJECT

private slots:
    void sliderKeepsItsPlace()
    {
        for (int position = -80; position <= 0; ++position)
            QCOMPARE(sliderOfRate(rateOfSlider(position)), position);
        QCOMPARE(sliderOfRate(0.758), -24);
        QCOMPARE(sliderOfRate(0.752), -25);
        QCOMPARE(sizeRangeText("(%1-%2)MB"_s, mebibytes(100 << 20)), "(20-100)MB"_s);
        QCOMPARE(sizeRangeText("(%1-%2)MB"_s, 12.3456), "(2.47-12.35)MB"_s);
    }

    void targetBitrate()
    {
        struct Row
        {
            int video;
            int whole;
            double rate;
            int target;
        };
        // What sound and container leave of half the file, no more than the source has, an unknown
        // rate, nothing left, no length.
        for (const Row &row : {Row{999, 2000, 0.5, 865}, Row{999, 2000, 1.0, 999},
                               Row{0, 2000, 0.5, 865}, Row{0, 128, 0.5, 0}, Row{0, 0, 1.0, 0}}) {
            const auto made =
                encParamFor(byRate(row.rate), source(row.video, row.whole, {128, 72}));
            QCOMPARE(made ? made->video->bitrate : 0, row.target);
            QVERIFY(!made || (made->video->width == 0 && made->audio->bitrate == 128));
        }
        MediaInfoData info = source(999, 2000, {});
        info.format->duration = 0;
        QCOMPARE(encParamFor(byRate(0.5), info)->video->bitrate, 499);
    }

    void leastSize()
    {
        // A tenth of a film with much sound: the sound gives way, but not below what can be
        // listened to.
        MediaInfoData info = source(900, 1200, {256});
        info.video->width = 640;
        info.video->height = 360;
        QCOMPARE(compressPlan(1.0, info).audio, 192);
        QCOMPARE(compressPlan(0.1, info).audio, 64);
        QVERIFY(smallestShare(info) < 0.1);
        // The older encoders can't do what the newer can, and say so.
        info.format->formatName = "AVI"_s;
        QVERIFY(smallestShare(info) > 0.3);
        const CompressPlan plan = compressPlan(0.1, info);
        QVERIFY(std::abs(plan.bytes / double(info.format->fileSize) - smallestShare(info)) < 0.01);
    }

    void estimates()
    {
        MediaInfoData info = source(4000, 5000, {128});
        info.format->fileSize = qint64(10) << 30;
        info.format->duration = info.format->fileSize * 8 / 5000;
        QCOMPARE(estimatedSize(byRate(0.5), info), qint64(5) << 30);
        CompressSettingsParam settings = byRate(0.5);
        settings.advanced = true;
        settings.encParam = makeEncParam(VideoPart | AudioPart);
        settings.encParam->video->bitrate = 3000;
        settings.encParam->audio->bitrate = 96;
        const double share = double(estimatedSize(settings, info)) / double(info.format->fileSize);
        QVERIFY(std::abs(share - 3100.0 / 5000) < 0.002);
        // Not told by the file, but by what is left of it.
        info.video->bitrate = 0;
        QCOMPARE(estimatedSize(byRate(0.5), info), qint64(5) << 30);
        info.format->duration = 0;
        QCOMPARE(estimatedSize(settings, info), qint64(-1));
        QCOMPARE(estimatedSize(byRate(0.5), info), qint64(-1));
        // Sound alone: what the container has is no bitrate of pictures.
        info.video.clear();
        QVERIFY(!encParamFor(byRate(0.5), info));
    }

    void ownValueLeads()
    {
        VEncParam upright;
        upright.width = 1280;
        upright.height = 720;
        upright.rotate = 90;
        QCOMPARE(CompressChoices::resolutions(upright).first().text, "720x1280 (自动)"_s);
        upright.rotate = 180;
        const auto sizes = CompressChoices::resolutions(upright);
        QCOMPARE(sizes.first().text, "1280x720 (自动)"_s);
        QCOMPARE(sizes.first().value.toSize(), QSize(1280, 720));
        QCOMPARE(sizes.size(), 17);

        const auto rates = CompressChoices::frameRates(25);
        QCOMPARE(rates.first().text, "25 fps (自动)"_s);
        QCOMPARE(rates.at(4).text, "23.97 fps"_s);
        QCOMPARE(rates.size(), 11);
        const auto unknown = CompressChoices::videoBitrates(0);
        QCOMPARE(unknown.first().text, "自动"_s);
        QCOMPARE(unknown.first().value.toInt(), 0);
    }
};

QTEST_GUILESS_MAIN(TestCompressArithmetic)
#include "tst_compressarithmetic.moc"
