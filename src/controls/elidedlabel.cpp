// SPDX-License-Identifier: MIT
#include "controls/elidedlabel.h"

#include "controls/plaintooltip.h"

#include <QEvent>

namespace {
constexpr QChar ellipsis(0x2026);
}

ElidedLabel::ElidedLabel(QWidget *parent) : QLabel(parent)
{
    // File names are shown here, and some look like markup.
    setTextFormat(Qt::PlainText);
}

void ElidedLabel::setFullText(const QString &text)
{
    m_fullText = text;
    if (m_autoToolTips)
        setPlainToolTip(this, text);
    updateGeometry();
    elide();
}

QSize ElidedLabel::sizeHint() const
{
    return hintFor(m_fullText);
}

QSize ElidedLabel::minimumSizeHint() const
{
    return hintFor(m_fullText.isEmpty() ? QString() : QString(ellipsis));
}

QSize ElidedLabel::hintFor(const QString &text) const
{
    const QMargins margins = contentsMargins();
    // One pixel more than the text: see elide().
    const int textWidth = fontMetrics().horizontalAdvance(text) + 1;
    return {textWidth + margins.left() + margins.right() + 2 * margin(),
            fontMetrics().height() + margins.top() + margins.bottom() + 2 * margin()};
}

void ElidedLabel::resizeEvent(QResizeEvent *event)
{
    QLabel::resizeEvent(event);
    elide();
}

void ElidedLabel::changeEvent(QEvent *event)
{
    QLabel::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        elide();
}

void ElidedLabel::elide()
{
    const int room = contentsRect().width() - 1;
    const QFontMetrics metrics = fontMetrics();
    const QString shown = metrics.horizontalAdvance(m_fullText) > room
                              ? metrics.elidedText(m_fullText, Qt::ElideMiddle, room + 2)
                              : m_fullText;
    if (shown != text())
        setText(shown);
}
