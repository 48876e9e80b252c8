// SPDX-License-Identifier: MIT
#include "browser/userinfomanager.h"
#include "browser/webinterface.h"
#include "browser/weblogindialog.h"
#include "MediaKits/AppInstance/LocalStore/userinfostore.h"
#include "support/scriptedserver.h"

#include <QNetworkAccessManager>
#include <QPushButton>
#include <QtTest>

namespace {

QString hostOf(const ScriptedServer &server)
{
    return QString::fromStdString(server.host());
}

} // namespace

class TestBrowser : public QObject
{
    Q_OBJECT

private slots:
    void noServices();
    void loginAddress_data();
    void loginAddress();
    void login();
    void refresh();
    void logoutBeatsAnswer();
    void dialog();
};

void TestBrowser::noServices()
{
    UserInfoStore store;
    WebInterface interface {
        QString()
    };
    UserInfoManager user(QString(), store);
    user.markLoggedIn();
    user.refreshUserInfo();
    QVERIFY(user.isLoggedIn());
    QCOMPARE(qApp->findChildren<QNetworkAccessManager *>().size(), 0);
}

void TestBrowser::loginAddress_data()
{
    QTest::addColumn<QString>("answer");
    QTest::addColumn<QString>("address");
    const QString good = QStringLiteral(R"({"code":0,"data":{"web":{"login":"login.html"}}})");
    QTest::newRow("good") << good << QStringLiteral("login.html");
    QTest::newRow("code") << QString(good).replace(QLatin1Char('0'), QLatin1Char('1')) << QString();
    QTest::newRow("code as text") << QString(good).replace(QStringLiteral("0"),
                                                           QStringLiteral("\"0\""))
                                  << QString();
    QTest::newRow("no web") << QStringLiteral(R"({"code":0,"data":{"web":"x"}})") << QString();
    QTest::newRow("broken off") << QString() << QString();
}

void TestBrowser::loginAddress()
{
    QFETCH(const QString, answer);
    const ScriptedServer server(answer.toStdString());
    const WebInterface interface(hostOf(server));
    QTRY_COMPARE(server.count(), 1);
    QCOMPARE(server.requests().front().path.c_str(), "/api/config/urls");
    QFETCH(const QString, address);
    if (address.isEmpty())
        QTest::qWait(100);
    QTRY_COMPARE(interface.loginUrl(), address);
}

void TestBrowser::login()
{
    UserInfoStore store;
    UserInfoManager user(QString(), store);
    QSignalSpy changes(&user, &UserInfoManager::userInfoChanged);
    QSignalSpy states(&user, &UserInfoManager::loginStateChanged);
    user.setUserInfoJson(QStringLiteral("[1]"));
    user.logout();
    QCOMPARE(changes.size() + states.size(), 0);

    user.setUserInfoJson(
        QStringLiteral(R"({"token":"t1","id":9007199254740993,"name":"墨","mobile":"1"})"));
    user.markLoggedIn();
    user.markLoggedIn();
    QCOMPARE(store.id(), QStringLiteral("9007199254740993"));
    QCOMPARE(store.token(), QStringLiteral("t1"));
    QCOMPARE(user.name(), QStringLiteral("墨"));
    user.setUserInfoJson(QStringLiteral(R"({"token":5,"id":""})"));
    QCOMPARE(user.token(), QStringLiteral("t1"));
    QCOMPARE(user.id(), store.id());

    user.logout();
    QCOMPARE(user.id() + store.token(), QString());
    QCOMPARE(store.id(), QStringLiteral("9007199254740993"));
    QCOMPARE(changes.size(), 3);
    QCOMPARE(states.size(), 2);
    QCOMPARE(states[1][0].value<UserInfoManager::LoginState>(), UserInfoManager::LoggedOut);
}

void TestBrowser::refresh()
{
    std::string answer = R"({"code":0,"data":{"id":"u7","name":"n"}})";
    ScriptedServer server([&answer](const httplib::Request &) { return answer; });
    UserInfoStore store;
    store.setToken(QStringLiteral("令牌"));
    UserInfoManager user(hostOf(server), store);
    user.refreshUserInfo();
    QTRY_VERIFY(user.isLoggedIn());
    QCOMPARE(store.id(), QStringLiteral("u7"));
    const httplib::Request request = server.requests().front();
    QCOMPARE(request.path.c_str(), "/api/auth/me");
    QCOMPARE(request.get_header_value("Authorization"), std::string("令牌"));

    // Refused, then broken off in the middle.
    for (const char *text : {R"({"code":401,"data":{}})", ""}) {
        answer = text;
        user.markLoggedIn();
        user.refreshUserInfo();
        QTRY_VERIFY(!user.isLoggedIn());
    }
    QCOMPARE(store.token(), QStringLiteral("令牌"));
}

void TestBrowser::logoutBeatsAnswer()
{
    const ScriptedServer server(R"({"code":0,"data":{"token":"t2"}})");
    UserInfoStore store;
    UserInfoManager user(hostOf(server), store);
    user.markLoggedIn();
    user.refreshUserInfo();
    QTRY_COMPARE(server.count(), 1);
    user.logout();
    QTest::qWait(100);
    QVERIFY(!user.isLoggedIn());
    QCOMPARE(store.token(), QString());
}

void TestBrowser::dialog()
{
    WebLoginDialog escaped;
    escaped.show();
    QVERIFY(QTest::qWaitForWindowExposed(&escaped));
    QTest::keyClick(&escaped, Qt::Key_Escape);
    QVERIFY(!escaped.isVisible());
    WebLoginDialog read;
    read.show();
    QTest::mouseClick(read.findChild<QPushButton *>(QStringLiteral("btnOk")), Qt::LeftButton);
    QCOMPARE(read.result(), int(QDialog::Accepted));
}

QTEST_MAIN(TestBrowser)
#include "tst_browser.moc"
