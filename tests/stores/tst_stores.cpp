// SPDX-License-Identifier: MIT
#include "MediaKits/AppInstance/LocalStore/appdirs.h"
#include "MediaKits/AppInstance/LocalStore/appini.h"
#include "MediaKits/AppInstance/LocalStore/encparamhistory.h"
#include "MediaKits/AppInstance/LocalStore/functionsettings.h"
#include "MediaKits/AppInstance/LocalStore/historyrecord.h"
#include "MediaKits/AppInstance/LocalStore/jsonwriter.h"
#include "MediaKits/AppInstance/LocalStore/mediafunction.h"
#include "MediaKits/AppInstance/LocalStore/persiststore.h"
#include "MediaKits/AppInstance/LocalStore/userinfostore.h"
#include "MediaKits/AppInstance/LocalStore/watermarktemplates.h"
#include "support/casename.h"
#include "support/testfile.h"
#include "support/testmedia.h"

#include <QtTest>

#include <csignal>
#include <functional>
#include <limits>
#include <sys/resource.h>
#include <sys/stat.h>

namespace {

QString dataPath(const char *name)
{
    return dataDir() + u'/' + QString::fromLatin1(name);
}

void put(const char *name, const QByteArray &content)
{
    writeTestFile(dataPath(name), content);
}

// Null when there is no such file.
QByteArray content(const char *name)
{
    return contentOf(dataPath(name));
}

} // namespace

class TestStores : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void writesJson();
    void writesNumbers();
    void historyKeepsTheNewest500();
    void historyForm();
    void presetsMostRecentFirst();
    void presetsFromFile();
    void settingsDefaults();
    void settingsMerge();
    void persistKeepsWhatItFinds();
    void brokenFileIsSetAside();
    void unchangedIsNotWritten();
    void strangeFilesAreSetAside();
    void damagedKeyLosesNothing();
    void loginIsWrittenAtOnce();
    void failedWriteLeavesTheOldFile();

private:
    QScopedPointer<QTemporaryDir> m_dir;
};

void TestStores::init()
{
    m_dir.reset(new QTemporaryDir);
    qputenv("XDG_DATA_HOME", QFile::encodeName(m_dir->path()));
}

void TestStores::writesJson()
{
    // Only text beyond ASCII is left out.
    const QByteArray source = R"({"z":[1,[],"x\u0000\b\n\u001f\u007f",null,{"k视\"":true}],)"
                              R"("a":{"p":"C:\\x/é"},"id":123456789012345678})";
    QByteArray json("before ");
    JsonWriter::objectToJson(QJsonDocument::fromJson(source).object(), json);
    QCOMPARE(json, QByteArray(R"(before {"a":{"p":"C:\\x/"},"id":123456789012345678,)"
                              R"("z":[1,[],"x\u0000\b\n\u001f)"
                              "\x7f"
                              R"(",null,{"k\"":true}]})"));
}

void TestStores::writesNumbers()
{
    const std::pair<const char *, double> rows[] = {
        {"1", 1.00000049},
        {"0", 0.0000004},
        {"-20.05", -20.05},
        {"100000000000000000000", 1e20},
        {"null", std::numeric_limits<double>::infinity()},
    };
    for (const auto &[text, value] : rows) {
        QByteArray json;
        JsonWriter::objectToJson({{"n"_s, value}}, json);
        QCOMPARE(json, QByteArray("{\"n\":") + text + '}');
    }
}

void TestStores::historyKeepsTheNewest500()
{
    {
        HistoryRecord history;
        for (int i = 0; i <= HistoryRecord::maxRecords; ++i)
            history.add({QString(), QString::number(i), QString()});
    }
    HistoryRecord history;
    QCOMPARE(history.records().size(), 500);
    QCOMPARE(history.records().first().inputfile, "500"_s);
    QCOMPARE(history.records().last().inputfile, "1"_s);
    // A crash loses none of what was made a moment before.
    history.add({QString(), "501"_s, QString()});
    QTRY_VERIFY(content("HistoryRecord.json").contains("501"));
}

