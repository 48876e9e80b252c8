// SPDX-License-Identifier: MIT
#include "controls/toast.h"

#include "controls/mainwindowlookup.h"
#include "controls/stylebackground.h"
#include "controls/windowshadow.h"

#include <QGuiApplication>
#include <QLabel>
#include <QPainter>
#include <QScreen>
#include <QTimer>
#include <QVBoxLayout>

Toast *Toast::showToast(const QString &text, int ms, int x, int y, QWidget *parent)
{
    auto *toast = new Toast(text, {x, y}, parent != nullptr ? parent : mainWindow());
    if (ms > 0)
        QTimer::singleShot(ms, toast, &QObject::deleteLater);
    QTimer::singleShot(0, toast, &QWidget::show);
    return toast;
}

Toast::Toast(const QString &text, QPoint place, QWidget *parent)
    : QWidget(parent, Qt::Popup | Qt::FramelessWindowHint | Qt::NoDropShadowWindowHint),
      m_x(place.x()),
      m_y(place.y()),
      m_shadow(new WindowShadow(this))
{
    setAttribute(Qt::WA_DeleteOnClose);
    auto *label = new QLabel(text, this);
    label->setTextFormat(Qt::PlainText);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(label);
}

int Toast::shadowRadius() const
{
    return m_shadow->radius();
}

void Toast::setShadowRadius(int radius)
{
    m_shadow->setup(radius, m_shadowOffset, m_shadow->colour());
}

void Toast::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    const QWidget *over = parentWidget();
    const QRect area = over != nullptr ? QRect(over->mapToGlobal(QPoint(0, 0)), over->size())
                                       : QGuiApplication::primaryScreen()->geometry();
    const int x = m_x == centred ? (area.width() - width()) / 2 : m_x;
    const int y = m_y == centred ? (area.height() - height()) / 2 : m_y;
    move(area.topLeft() + QPoint(x, y));
}

void Toast::paintEvent(QPaintEvent * /*event*/)
{
    QPainter painter(this);
    drawStyleBackground(&painter, this);
}
