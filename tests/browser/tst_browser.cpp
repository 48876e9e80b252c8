// SPDX-License-Identifier: MIT
#include "browser/loginnotice.h"
#include "browser/pageserver.h"
#include "browser/userinfomanager.h"
#include "browser/webinterface.h"
#include "browser/weblogindialog.h"
#include "MediaKits/AppInstance/LocalStore/userinfostore.h"
#include "support/casename.h"
#include "support/scriptedserver.h"
#include "support/testfile.h"
#include "support/utf8.h"

#include <QLabel>
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
    void loginAddress();
    void login();
    void refresh();
    void answerTooLate();
    void certificates();
    void noAddress();
    void notices();
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

void TestBrowser::loginAddress()
{
    const auto check = [&](const char *caseName, const QString &answer, const QString &address) {
        const CaseName inCase(caseName);
        const ScriptedServer server(answer.toStdString());
        const WebInterface interface(hostOf(server));
        QTRY_COMPARE(server.count(), 1);
        QCOMPARE(server.requests().front().path.c_str(), "/api/config/urls");
        if (address.isEmpty())
            QTest::qWait(100); // the answer must change nothing
        QTRY_COMPARE(interface.loginUrl(), address);
    };
    const QString good = R"({"code":0,"data":{"web":{"login":"login.html"}}})"_s;
    check("good", good, "login.html"_s);
    check("code", QString(good).replace(u'0', u'1'), QString());
    check("code as text", QString(good).replace("0"_s, "\"0\""_s), QString());
    check("no web", R"({"code":0,"data":{"web":"x"}})"_s, QString());
    check("broken off", QString(), QString());
}

void TestBrowser::login()
{
    UserInfoStore store;
    UserInfoManager user(QString(), store);
    QSignalSpy changes(&user, &UserInfoManager::userInfoChanged);
    QSignalSpy states(&user, &UserInfoManager::loginStateChanged);
    user.setUserInfoJson("[1]"_s);
    user.logout();
    QCOMPARE(changes.size() + states.size(), 0);

    user.setUserInfoJson(R"({"token":"t1","id":9007199254740993,"name":"墨","mobile":"1"})"_s);
    user.markLoggedIn();
    user.markLoggedIn();
    QCOMPARE(store.id(), "9007199254740993"_s);
    QCOMPARE(store.token(), "t1"_s);
    QCOMPARE(user.name(), "墨"_s);
    user.setUserInfoJson(R"({"token":5,"id":""})"_s);
    QCOMPARE(user.token(), "t1"_s);
    QCOMPARE(user.id(), store.id());

    user.logout();
    QCOMPARE(user.id() + store.token(), QString());
    QCOMPARE(store.id(), "9007199254740993"_s);
    QCOMPARE(changes.size(), 3);
    QCOMPARE(states.size(), 2);
    QCOMPARE(states[1][0].value<UserInfoManager::LoginState>(), UserInfoManager::LoggedOut);
}

void TestBrowser::refresh()
{
    std::string answer = R"({"code":0,"data":{"id":"u7","name":"n"}})";
    ScriptedServer server([&answer](const httplib::Request &) { return answer; });
    UserInfoStore store;
    store.setToken("令牌"_s);
    UserInfoManager user(hostOf(server), store);
    user.refreshUserInfo();
    QTRY_VERIFY(user.isLoggedIn());
    QCOMPARE(store.id(), "u7"_s);
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
    QCOMPARE(store.token(), "令牌"_s);
}

// It is about somebody who has left, or was here before.
void TestBrowser::answerTooLate()
{
    const ScriptedServer server(R"({"code":0,"data":{"token":"t2"}})");
    UserInfoStore store;
    UserInfoManager user(hostOf(server), store);
    const auto wait = [&](int count) {
        user.refreshUserInfo();
        QTRY_COMPARE(server.count(), count);
    };
    user.markLoggedIn();
    wait(1);
    user.logout();
    QTest::qWait(100); // the answer must change nothing
    QVERIFY(!user.isLoggedIn());
    QCOMPARE(store.token(), QString());
    wait(2);
    user.setUserInfoJson(R"({"token":"t3"})"_s);
    QTest::qWait(100);
    QCOMPARE(store.token(), "t3"_s);
}

// Who stands between could send every user to a page of his own.
void TestBrowser::certificates()
{
    PageServer server({{"/api/config/urls"_s, {R"({"code":0,"data":{"web":{"login":"x"}}})"}}},
                      true);
    const WebInterface checked(server.address());
    const WebInterface unchecked(server.address(), false);
    QTRY_COMPARE(unchecked.loginUrl(), "x"_s);
    QTest::qWait(100); // the answer must change nothing
    QCOMPARE(checked.loginUrl(), QString());
    QCOMPARE(server.asked().size(), 1);
}

void TestBrowser::noAddress()
{
    WebLoginDialog dialog;
    QCOMPARE(dialog.size(), QSize(551, 320));
    QCOMPARE(dialog.exec(), int(QDialog::Rejected));
    QCOMPARE(dialog.problem().kind, LoginProblem::NoAnswer);
    QVERIFY(!contentOf("/proc/self/maps"_s).contains("WebEngine"));
}

// Only a page that can't be loaded may be there a moment later.
void TestBrowser::notices()
{
    for (const auto kind : {LoginProblem::NoService, LoginProblem::NoAnswer, LoginProblem::NoView,
                            LoginProblem::NoPage}) {
        LoginNotice notice({kind, "证书"_s});
        notice.show();
        QPushButton *retry = notice.findChild<QPushButton *>("btnRetry"_s);
        QCOMPARE(retry->isVisible(), kind == LoginProblem::NoPage);
        const bool tells = notice.findChild<QLabel *>("lblHint"_s)->text().contains("证书"_s);
        QCOMPARE(tells, kind == LoginProblem::NoPage);
        QTest::keyClick(&notice, Qt::Key_Return);
        QCOMPARE(notice.result(),
                 int(kind == LoginProblem::NoPage ? QDialog::Accepted : QDialog::Rejected));
    }
}

QTEST_MAIN(TestBrowser)
#include "tst_browser.moc"
