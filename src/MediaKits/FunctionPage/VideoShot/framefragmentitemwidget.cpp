// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoShot/framefragmentitemwidget.h"

#include "controls/repolish.h"
#include "MediaKits/Logger/logger.h"
#include "MediaKits/MediaFormats/mediatexts.h"

#include <QFileInfo>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidgetItem>
#include <QPushButton>
#include <QStackedLayout>
#include <QVariant>

FrameFragmentItemWidget::FrameFragmentItemWidget(QListWidgetItem *item, int ms, QWidget *parent)
    : QWidget(parent), m_item(item), m_ms(ms), m_image(new QLabel(this))
{
    m_image->setObjectName(QStringLiteral("lblImage"));
    m_image->setAlignment(Qt::AlignCenter);
    // The row's height is the list's to say.
    m_image->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored);
    m_front = makeFront(ms);
    auto *pages = new QStackedLayout;
    pages->setStackingMode(QStackedLayout::StackAll);
    pages->addWidget(m_front);
    pages->addWidget(m_image);
    auto *middle = new QWidget(this);
    middle->setFixedWidth(imageWidth);
    middle->setLayout(pages);
    m_front->raise();
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(middle);
}

QWidget *FrameFragmentItemWidget::makeFront(int ms)
{
    constexpr int edge = 6;
    auto *front = new QWidget(this);
    front->setObjectName(QStringLiteral("wdtFront"));
    front->setAttribute(Qt::WA_StyledBackground);
    auto *time = new QLabel(timeText(ms), front);
    time->setObjectName(QStringLiteral("lblPos"));
    auto *remove = new QPushButton(front);
    remove->setObjectName(QStringLiteral("btnDel"));
    remove->setProperty("cls", QStringLiteral("overThumbnail"));
    remove->setIcon(QIcon(QStringLiteral(":/drawable/row_delete_light.png")));
    remove->setToolTip(tr("删除（Del）"));
    remove->setAccessibleName(tr("删除"));
    remove->setFocusPolicy(Qt::TabFocus);
    remove->setAutoDefault(false);
    connect(remove, &QPushButton::clicked, this, &FrameFragmentItemWidget::on_btnDel_clicked);
    auto *grid = new QGridLayout(front);
    grid->setContentsMargins(edge, edge, edge, edge);
    grid->addWidget(remove, 0, 1, Qt::AlignTop | Qt::AlignRight);
    grid->addWidget(time, 1, 0, Qt::AlignBottom | Qt::AlignLeft);
    return front;
}

void FrameFragmentItemWidget::loadImage(const QString &path)
{
    QPixmap picture;
    if (!QFileInfo::exists(path)) {
        CLOG(ERROR, "default") << "image no exist";
    } else if (!picture.load(path)) {
        CLOG(ERROR, "default") << "pixmap load fail";
    } else {
        picture.setDevicePixelRatio(devicePixelRatioF());
        m_image->setPixmap(picture);
    }
}

void FrameFragmentItemWidget::setCurrent(bool current)
{
    m_front->setProperty("current", current);
    repolish(m_front);
}

void FrameFragmentItemWidget::on_btnDel_clicked()
{
    delete m_item;
}
