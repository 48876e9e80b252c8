// SPDX-License-Identifier: MIT
#include "browser/qminiblinkbrowser.h"

#include "browser/viewinput.h"
#include "controls/stylebackground.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QPainter>

namespace {

constexpr int bytesPerPixel = 4;

// Services tell by it which of their pages they send.
constexpr char userAgent[] = "Mozilla/5.0 (Macintosh; Intel Mac OS X 10_11_1) AppleWebKit/537.36 "
                             "(KHTML, like Gecko) Chrome/70.0.3538.25 Safari/537.36";

KeyCode codeOf(const QKeyEvent &event)
{
    return {event.nativeVirtualKey(), event.nativeScanCode(), event.key()};
}

} // namespace

QMiniblinkBrowser::QMiniblinkBrowser(WebViewLibrary &library, QWidget *parent) : QWidget(parent)
{
    setAttribute(Qt::WA_InputMethodEnabled);
    setAttribute(Qt::WA_KeyCompression);
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    // Alike for what QT_SCALE_FACTOR says and for what the screen says.
    m_scale = devicePixelRatioF();
    m_view = library.createWebView(*this);
    m_view->setUserAgent(userAgent);
}

QMiniblinkBrowser::~QMiniblinkBrowser() = default;

void QMiniblinkBrowser::loadUrl(const QString &url)
{
    m_view->loadUrl(url.toUtf8());
    tellLoad(url);
}

void QMiniblinkBrowser::loadFile(const QString &path)
{
    m_view->loadFile(path.toUtf8());
    tellLoad(path);
}

void QMiniblinkBrowser::loadHtml(const QString &html)
{
    m_view->loadHtml(html.toUtf8());
    tellLoad({});
}

void QMiniblinkBrowser::loadHtmlWithBaseUrl(const QString &html, const QString &baseUrl)
{
    m_view->loadHtmlWithBaseUrl(html.toUtf8(), baseUrl.toUtf8());
    tellLoad(baseUrl);
}

void QMiniblinkBrowser::setLocalStorageFullPath(const QString &path)
{
    m_view->setLocalStorageFullPath(path);
}

void QMiniblinkBrowser::goBack()
{
    m_view->goBack();
}

void QMiniblinkBrowser::goForward()
{
    if (m_view->canGoForward())
        m_view->goForward();
}

void QMiniblinkBrowser::stopLoading()
{
    m_view->stopLoading();
}

void QMiniblinkBrowser::reload()
{
    m_view->reload();
}

void QMiniblinkBrowser::setTransparent(bool isTransparent)
{
    m_view->setTransparent(isTransparent);
}

bool QMiniblinkBrowser::isTransparent() const
{
    return m_view->isTransparent();
}

void QMiniblinkBrowser::setUserAgent(const QString &agent)
{
    m_view->setUserAgent(agent.toUtf8());
}

void QMiniblinkBrowser::setUncheckedHosts(const QStringList &hosts)
{
    m_view->setUncheckedHosts(hosts);
}

QVariant QMiniblinkBrowser::inputMethodQuery(Qt::InputMethodQuery query) const
{
    return query == Qt::ImCursorRectangle ? m_view->caretRect() : QWidget::inputMethodQuery(query);
}

void QMiniblinkBrowser::tellLoad(const QString &url)
{
    BrowserEvent event(BrowserEvent::LoadAskedFor, url);
    QCoreApplication::sendEvent(this, &event);
}

void QMiniblinkBrowser::post(BrowserEvent::Kind kind, const QVariant &value)
{
    QCoreApplication::postEvent(this, new BrowserEvent(kind, value));
}

void QMiniblinkBrowser::onUrlChanged(const QString &url)
{
    post(BrowserEvent::UrlChanged, url);
}

void QMiniblinkBrowser::onTitleChanged(const QString &title)
{
    post(BrowserEvent::TitleChanged, title);
}

void QMiniblinkBrowser::onPaintUpdated(const QRect &area)
{
    const QRectF own(area.x() / m_scale, area.y() / m_scale, area.width() / m_scale,
                     area.height() / m_scale);
    update(own.toAlignedRect());
}

void QMiniblinkBrowser::onLoadingFinished(const QString &url, LoadingResult result,
                                          const QString &failedReason)
{
    post(BrowserEvent::LoadFinished, QVariantList{url, int(result), failedReason});
}