void TestStores::historyForm()
{
    const QByteArray text = R"({"history":[{"datetime":"2022.01.02 03:04",)"
                            R"("inputfile":"/片/a.mp4","outputfile":"/b.mkv"}]})";
    put("HistoryRecord.json", "\xEF\xBB\xBF" + text);
    QCOMPARE(HistoryRecord().records().value(0).inputfile, "/片/a.mp4"_s);
    QCOMPARE(content("HistoryRecord.json"), text);
    QVERIFY(!(QFile::permissions(dataPath("HistoryRecord.json")) & QFile::ReadOther));
}

void TestStores::presetsMostRecentFirst()
{
    EncParamHistory history;
    for (quint32 id = 1; id <= 12; ++id)
        history.touch(id);
    history.touch(10);
    QCOMPARE(history.ids(), (QList<quint32>{10, 12, 11, 9, 8, 7, 6, 5, 4, 3}));
    history.remove(12);
    QCOMPARE(history.ids(), (QList<quint32>{10, 11, 9, 8, 7, 6, 5, 4, 3}));
}

void TestStores::presetsFromFile()
{
    const std::pair<const char *, QList<quint32>> rows[] = {
        {R"({"history":[1003001,1.5,"2",-3,4]})", {1003001, 0, 0, 0, 4}},
        {R"({"history":1003001})", {}},
    };
    for (const auto &[text, ids] : rows) {
        put("EncParamData.json", text);
        QCOMPARE(EncParamHistory().ids(), ids);
    }
}

void TestStores::settingsDefaults()
{
    const std::tuple<const char *, quint32, QString> rows[] = {
        {"BEAUTIFER", 1003001, "视频美化"_s},
        {"MERGER", 1003002, "视频合并"_s},
        {"GIF", 0, "视频转GIF"_s},
        {"AUDIO_CONVERTER", 1200000, "音频转换"_s},
        {"SCREEN_CAP", 0, "屏幕录像"_s},
    };
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    // The second run reads what the first one wrote.
    for (int run = 0; run < 2; ++run) {
        FunctionSettings settings;
        for (const auto &[name, preset, folder] : rows) {
            const QLatin1String section(name);
            QCOMPARE(settings.value(section, FunctionKey::encParamID).toUInt(), preset);
            QCOMPARE(settings.value(section, FunctionKey::outPath).toString(),
                     documents + "/墨泉影音工坊/"_s + folder);
        }
        QCOMPARE(settings.value(FunctionSection::merger, FunctionKey::outName).toString(),
                 "合并视频"_s);
    }
}

void TestStores::settingsMerge()
{
    put("SFunction.json", R"({"COVERTER":{"outPath":"","extra":7},"OTHER":[1],)"
                          R"("COMPRESSOR":{"compressRate":0.5}})");
    {
        FunctionSettings settings;
        const QVariantMap converter = settings.map().value(FunctionSection::converter).toMap();
        QCOMPARE(converter.value("extra"_s).toInt(), 7);
        QCOMPARE(converter.value(FunctionKey::encParamID).toUInt(), 1003001U);
        QCOMPARE(converter.value(FunctionKey::outPath).toString(),
                 defaultOutputDir(MediaFunction::Convert));
        settings.setValue(FunctionSection::cutter, FunctionKey::encParamID, 1005001U);
    }
    FunctionSettings settings;
    QCOMPARE(settings.value(FunctionSection::cutter, FunctionKey::encParamID).toUInt(), 1005001U);
    QCOMPARE(settings.value(FunctionSection::compressor, FunctionKey::compressRate).toDouble(),
             0.5);
    QCOMPARE(settings.map().value("OTHER"_s).toList(), (QVariantList{1}));
}

