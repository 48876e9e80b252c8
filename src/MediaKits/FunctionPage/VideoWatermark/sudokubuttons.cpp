// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoWatermark/sudokubuttons.h"

#include <QGridLayout>
#include <QPushButton>
#include <QVariant>

namespace {
constexpr int side = 3;
constexpr int gap = 8;
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
        auto *button = new QPushButton(this);
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
