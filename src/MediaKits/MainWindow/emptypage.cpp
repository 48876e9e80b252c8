// SPDX-License-Identifier: MIT
#include "MediaKits/MainWindow/emptypage.h"

#include "controls/iconpixmap.h"

#include <QLabel>
#include <QVariant>
#include <QVBoxLayout>

namespace {

// The picture keeps its own size on a round ground.
constexpr int groundSide = 72;
constexpr QSize iconSize(24, 24);
constexpr int spacing = 8;

} // namespace

EmptyPage::EmptyPage(const QString &icon, const QString &label, QWidget *parent)
    : QWidget(parent), m_icon(icon), m_label(label)
{
}

void EmptyPage::showEvent(QShowEvent *event)
{
    if (layout() == nullptr)
        build();
    QWidget::showEvent(event);
}

void EmptyPage::build()
{
    auto *icon = new QLabel(this);
    icon->setObjectName(QStringLiteral("lblIcon"));
    icon->setProperty("cls", QStringLiteral("emptyIcon"));
    icon->setPixmap(iconPixmap(m_icon + QLatin1String("_on.png"), iconSize));
    icon->setAlignment(Qt::AlignCenter);
    icon->setFixedSize(groundSide, groundSide);
    auto *label = new QLabel(m_label, this);
    label->setObjectName(QStringLiteral("lblName"));
    label->setProperty("cls", QStringLiteral("heading"));
    auto *text = new QLabel(tr("该功能正在建设中"), this);
    text->setObjectName(QStringLiteral("lblText"));
    text->setProperty("cls", QStringLiteral("sub"));

    auto *column = new QVBoxLayout(this);
    column->setSpacing(spacing);
    column->addStretch();
    for (QLabel *line : {icon, label, text})
        column->addWidget(line, 0, Qt::AlignHCenter);
    column->addStretch();
}
