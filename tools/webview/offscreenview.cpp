// SPDX-License-Identifier: MIT
#include "webview/offscreenview.h"

#include "browser/viewinput.h"
#include "webview/page.h"

#include <QApplication>
#include <QEvent>
#include <QImage>
#include <QPaintEvent>
#include <QWebEngineHistory>
#include <QWebEngineProfile>
#include <QWebEngineSettings>
#include <QWebEngineView>
#include <QWindow>

#include <algorithm>

namespace {

constexpr const char *enginesSurface = "QtWebEngineCore::RenderWidgetHostViewQtDelegateWidget";

int cursorInfo(Qt::CursorShape shape)
{
    switch (shape) {
    case Qt::CrossCursor:
        return CursorCross;
    case Qt::PointingHandCursor:
        return CursorHand;
    case Qt::IBeamCursor:
        return CursorText;
    case Qt::WaitCursor:
        return CursorWait;
    case Qt::SizeVerCursor:
        return CursorVertical;
    case Qt::SizeHorCursor:
        return CursorHorizontal;
    default:
        return CursorArrow;
    }
}

// A list that is down, or another window that the engine has opened above the page.
QWidget *enginesPopup()
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    const auto found = std::find_if(windows.begin(), windows.end(), [](const QWidget *window) {
        return window->isVisible() && window->inherits(enginesSurface);
    });
    return found == windows.end() ? nullptr : *found;
}

} // namespace

OffscreenView::OffscreenView(WebViewClient &client) : m_client(client)
{
    m_engine.profile = std::make_unique<QWebEngineProfile>(QStringLiteral("login"));
    m_engine.page = std::make_unique<Page>(*m_engine.profile, client);
    m_engine.view = std::make_unique<QWebEngineView>();
    // Only what a page stores itself outlives the view.
    m_engine.profile->setHttpCacheType(QWebEngineProfile::MemoryHttpCache);
    m_engine.profile->setPersistentCookiesPolicy(QWebEngineProfile::NoPersistentCookies);
    m_engine.profile->setHttpAcceptLanguage(QStringLiteral("zh-CN,zh;q=0.9"));
    m_engine.view->setPage(m_engine.page.get());
    m_engine.view->setAttribute(Qt::WA_DontShowOnScreen);
    m_engine.view->setContextMenuPolicy(Qt::PreventContextMenu);
    m_engine.view->show();
    // Whatever is told first of another document.
    connect(m_engine.page.get(), &QWebEnginePage::urlChanged, this, &OffscreenView::follow);
    connect(m_engine.page.get(), &QWebEnginePage::loadProgress, this, &OffscreenView::follow);
    connect(m_engine.page.get(), &QWebEnginePage::loadFinished, this, &OffscreenView::follow);
    follow();
}

// What ends tells of it, and the client may be ending, too. The end of a list that is down also
// moves the focus, of which this object then hears while it is still whole.
OffscreenView::~OffscreenView()
{
    if (m_surface)
        m_surface->removeEventFilter(this);
    m_engine.page->disconnect(this);
    m_engine.page->fallSilent();
    QWidget *list = m_surface ? enginesPopup() : nullptr;
    m_surface = nullptr;
    m_input.setTarget(nullptr);
    if (list != nullptr)
        new EndingView(std::move(m_engine), *list);
    m_engine.view.reset();
}

// The engine has another surface for each of its processes.
void OffscreenView::follow()
{
    QWidget *surface = m_engine.view->focusProxy();
    if (surface == m_surface || surface == nullptr)
        return;
    m_surface = surface;
    m_surface->installEventFilter(this);
    m_input.setTarget(m_surface);
}

bool OffscreenView::eventFilter(QObject *watched, QEvent *event)
{
    // Painting it for the client changes nothing.
    if (watched == m_surface && event->type() == QEvent::Paint && !m_isPainting)
        m_client.onPaintUpdated(QRect(QPoint(), m_size));
    if (watched == m_surface && event->type() == QEvent::CursorChange)
        m_client.onCursorChanged();
    return false;
}

void OffscreenView::setUserAgent(const QByteArray &agent)
{
    m_engine.profile->setHttpUserAgent(QString::fromUtf8(agent));
}

void OffscreenView::setLocalStorageFullPath(const QString &path)
{
    m_engine.profile->setPersistentStoragePath(path);
    m_engine.page->settings()->setAttribute(QWebEngineSettings::LocalStorageEnabled, true);
}

void OffscreenView::setScriptOrigin(const QUrl &address)
{
    m_engine.page->bridge().setOrigin(address);
    m_engine.page->injectBridge();
}

void OffscreenView::setUncheckedHosts(const QStringList &hosts)
{
    m_engine.page->setUncheckedHosts(hosts);
}

