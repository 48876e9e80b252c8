// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoWatermark/sudokubuttons.h"

#include <QGridLayout>
#include <QPainter>
#include <QPushButton>
#include <QVariant>

namespace {
constexpr int side = 3;
constexpr int gap = 8;

// Shows in small what it does: a mark at its place in a picture.
class PlaceButton : public QPushButton
{
public:
    PlaceButton(int place, QWidget *parent) : QPushButton(parent), m_place(place) {}

protected:
    void paintEvent(QPaintEvent *event) override
    {
        QPushButton::paintEvent(event);
        constexpr int rim = 5;
        const QSizeF mark(10, 6);
        const QRectF inner = rect().adjusted(rim, rim, -rim, -rim);
        const int column = m_place % side;
        const int line = m_place / side;
        const QPointF at(inner.x() + (inner.width() - mark.width()) * column / (side - 1),
                         inner.y() + (inner.height() - mark.height()) * line / (side - 1));
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(palette().buttonText());
        painter.drawRoundedRect(QRectF(at, mark), 1, 1);
    }

private:
    int m_place;
};
} // namespace

SudokuButtons::SudokuButtons(QWidget *parent) : QWidget(parent)
{
    const QString names[] = {tr("左上"), tr("上"),   tr("右上"), tr("左"),  tr("居中"),
                             tr("右"),   tr("左下"), tr("下"),   tr("右下")};
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    auto *grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(gap);
    for (int i = 0; i < side * side; ++i) {
        auto *button = new PlaceButton(i, this);
        button->setObjectName(QStringLiteral("btnPlace%1").arg(i));
        button->setProperty("cls", QStringLiteral("place"));
        button->setCursor(Qt::PointingHandCursor);
        button->setToolTip(names[i]);
        button->setAccessibleName(names[i]);
        button->setAutoDefault(false);
        connect(button, &QPushButton::clicked, this, [this, i] { emit placeClicked(i); });
        grid->addWidget(button, i / side, i % side);
    }
}
