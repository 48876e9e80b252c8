// SPDX-License-Identifier: MIT
#include "MediaKits/AppInstance/LocalStore/appconfig.h"
#include "MediaKits/AppInstance/LocalStore/appdirs.h"
#include "MediaKits/AppInstance/LocalStore/appini.h"
#include "support/testfile.h"

#include <QFileInfo>
#include <QTemporaryDir>
#include <QtTest>

class TestAppConfig : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void values();
    void channel();
    void iniKeepsValues();
    void identity();

private:
    QString writeIni(const QByteArray &text) const;

    QTemporaryDir m_dir;
};

void TestAppConfig::initTestCase()
{
    for (const char *variable : {"XDG_DATA_HOME", "XDG_CACHE_HOME"})
        qputenv(variable, QFile::encodeName(m_dir.path()));
}

QString TestAppConfig::writeIni(const QByteArray &text) const
{
    const QString path = m_dir.filePath(QStringLiteral("main.ini"));
    writeTestFile(path, "[App]\n" + text);
    return path;
}

void TestAppConfig::values()
{
    const QString missing = m_dir.filePath(QStringLiteral("none.ini"));
    QCOMPARE(AppConfig(missing).store, QStringLiteral("other"));
    QCOMPARE(AppConfig(missing).lock, QStringLiteral("Lock_Morvane"));
    QVERIFY(!QFile::exists(missing));

    const AppConfig config(writeIni("store=main\ninstaller=C:\\\\dl\\\\set.up_#x.exe\n"
                                    "oaid=\"a,b\"\npointCode=p,q\n"));
    QCOMPARE(config.store, QStringLiteral("main"));
    QCOMPARE(config.installer, QStringLiteral("set.up_#x"));
    QCOMPARE(config.oaid, QStringLiteral("a,b"));
    QCOMPARE(config.pointCode, QStringLiteral("p,q"));
}

void TestAppConfig::channel()
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
        const AppConfig config(
            writeIni(QByteArray("installer=\"") + installer + "\"\npackage=\"" + package + "\"\n"));
        QCOMPARE(config.store, QString::fromLatin1(store));
        QVERIFY(!config.installer.isEmpty());
    }
}

void TestAppConfig::iniKeepsValues()
{
    using Key = AppIni::Key;
    const QString package = QStringLiteral("/tmp/更新, 1.exe");
    {
        AppIni ini;
        QVERIFY(!ini.contains(Key::InstallTime));
        QCOMPARE(ini.value(Key::IsExitTips), QVariant(true));
        ini.setValue(Key::PreviewVolume, QStringLiteral("loud"));
        ini.setValue(Key::InstallTime, qint64(1650000000123));
        ini.setValue(Key::UpdatePackage, package);
    }
    const AppIni ini;
    QCOMPARE(ini.value(Key::PreviewVolume), QVariant(10));
    QCOMPARE(ini.value(Key::InstallTime), QVariant(qint64(1650000000123)));
    QCOMPARE(ini.value(Key::UpdatePackage), QVariant(package));
    const QSettings file(dataDir() + QStringLiteral("/app.ini"), QSettings::IniFormat);
    QVERIFY(file.contains(QStringLiteral("Init/InstallTime")));
}

void TestAppConfig::identity()
{
    QCOMPARE(shortVersion(), QStringLiteral("2.0.5"));
    QVERIFY(QRegularExpression(QStringLiteral("^\\d{18}$")).match(appId()).hasMatch());
    QCOMPARE(dataDir(), m_dir.filePath(QStringLiteral("MorvaneLocal/Data")));
    for (const QString &dir : {dataDir(), tempDir(), logDir(), updateDir()})
        QVERIFY2(QFileInfo(dir).isDir(), qPrintable(dir));
}

QTEST_GUILESS_MAIN(TestAppConfig)
#include "tst_appconfig.moc"
