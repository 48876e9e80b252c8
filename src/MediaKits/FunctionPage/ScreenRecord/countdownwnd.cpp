// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/ScreenRecord/countdownwnd.h"

#include "platform/compositor.h"

#include <QFontMetrics>
#include <QLabel>
#include <QPainter>
#include <QPainterPath>
#include <QScreen>

namespace {
constexpr QSize windowSize(140, 174);
constexpr int secondMs = 1000;
constexpr int cardRadius = 12;
} // namespace

// Past the window manager, which may hide what belongs to a minimised window.
CountdownWnd::CountdownWnd(QWidget *parent)
    : QDialog(parent, Qt::Dialog | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
                          Qt::X11BypassWindowManagerHint),
      m_label(new QLabel(this))
{
    setAttribute(Qt::WA_TranslucentBackground);
    setFixedSize(windowSize);
    setWindowTitle(tr("录制倒计时"));
    setToolTip(tr("单击或按 Esc 取消"));
    m_label->setObjectName(QStringLiteral("lblCountdown"));
    m_label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_label->setStyleSheet(QStringLiteral(
        "#lblCountdown\n{\n\tfont-size: 200px;\n\tfont-weight: bold;\n\tcolor: #0088FF;\n}"));
    placeLabel();
    m_label->setNum(m_counter);
    m_timer.setInterval(secondMs);
    connect(&m_timer, &QTimer::timeout, this, &CountdownWnd::count);
    connect(&m_keys, &GlobalKeys::pressed, this, &QDialog::reject);
}

// The digits are in the middle of the window, which is lower than the line of so large a font.
void CountdownWnd::placeLabel()
{
    m_label->ensurePolished();
    const QFontMetrics metrics(m_label->font());
    const int below = (metrics.ascent() - metrics.descent() - metrics.capHeight()) / 2;
    m_label->setGeometry(rect().adjusted(0, -2 * below, 0, 0));
}

void CountdownWnd::start()
{
    m_keys.hold(Qt::Key_Escape);
    m_timer.start();
}

void CountdownWnd::moveToMiddle(const QScreen &screen)
{
    QRect place(QPoint(), windowSize);
    place.moveCenter(screen.availableGeometry().center());
    move(place.topLeft());
}

void CountdownWnd::count()
{
    --m_counter;
    if (m_counter > 0) {
        m_label->setNum(m_counter);
        return;
    }
    m_timer.stop();
    accept();
}

void CountdownWnd::mousePressEvent(QMouseEvent * /*event*/)
{
    reject();
}

// Where windows aren't mixed, the digits stand on a card.
void CountdownWnd::paintEvent(QPaintEvent * /*event*/)
{
    if (m_isCard)
        QPainter(this).fillRect(rect(), Qt::white);
}

void CountdownWnd::showEvent(QShowEvent *event)
{
    m_isCard = !isCompositingActive();
    if (m_isCard) {
        QPainterPath card;
        card.addRoundedRect(rect(), cardRadius, cardRadius);
        setMask(QRegion(card.toFillPolygon().toPolygon()));
    }
    QDialog::showEvent(event);
}