void OffscreenView::loadUrl(const QByteArray &url)
{
    m_engine.page->loadWebPage(QUrl::fromEncoded(url));
}

void OffscreenView::loadFile(const QByteArray &path)
{
    const QUrl address = QUrl::fromLocalFile(QString::fromUtf8(path));
    m_engine.page->loadFile(address);
}

void OffscreenView::loadHtml(const QByteArray &html)
{
    loadHtmlWithBaseUrl(html, {});
}

void OffscreenView::loadHtmlWithBaseUrl(const QByteArray &html, const QByteArray &baseUrl)
{
    m_engine.page->loadHtml(QString::fromUtf8(html), QUrl::fromEncoded(baseUrl));
}

void OffscreenView::goBack()
{
    m_engine.page->triggerAction(QWebEnginePage::Back);
}

bool OffscreenView::canGoForward() const
{
    return m_engine.page->history()->canGoForward();
}

void OffscreenView::goForward()
{
    m_engine.page->triggerAction(QWebEnginePage::Forward);
}

void OffscreenView::stopLoading()
{
    m_engine.page->stopLoading();
}

void OffscreenView::reload()
{
    m_engine.page->triggerAction(QWebEnginePage::Reload);
}

bool OffscreenView::isLoading() const
{
    return m_engine.page->isLoading();
}

bool OffscreenView::isDocumentReady() const
{
    return m_engine.page->hasBegun();
}

void OffscreenView::resize(int width, int height)
{
    m_size = QSize(width, height);
    const qreal scale = m_engine.view->devicePixelRatioF();
    m_engine.view->resize(qRound(width / scale), qRound(height / scale));
}

void OffscreenView::setPlace(const QPoint &place)
{
    if (place == m_engine.view->pos())
        return;
    m_engine.view->move(place);
    // The window of a widget that isn't shown doesn't follow it.
    if (QWindow *window = m_engine.view->windowHandle())
        window->setPosition(place);
}

void OffscreenView::setDirty()
{
    m_engine.view->update();
}

void OffscreenView::paint(void *bits)
{
    QImage picture(static_cast<uchar *>(bits), m_size.width(), m_size.height(),
                   QImage::Format_ARGB32);
    picture.setDevicePixelRatio(m_engine.view->devicePixelRatioF());
    picture.fill(Qt::transparent);
    m_isPainting = true;
    m_engine.view->render(&picture, {}, {}, QWidget::DrawChildren);
    m_isPainting = false;
}

void OffscreenView::setTransparent(bool isTransparent)
{
    m_engine.page->setBackgroundColor(isTransparent ? Qt::transparent : Qt::white);
}

bool OffscreenView::isTransparent() const
{
    return m_engine.page->backgroundColor().alpha() == 0;
}

int OffscreenView::cursorInfoType() const
{
    return cursorInfo(m_surface ? m_surface->cursor().shape() : Qt::ArrowCursor);
}

QRect OffscreenView::caretRect() const
{
    return m_surface ? m_surface->inputMethodQuery(Qt::ImCursorRectangle).toRect() : QRect();
}

void OffscreenView::fireMouseEvent(quint32 code, const QPoint &point, quint32 flags)
{
    m_input.mouse(code, point, flags);
}

void OffscreenView::fireMouseWheelEvent(const QPoint &point, int delta, quint32 flags)
{
    m_input.wheel(point, delta, flags);
}

// The right button has told the page; a menu of the engine's own would save pages and show sources.
void OffscreenView::fireContextMenuEvent(const QPoint &, quint32) {}

void OffscreenView::fireKeyDownEvent(const KeyCode &key, quint32 flags)
{
    m_input.keyDown(key, flags);
}

void OffscreenView::fireKeyUpEvent(const KeyCode &key, quint32 flags)
{
    m_input.keyUp(key, flags);
}

void OffscreenView::fireKeyPressEvent(uint character, quint32)
{
    m_input.keyPress(character);
}

void OffscreenView::setFocus()
{
    m_input.focus(true);
}

void OffscreenView::killFocus()
{
    m_input.focus(false);
}

void OffscreenView::bindFunction(const QString &name, int, const ScriptFunction &function)
{
    m_engine.page->bridge().bind(name, function);
}

void OffscreenView::setStartScript(const QString &script)
{
    m_engine.page->bridge().setStartScript(script);
    m_engine.page->injectBridge();
}

void OffscreenView::runScript(const QString &script)
{
    // The engine would take the empty page before the first for that one.
    if (m_engine.page->history()->count() > 0)
        m_engine.page->runJavaScript(m_engine.page->bridge().guarded(script));
}
