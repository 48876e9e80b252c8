// SPDX-License-Identifier: MIT
// Files of the stores, damaged: the start survives, and nothing is lost without a copy.
#include "fuzz/fuzz.h"
#include "MediaKits/AppInstance/LocalStore/appconfig.h"
#include "MediaKits/AppInstance/LocalStore/appdirs.h"
#include "MediaKits/AppInstance/LocalStore/appini.h"
#include "MediaKits/AppInstance/LocalStore/encparamhistory.h"
#include "MediaKits/AppInstance/LocalStore/functionsettings.h"
#include "MediaKits/AppInstance/LocalStore/historyrecord.h"
#include "MediaKits/AppInstance/LocalStore/persiststore.h"
#include "MediaKits/AppInstance/LocalStore/userinfostore.h"
#include "MediaKits/AppInstance/LocalStore/watermarktemplates.h"
#include "support/testfile.h"

#include <QJsonArray>
#include <QtTest>

#include <functional>

namespace {

struct Store
{
    const char *name;
    const char *text; ///< with single quotes
    /// Reads the file, changes something and writes it.
    std::function<void()> use;
};

const Store stores[] = {
    {"HistoryRecord.json",
     "{'history':[{'datetime':'2024.01.02 03:04','inputfile':'/视/a.mp4','outputfile':'/b.mkv'},"
     "{'datetime':'2024.01.02 03:05','inputfile':'/c.mp4','outputfile':'/d.mkv'}]}",
     [] {
         HistoryRecord().add({"x"_s, "y"_s, "z"_s});
     }},
    {"EncParamData.json", "{'history':[1003005,1001001,7]}", [] { EncParamHistory().touch(9); }},
    {"UserInfo.json", "{'userinfo':{'id':'17','token':'old'}}",
     [] { UserInfoStore().setToken("new"_s); }},
    {"SFunction.json",
     "{'CUTTER':{'encParamID':1003005,'outPath':'/家/out'},'MERGER':{'outName':'n'},'own':[1.5]}",
     [] { FunctionSettings().setValue(FunctionSection::gif, FunctionKey::highQuality, true); }},
    {"Persist/a.b.json", "{'x':{'y':[1,'二',null,true]},'z':-1.5e9}",
     [] { PersistStore().entries()["a.b"_s]["new"_s] = 1; }},
    {"WatermarkTemplates.json",
     "{'templates':{'甲':{'filter':'text','rect':[0.1,0.2,0.3,0.4],'size':24},'b':{}}}",
     [] {
         WatermarkTemplates().set("new"_s, {{"k"_s, 1}});
     }},
};

// All texts and numbers in a document; one that a change of the test replaces isn't among them.
void collect(const QJsonValue &value, QStringList &leaves)
{
    if (value.isObject()) {
        const QJsonObject object = value.toObject();
        for (auto it = object.begin(); it != object.end(); ++it) {
            if (it.key() != "token"_s)
                collect(it.value(), leaves);
        }
    } else if (value.isArray()) {
        for (const QJsonValue &item : value.toArray())
            collect(item, leaves);
    } else if (!value.isNull() && !value.toVariant().toString().isEmpty()) {
        leaves += value.toVariant().toString();
    }
}

QStringList leavesOf(const QByteArray &json)
{
    QStringList leaves;
    collect(QJsonDocument::fromJson(json).object(), leaves);
    return leaves;
}

bool isKeptIn(const QStringList &before, QStringList after)
{
    return std::all_of(before.begin(), before.end(),
                       [&after](const QString &leaf) { return after.removeOne(leaf); });
}

} // namespace

class FuzzStores : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { qputenv("XDG_DATA_HOME", QFile::encodeName(m_dir.path())); }

    void jsonStores()
    {
        Fuzz fuzz("stores", 4.0);
        while (fuzz.goesOn()) {
            const Store &store = stores[fuzz.below(int(std::size(stores)))];
            const QByteArray input =
                fuzz.take(fuzz.mutated(QByteArray(store.text).replace('\'', '"')));
            const QString path = dataDir() + u'/' + QLatin1String(store.name);
            writeTestFile(path, input);
            store.use();
            const bool isAside = contentOf(path + ".broken"_s) == input;
            const bool isKept = isKeptIn(leavesOf(input), leavesOf(contentOf(path)));
            FUZZ_VERIFY(isAside || (isKept && QJsonDocument::fromJson(input).isObject()));
            QFile::remove(path + ".broken"_s);
        }
    }

    void settings()
    {
        const QByteArray text =
            "[General]\nx=1\n[Preview]\nShowWhenAdded=true\nVolume=150\n"
            "[App]\nExitMode=1\nIsExitTips=false\nstore=a,b\n[Window]\n"
            "Place=@Rect(10 20 800 600)\nIsMaximized=@Variant(\\0\\0\\0\\x1\\x1)\n"
            "list=@Variant(\\0\\0\\0\\t\\0\\0\\0\\x1\\0\\0\\0\\x2\\0\\0\\0\\x1)\n"
            "[Init]\nInstallTime=1700000000000\n[Update]\npackage=\\x4f60.bin\n";
        const QString path = dataDir() + "/app.ini"_s;
        Fuzz fuzz("settings", 2.0);
        while (fuzz.goesOn()) {
            writeTestFile(path, fuzz.take(fuzz.mutated(text)));
            AppIni ini;
            const AppConfig config(path);
            for (int key = 0; key <= int(AppIni::Key::WindowIsMaximized); ++key)
                ini.value(AppIni::Key(key));
            ini.setValue(AppIni::Key::PreviewVolume, 20);
            QCOMPARE(ini.value(AppIni::Key::PreviewVolume).toInt(), 20);
            QFile::remove(path + ".broken"_s);
        }
    }

private:
    // Where there is memory for files, a safe write waits for no disk.
    const QTemporaryDir m_dir{
        (QFileInfo("/dev/shm"_s).isWritable() ? "/dev/shm"_s : QDir::tempPath()) +
        "/tst_fuzzstores-XXXXXX"_s};
};

QTEST_GUILESS_MAIN(FuzzStores)
#include "tst_fuzzstores.moc"
