// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/Rows/rowpicturewidget.h"

#include "controls/iconpixmap.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QStackedLayout>
#include <QVariant>

#include <algorithm>

namespace {
constexpr int placeholderSide = 48;
constexpr int placeholderMargin = 2;
} // namespace

RowPictureWidget::RowPictureWidget(QWidget *parent)
    : QWidget(parent), m_lblVideo(new QLabel), m_buttons(new QWidget)
{
    setAttribute(Qt::WA_StyledBackground);
    // In the lower right corner, where they hide the least of the picture.
    auto *row = new QHBoxLayout(m_buttons);
    row->setContentsMargins(4, 4, 4, 4);
    row->setSpacing(4);
    row->addStretch();
    m_btnPlay = addButton(QStringLiteral("btnPlaySrc"), tr("播放原文件"),
                          QStringLiteral(":/drawable/row_play_light.png"));

    m_lblVideo->setObjectName(QStringLiteral("lblVideo"));
    m_lblVideo->setAlignment(Qt::AlignCenter);
    auto *stack = new QStackedLayout(this);
    stack->setStackingMode(QStackedLayout::StackAll);
    stack->addWidget(m_buttons);
    // Centred also when the label has the picture's own size.
    auto *frame = new QWidget;
    auto *frameLayout = new QHBoxLayout(frame);
    frameLayout->setContentsMargins(0, 0, 0, 0);
    frameLayout->addWidget(m_lblVideo, 0, Qt::AlignCenter);
    stack->addWidget(frame);
}

QPushButton *RowPictureWidget::addButton(const QString &objectName, const QString &toolTip,
                                         const QString &icon)
{
    auto *button = new QPushButton(m_buttons);
    button->setObjectName(objectName);
    button->setProperty("cls", QStringLiteral("overVideo"));
    button->setToolTip(toolTip);
    button->setAccessibleName(toolTip);
    button->setIcon(QIcon(icon));
    static_cast<QHBoxLayout *>(m_buttons->layout())->addWidget(button, 0, Qt::AlignBottom);
    return button;
}

void RowPictureWidget::setUpEditor(const QString &objectName, const QString &toolTip)
{
    m_btnEditor = addButton(objectName, toolTip, QStringLiteral(":/drawable/row_cut_light.png"));
}

void RowPictureWidget::showPlaceholder(bool audio)
{
    const int side = std::min(placeholderSide, maximumHeight() - 2 * placeholderMargin);
    m_lblVideo->setPixmap(iconPixmap(audio ? QStringLiteral(":/drawable/media_audio.png")
                                           : QStringLiteral(":/drawable/media_video.png"),
                                     QSize(side, side)));
}

void RowPictureWidget::showPicture(const QPixmap &picture)
{
    if (picture.isNull() || picture.cacheKey() == m_pictureKey)
        return;
    m_pictureKey = picture.cacheKey();
    showFitted(*m_lblVideo, picture, size());
}
