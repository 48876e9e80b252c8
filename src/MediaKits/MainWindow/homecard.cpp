// SPDX-License-Identifier: MIT
#include "MediaKits/MainWindow/homecard.h"

#include "controls/iconpixmap.h"

#include <QLabel>
#include <QPainter>
#include <QVariant>
#include <QVBoxLayout>

namespace {

constexpr int iconSide = 48;
constexpr int textHeight = 36;
constexpr int radius = 8;
// How far a hover moves the sheet.
constexpr int rise = 4;
// How far the shadow reaches out of the sheet, and how much lower than it it lies.
constexpr int shadowWidth = 12;
constexpr int shadowDrop = 3;

QLabel *makeLabel(const QString &text, const QString &cls, QWidget *parent)
{
    auto *label = new QLabel(text, parent);
    label->setAlignment(Qt::AlignCenter);
    label->setProperty("cls", cls);
    return label;
}

} // namespace

HomeCard::HomeCard(const HomeCardEntry &entry, QWidget *parent)
    : WidgetButton(parent), m_layout(new QVBoxLayout(this))
{
    setObjectName(entry.buttonName);
    setProperty("cls", QStringLiteral("homeCard"));
    setProperty("sfcolor", entry.shadowColor);
    setAccessibleName(entry.heading);
    setAccessibleDescription(entry.text);
    setCursor(Qt::PointingHandCursor);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setContentsMargins(shadowWidth, shadowWidth - rise, shadowWidth, shadowWidth);
    addSheet(entry);
    lift(WidgetButton::NORMAL);
    connect(this, &WidgetButton::mouseStateChanged, this, &HomeCard::lift);
}

void HomeCard::addSheet(const HomeCardEntry &entry)
{
    m_sheet = new QWidget(this);
    m_sheet->setProperty("cls", QStringLiteral("homeSheet"));
    m_sheet->setAttribute(Qt::WA_TransparentForMouseEvents);
    auto *icon = new QLabel(m_sheet);
    icon->setFixedSize(iconSide, iconSide);
    icon->setPixmap(iconPixmap(entry.icon, icon->size()));

    auto *column = new QVBoxLayout(m_sheet);
    column->setContentsMargins(8, 8, 8, 8);
    column->setSpacing(0);
    column->addStretch();
    column->addWidget(icon, 0, Qt::AlignHCenter);
    column->addSpacing(12);
    column->addWidget(makeLabel(entry.heading, QStringLiteral("heading"), m_sheet));
    column->addSpacing(4);
    QLabel *text = makeLabel(entry.text, QStringLiteral("sub"), m_sheet);
    text->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
    // All cards have the height of two lines, so that their pictures stand in a row.
    text->setMinimumHeight(textHeight);
    column->addWidget(text);
    column->addStretch();
    m_layout->addWidget(m_sheet);
}

void HomeCard::lift(WidgetButton::MouseState state)
{
    if (state == WidgetButton::PRESSED)
        return;
    const bool raised = state == WidgetButton::HOVER;
    m_layout->setContentsMargins(0, raised ? 0 : rise, 0, raised ? rise : 0);
    update();
}

// Rings of falling strength: much cheaper than a blurring effect on nine cards.
void HomeCard::paintEvent(QPaintEvent * /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF shade = QRectF(m_sheet->geometry()).translated(0, shadowDrop);
    painter.setPen(Qt::NoPen);
    painter.setBrush(m_shadowColor);
    painter.drawRoundedRect(shade, radius, radius);
    painter.setBrush(Qt::NoBrush);
    for (int ring = 0; ring < shadowWidth - shadowDrop; ++ring) {
        const qreal strength = 1.0 - qreal(ring) / (shadowWidth - shadowDrop);
        QColor color = m_shadowColor;
        color.setAlphaF(color.alphaF() * strength * strength);
        painter.setPen(QPen(color, 1.5));
        painter.drawRoundedRect(shade.adjusted(-ring, -ring, ring, ring), radius + ring,
                                radius + ring);
    }
    if (hasFocus()) {
        painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
        painter.drawRoundedRect(QRectF(m_sheet->geometry()).adjusted(-1, -1, 1, 1), radius, radius);
    }
}
