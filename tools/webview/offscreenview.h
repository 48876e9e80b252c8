// SPDX-License-Identifier: MIT
#pragma once

#include "webview/endingview.h"
#include "webview/inputevents.h"

/// A view of the engine in a window that is never on the screen.
class OffscreenView : public QObject, public WebView
{
    Q_OBJECT

public:
    explicit OffscreenView(WebViewClient &client);
    ~OffscreenView() override;

    void setUserAgent(const QByteArray &agent) override;
    void setLocalStorageFullPath(const QString &path) override;
    void setScriptOrigin(const QUrl &address) override;
    void setUncheckedHosts(const QStringList &hosts) override;
    void loadUrl(const QByteArray &url) override;
    void loadFile(const QByteArray &path) override;
    void loadHtml(const QByteArray &html) override;
    void loadHtmlWithBaseUrl(const QByteArray &html, const QByteArray &baseUrl) override;
    void goBack() override;
    bool canGoForward() const override;
    void goForward() override;
    void stopLoading() override;
    void reload() override;
    bool isLoading() const override;
    bool isDocumentReady() const override;
    void resize(int width, int height) override;
    void setPlace(const QPoint &place) override;
    void setDirty() override;
    void paint(void *bits) override;
    void setTransparent(bool isTransparent) override;
    bool isTransparent() const override;
    int cursorInfoType() const override;
    QRect caretRect() const override;
    void fireMouseEvent(quint32 code, const QPoint &point, quint32 flags) override;
    void fireMouseWheelEvent(const QPoint &point, int delta, quint32 flags) override;
    void fireContextMenuEvent(const QPoint &point, quint32 flags) override;
    void fireKeyDownEvent(const KeyCode &key, quint32 flags) override;
    void fireKeyUpEvent(const KeyCode &key, quint32 flags) override;
    void fireKeyPressEvent(uint character, quint32 flags) override;
    void setFocus() override;
    void killFocus() override;
    void bindFunction(const QString &name, int argumentCount,
                      const ScriptFunction &function) override;
    void setStartScript(const QString &script) override;
    void runScript(const QString &script) override;

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void follow();

    WebViewClient &m_client;
    EngineParts m_engine;
    InputEvents m_input;
    QPointer<QWidget> m_surface; // draws the page; the engine changes it at times
    QSize m_size;
    bool m_isPainting = false;
};
