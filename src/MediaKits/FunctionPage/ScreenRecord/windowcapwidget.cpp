// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/ScreenRecord/windowcapwidget.h"

#include "platform/compositor.h"
#include "platform/inputshape.h"
#include "platform/windowmanager.h"
#include "platform/windowtree.h"

#include <QApplication>
#include <QCursor>
#include <QMouseEvent>
#include <QPainter>
#include <QPixmap>
#include <QScreen>
#include <QWindow>

#include <algorithm>

namespace {

constexpr QRgb shadeColour = 0x60000000;
// Hardly to be seen; where nothing at all is painted, some compositors pass the pointer on.
constexpr QRgb holeColour = 0x02000000;
constexpr QRgb pickColour = 0xff0088ff;
constexpr QRgb heldColour = 0xfff53f31;
constexpr QRgb recordColour = 0xff0064cc;
constexpr QRgb labelColour = 0xd9202428;
constexpr int penWidth = 2;
constexpr int frameGap = 1; // between the selection and the pen, whose middle is 2 pixels outside
constexpr int frameReach = frameGap + penWidth;
constexpr int cursorSide = 32;
// What coders take, and more than a slip of the hand.
constexpr int leastSide = 16; // physical pixels
constexpr int labelGap = 8;
constexpr int labelHeight = 26;
constexpr int labelMargin = 10;
constexpr int hintHeight = 40;
constexpr int hintMargin = 20;
constexpr int hintTop = 48;

QRect scaled(const QRect &rect, double factor)
{
    return QRect(QPoint(qRound(rect.left() * factor), qRound(rect.top() * factor)),
                 QPoint(qRound((rect.left() + rect.width()) * factor) - 1,
                        qRound((rect.top() + rect.height()) * factor) - 1));
}

// Qt enlarges the size of a screen and leaves its place as it is.
QRect nativeArea(const QScreen &screen)
{
    return {screen.geometry().topLeft(), screen.geometry().size() * screen.devicePixelRatio()};
}

void drawLabel(QPainter &painter, const QRect &area, const QString &text)
{
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor::fromRgba(labelColour));
    painter.drawRoundedRect(area, 4, 4);
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setPen(Qt::white);
    painter.drawText(area, Qt::AlignCenter, text);
}

} // namespace

WindowCapWidget::WindowCapWidget(QWidget *parent)
    : QWidget(parent, Qt::ToolTip | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint)
{
    setAttribute(Qt::WA_TranslucentBackground);
    setAttribute(Qt::WA_DeleteOnClose);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setMouseTracking(true);
    setWindowTitle(tr("选择录制区域"));
    connect(&m_keys, &GlobalKeys::pressed, this, &WindowCapWidget::cancel);
}

bool WindowCapWidget::isPicking() const
{
    return m_state == AreaPicking || m_state == WindowPicking;
}

void WindowCapWidget::pickArea()
{
    pick(AreaPicking);
    const QPixmap cross(QStringLiteral(":/drawable/screencap/cursor_rect.png"));
    setCursor(
        QCursor(cross.scaled(cursorSide, cursorSide, Qt::KeepAspectRatio, Qt::SmoothTransformation),
                cursorSide / 2, cursorSide / 2));
}

void WindowCapWidget::pickWindow()
{
    pick(WindowPicking);
    setCursor(Qt::PointingHandCursor);
}

void WindowCapWidget::pick(OverlayState state)
{
    hide();
    m_state = state;
    m_selection = QRect();
    m_window = 0;
    m_isDragging = false;
    clearMask();
    setAttribute(Qt::WA_TransparentForMouseEvents, false);
    takePicture();
    m_scaleOut = m_scaleIn = devicePixelRatioF();
    show();
    // Qt takes the place from what the server tells it.
    spanDesktop(nativeId());
    catchPointer(nativeId());
    m_keys.hold(Qt::Key_Escape);
}

// That of the widget stays the one of a native window that was replaced when it was first shown.
WId WindowCapWidget::nativeId() const
{
    return windowHandle()->winId();
}

// Where windows aren't mixed, what lies below is shown by a picture of it.
void WindowCapWidget::takePicture()
{
    m_picture = QImage();
    if (isCompositingActive())
        return;
    QRect desktop;
    for (const QScreen *screen : QGuiApplication::screens())
        desktop |= nativeArea(*screen);
    // The root window's own picture: other screens begin where it has them.
    QScreen *screen = QGuiApplication::primaryScreen();
    const QPoint origin = screen->geometry().topLeft();
    const double ratio = screen->devicePixelRatio();
    m_picture = screen
                    ->grabWindow(0, qRound(-origin.x() / ratio), qRound(-origin.y() / ratio),
                                 qRound((desktop.right() + 1) / ratio),
                                 qRound((desktop.bottom() + 1) / ratio))
                    .toImage();
}

void WindowCapWidget::setOverlayState(int state)
{
    m_state = OverlayState(state);
    if (isPicking())
        return;
    m_keys.giveBack();
    showFrame();
}

// A shape rather than translucency, so that the frame needs no compositor and nothing of the
// overlay lies above the picture.
void WindowCapWidget::showFrame()
{
    m_picture = QImage();
    setAttribute(Qt::WA_TransparentForMouseEvents);
    if (m_state == WindowHeld || m_selection.isEmpty()) {
        hide();
        return;
    }
    const QRect outer = m_selection.adjusted(-frameReach, -frameReach, frameReach, frameReach);
    const QRect inner = m_selection.adjusted(-frameGap, -frameGap, frameGap, frameGap);
    setMask(QRegion(outer) - QRegion(inner));
    show();
    passPointerThrough(nativeId());
    update();
}

