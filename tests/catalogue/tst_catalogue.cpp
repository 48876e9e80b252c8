// SPDX-License-Identifier: MIT
#include "catalogue/encparamcatalog.h"
#include "support/testfile.h"

#include <QtTest>

namespace {

using Ids = QList<quint32>;

const EncParamCatalog &catalogue()
{
    return EncParamCatalog::instance();
}

QString presetText(const EncParam &param)
{
    QString text;
    QTextStream stream(&text);
    stream << '[' << param.name << "] " << param.displayCategoryID << ' ' << param.formatID;
    if (const auto &video = param.video)
        stream << " [" << video->fourCC << "] " << video->width << '*' << video->height << ' '
               << video->bitrate << ' ' << video->frameRate;
    if (const auto &audio = param.audio)
        stream << " [" << audio->fourCC << "] " << audio->channel << ' ' << audio->sampleRate << ' '
               << audio->bitrate;
    return text;
}

template<typename Predicate>
Ids presetsWhere(Predicate predicate)
{
    Ids ids;
    std::copy_if(catalogue().encParamIds().cbegin(), catalogue().encParamIds().cend(),
                 std::back_inserter(ids), predicate);
    return ids;
}

Ids presetsOf(quint32 category)
{
    return presetsWhere([category](quint32 id) { return catalogue().categoryOf(id) == category; });
}

} // namespace

class TestCatalogue : public QObject
{
    Q_OBJECT

private slots:
    void holdsEveryRow()
    {
        const Ids &ids = catalogue().encParamIds();
        QCOMPARE(QSet<quint32>(ids.cbegin(), ids.cend()).size(), 201);
        QCOMPARE(ids.size(), 201);
        QCOMPARE(presetsOf(1005), (Ids{1004004, 1004003, 1004002, 1004001, 1004005, 1004006}));

        QCOMPARE(catalogue().kindOf(1950001), 3U);
        QCOMPARE(catalogue().categoryOf(EncParamCatalog::customId), 1001U);
        QCOMPARE(catalogue().firstCategoryOfKind(3), 0U);
        QCOMPARE(catalogue().categoryIds().size(), 24);
        for (const quint32 id : catalogue().categoryIds()) {
            QCOMPARE(quint32(catalogue().category(id)->type), EncParamCatalog::categoryKind(id));
            QVERIFY2(!presetsOf(id).isEmpty(), qPrintable(catalogue().category(id)->title));
        }
    }

    void presetRows()
    {
        const std::pair<quint32, const char *> rows[] = {
            {1003001, "[同原文件] 1001 1003"},
            {1001002, "[HD 1080P ] 1002 1001 [B264] 1920*1080 3000 30 [AAC ] 2 44100 128"},
            {1009001, "[同原文件] 1010 1009 [mp2v] 0*0 2000 29.97 [MP2A] 2 44100 128"},
            {2401006, "[4K UHDTV] 1022 2401 [FAVC] 3840*2160 15000 30 [MAAC ] 2 44100 256"},
            {1213001, "[高品质] 2010 1213 [M4R ] 2 44100 320"},
            {2501002, "[HD 240P] 1024 2501 [GIF] 240*160 128 6"},
            {2708001, "[Epic 4G ] 3002 2708 [IPAN] 800*480 1200 30 [MAAC] 2 44100 128"},
        };
        for (const auto &[id, text] : rows)
            QCOMPARE(presetText(*catalogue().encParam(id)), QString::fromUtf8(text));
    }

    void labels()
    {
        const std::pair<const char *, const char *> rows[] = {
            {"AAC", "aac"},      {"AAC ", ""},     {"AC3", "ac3 "},     {"VP8 ", "libvpx"},
            {"B264", "libx264"}, {"flv1", "flv1"}, {"MPON", "libx264"}, {"OGG ", "libvorbis"},
        };
        for (const auto &[label, encoder] : rows)
            QCOMPARE(catalogue().encoderOf(QLatin1String(label)), QLatin1String(encoder));
    }

    void cloneIsIndependent()
    {
        const auto original = catalogue().encParam(EncParamCatalog::defaultHdId);
        const QString before = presetText(*original);
        const auto clone = catalogue().cloneAsCustom(EncParamCatalog::defaultHdId);
        QCOMPARE(clone->id, EncParamCatalog::customId);
        QCOMPARE(presetText(*clone), before);
        clone->video->width = 320;
        clone->audio->bitrate = 96;
        QCOMPARE(presetText(*original), before);

        QVERIFY(!catalogue().cloneAsCustom(EncParamCatalog::defaultGifId)->audio);
        QVERIFY(!catalogue().cloneAsCustom(EncParamCatalog::customId));
        QVERIFY(!catalogue().hasEncParam(EncParamCatalog::customId));
    }

    void readsOnlyWhatIsData()
    {
        const QTemporaryDir dir;
        writeTestFile(dir.filePath("EncodeParamInfos.xml"_s),
                      "<Other><Group>"
                      "<!-- <EncParamInfo ID='1'><Name>hidden</Name></EncParamInfo> -->"
                      "<EncParamInfo FormatID='2'><Name>no id</Name></EncParamInfo>"
                      "<EncParamInfo ID='3'><VEncParam Resolution='1*2*3'/></EncParamInfo>"
                      "<EncParamInfo ID='4'><Name>old</Name></EncParamInfo>"
                      "<EncParamInfo ID='4'><Name>new</Name></EncParamInfo>"
                      "</Group></Other>");

        const EncParamCatalog read(dir.path());
        QCOMPARE(read.encParamIds(), (Ids{3, 4, 4}));
        QCOMPARE(presetText(*read.encParam(3)), "[] 0 0 [] 0*0 0 0"_s);
        QVERIFY(!read.isKeepSource(3));
        QCOMPARE(read.encParam(4)->name, "new"_s);
    }
};

QTEST_GUILESS_MAIN(TestCatalogue)
#include "tst_catalogue.moc"
