// SPDX-License-Identifier: MIT
#pragma once

#include "browser/webview.h"
#include "support/utf8.h"

#include <QMap>
#include <QStringList>

#include <cstring>

/// A view that notes what it is told, and can be made to tell things.
class FakeWebView : public WebView
{
public:
    explicit FakeWebView(WebViewClient &client) : tells(client) {}

    void setUserAgent(const QByteArray &agent) override { note("agent", agent); }
    void setLocalStorageFullPath(const QString &path) override { note("storage", path.toUtf8()); }
    void setScriptOrigin(const QUrl &address) override { note("origin", address.toEncoded()); }
    void setUncheckedHosts(const QStringList &) override {}
    void loadUrl(const QByteArray &url) override { note("loadUrl", url); }
    void loadFile(const QByteArray &path) override { note("loadFile", path); }
    void loadHtml(const QByteArray &html) override { note("loadHtml", html); }
    void loadHtmlWithBaseUrl(const QByteArray &html, const QByteArray &base) override
    {
        note("loadHtml", html + '@' + base);
    }
    void goBack() override { note("back"); }
    bool canGoForward() const override { return hasForward; }
    void goForward() override { note("forward"); }
    void stopLoading() override { note("stop"); }
    void reload() override { note("reload"); }
    bool isLoading() const override { return loading; }
    bool isDocumentReady() const override { return ready; }
    void resize(int width, int height) override
    {
        size = QSize(width, height);
        note("resize");
    }
    void setPlace(const QPoint &at) override { place = at; }
    void setDirty() override { note("dirty"); }
    void paint(void *bits) override
    {
        std::memset(bits, 0xFF, size_t(size.width()) * size_t(size.height()) * 4);
    }
    void setTransparent(bool) override {}
    bool isTransparent() const override { return true; }
    int cursorInfoType() const override { return cursor; }
    QRect caretRect() const override { return {7, 8, 2, 16}; }
    void fireMouseEvent(quint32 code, const QPoint &point, quint32 flags) override
    {
        note("mouse", text("%1 %2,%3 %4", code, point.x(), point.y(), flags));
    }
    void fireMouseWheelEvent(const QPoint &point, int delta, quint32 flags) override
    {
        note("wheel", text("%1 %2,%3 %4", uint(delta), point.x(), point.y(), flags));
    }
    void fireContextMenuEvent(const QPoint &point, quint32 flags) override
    {
        note("menu", text("%1 %2,%3 %4", 0, point.x(), point.y(), flags));
    }
    void fireKeyDownEvent(const KeyCode &key, quint32 flags) override
    {
        note("down", text("%1 %2 %3 %4", key.native, int(key.scanCode), key.qtKey, flags));
    }
    void fireKeyUpEvent(const KeyCode &key, quint32 flags) override
    {
        note("up", text("%1 %2 %3 %4", key.native, int(key.scanCode), key.qtKey, flags));
    }
    void fireKeyPressEvent(uint character, quint32 flags) override
    {
        note("char", text("%1 %2 %3 %4", character, 0, 0, flags));
    }
    void setFocus() override { note("focus"); }
    void killFocus() override { note("blur"); }
    void bindFunction(const QString &name, int argumentCount, const ScriptFunction &to) override
    {
        note("bind", name.toUtf8() + '/' + QByteArray::number(argumentCount));
        functions[name] = to;
    }
    void setStartScript(const QString &script) override { startScript = script; }
    void runScript(const QString &script) override { note("run", script.toUtf8()); }

    /// What has been noted since the last time.
    QStringList taken() { return std::exchange(m_notes, {}); }

    WebViewClient &tells;
    bool loading = false;
    bool ready = true;
    bool hasForward = false;
    int cursor = 0;
    QSize size;
    QPoint place;
    QString startScript;
    QMap<QString, ScriptFunction> functions;

private:
    void note(const char *what, const QByteArray &value = {})
    {
        m_notes +=
            QString::fromUtf8(value.isEmpty() ? QByteArray(what) : QByteArray(what) + ' ' + value);
    }
    static QByteArray text(const char *form, quint32 a, int b, int c, quint32 d)
    {
        return QString::fromLatin1(form).arg(a).arg(b).arg(c).arg(d, 0, 16).toUtf8();
    }

    QStringList m_notes;
};

class FakeLibrary : public WebViewLibrary
{
public:
    bool begin(QString &) override { return true; }
    std::unique_ptr<WebView> createWebView(WebViewClient &client) override
    {
        auto made = std::make_unique<FakeWebView>(client);
        view = made.get();
        return made;
    }

    FakeWebView *view = nullptr; ///< the one that was made last
};
