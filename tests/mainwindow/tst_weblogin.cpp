// SPDX-License-Identifier: MIT
#include "browser/qminiblinkbrowser.h"
#include "browser/userinfomanager.h"
#include "controls/toast.h"
#include "mainwindow/loginstage.h"
#include "MediaKits/AppInstance/LocalStore/appdirs.h"
#include "MediaKits/DataTracker/oskdatatracker.h"
#include "MediaKits/DataTracker/volcdatatracker.h"
#include "support/desktop.h"
#include "support/guisupport.h"
#include "support/testfile.h"

#include <QDesktopServices>
#include <QtTest>

namespace {

// With what lies around the dialog.
void shootScreen(const char *name)
{
    const QString folder = qEnvironmentVariable("MORVANE_SHOTS");
    if (folder.isEmpty())
        return;
    QTest::qWait(500); // for the compositor
    QGuiApplication::primaryScreen()->grabWindow(0).save(folder + u'/' + QLatin1String(name) +
                                                         ".png"_s);
}

} // namespace

/// The login from the window's own button, with a service that it is set up for.
class TestWebLogin : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void noPage();
    void loading();
    void otherOrigin();
    void hides();
    void login();
    void cleanupTestCase();
    void openUrl(const QUrl &url) { m_opened += url; }

private:
    template<class Act>
    void inDialog(Act act);
    // Also where a pixel of the program is several of the screen.
    void point(const QWidget &widget, const QPoint &place)
    {
        Desktop::click(widget.mapToGlobal(place) * widget.devicePixelRatioF());
    }
    void pressClose(const QWidget &bar)
    {
        const QWidget &button = *child(bar, "btnClose");
        point(button, button.rect().center());
    }

    PageServer &service() { return m_stage->service(); }
    MainWindow &window() { return m_stage->window(); }

    std::unique_ptr<LoginStage> m_stage;
    QList<QUrl> m_opened;
};

void TestWebLogin::initTestCase()
{
    m_stage = std::make_unique<LoginStage>();
}

void TestWebLogin::init()
{
    QVERIFY(!UserInfoManager::instance().isLoggedIn());
    QTRY_VERIFY(window().isActiveWindow());
}

// Presses the title bar's button; `act` gets the dialog and has to close it.
template<class Act>
void TestWebLogin::inDialog(Act act)
{
    bool wasThere = false;
    whenModal("WebLoginDialog", [&](QWidget &dialog) {
        wasThere = true;
        const QPointer<QWidget> open = &dialog;
        act(dialog);
        if (open && QTest::currentTestFailed())
            open->close();
    });
    press(window(), "btnLogin");
    QVERIFY(wasThere);
    QTRY_COMPARE(QApplication::activeModalWidget(), nullptr);
}

// It costs nothing before the first login, and a page that fails is told of and can be tried again.
void TestWebLogin::noPage()
{
    QVERIFY(!hasEngine());
    service().setPage("/login"_s, {"broken", "text/html", {}, 500});
    int told = 0;
    whenModal("LoginNotice", [&](QWidget &notice) {
        ++told;
        shoot(notice, "login-notice");
        whenModal("LoginNotice", [&told](QWidget &again) {
            ++told;
            press(again, "btnOk");
        });
        press(notice, "btnRetry");
    });
    press(window(), "btnLogin");
    QCOMPARE(told, 2);
}

void TestWebLogin::loading()
{
    service().setPage("/login"_s,
                      {contentOf(QStringLiteral(LOGIN_PAGE)), "text/html", {}, 200, true});
    for (const bool byKey : {true, false}) {
        inDialog([&](QWidget &dialog) {
            QVERIFY(child(dialog, "loginVeil")->isVisible());
            QCOMPARE(dialog.size(), QSize(551, 320));
            QVERIFY(QTest::qWaitForWindowExposed(&dialog));
            shootScreen("login-loading");
            // As long as nothing has come of the page.
            const QWidget *veil = child(dialog, "loginVeil");
            QVERIFY(byKey || !QTest::qWaitFor([veil] { return !veil->isVisible(); }, 3000));
            if (byKey)
                Desktop::key("Escape");
            else
                pressClose(*child(dialog, "loginVeil"));
        });
        QTRY_VERIFY(window().isActiveWindow());
    }
    QVERIFY(!UserInfoManager::instance().isLoggedIn());
}

// A page of somebody else has no way to close the window, and the user sees whose it is.
void TestWebLogin::otherOrigin()
{
    const PageServer other({{"/"_s,
                             {"<body style='background:#eee'><script>document.title = typeof "
                              "external.SetUserInfo;"
                              "for (let i = 0; i < 50; ++i) alert(i)</script>"}}});
    service().setPage("/login"_s,
                      {"", "text/html", "Location: " + other.address("/"_s).toUtf8(), 302});
    inDialog([&](QWidget &dialog) {
        auto *browser = child<QMiniblinkBrowser>(dialog, "mb");
        QSignalSpy titles(browser, &QMiniblinkBrowser::titleChanged);
        QTRY_COMPARE(titles.value(titles.size() - 1).value(0).toString(), "undefined"_s);
        QTRY_VERIFY(!child(dialog, "loginVeil")->isVisible());
        QTRY_COMPARE(child(dialog, "mb")->y(), 44);
        QTRY_COMPARE(screenPart(*browser).pixelColor(300, 200), QColor(0xEE, 0xEE, 0xEE));
        // Not the program's own words, and never more than the last.
        QTRY_COMPARE(toastText(), "127.0.0.1：49"_s);
        const auto toasts = dialog.findChildren<Toast *>();
        QCOMPARE(toasts.size(), 1);
        delete toasts.first();
        shootScreen("login-other");
        const QWidget *bar = child(dialog, "loginBar");
        QVERIFY(bar->findChild<QLabel *>()->text().contains("127.0.0.1"_s));
        pressClose(*bar);
    });
}

