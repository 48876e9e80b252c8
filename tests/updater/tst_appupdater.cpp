// SPDX-License-Identifier: MIT
#include "MediaKits/AppInstance/LocalStore/appdirs.h"
#include "MediaKits/AppInstance/LocalStore/appini.h"
#include "MediaKits/AppUpdater/appupdater.h"
#include "MediaKits/AppUpdater/minidownloadobject.h"
#include "MediaKits/AppUpdater/Package/updatehandshake.h"
#include "MediaKits/AppUpdater/Package/updatekey.h"
#include "MediaKits/AppUpdater/updatedialog.h"
#include "MediaKits/AppUpdater/updatingdialog.h"
#include "MediaKits/MainWindow/mainwindow.h"
#include "MediaKits/MainWindow/updatecheck.h"
#include "platform/namedlock.h"
#include "resources/look.h"
#include "support/casename.h"
#include "support/guisupport.h"
#include "support/scriptedserver.h"
#include "support/testfile.h"
#include "updater/rawserver.h"
#include "updater/updatefixture.h"

#include <QNetworkAccessManager>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QtTest>

#include <csignal>

#include <sys/resource.h>

namespace {

std::string answerOf(int force, const std::string &link)
{
    return R"({"code":0,"data":{"result":{"title":"墨泉 2.1","tip":"更快\n更稳","apkLink":")" +
           link + R"(","forceUpgrade":)" + std::to_string(force) + "}}}";
}

QStringList updateFiles()
{
    return QDir(updateDir()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
}

} // namespace

/// The program's half: the check, the downloads, the dialogs; what installs is a stand-in here.
class TestAppUpdater : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY(Look::apply()); }
    void init();
    void checkAnswers();
    void checkOfBadServers();
    void certificates();
    void forcedThroughTwoStarts();
    void pendingThatIsLeftAlone();
    void startsThatAskNobody();
    void downloadsThatFail();
    void redirects();
    void updatingDialog();
    void updatingDialogFails();
    void confirmsStart();
    void askedFor();

private:
    UpdateSettings settings(const std::string &host) const;
    /// What the stand-in was told; waits for it.
    QStringList toldToUpdater() const;
    void runToIdle(AppUpdater &updater) const;
    static void writeIni(bool run, const QString &package, int force);

    std::unique_ptr<QTemporaryDir> m_dir;
};

void TestAppUpdater::init()
{
    m_dir = std::make_unique<QTemporaryDir>();
    QDir(updateDir()).removeRecursively();
    updateDir();
    AppIni::instance().setValue(AppIni::Key::UpdateFailedLink, QString());
    writeTestProgram(m_dir->filePath("program/updater"_s),
                     "printf '%s\\n' \"$@\" >'" + QFile::encodeName(m_dir->path()) + "/new'; mv '" +
                         QFile::encodeName(m_dir->path()) + "/new' '" +
                         QFile::encodeName(m_dir->path()) + "/told'");
}

UpdateSettings TestAppUpdater::settings(const std::string &host) const
{
    return {QString::fromStdString(host), true, updateKey(), m_dir->filePath("program/morvane"_s)};
}

QStringList TestAppUpdater::toldToUpdater() const
{
    const QString told = m_dir->filePath("told"_s);
    if (!QTest::qWaitFor([&told] { return QFile::exists(told); }))
        return {};
    return QString::fromUtf8(contentOf(told)).split(u'\n', Qt::SkipEmptyParts);
}

void TestAppUpdater::runToIdle(AppUpdater &updater) const
{
    QSignalSpy idle(&updater, &AppUpdater::idle);
    QVERIFY(!updater.run());
    QVERIFY(!idle.isEmpty() || idle.wait());
}

void TestAppUpdater::writeIni(bool run, const QString &package, int force)
{
    QSettings ini(updateDir() + "/update.ini"_s, QSettings::IniFormat);
    ini.setValue("Update/isforce"_s, force);
    ini.setValue("Update/package"_s, package);
    if (run)
        ini.setValue("Update/run"_s, true);
}