QRect WindowCapWidget::selectedRect() const
{
    return scaled(m_selection, m_scaleOut);
}

QScreen *WindowCapWidget::selectedScreen() const
{
    const QList<QScreen *> screens = QGuiApplication::screens();
    const auto found = std::find_if(screens.begin(), screens.end(), [this](const QScreen *screen) {
        return nativeArea(*screen).contains(selectedRect().center());
    });
    return found == screens.end() ? QGuiApplication::primaryScreen() : *found;
}

WId WindowCapWidget::selectedWindow()
{
    setCursor(Qt::ArrowCursor);
    return m_window;
}

QRect WindowCapWidget::logical(const QRect &physical) const
{
    return scaled(physical, 1.0 / m_scaleIn);
}

void WindowCapWidget::select(const QRect &selection)
{
    if (selection == m_selection)
        return;
    m_selection = selection;
    update();
}

void WindowCapWidget::selectWindowAt(const QPoint &point)
{
    const auto found = windowAt((QPointF(point) * m_scaleIn).toPoint(), {nativeId()});
    if (!found)
        return;
    m_window = found->id;
    select(logical(found->area) & rect());
}

void WindowCapWidget::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::RightButton && isPicking())
        cancel();
    else if (event->button() == Qt::LeftButton && m_state == AreaPicking)
        m_pressPoint = event->pos();
}

void WindowCapWidget::mouseMoveEvent(QMouseEvent *event)
{
    if (!isPicking())
        return;
    const bool isHeld = m_state == AreaPicking && event->buttons().testFlag(Qt::LeftButton);
    m_isDragging = isHeld && (m_isDragging || (event->pos() - m_pressPoint).manhattanLength() >=
                                                  QApplication::startDragDistance());
    if (m_isDragging) {
        m_window = 0;
        select(QRect(m_pressPoint, event->pos()).normalized() & rect());
    } else if (!isHeld) {
        selectWindowAt(event->pos());
    }
}

void WindowCapWidget::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton || !isPicking())
        return;
    if (!m_isDragging)
        selectWindowAt(event->pos());
    m_isDragging = false;
    const QSize size = selectedRect().size();
    if (size.width() < leastSide || size.height() < leastSide) {
        select(QRect());
        return;
    }
    setOverlayState(m_state == AreaPicking ? AreaHeld : WindowHeld);
    emit editFinish();
}

void WindowCapWidget::cancel()
{
    if (!isPicking())
        return;
    m_state = AreaHeld;
    hide();
    setCursor(Qt::ArrowCursor);
    emit canceled();
}

void WindowCapWidget::hideEvent(QHideEvent *event)
{
    m_keys.giveBack();
    QWidget::hideEvent(event);
}

// The user sees what a click would take before the first move.
bool WindowCapWidget::event(QEvent *event)
{
    const bool isTaken = QWidget::event(event);
    if (event->type() == QEvent::Enter && isPicking())
        selectWindowAt(static_cast<QEnterEvent *>(event)->pos());
    return isTaken;
}

void WindowCapWidget::paintEvent(QPaintEvent * /*event*/)
{
    QPainter painter(this);
    if (!isPicking()) {
        painter.fillRect(rect(),
                         QColor::fromRgba(m_state == AreaRecorded ? recordColour : heldColour));
        return;
    }
    paintShade(painter);
    if (!m_selection.isEmpty()) {
        painter.setPen(QPen(QColor::fromRgba(pickColour), penWidth));
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(m_selection.adjusted(-2, -2, 2, 2));
        paintSize(painter);
    }
    if (!m_isDragging)
        paintHints(painter);
}

void WindowCapWidget::paintShade(QPainter &painter) const
{
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    if (m_picture.isNull()) {
        painter.fillRect(rect(), QColor::fromRgba(shadeColour));
        painter.setCompositionMode(QPainter::CompositionMode_Clear);
        painter.fillRect(m_selection, Qt::black);
        painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
        painter.fillRect(rect(), QColor::fromRgba(holeColour));
        return;
    }
    painter.drawImage(QPoint(), m_picture);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    const QRegion outside = QRegion(rect()) - QRegion(m_selection);
    for (const QRect &part : outside)
        painter.fillRect(part, QColor::fromRgba(shadeColour));
}

// What the file will have: coders take even sizes.
void WindowCapWidget::paintSize(QPainter &painter) const
{
    const QSize size = selectedRect().size();
    const QString text = QStringLiteral("%1 × %2").arg(size.width() & ~1).arg(size.height() & ~1);
    const int width = painter.fontMetrics().horizontalAdvance(text) + 2 * labelMargin;
    QRect area(m_selection.left(), m_selection.top() - labelGap - labelHeight, width, labelHeight);
    if (area.top() < 0)
        area.moveTop(m_selection.top() + labelGap);
    area.moveRight(qMin(area.right(), rect().right() - labelGap));
    drawLabel(painter, area, text);
}

// On each screen.
void WindowCapWidget::paintHints(QPainter &painter) const
{
    const QString text = m_state == AreaPicking ? tr("拖动选择区域，单击选择窗口，Esc 取消")
                                                : tr("单击选择要录制的窗口，Esc 取消");
    const int width = painter.fontMetrics().horizontalAdvance(text) + 2 * hintMargin;
    for (const QScreen *screen : QGuiApplication::screens()) {
        const QRect shown = logical(nativeArea(*screen));
        const QRect area(shown.center().x() - width / 2, shown.top() + hintTop, width, hintHeight);
        drawLabel(painter, area, text);
    }
}