void QMiniblinkBrowser::onAlert(const QString &message)
{
    QMetaObject::invokeMethod(
        this, [this, message] { emit alertBox(message); }, Qt::QueuedConnection);
}

void QMiniblinkBrowser::onCursorChanged()
{
    setCursor(cursorShape(m_view->cursorInfoType()));
}

void QMiniblinkBrowser::onBrowserEvent(const BrowserEvent &event)
{
    const QVariant value = event.value();
    switch (event.kind()) {
    case BrowserEvent::TitleChanged:
        emit titleChanged(value.toString());
        break;
    case BrowserEvent::UrlChanged:
        emit urlChanged(value.toString());
        break;
    case BrowserEvent::LoadAskedFor:
        emit loadingBegin(value.toString());
        break;
    case BrowserEvent::LoadFinished: {
        const QVariantList told = value.toList();
        emit loadingFinish(told[0].toString(), LoadingResult(told[1].toInt()), told[2].toString());
        break;
    }
    }
}

bool QMiniblinkBrowser::event(QEvent *event)
{
    if (event->type() == BrowserEvent::eventType) {
        onBrowserEvent(static_cast<BrowserEvent &>(*event));
        return true;
    }
    if (isInput(event))
        onCursorChanged();
    return QWidget::event(event);
}

// Hands the event on to the view. True where the pointer may have come to lie on something else.
bool QMiniblinkBrowser::isInput(QEvent *event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove: {
        const auto &mouse = static_cast<QMouseEvent &>(*event);
        m_view->setPlace(mapToGlobal(QPoint()));
        m_view->fireMouseEvent(mouseCode(mouse), mouse.localPos().toPoint(),
                               mouseFlags(mouse.buttons(), mouse.modifiers()));
        return true;
    }
    case QEvent::Wheel: {
        const auto &wheel = static_cast<QWheelEvent &>(*event);
        m_view->fireMouseWheelEvent(wheel.position().toPoint(), wheel.angleDelta().y(),
                                    mouseFlags(wheel.buttons(), wheel.modifiers()));
        return true;
    }
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
        passKey(static_cast<QKeyEvent &>(*event));
        return false;
    case QEvent::InputMethod:
        passText(static_cast<QInputMethodEvent &>(*event).commitString(), 0);
        return false;
    case QEvent::ContextMenu: {
        const auto &menu = static_cast<QContextMenuEvent &>(*event);
        m_view->fireContextMenuEvent(menu.pos(), mouseFlags(Qt::NoButton, menu.modifiers()));
        return false;
    }
    case QEvent::FocusIn:
        m_view->setFocus();
        return false;
    case QEvent::FocusOut:
        m_view->killFocus();
        return false;
    default:
        return false;
    }
}

void QMiniblinkBrowser::passKey(const QKeyEvent &event)
{
    const quint32 flags = keyFlags(event);
    if (event.type() == QEvent::KeyRelease) {
        m_view->fireKeyUpEvent(codeOf(event), flags);
        return;
    }
    m_view->setPlace(mapToGlobal(QPoint()));
    m_view->fireKeyDownEvent(codeOf(event), flags);
    passText(event.text(), flags);
}

void QMiniblinkBrowser::passText(const QString &text, quint32 flags)
{
    for (const uint character : text.toUcs4())
        m_view->fireKeyPressEvent(character, flags);
}

// Tab moves among the fields of the page.
bool QMiniblinkBrowser::focusNextPrevChild(bool)
{
    return false;
}

void QMiniblinkBrowser::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    m_scale = devicePixelRatioF();
    m_size = QSize(qRound(width() * m_scale), qRound(height() * m_scale));
    m_pixels.assign(size_t(m_size.width()) * size_t(m_size.height()) * bytesPerPixel, 0);
    m_view->resize(m_size.width(), m_size.height());
    m_view->setDirty();
}

void QMiniblinkBrowser::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    // Under a page that has no background of its own.
    drawStyleBackground(&painter, this);
    if (m_pixels.empty())
        return;
    // The display server takes its time with it: a press would be too late.
    m_view->setPlace(mapToGlobal(QPoint()));
    m_view->paint(m_pixels.data());
    QImage picture(m_pixels.data(), m_size.width(), m_size.height(), m_size.width() * bytesPerPixel,
                   QImage::Format_ARGB32);
    picture.setDevicePixelRatio(m_scale);
    painter.drawImage(0, 0, picture);
}