void TestAppUpdater::checkAnswers()
{
    const auto check = [this](const char *caseName, const std::string &answer, bool works) {
        const CaseName inCase(caseName);
        const ScriptedServer server(answer);
        AppUpdater updater(settings(server.host()));
        UpdateRecord record;
        QCOMPARE(updater.check(record), works);
        QCOMPARE(server.count(), 1);
        QCOMPARE(QString::fromStdString(server.requests().front().target),
                 "/svc/check/upgrade/%1/pc_x64?code=16"_s.arg(appId()));
        QCOMPARE(record.apkLink, works ? "http://x/p"_s : QString());
        QCOMPARE(record.forceUpgrade, works ? 2 : 0);
        if (works)
            QCOMPARE(record.title + record.tip, "墨泉 2.1更快\n更稳"_s);
    };
    const std::string good = answerOf(2, "http://x/p");
    check("good", good, true);
    check("code 1", std::string(good).replace(8, 1, "1"), false);
    check("code as a text", std::string(good).replace(8, 1, "\"0\""), false);
    check("data isn't an object", R"({"code":0,"data":[]})", false);
    check("no result", R"({"code":0,"data":{"result":"x"}})", false);
    check("cut off", good.substr(0, good.size() - 2), false);
    check("nothing", " ", false);
    check("broken off", "", false);
}

void TestAppUpdater::checkOfBadServers()
{
    const ScriptedServer good(answerOf(0, "http://x/p"));
    const auto check = [this](const char *caseName, const QByteArray &answer,
                              RawServer::Then then) {
        const CaseName inCase(caseName);
        const RawServer server(answer, then);
        AppUpdater updater(settings(server.address("").toStdString()));
        UpdateRecord record;
        QVERIFY(!updater.check(record));
    };
    const QByteArray body = QByteArray::fromStdString(answerOf(0, "http://x/p"));
    check("error",
          "HTTP/1.1 500 No\r\nContent-Length: " + QByteArray::number(body.size()) + "\r\n\r\n" +
              body,
          RawServer::Then::Close);
    check("redirect",
          "HTTP/1.1 302 F\r\nContent-Length: 0\r\nLocation: " +
              QByteArray::fromStdString(good.host()) + "/\r\n\r\n",
          RawServer::Then::Close);
    check("endless", "HTTP/1.1 200 OK\r\n\r\n", RawServer::Then::Repeat);
    check("no HTTP", "hello\r\n\r\n", RawServer::Then::Close);
    QCOMPARE(good.count(), 0);

    UpdateRecord record;
    AppUpdater nowhere(settings("http://127.0.0.1:1"));
    QVERIFY(!nowhere.check(record));
    AppUpdater strange(settings("file:///tmp"));
    QVERIFY(!strange.check(record));
}

// A server whose certificate nobody vouches for is believed only where the settings say so.
void TestAppUpdater::certificates()
{
    const QByteArray body = QByteArray::fromStdString(answerOf(0, "http://x/p"));
    const RawServer server("HTTP/1.1 200 OK\r\nContent-Length: " + QByteArray::number(body.size()) +
                               "\r\n\r\n" + body,
                           RawServer::Then::Close, true);
    const QString target = m_dir->filePath("file"_s);
    for (const bool verifies : {true, false}) {
        UpdateSettings setup = settings(server.address("").toStdString());
        setup.verifiesPeer = verifies;
        AppUpdater updater(setup);
        UpdateRecord record;
        QCOMPARE(updater.check(record), !verifies);

        MiniDownloader downloader;
        MiniDownloadObject *download = downloader.download(server.address(), target, verifies);
        QSignalSpy gone(download, &QObject::destroyed);
        QVERIFY(gone.wait());
        QCOMPARE(contentOf(target), verifies ? QByteArray() : body);
    }
}

