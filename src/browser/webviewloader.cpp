// SPDX-License-Identifier: MIT
#include "browser/webviewloader.h"

#include "browser/webview.h"
#include "MediaKits/AppInstance/LocalStore/appdirs.h"
#include "MediaKits/Logger/logger.h"

#include <QPluginLoader>

namespace {

WebViewLibrary *opened()
{
    // A plugin is never closed: an engine doesn't end before its program.
    QPluginLoader loader(appDir() + QStringLiteral("/module/webview/libwebview.so"));
    auto *library = qobject_cast<WebViewLibrary *>(loader.instance());
    QString message = loader.errorString();
    if (library == nullptr) {
        CLOG(ERROR, "default") << "网页组件打不开 " << message;
        return nullptr;
    }
    message.clear();
    if (!library->begin(message)) {
        CLOG(ERROR, "default") << "网页组件不能启动 " << message;
        return nullptr;
    }
    if (!message.isEmpty())
        CLOG(WARNING, "default") << message;
    return library;
}

} // namespace

WebViewLibrary *openWebViewLibrary()
{
    static WebViewLibrary *const library = opened();
    return library;
}
