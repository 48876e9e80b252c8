// SPDX-License-Identifier: MIT
#include "controls/scrollpanel.h"

#include <QBoxLayout>
#include <QEvent>

#include <algorithm>

namespace {
// Two fields are to be seen at once.
constexpr QSize leastSize(240, 80);
} // namespace

ScrollPanel::ScrollPanel(QWidget *parent) : QScrollArea(parent)
{
    setWidgetResizable(true);
    setFrameShape(NoFrame);
    setFocusPolicy(Qt::NoFocus);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
}

void ScrollPanel::setColumns(QBoxLayout *columns)
{
    m_columns = columns;
    arrange();
}

QSize ScrollPanel::sizeHint() const
{
    const QWidget *content = widget();
    if (!content)
        return leastSize;
    const QLayout *layout = content->layout();
    const int height = layout && layout->hasHeightForWidth()
                           ? layout->totalHeightForWidth(viewport()->width())
                           : 0;
    return content->sizeHint()
        .expandedTo(content->minimumSize())
        .expandedTo(QSize(leastSize.width(), height));
}

QSize ScrollPanel::minimumSizeHint() const
{
    return leastSize.boundedTo(sizeHint());
}

void ScrollPanel::arrange()
{
    if (!m_columns)
        return;
    int least = -m_columns->spacing();
    for (int i = 0; i < m_columns->count(); ++i)
        least += m_columns->itemAt(i)->minimumSize().width() + m_columns->spacing();
    m_columns->setDirection(least > width() ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
}

// The scroll area watches its content.
bool ScrollPanel::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == widget() && event->type() == QEvent::LayoutRequest) {
        arrange();
        updateGeometry();
    }
    return QScrollArea::eventFilter(watched, event);
}

void ScrollPanel::resizeEvent(QResizeEvent *event)
{
    arrange();
    QScrollArea::resizeEvent(event);
    updateGeometry(); // a text may need more lines now, or fewer
}