void TestAppUpdater::forcedThroughTwoStarts()
{
    const std::string package = packageOf(archiveOf({{"a"}}), 17).toStdString();
    std::string link = "/first";
    const ScriptedServer server([&](const httplib::Request &request) {
        const std::string host = "http://" + request.get_header_value("Host");
        return request.path == link ? package : answerOf(1, host + link);
    });
    AppUpdater first(settings(server.host()));
    QSignalSpy progress(&first, &AppUpdater::downloadProgress);
    runToIdle(first);
    QVERIFY(!progress.isEmpty());
    QCOMPARE(progress.last().at(0).toLongLong(), qlonglong(package.size()));
    QCOMPARE(updateFiles(), QStringList({"update.ini"_s, "updatePackage.exe"_s}));
    const QString fetched = updateDir() + "/updatePackage.exe"_s;
    QCOMPARE(contentOf(fetched).toStdString(), package);
    {
        const QSettings ini(updateDir() + "/update.ini"_s, QSettings::IniFormat);
        QCOMPARE(ini.value("Update/isforce"_s).toInt(), 1);
        QCOMPARE(ini.value("Update/package"_s).toString(), fetched);
        const QString time = ini.value("Update/datetime"_s).toString();
        QVERIFY(QDateTime::fromString(time, "yyyy-MM-dd HH:mm:ss"_s).isValid());
    }

    AppUpdater second(settings(server.host()));
    QVERIFY(second.run());
    const UpdateSettings setup = settings({});
    QCOMPARE(toldToUpdater(), QStringList({"-downloadurl=file://"_s + fetched, "-downloadscale=5"_s,
                                           "-installpath="_s + setup.installFolder(),
                                           "-lock=morvane"_s, "-startup="_s + setup.program}));
    QVERIFY(QFileInfo(updateDir() + "/updater.exe"_s).isExecutable());
    QVERIFY(tryNamedLock(updateLockName(appCode())).isHeld());
    QCOMPARE(server.count(), 2);

    // This version is still here: the same package isn't fetched again, another one is.
    AppUpdater third(settings(server.host()));
    runToIdle(third);
    QCOMPARE(updateFiles(), QStringList());
    QCOMPARE(server.count(), 3);
    link = "/second";
    AppUpdater fourth(settings(server.host()));
    runToIdle(fourth);
    QCOMPARE(updateFiles(), QStringList({"update.ini"_s, "updatePackage.exe"_s}));
}

void TestAppUpdater::pendingThatIsLeftAlone()
{
    const ScriptedServer server(answerOf(0, "http://127.0.0.1:1/p"));
    const auto check = [&](const char *caseName, bool run, const QString &package, int force) {
        const CaseName inCase(caseName);
        writeIni(run, package, force);
        writeTestFile(updateDir() + "/folder/old"_s);
        AppUpdater updater(settings(server.host()));
        runToIdle(updater);
        QCOMPARE(updateFiles(), QStringList());
        QVERIFY(!QFile::exists(m_dir->filePath("told"_s)));
    };
    check("has run", true, "/p"_s, 1);
    check("no package", false, QString(), 1);
    check("not forced", false, "/p"_s, 0);
}

void TestAppUpdater::startsThatAskNobody()
{
    const ScriptedServer server(answerOf(1, "http://127.0.0.1:1/p"));
    {
        UpdateSettings keyless = settings(server.host());
        keyless.key.clear();
        QVERIFY(!AppUpdater(keyless).run());
        const DirectoryLock other = tryNamedLock(updateLockName(appCode()));
        QVERIFY(!AppUpdater(settings(server.host())).run());
    }
    QVERIFY(QFile::remove(m_dir->filePath("program/updater"_s)));
    QVERIFY(!AppUpdater(settings(server.host())).run());
    QTest::qWait(0);
    QCOMPARE(server.count(), 0);
}

void TestAppUpdater::downloadsThatFail()
{
    const QString target = m_dir->filePath("file"_s);
    const auto check = [&](const char *caseName, const QByteArray &answer, RawServer::Then then) {
        const CaseName inCase(caseName);
        const RawServer server(answer, then);
        MiniDownloader downloader;
        downloader.setLimit(3 * 1024 * 1024);
        MiniDownloadObject *download = downloader.download(server.address(), target);
        QVERIFY(download != nullptr);
        QSignalSpy failed(download, &MiniDownloadObject::downloadError);
        QSignalSpy gone(download, &QObject::destroyed);
        QVERIFY(failed.wait());
        QVERIFY(!gone.isEmpty() || gone.wait());
        QVERIFY(!QFile::exists(target) && !QFile::exists(target + ".part"_s));
    };
    using Then = RawServer::Then;
    check("missing", "HTTP/1.1 404 No\r\nContent-Length: 2\r\n\r\nno", Then::Close);
    check("shorter than told", "HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\npart", Then::Close);
    check("endless", "HTTP/1.1 200 OK\r\n\r\n", Then::Repeat);
    check("endless in small pieces", "HTTP/1.1 200 OK\r\nContent-Length: 9999999999\r\n\r\n",
          Then::Repeat);
    check("to a file", "HTTP/1.1 302 F\r\nLocation: file:///etc/passwd\r\n\r\n", Then::Close);
    check("to another scheme", "HTTP/1.1 302 F\r\nLocation: ftp://127.0.0.1/p\r\n\r\n",
          Then::Close);

    // As on a full disk.
    rlimit usual{};
    QVERIFY(::getrlimit(RLIMIT_FSIZE, &usual) == 0 && ::signal(SIGXFSZ, SIG_IGN) != SIG_ERR);
    const rlimit low{1024 * 1024, usual.rlim_max};
    QVERIFY(::setrlimit(RLIMIT_FSIZE, &low) == 0);
    check("full disk", "HTTP/1.1 200 OK\r\nContent-Length: 2000000\r\n\r\n", Then::Repeat);
    QVERIFY(::setrlimit(RLIMIT_FSIZE, &usual) == 0);

    MiniDownloader downloader;
    for (const char *link : {"", "file:///etc/passwd", "ftp://127.0.0.1/p", "data:,x", "http:"})
        QVERIFY2(downloader.download(QLatin1String(link), target) == nullptr, link);
    QVERIFY(QDir().mkpath(target + ".part/x"_s));
    QVERIFY(downloader.download("http://127.0.0.1:1/p"_s, target) == nullptr);
}

