// SPDX-License-Identifier: MIT
#include "MediaKits/AppInstance/LocalStore/appdirs.h"
#include "MediaKits/AppUpdater/appupdater.h"
#include "MediaKits/AppUpdater/Package/updatehandshake.h"
#include "MediaKits/AppUpdater/updatingdialog.h"
#include "MediaKits/MainWindow/mainwindow.h"
#include "MediaKits/MainWindow/updatecheck.h"
#include "resources/look.h"
#include "support/casename.h"
#include "support/guisupport.h"
#include "support/scriptedserver.h"
#include "support/testfile.h"
#include "updater/rawserver.h"
#include "updater/standin.h"
#include "updater/updatefixture.h"

#include <QPlainTextEdit>
#include <QProgressBar>
#include <QtTest>

/// An update that the user asks for.
class TestUpdateDialogs : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY(Look::apply()); }
    void init() { m_standIn = std::make_unique<StandIn>(); }
    void updatingDialog();
    void updatingDialogFails();
    void askedFor();

private:
    std::unique_ptr<StandIn> m_standIn;
};

void TestUpdateDialogs::updatingDialog()
{
    AppUpdater updater(m_standIn->settings({}));
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
    QVERIFY(m_standIn->told().contains("-downloadurl=file://"_s + AppUpdater::askedPackage()));
}

void TestUpdateDialogs::updatingDialogFails()
{
    AppUpdater updater(m_standIn->settings({}));
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
        QVERIFY(!m_standIn->wasStarted());
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
void TestUpdateDialogs::askedFor()
{
    std::string link;
    std::string package;
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
    QCOMPARE(toastAfter(m_standIn->settings(server.host())), "当前已是最新版本"_s);
    closeToast();
    QCOMPARE(toastAfter(m_standIn->settings("http://127.0.0.1:1")),
             "无法连接更新服务，请稍后再试"_s);
    closeToast();

    link = server.host() + "/package";
    AppUpdater updater(m_standIn->settings(server.host()));
    whenModal("UpdateDialog", [](QWidget &dialog) {
        QCOMPARE(child<QLabel>(dialog, "lblHeading")->text(), "墨泉 2.1"_s);
        QCOMPARE(child<QPlainTextEdit>(dialog, "edtTip")->toPlainText(), "更快\n更稳"_s);
        shoot(dialog, "update");
        press(dialog, "btnNoUpdate");
    });
    checkForUpdate(&window, updater);
    QCOMPARE(server.requests().back().path.substr(0, 5), std::string("/svc/"));

    UpdateSettings systems = m_standIn->settings(server.host());
    systems.program = m_standIn->path("elsewhere/morvane");
    AppUpdater unfit(systems);
    whenModal("UpdateDialog", [](QWidget &dialog) {
        QVERIFY(!child(dialog, "btnUpdate")->isVisible());
        QVERIFY(child(dialog, "lblHint")->isVisible());
        shoot(dialog, "update-forbidden");
        press(dialog, "btnNoUpdate");
    });
    checkForUpdate(&window, unfit);

    UpdateSettings keyless = m_standIn->settings(server.host());
    keyless.key.clear();
    AppUpdater refusing(keyless);
    const int asked = server.count();
    QVERIFY(
        askedBy([&] { checkForUpdate(&window, refusing); }, "btnOK").contains("软件包管理器"_s));
    QCOMPARE(server.count(), asked);

    // With the real one, which starts what it has installed.
    const QString installed = m_standIn->path("program");
    makeInstallation(installed, "old");
    makeInstallation(m_standIn->path("next"), "new");
    packFolder(m_standIn->path("next"), appNumber() + 1, m_standIn->path("package"));
    package = contentOf(m_standIn->path("package")).toStdString();
    QVERIFY(QFile::remove(installed + "/updater"_s));
    QVERIFY(QFile::copy(builtProgram("updater_with_test_key"_s), installed + "/updater"_s));
    // Ends all event loops, so nothing can be asked after it.
    whenModal("UpdateDialog", [](QWidget &dialog) { press(dialog, "btnUpdate"); });
    checkForUpdate(&window, updater);
    QTRY_COMPARE_WITH_TIMEOUT(contentOf(m_standIn->path("ran")), QByteArray("new\n"), 20000);
    QCOMPARE(versionOf(installed), QByteArray("new"));
    QTRY_VERIFY(!QFile::exists(updateWorkFolder(installed)));
}

QTEST_MAIN(TestUpdateDialogs)
#include "tst_updatedialogs.moc"
