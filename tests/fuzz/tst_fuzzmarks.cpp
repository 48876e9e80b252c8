// SPDX-License-Identifier: MIT
// Templates of watermarks, damaged: what comes of them has places, sizes and times that an editor
// and a film can have.
#include "fuzz/fuzz.h"
#include "MediaKits/AppInstance/LocalStore/watermarktemplates.h"
#include "MediaKits/FunctionPage/VideoWatermark/mark.h"
#include "MediaKits/FunctionPage/VideoWatermark/templatemenu.h"

#include <QFont>
#include <QJsonDocument>
#include <QRectF>
#include <QTemporaryDir>
#include <QtTest>

#include <cmath>

namespace {

const QByteArray text =
    R"({"marks":[{"filter":"drawtext","text":"字","rect":[10.5,20,300,40],"startTime":1000,)"
    R"("endTime":9000,"font":"Sans","size":24,"fontcolor":"#ff8800"},)"
    R"({"filter":"watermark","imagefile":"/a.png","aspectKeep":true,"opacity":0.5,)"
    R"("rect":[1,2,160,120],"startTime":0,"endTime":0},)"
    R"({"filter":"delogo","rect":[3,4,50,60],"startTime":5,"endTime":60000}],)"
    R"("width":1920,"height":1080,"pixelAspect":1.5,"duration":60000})";

bool isSensible(const QVariantMap &mark, int durationMs)
{
    constexpr double most = 1e6;
    const QRectF rect = mark[MarkKey::rect].toRectF();
    for (const double side : {rect.x(), rect.y(), rect.width(), rect.height()}) {
        if (!std::isfinite(side) || std::abs(side) > most)
            return false;
    }
    const int start = mark[MarkKey::startTime].toInt();
    const int end = mark[MarkKey::endTime].toInt();
    const QString filter = mark[MarkKey::filter].toString();
    const bool isText = filter == MarkFilter::text;
    const int size = mark[MarkKey::font].value<QFont>().pixelSize();
    return start >= 0 && start <= durationMs && end >= 0 && end <= durationMs &&
           (isText || filter == MarkFilter::image || filter == MarkFilter::delogo) &&
           (!isText || (size > 0 && size < 10000));
}

} // namespace

class FuzzMarks : public QObject
{
    Q_OBJECT

private slots:
    void templates()
    {
        const QTemporaryDir folder;
        qputenv("XDG_DATA_HOME", QFile::encodeName(folder.path()));
        const QVector<MarkedPicture> pictures{
            {{1920, 1080}, 1.5, 60000}, {{64, 48}, 1.0, 500}, {{4320, 7680}, 0.5, 7200000}};
        Fuzz fuzz("marks", 3.0);
        while (fuzz.goesOn()) {
            const QByteArray input = fuzz.take(fuzz.mutated(text));
            WatermarkTemplates::instance().set("a"_s, QJsonDocument::fromJson(input).object());
            const MarkedPicture picture = fuzz.oneOf(pictures);
            const QVariantList marks = templateFor("a"_s, picture);
            for (const QVariant &mark : marks)
                FUZZ_VERIFY(isSensible(mark.toMap(), picture.durationMs));
        }
    }
};

int main(int argc, char *argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication application(argc, argv);
    FuzzMarks test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_fuzzmarks.moc"