void TestAppUpdater::redirects()
{
    const ScriptedServer server("whole");
    const QString target = m_dir->filePath("file"_s);
    writeTestFile(target, "old");
    const RawServer other("HTTP/1.1 302 F\r\nContent-Length: 0\r\nLocation: " +
                              QByteArray::fromStdString(server.host()) + "/p\r\n\r\n",
                          RawServer::Then::Close);
    MiniDownloader downloader;
    MiniDownloadObject *download = downloader.download(other.address(), target);
    QSignalSpy finished(download, &MiniDownloadObject::downloadFinished);
    QVERIFY(finished.wait());
    QCOMPARE(contentOf(target), QByteArray("whole"));
}

void TestAppUpdater::updatingDialog()
{
    AppUpdater updater(settings({}));
    const RawServer slow("HTTP/1.1 200 OK\r\nContent-Length: 200\r\n\r\n" + QByteArray(100, 'x'),
                         RawServer::Then::Wait);
    {
        UpdatingDialog dialog(updater, {{}, {}, slow.address(), 0});
        auto *label = child<QLabel>(dialog, "lblProgress");
        QCOMPARE(label->text(), "正在更新，请不要关闭：0%"_s);
        dialog.show();
        QTRY_COMPARE(label->text(), "正在更新，请不要关闭：50%"_s);
        QCOMPARE(child<QProgressBar>(dialog, "prgDownload")->value(), 50);
        shoot(dialog, "updating");
        QVERIFY(QFile::exists(AppUpdater::askedPackage() + ".part"_s));
        QTest::keyClick(&dialog, Qt::Key_Escape);
        QCOMPARE(dialog.result(), int(QDialog::Rejected));
    }
    QCOMPARE(updateFiles(), QStringList());

    const ScriptedServer server(packageOf(archiveOf({{"a"}}), 17).toStdString());
    UpdatingDialog dialog(updater, {{}, {}, QString::fromStdString(server.host()), 0});
    QSignalSpy accepted(&dialog, &QDialog::accepted);
    dialog.show();
    QVERIFY(accepted.wait());
    QVERIFY(toldToUpdater().contains("-downloadurl=file://"_s + AppUpdater::askedPackage()));
}

void TestAppUpdater::updatingDialogFails()
{
    AppUpdater updater(settings({}));
    const auto check = [&](const char *caseName, const QString &link, const QString &text) {
        const CaseName inCase(caseName);
        UpdatingDialog dialog(updater, {{}, {}, link, 0});
        dialog.show();
        QTRY_COMPARE(dialog.title(), "警告"_s);
        QCOMPARE(child<QLabel>(dialog, "lblProgress")->text(), text);
        QVERIFY(!child(dialog, "prgDownload")->isVisible());
        QCOMPARE(child<QPushButton>(dialog, "btnCancel")->text(), "确定"_s);
        shoot(dialog, "updating-failed");
        press(dialog, "btnCancel");
        QCOMPARE(dialog.result(), int(QDialog::Rejected));
        QVERIFY(!QFile::exists(m_dir->filePath("told"_s)));
    };
    check("nobody there", "http://127.0.0.1:1/p"_s, "无法下载升级包"_s);
    check("no address", QString(), "无法下载升级包"_s);
    const auto served = [](const QByteArray &bytes) {
        return std::make_unique<ScriptedServer>(bytes.toStdString());
    };
    const auto unsignedServer = served("rubbish");
    check("unsigned", QString::fromStdString(unsignedServer->host()),
          "升级包的签名无效，没有安装"_s);
    const auto olderServer = served(packageOf(archiveOf({{"a"}}), 15));
    check("older", QString::fromStdString(olderServer->host()), "升级包不比当前版本新，没有安装"_s);
}

