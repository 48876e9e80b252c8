// SPDX-License-Identifier: MIT
#pragma once

#include "webview/bridge.h"

#include <QWebEngineCertificateError>
#include <QWebEnginePage>

/// A page that may show web pages and nothing else: no new window, no file, no download, no
/// permission, no question to the user.
class Page : public QWebEnginePage
{
    Q_OBJECT

public:
    Page(QWebEngineProfile &profile, WebViewClient &client);

    /// Tells its client nothing from now on, and answers no call of the bridge: the page's scripts
    /// run on until it goes.
    void fallSilent();

    Bridge &bridge() { return m_bridge; }
    /// Has the bridge's script run in documents that begin from now on.
    void injectBridge();

    void setUncheckedHosts(const QStringList &hosts) { m_uncheckedHosts = hosts; }
    /// An address that isn't the web's fails.
    void loadWebPage(const QUrl &address);
    /// Shows what the program itself has.
    void loadFile(const QUrl &address);
    void loadHtml(const QString &html, const QUrl &baseUrl);
    /// Ends the load; that is no failure.
    void stopLoading();

    bool isLoading() const { return m_isLoading; }
    bool hasBegun() const { return m_hasBegun; }

protected:
    bool acceptNavigationRequest(const QUrl &url, NavigationType type, bool isMainFrame) override;
    QWebEnginePage *createWindow(WebWindowType type) override;
    QStringList chooseFiles(FileSelectionMode mode, const QStringList &oldFiles,
                            const QStringList &acceptedMimeTypes) override;
    void javaScriptAlert(const QUrl &origin, const QString &message) override;
    bool javaScriptConfirm(const QUrl &origin, const QString &message) override;
    bool javaScriptPrompt(const QUrl &origin, const QString &message, const QString &defaultValue,
                          QString *result) override;
    void javaScriptConsoleMessage(JavaScriptConsoleMessageLevel level, const QString &message,
                                  int line, const QString &source) override;
    bool certificateError(const QWebEngineCertificateError &error) override;

private:
    void expectLoad(const QString &ownScheme);
    void refuseRequests();
    void restrict();
    void onLoadFinished(bool isGood);

    WebViewClient &m_client;
    Bridge m_bridge;
    QStringList m_uncheckedHosts;
    QString m_ownScheme; // of what the program itself shows
    QString m_failedReason;
    bool m_isLoading = false;
    bool m_hasBegun = false;
    bool m_isStopped = false;
    // Null once it is silent. The engine answers questions also while the page is being destroyed.
    std::shared_ptr<bool> m_alive = std::make_shared<bool>(true);
};
