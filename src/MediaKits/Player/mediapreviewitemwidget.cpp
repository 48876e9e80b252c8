// SPDX-License-Identifier: MIT
#include "MediaKits/Player/mediapreviewitemwidget.h"

#include "controls/iconpixmap.h"
#include "controls/plaintooltip.h"
#include "controls/repolish.h"
#include "MediaKits/MediaFormats/mediaformats.h"
#include "MediaKits/Player/thumbnail.h"
#include "ui_mediapreviewitemwidget.h"

#include <QDynamicPropertyChangeEvent>
#include <QFileInfo>
#include <QStackedLayout>

namespace {
constexpr QSize placeholderSize(48, 48);
}

MediaPreviewItemWidget::MediaPreviewItemWidget(const QString &path, QWidget *parent)
    : QWidget(parent), m_ui(std::make_unique<Ui::MediaPreviewItemWidget>())
{
    m_ui->setupUi(this);
    static_cast<QStackedLayout *>(m_ui->skdMain->layout())
        ->setStackingMode(QStackedLayout::StackAll);
    const QFileInfo file(path);
    setPlainToolTip(this, file.fileName());
    m_ui->lblVideo->setPixmap(iconPixmap(isAudioFormat(file.suffix())
                                             ? QStringLiteral(":/drawable/media_audio.png")
                                             : QStringLiteral(":/drawable/media_video.png"),
                                         placeholderSize));
    requestThumbnail(path, this, [this](const QPixmap &picture) { showPicture(picture); });
}

MediaPreviewItemWidget::~MediaPreviewItemWidget() = default;

void MediaPreviewItemWidget::setPlaying(bool playing)
{
    setProperty("isPlaying", playing);
}

void MediaPreviewItemWidget::showPicture(const QPixmap &picture)
{
    if (picture.isNull())
        return;
    showFitted(*m_ui->lblVideo, picture, m_ui->wdtMain->size());
}

bool MediaPreviewItemWidget::event(QEvent *event)
{
    if (event->type() == QEvent::DynamicPropertyChange &&
        static_cast<QDynamicPropertyChangeEvent *>(event)->propertyName() == "isPlaying")
        repolish(this);
    return QWidget::event(event);
}
