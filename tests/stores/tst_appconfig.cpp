// SPDX-License-Identifier: MIT
#include "MediaKits/AppInstance/LocalStore/appconfig.h"
#include "MediaKits/AppInstance/LocalStore/appdirs.h"
#include "MediaKits/AppInstance/LocalStore/appini.h"
#include "support/testfile.h"

#include <QtTest>

class TestAppConfig : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        for (const char *variable : {"XDG_DATA_HOME", "XDG_CACHE_HOME"})
            qputenv(variable, QFile::encodeName(m_dir.path()));
    }

    void values()
    {
        const QString missing = m_dir.filePath("none.ini"_s);
        QCOMPARE(AppConfig(missing).store, "other"_s);
        QCOMPARE(AppConfig(missing).lock, "Lock_Morvane"_s);
        QVERIFY(!QFile::exists(missing));

        const AppConfig config(writeIni("store=main\ninstaller=C:\\\\dl\\\\set.up_#x.exe\n"
                                        "oaid=\"a,b\"\npointCode=p,q\n"));
        QCOMPARE(config.store, "main"_s);
        QCOMPARE(config.installer, "set.up_#x"_s);
        QCOMPARE(config.oaid, "a,b"_s);
        QCOMPARE(config.pointCode, "p,q"_s);
    }

    void channel()
    {
        const std::tuple<const char *, const char *, const char *> rows[] = {
            {"", "setup_#web(2).exe", "other_web"},
            {"setup_#a(1)b(2)(13) .exe", "", "other_ab"},
            {"setup__one_#two.exe", "", "other_two"},
            {"setup@site.exe", "setup_#web.exe", "other_site"},
            {"setup_#(1).exe", "setup_-b.exe", "other_b"},
            {"C:\\\\a_#b\\\\setup.exe", "", "other"},
        };
        for (const auto &[installer, package, store] : rows) {
            const AppConfig config(writeIni(QByteArray("installer=\"") + installer +
                                            "\"\npackage=\"" + package + "\"\n"));
            QCOMPARE(config.store, QString::fromLatin1(store));
            QVERIFY(!config.installer.isEmpty());
        }
    }

    void iniKeepsValues()
    {
        using Key = AppIni::Key;
        const QString package = "/tmp/更新, 1.exe"_s;
        {
            AppIni ini;
            QVERIFY(!ini.contains(Key::InstallTime));
            QCOMPARE(ini.value(Key::IsExitTips), QVariant(true));
            ini.setValue(Key::PreviewVolume, "loud"_s);
            ini.setValue(Key::InstallTime, qint64(1650000000123));
            ini.setValue(Key::UpdatePackage, package);
        }
        const AppIni ini;
        QCOMPARE(ini.value(Key::PreviewVolume), QVariant(10));
        QCOMPARE(ini.value(Key::InstallTime), QVariant(qint64(1650000000123)));
        QCOMPARE(ini.value(Key::UpdatePackage), QVariant(package));
        const QSettings file(dataDir() + "/app.ini"_s, QSettings::IniFormat);
        QVERIFY(file.contains("Init/InstallTime"_s));
    }

    void identity()
    {
        QCOMPARE(shortVersion(), "2.0.5"_s);
        QVERIFY(QRegularExpression("^\\d{18}$"_s).match(appId()).hasMatch());
        QCOMPARE(dataDir(), m_dir.filePath("MorvaneLocal/Data"_s));
        for (const QString &dir : {dataDir(), tempDir(), logDir(), updateDir()})
            QVERIFY2(QFileInfo(dir).isDir(), qPrintable(dir));
    }

    // Nothing is read or written through what somebody has put in a folder's place.
    void linksInTheWay()
    {
        const QTemporaryDir home;
        qputenv("XDG_DATA_HOME", QFile::encodeName(home.path()));
        QVERIFY(QDir().mkpath(home.filePath("MorvaneLocal"_s)));
        QVERIFY(QDir().mkpath(home.filePath("theirs"_s)));
        const QString data = home.filePath("MorvaneLocal/Data"_s);
        QVERIFY(QFile::link(home.filePath("theirs"_s), data));
        QVERIFY(dataDir().startsWith(data + u'-'));
        QVERIFY(QFileInfo(dataDir()).isDir());
        QCOMPARE(refusedDirs(), QStringList(data));
        qputenv("XDG_DATA_HOME", QFile::encodeName(m_dir.path()));
    }

private:
    QString writeIni(const QByteArray &text) const
    {
        const QString path = m_dir.filePath("main.ini"_s);
        writeTestFile(path, "[App]\n" + text);
        return path;
    }

    QTemporaryDir m_dir;
};

QTEST_GUILESS_MAIN(TestAppConfig)
#include "tst_appconfig.moc"
