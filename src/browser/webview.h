// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QMetaType>
#include <QRect>
#include <QString>
#include <QtPlugin>
#include <QUrl>
#include <QVector>

#include <functional>
#include <memory>

// The boundary to the library of the web view. Nothing of a web engine is seen on this side, so
// that a run without a login loads none.

/// A value on its way between a page's script and the program.
struct ScriptValue
{
    /// An object counts as an array when it has a "length", as a function's `arguments` have.
    /// Whatever is none of the others is undefined.
    enum Kind { Undefined, Null, Boolean, Number, String, Array };

    Kind kind = Undefined;
    bool isTrue = false;
    /// A string's characters; a number as the script writes it.
    QString text;
    QVector<ScriptValue> elements;
};

/// A function that a page calls; it gets the call's arguments.
using ScriptFunction = std::function<ScriptValue(const QVector<ScriptValue> &arguments)>;

/// How a load ended.
enum LoadingResult { LoadSucceeded = 0, LoadFailed = 1, LoadCancelled = 2 };

/// What a view tells. All is called on the main thread, from inside the library.
class WebViewClient
{
public:
    virtual void onUrlChanged(const QString &url) = 0;
    virtual void onTitleChanged(const QString &title) = 0;
    /// @param area in pixels of the view's picture
    virtual void onPaintUpdated(const QRect &area) = 0;
    virtual void onLoadingFinished(const QString &url, LoadingResult result,
                                   const QString &failedReason) = 0;
    /// The page has a message for the user.
    virtual void onAlert(const QString &message) = 0;
    /// The cursor is another one: the view learns it some time after the mouse has moved.
    virtual void onCursorChanged() = 0;

protected:
    ~WebViewClient() = default;
};

/// Which key it is, in the three ways in which it can be told.
struct KeyCode
{
    quint32 native = 0;
    quint32 scanCode = 0;
    int qtKey = 0;
};

/// One web page that is drawn into memory. Texts are in UTF-8, points and the caret in the widget's
/// own pixels, sizes and pictures in those of the screen. Codes, flags and cursor types are those
/// of viewinput.h.
class WebView
{
public:
    virtual ~WebView() = default;

    virtual void setUserAgent(const QByteArray &agent) = 0;
    virtual void setLocalStorageFullPath(const QString &path) = 0;
    /// Only documents of this address's origin get bound functions, start script and scripts; with
    /// an empty address none does.
    virtual void setScriptOrigin(const QUrl &address) = 0;
    /// Hosts whose certificate isn't checked.
    virtual void setUncheckedHosts(const QStringList &hosts) = 0;

    virtual void loadUrl(const QByteArray &url) = 0;
    virtual void loadFile(const QByteArray &path) = 0;
    virtual void loadHtml(const QByteArray &html) = 0;
    virtual void loadHtmlWithBaseUrl(const QByteArray &html, const QByteArray &baseUrl) = 0;
    virtual void goBack() = 0;
    virtual bool canGoForward() const = 0;
    virtual void goForward() = 0;
    virtual void stopLoading() = 0;
    virtual void reload() = 0;
    virtual bool isLoading() const = 0;
    /// Whether the document that was asked for last has begun.
    virtual bool isDocumentReady() const = 0;

    virtual void resize(int width, int height) = 0;
    /// Where its top left corner is on the desktop: lists that drop down are windows of their own.
    virtual void setPlace(const QPoint &place) = 0;
    virtual void setDirty() = 0;
    /// Paints the whole picture into `bits`, 32 bits a pixel, rows of the view's width.
    virtual void paint(void *bits) = 0;
    virtual void setTransparent(bool isTransparent) = 0;
    virtual bool isTransparent() const = 0;
    virtual int cursorInfoType() const = 0;
    virtual QRect caretRect() const = 0;

    virtual void fireMouseEvent(quint32 code, const QPoint &point, quint32 flags) = 0;
    virtual void fireMouseWheelEvent(const QPoint &point, int delta, quint32 flags) = 0;
    virtual void fireContextMenuEvent(const QPoint &point, quint32 flags) = 0;
    virtual void fireKeyDownEvent(const KeyCode &key, quint32 flags) = 0;
    virtual void fireKeyUpEvent(const KeyCode &key, quint32 flags) = 0;
    /// @param character as UCS-4; follows its key down at once, or comes of no key
    virtual void fireKeyPressEvent(uint character, quint32 flags) = 0;
    virtual void setFocus() = 0;
    virtual void killFocus() = 0;

    /// Makes a function known by a global name to documents that begin from now on.
    virtual void bindFunction(const QString &name, int argumentCount,
                              const ScriptFunction &function) = 0;
    /// Runs in each document that begins from now on, before its own scripts.
    virtual void setStartScript(const QString &script) = 0;
    /// Runs in the document that is shown.
    virtual void runScript(const QString &script) = 0;
};

/// What the library's plugin object is.
class WebViewLibrary
{
public:
    virtual ~WebViewLibrary() = default;

    /// Starts the engine; once, before the first view.
    /// @param message for the log: why it can't, or what one should know of it
    virtual bool begin(QString &message) = 0;
    /// @param client outlives the view
    virtual std::unique_ptr<WebView> createWebView(WebViewClient &client) = 0;
};

Q_DECLARE_METATYPE(LoadingResult)
Q_DECLARE_INTERFACE(WebViewLibrary, "morvane.WebViewLibrary/1")