// From the menu: what is told, offered and done.
void TestAppUpdater::askedFor()
{
    std::string link;
    const std::string package = packageOf(archiveOf({{"a"}}), 17).toStdString();
    const ScriptedServer server([&](const httplib::Request &request) {
        return request.path == "/package" ? package : answerOf(0, link);
    });
    MainWindow window;
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    const auto toastAfter = [&window](const UpdateSettings &setup) {
        AppUpdater updater(setup);
        checkForUpdate(&window, updater);
        return QTest::qWaitFor([] { return !toastText().isEmpty(); }) ? toastText() : QString();
    };
    const auto closeToast = [] {
        visibleWindow("Toast")->close();
        QTRY_COMPARE(toastText(), QString());
    };
    QCOMPARE(toastAfter(settings(server.host())), "当前已是最新版本"_s);
    closeToast();
    QCOMPARE(toastAfter(settings("http://127.0.0.1:1")), "无法连接更新服务，请稍后再试"_s);
    closeToast();

    link = server.host() + "/package";
    AppUpdater updater(settings(server.host()));
    whenModal("UpdateDialog", [](QWidget &dialog) {
        QCOMPARE(child<QLabel>(dialog, "lblHeading")->text(), "墨泉 2.1"_s);
        QCOMPARE(child<QPlainTextEdit>(dialog, "edtTip")->toPlainText(), "更快\n更稳"_s);
        shoot(dialog, "update");
        press(dialog, "btnNoUpdate");
    });
    checkForUpdate(&window, updater);
    QCOMPARE(server.requests().back().path.substr(0, 5), std::string("/svc/"));

    UpdateSettings systems = settings(server.host());
    systems.program = m_dir->filePath("elsewhere/morvane"_s);
    AppUpdater unfit(systems);
    whenModal("UpdateDialog", [](QWidget &dialog) {
        QVERIFY(!child(dialog, "btnUpdate")->isVisible());
        QVERIFY(child(dialog, "lblHint")->isVisible());
        shoot(dialog, "update-forbidden");
        press(dialog, "btnNoUpdate");
    });
    checkForUpdate(&window, unfit);

    UpdateSettings keyless = settings(server.host());
    keyless.key.clear();
    AppUpdater refusing(keyless);
    const int asked = server.count();
    QVERIFY(
        askedBy([&] { checkForUpdate(&window, refusing); }, "btnOK").contains("软件包管理器"_s));
    QCOMPARE(server.count(), asked);

    // Ends all event loops, so nothing can be asked after it.
    whenModal("UpdateDialog", [](QWidget &dialog) { press(dialog, "btnUpdate"); });
    checkForUpdate(&window, updater);
    QVERIFY(toldToUpdater().contains("-downloadurl=file://"_s + AppUpdater::askedPackage()));
}

// The one that installed it is told; what a killed one left goes.
void TestAppUpdater::confirmsStart()
{
    AppUpdater updater(settings({}));
    const QString work = updateWorkFolder(settings({}).installFolder());
    writeTestFile(work + "/other/morvane"_s);
    {
        const DirectoryLock installing = tryNamedLock(updateLockName(appCode()));
        QCOMPARE(updater.confirmStart(), QString());
    }
    qputenv(updateStartedVariable, QFile::encodeName(work + "/started"_s));
    qputenv(updateFailedVariable, "没有成功");
    QCOMPARE(updater.confirmStart(), "没有成功"_s);
    QVERIFY(QFile::exists(work + "/started"_s));
    QVERIFY(QFile::exists(work + "/other/morvane"_s));
    QVERIFY(!qEnvironmentVariableIsSet(updateStartedVariable));
    QCOMPARE(updater.confirmStart(), QString());
    QTRY_VERIFY(!QFile::exists(work));
}

QTEST_MAIN(TestAppUpdater)
#include "tst_appupdater.moc"
