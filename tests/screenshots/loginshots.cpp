// SPDX-License-Identifier: MIT
#include "screenshots/loginshots.h"

#include "browser/loginnotice.h"
#include "browser/loginveil.h"
#include "browser/pageserver.h"
#include "browser/weblogindialog.h"
#include "screenshots/stage.h"
#include "support/testfile.h"
#include "support/utf8.h"

#include <QLabel>
#include <QTest>

namespace {

const int openAtMost = 20000; // ms

const char otherPage[] = R"(<!doctype html><meta charset="utf-8"><style>
body { margin: 0; padding: 32px 48px; font: 14px/1.6 "Noto Sans CJK SC", sans-serif; color: #333; }
h1 { margin: 0 0 8px; font-size: 20px; }
p { margin: 0; color: #666; }
</style><h1>网络认证</h1><p>使用此网络之前，请先完成认证。</p>)";

// They serve as long as the program runs.
PageServer &service()
{
    static PageServer server;
    return server;
}

PageServer &otherService()
{
    static PageServer server({{"/"_s, {otherPage}}});
    return server;
}

WebLoginDialog &open(Stage &stage, const ServedPage &page)
{
    service().setPage("/login"_s, page);
    auto *dialog = new WebLoginDialog(QUrl(service().address("/login"_s)), &stage.window());
    stage.show(dialog);
    return *dialog;
}

void openShown(Stage &stage, const ServedPage &page)
{
    const auto &veil = Stage::child<LoginVeil>(open(stage, page), "loginVeil");
    if (!QTest::qWaitFor([&veil] { return !veil.isVisible(); }, openAtMost))
        qFatal("no login page");
}

void showSlow(Stage &stage)
{
    const auto &veil =
        Stage::child<LoginVeil>(open(stage, {{}, "text/html", {}, 200, true}), "loginVeil");
    const QString first = Stage::child<QLabel>(veil, "lblState").text();
    const bool isSlow = QTest::qWaitFor(
        [&] { return Stage::child<QLabel>(veil, "lblState").text() != first; }, openAtMost);
    if (!isSlow)
        qFatal("the network is never slow");
}

// Without its orders to the user's browser.
QByteArray loginPage()
{
    return contentOf(utf8(LOGIN_PAGE)).replace("external.OpenNewWindow(address)", "address");
}

void showNotice(Stage &stage, const LoginProblem &problem)
{
    stage.show(new LoginNotice(problem, &stage.window()));
}

} // namespace

QVector<Shot> loginShots()
{
    return {
        {"login-loading"_s,
         [](Stage &stage) {
             open(stage, {{}, "text/html", {}, 200, true});
         },
         true},
        {"login-slow"_s, showSlow, true},
        {"login-page"_s, [](Stage &stage) { openShown(stage, {loginPage()}); }, true},
        {"login-bridge"_s,
         [](Stage &stage) { openShown(stage, {contentOf(":/web/loading.html"_s)}); }, true},
        {"login-other"_s,
         [](Stage &stage) {
             const QByteArray other = otherService().address("/"_s).toUtf8();
             openShown(stage, {{}, "text/html", "Location: " + other, 302});
         },
         true},
        {"login-no-page"_s, [](Stage &stage) { showNotice(stage, {LoginProblem::NoPage}); }, true},
        {"login-no-certificate"_s,
         [](Stage &stage) {
             showNotice(stage, {LoginProblem::NoPage, "login.example.org 的证书不可信"_s});
         },
         true},
        {"login-no-service"_s, [](Stage &stage) { showNotice(stage, {LoginProblem::NoService}); },
         true},
    };
}