void TestStores::persistKeepsWhatItFinds()
{
    put("Persist/a.b.json", R"({"x":{"y":[1,"二"]}})");
    put("Persist/bare.json", "{}");
    {
        PersistStore store;
        const QStringList found{"a.b"_s, "bare"_s};
        QCOMPARE(store.entries().keys(), found);
        store.entries()["new"_s] = {{"k"_s, 1}};
    }
    QCOMPARE(content("Persist/new.json"), QByteArray("{\n    \"k\": 1\n}\n"));
    QCOMPARE(content("Persist/a.b.json").simplified(),
             QByteArray("{ \"x\": { \"y\": [ 1, \"二\" ] } }"));
}

void TestStores::brokenFileIsSetAside()
{
    for (const char *text : {R"({"userinfo":{"id":)", "[1]"}) {
        init();
        put("UserInfo.json.broken", "earlier");
        put("UserInfo.json", text);
        QVERIFY(UserInfoStore().id().isEmpty());
        QCOMPARE(content("UserInfo.json.broken"), QByteArray("earlier"));
        QCOMPARE(content("UserInfo.json.broken2"), QByteArray(text));
    }
}

// What another instance has written meanwhile stays, unless something has changed here.
void TestStores::unchangedIsNotWritten()
{
    put("UserInfo.json", R"({"userinfo":{"id":"17","token":"old"}})");
    {
        const UserInfoStore user;
        put("UserInfo.json", R"({"userinfo":{"id":"17","token":"new"}})");
    }
    QVERIFY(content("UserInfo.json").contains("new"));
}

// What is no file, or is far too large, can't be read, and stays beside.
void TestStores::strangeFilesAreSetAside()
{
    constexpr qint64 hugeBytes = 5LL << 30;
    for (const char *name : {"UserInfo.json", "app.ini"}) {
        for (const bool isPipe : {true, false}) {
            init();
            put(name, {});
            const QString path = dataPath(name);
            if (isPipe) {
                QVERIFY(QFile::remove(path));
                QCOMPARE(mkfifo(QFile::encodeName(path).constData(), 0600), 0);
            } else {
                QVERIFY(QFile::resize(path, hugeBytes));
            }
            UserInfoStore user;
            user.setId("17"_s);
            AppIni ini;
            ini.setValue(AppIni::Key::PreviewVolume, 20);
            QCOMPARE(UserInfoStore().id(), "17"_s);
            const QFileInfo aside(path + ".broken"_s);
            QVERIFY(aside.exists());
            QCOMPARE(aside.size(), isPipe ? 0 : hugeBytes);
        }
    }
}

