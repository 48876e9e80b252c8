// SPDX-License-Identifier: MIT
#pragma once

#include "browser/webview.h"

#include <QObject>

/// The plugin: views of QtWebEngine, drawn without the graphics card.
class Library : public QObject, public WebViewLibrary
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "morvane.WebViewLibrary/1")
    Q_INTERFACES(WebViewLibrary)

public:
    bool begin(QString &message) override;
    std::unique_ptr<WebView> createWebView(WebViewClient &client) override;
};
