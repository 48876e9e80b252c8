// SPDX-License-Identifier: MIT
#pragma once

#include "browser/webview.h"

#include <QEvent>
#include <QVariant>
#include <QWidget>

#include <vector>

/// What a view has told, on its way through the event loop: nothing is signalled from inside the
/// library.
class BrowserEvent : public QEvent
{
public:
    static constexpr auto eventType = QEvent::Type(1100);
    enum Kind { TitleChanged = 1, UrlChanged = 2, LoadAskedFor = 3, LoadFinished = 4 };

    /// @param value title or address; of a finished load a list of the address, its result and why
    ///        it failed
    BrowserEvent(Kind kind, const QVariant &value) : QEvent(eventType), m_kind(kind), m_value(value)
    {
    }

    Kind kind() const { return m_kind; }
    QVariant value() const { return m_value; }

private:
    Kind m_kind;
    QVariant m_value;
};

/// Shows a web view that draws into memory, and hands on mouse and keyboard to it.
class QMiniblinkBrowser : public QWidget, private WebViewClient
{
    Q_OBJECT

public:
    /// @param library has begun, and outlives the widget
    explicit QMiniblinkBrowser(WebViewLibrary &library, QWidget *parent = nullptr);
    ~QMiniblinkBrowser() override;

    void loadUrl(const QString &url);
    void loadFile(const QString &path);
    void loadHtml(const QString &html);
    void loadHtmlWithBaseUrl(const QString &html, const QString &baseUrl);
    void setLocalStorageFullPath(const QString &path);
    void goBack();
    void goForward();
    void stopLoading();
    void reload();
    void setTransparent(bool isTransparent);
    bool isTransparent() const;
    void setUserAgent(const QString &agent);
    /// As WebView::setUncheckedHosts().
    void setUncheckedHosts(const QStringList &hosts);

    QVariant inputMethodQuery(Qt::InputMethodQuery query) const override;

signals:
    void titleChanged(const QString &title);
    void urlChanged(const QString &url);
    void alertBox(const QString &msg);
    void loadingFinish(const QString &url, LoadingResult result, const QString &failedReason);
    void loadingBegin(const QString &url);

protected:
    WebView &view() const { return *m_view; }
    /// Emits the event's signal.
    virtual void onBrowserEvent(const BrowserEvent &event);

    bool event(QEvent *event) override;
    bool focusNextPrevChild(bool next) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void onUrlChanged(const QString &url) override;
    void onTitleChanged(const QString &title) override;
    void onPaintUpdated(const QRect &area) override;
    void onLoadingFinished(const QString &url, LoadingResult result,
                           const QString &failedReason) override;
    void onAlert(const QString &message) override;
    void onCursorChanged() override;

    void post(BrowserEvent::Kind kind, const QVariant &value);
    void tellLoad(const QString &url);
    bool isInput(QEvent *event);
    void passKey(const QKeyEvent &event);
    void passText(const QString &text, quint32 flags);

    std::unique_ptr<WebView> m_view;
    double m_scale = 1.0; // pixels of the screen to one of the widget's
    QSize m_size;         // of the picture
    std::vector<uchar> m_pixels;
};
