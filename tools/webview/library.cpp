// SPDX-License-Identifier: MIT
#include "webview/library.h"

#include "webview/offscreenview.h"
#include "webview/sandbox.h"

#include <QQuickWindow>

bool Library::begin(QString &message)
{
    const Fence fence = availableFence();
    if (fence == Fence::IsForbidden) {
        message = tr("系统不允许网页在隔离环境中运行");
        return false;
    }
    QByteArray flags = "--disable-background-networking --disable-gpu";
    if (fence == Fence::IsRoot) {
        message = tr("以 root 身份运行：登录网页不在隔离环境中运行");
        flags += " --no-sandbox";
    }
    // Set, it also keeps the program's own arguments from the engine. A port for debuggers would
    // let others into the page.
    qputenv("QTWEBENGINE_CHROMIUM_FLAGS", flags);
    qunsetenv("QTWEBENGINE_REMOTE_DEBUGGING");
    qunsetenv("QTWEBENGINE_DISABLE_SANDBOX");
    // A form needs no graphics card, and its driver no place in the program.
    QQuickWindow::setSceneGraphBackend(QSGRendererInterface::Software);
    return true;
}

std::unique_ptr<WebView> Library::createWebView(WebViewClient &client)
{
    return std::make_unique<OffscreenView>(client);
}