// What a store doesn't understand isn't written over, be the rest understood.
void TestStores::damagedKeyLosesNothing()
{
    const QByteArray record = R"({"datetime":"d","inputfile":"i","outputfile":"o"})";
    const struct
    {
        const char *name;
        QByteArray text;
        std::function<void()> use;
    } rows[] = {
        {"HistoryRecord.json", R"({"hystory":[)" + record + "]}",
         [] {
             HistoryRecord().add({"x"_s, "y"_s, "z"_s});
         }},
        {"HistoryRecord.json", R"({"history":[{"datetime":"d","inputfale":"i"},)" + record + "]}",
         [] {
             HistoryRecord().add({"x"_s, "y"_s, "z"_s});
         }},
        {"HistoryRecord.json", "{\"history\":[{\"datetime\":\"\xff\"}]}",
         [] {
             HistoryRecord().add({"x"_s, "y"_s, "z"_s});
         }},
        {"SFunction.json", QByteArray("{\"a\0\":1,\"b\xf4\":2}", 15), [] { FunctionSettings(); }},
        {"EncParamData.json", R"({"history":[7,"8"]})", [] { EncParamHistory().touch(9); }},
        {"Persist/a.json", R"({"n":9007199254740993})", [] { PersistStore(); }},
        {"UserInfo.json", R"({"userinfo":{"id":"1","tokem":"t"}})",
         [] { UserInfoStore().setId("2"_s); }},
        {"SFunction.json", R"({"CUTTER":"text"})", [] { FunctionSettings(); }},
        {"WatermarkTemplates.json", R"({"tamplates":{"a":{"b":1}}})",
         [] { WatermarkTemplates().set("c"_s, {}); }},
        {"app.ini", "[Preview]\nVolume 30\nx=1\n",
         [] { AppIni().setValue(AppIni::Key::PreviewVolume, 20); }},
    };
    for (const auto &row : rows) {
        const CaseName inCase(row.text.constData());
        init();
        put(row.name, row.text);
        row.use();
        QVERIFY(content(row.name) != row.text);
        QCOMPARE(content(QByteArray(row.name + QByteArray(".broken")).constData()), row.text);
    }
    // It claims two billion values.
    const QByteArray claim = "[App]\nExitMode=@Variant(\\0\\0\\0\\t\\x7f\\xff\\xff\\xff)\n";
    init();
    put("app.ini", claim);
    QCOMPARE(AppIni().value(AppIni::Key::ExitMode).toInt(), 0);
    QCOMPARE(content("app.ini.broken"), claim);
    // A character that stands for a damaged one is in names of files, and a value may speak of one.
    init();
    put("HistoryRecord.json", "{\"history\":[{\"datetime\":\"\xef\xbf\xbd\"}]}");
    put("app.ini", "[Preview]\nx=a @Variant(b)\n");
    HistoryRecord().add({"x"_s, "y"_s, "z"_s});
    AppIni().setValue(AppIni::Key::PreviewVolume, 20);
    QVERIFY(!QFile::exists(dataDir() + "/HistoryRecord.json.broken"_s));
    QVERIFY(!QFile::exists(dataDir() + "/app.ini.broken"_s));
    // A change, and not each one.
    init();
    put("UserInfo.json", R"({"userinfo":{"id":"","token":"t"},"more":{}})");
    UserInfoStore().setId("2"_s);
    QVERIFY(!QFile::exists(dataDir() + "/UserInfo.json.broken"_s));
}

// A crash loses neither a login nor a logout.
void TestStores::loginIsWrittenAtOnce()
{
    UserInfoStore user;
    user.setId("17"_s);
    user.setToken("t"_s);
    QCOMPARE(content("UserInfo.json"), QByteArray(R"({"userinfo":{"id":"17","token":"t"}})"));
    user.setToken({});
    QCOMPARE(content("UserInfo.json"), QByteArray(R"({"userinfo":{"id":"17","token":""}})"));
}

// A limit on the size of files acts like a disk that is full after a few bytes, for every user.
void TestStores::failedWriteLeavesTheOldFile()
{
    const QByteArray before = R"({"userinfo":{"id":"17","token":"t"}})";
    {
        UserInfoStore user;
        user.setId("17"_s);
        user.setToken("t"_s);
    }
    QCOMPARE(content("UserInfo.json"), before);
    rlimit usual{};
    QCOMPARE(getrlimit(RLIMIT_FSIZE, &usual), 0);
    rlimit small = usual;
    small.rlim_cur = 8;
    const auto usualHandler = std::signal(SIGXFSZ, SIG_IGN);
    {
        UserInfoStore user;
        QCOMPARE(user.id() + user.token(), "17t"_s);
        QCOMPARE(setrlimit(RLIMIT_FSIZE, &small), 0);
        user.setId("18"_s);
    }
    QCOMPARE(setrlimit(RLIMIT_FSIZE, &usual), 0);
    std::signal(SIGXFSZ, usualHandler);
    QCOMPARE(content("UserInfo.json"), before);
    QCOMPARE(entriesOf(dataDir()), QStringList{"UserInfo.json"_s});
}

QTEST_GUILESS_MAIN(TestStores)
#include "tst_stores.moc"
