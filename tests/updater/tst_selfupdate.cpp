// SPDX-License-Identifier: MIT
#include "MediaKits/AppUpdater/Package/updatehandshake.h"
#include "support/scriptedserver.h"
#include "support/testfile.h"
#include "support/toolrun.h"
#include "updater/updatefixture.h"

#include <QtTest>

#include <csignal>

/// The real program, its real updater and a real server: starts without a hand.
class TestSelfUpdate : public QObject
{
    Q_OBJECT

private slots:
    void forcedUpdate();

private:
    void makeFolder(const QString &folder, const QByteArray &mainIni) const;
    void begin(QProcess &program) const;
    void goesBack();
    void endProgram() const;
    QString path(const char *name) const { return m_dir.filePath(QLatin1String(name)); }

    QTemporaryDir m_dir;
};

void TestSelfUpdate::makeFolder(const QString &folder, const QByteArray &mainIni) const
{
    writeTestFile(folder + "/main.ini"_s, mainIni);
    const std::pair<const char *, const char *> files[] = {{"morvane_with_test_key", "morvane"},
                                                           {"updater_with_test_key", "updater"},
                                                           {"log.conf", "log.conf"}};
    for (const auto &[from, to] : files)
        QVERIFY(QFile::copy(builtProgram(QLatin1String(from)), folder + u'/' + QLatin1String(to)));
}

void TestSelfUpdate::begin(QProcess &program) const
{
    QStringList environment;
    for (const char *name : {"RUNTIME_DIR", "DATA_HOME", "CACHE_HOME", "CONFIG_HOME"}) {
        QVERIFY(QDir().mkpath(path(name)));
        environment += "XDG_"_s + QLatin1String(name) + u'=' + path(name);
    }
    program.setProcessEnvironment(environmentWith(environment));
    program.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    program.start(path("program/morvane"), {});
}

void TestSelfUpdate::forcedUpdate()
{
    std::string package;
    const ScriptedServer server([&package](const httplib::Request &request) {
        const std::string link = "http://" + request.get_header_value("Host") + "/package";
        return request.path == "/package"
                   ? package
                   : R"({"code":0,"data":{"result":{"forceUpgrade":1,"apkLink":")" + link + "\"}}}";
    });
    makeFolder(path("next"), "[Service]\n");
    writeTestFile(path("next/marker"));
    packFolder(path("next"), 17, path("package"));
    package = contentOf(path("package")).toStdString();
    makeFolder(path("program"), "[Service]\nupdate=" + QByteArray::fromStdString(server.host()));
    const QByteArray settings = contentOf(path("program/main.ini"));

    QProcess first;
    begin(first);
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(path("DATA_HOME/MorvaneLocal/update/update.ini")),
                             20000);
    first.terminate();
    QVERIFY(first.waitForFinished(10000));
    QVERIFY(!QFile::exists(path("program/marker")));

    QProcess second;
    begin(second);
    QVERIFY(second.waitForFinished(10000));
    QCOMPARE(second.exitCode(), 0);
    const QString work = updateWorkFolder(path("program"));
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(path("program/marker")), 30000);
    QTRY_VERIFY_WITH_TIMEOUT(!QFile::exists(work), 30000);
    QCOMPARE(contentOf(path("program/main.ini")), settings);
    QCOMPARE(contentOf(path("CACHE_HOME/MorvaneLocal/Log/morvane.log")).count("####启动####"), 3);

    endProgram();
    goesBack();
}

// As if the updater had been killed before the new program came up, and that had not since.
void TestSelfUpdate::goesBack()
{
    const QString folder = path("program");
    makeFolder(updateOtherFolder(folder), contentOf(folder + "/main.ini"_s));
    writeTestFile(updateTrialNote(folder), "started\n");
    QProcess fourth;
    begin(fourth);
    QVERIFY(fourth.waitForFinished(10000));
    QTRY_VERIFY_WITH_TIMEOUT(!QFile::exists(folder + "/marker"_s), 30000);
    const QString log = path("CACHE_HOME/MorvaneLocal/Log/morvane.log");
    QTRY_COMPARE_WITH_TIMEOUT(contentOf(log).count("####启动####"), 5, 30000);
    QVERIFY(!QFile::exists(updateWorkFolder(folder)));
    endProgram();
}

void TestSelfUpdate::endProgram() const
{
    QTRY_COMPARE_WITH_TIMEOUT(processesWith(path("program/morvane")).size(), 1, 10000);
    ::kill(pid_t(processesWith(path("program/morvane")).first()), SIGTERM);
    QTRY_VERIFY_WITH_TIMEOUT(processesWith(path("program/morvane")).isEmpty(), 10000);
}

QTEST_GUILESS_MAIN(TestSelfUpdate)
#include "tst_selfupdate.moc"