// A page may hide its window for a while; who asks for the login meanwhile has it back.
void TestWebLogin::hides()
{
    service().setPage("/login"_s,
                      {"<script>external.HideWindow(); setTimeout(() => {"
                       "external.SetWindowSize(400, 300); external.ShowWindow();"
                       "setTimeout(() => { external.HideWindow(); document.title = 'gone' }, 500);"
                       "}, 500)</script>"});
    inDialog([&](QWidget &dialog) {
        const QPointer<QWidget> open = &dialog;
        QSignalSpy titles(child<QMiniblinkBrowser>(dialog, "mb"), &QMiniblinkBrowser::titleChanged);
        QTRY_VERIFY(!open || !dialog.isVisible());
        QTRY_VERIFY(!open || dialog.isVisible());
        QTRY_VERIFY(!open || titles.contains({"gone"_s}));
        QVERIFY(open && !dialog.isVisible());
        press(window(), "btnLogin");
        QVERIFY(dialog.isVisible());
        QCOMPARE(dialog.size(), QSize(400, 300));
        dialog.close();
    });
}

void TestWebLogin::login()
{
    service().setPage("/login"_s, {contentOf(QStringLiteral(LOGIN_PAGE))});
    for (const char *scheme : {"https", "file", "mailto", "javascript"})
        QDesktopServices::setUrlHandler(QLatin1String(scheme), this, "openUrl");
    // Closed by the page, then used.
    inDialog([&](QWidget &dialog) {
        QTRY_VERIFY(!child(dialog, "loginVeil")->isVisible());
        QTRY_COMPARE(dialog.size(), QSize(480, 300));
        point(dialog, {455, 26});
    });
    QVERIFY(!UserInfoManager::instance().isLoggedIn());
    QString told;
    inDialog([&](QWidget &dialog) {
        connect(child<QMiniblinkBrowser>(dialog, "mb"), &QMiniblinkBrowser::titleChanged, this,
                [&told](const QString &title) { told = title; });
        QTRY_VERIFY(told.contains(u'|'));
        QTRY_VERIFY(!child(dialog, "loginVeil")->isVisible());
        const QRect middle(window().mapToGlobal(QPoint()), window().size());
        QVERIFY((dialog.geometry().center() - middle.center()).manhattanLength() <= 4);
        QVERIFY(!UserInfoManager::instance().isLoggedIn());
        point(dialog, {200, 100});
        QTRY_VERIFY(Desktop::hasKeyboard(dialog));
        Desktop::type("Morvan"_s);
        shootScreen("login-page");
        point(dialog, {240, 210});
    });
    const QStringList parts = told.split(u'|');
    const QJsonObject device = QJsonDocument::fromJson(parts[0].toUtf8()).object();
    QVERIFY(!device["deviceId"_s].toString().isEmpty());
    QCOMPARE(
        parts[0],
        R"({"deviceId":"%1","deviceName":"%2","appType":"pc_x64","code":16,"channel":"other"})"_s
            .arg(device["deviceId"_s].toString(), QDir::home().dirName()));
    QVERIFY(parts.value(1).startsWith("{\"_device_id\""_s));
    QCOMPARE(parts.value(2), "null"_s);
    QCOMPARE(m_opened, QList<QUrl>({QUrl("https://example.org/a?b=1"_s),
                                    QUrl("https://example.org/a?b=1"_s)}));

    QCOMPARE(child<QLabel>(window(), "lblUser")->text(), "Morvan"_s);
    QVERIFY(child(window(), "lblUser")->isVisible());
    QVERIFY(!child(window(), "btnLogin")->isVisible());
    const QString store = dataDir() + "/UserInfo.json"_s;
    QCOMPARE(contentOf(store), QByteArray(R"({"userinfo":{"id":"77","token":"geheim"}})"));
    QCOMPARE(QFile::permissions(store) & QFile::Permissions(0x77), QFile::Permissions());
    shoot(window(), "logged-in");
}

void TestWebLogin::cleanupTestCase()
{
    m_stage->end();
    OskDataTracker::instance().stop(std::chrono::seconds(5));
    VolcDataTracker::instance().stop(std::chrono::seconds(5));
    const QString posted = QString::fromUtf8(service().posted());
    QStringList codes;
    auto matches = QRegularExpression("(denglu[a-z]*|app登录)\""_s).globalMatch(posted);
    while (matches.hasNext())
        codes += matches.next().captured(1);
    const QStringList opened{"dengluzhuce"_s, "denglu"_s};
    QCOMPARE(codes.mid(codes.size() - 7), opened + QStringList("dengluguanbi"_s) + opened +
                                              QStringList({"app登录"_s, "dengluchenggong"_s}));
    QVERIFY(posted.contains("\"event\":\"login_page\""_s));
    QString log;
    QDirIterator walk(logDir(), QDir::Files);
    while (walk.hasNext())
        log += QString::fromUtf8(contentOf(walk.next()));
    QVERIFY(log.contains("\"name\":\"Morvan\""_s));
    QVERIFY(!log.contains("geheim"_s));
    UserInfoManager::instance().logout();
}

QTEST_MAIN(TestWebLogin)
#include "tst_weblogin.moc"
