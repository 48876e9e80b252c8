// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/Rows/mediarowwidget.h"

#include "controls/iconpixmap.h"
#include "controls/repolish.h"
#include "MediaKits/FunctionPage/Framework/Rows/rowform.h"
#include "MediaKits/MediaFormats/mediaformats.h"
#include "MediaKits/MediaInfo/FFMediaInfo/ffmediainfo.h"
#include "MediaKits/MediaInfo/mediainfo.h"
#include "MediaKits/Player/thumbnail.h"

#include <QApplication>
#include <QDesktopServices>
#include <QEvent>
#include <QFileInfo>
#include <QUrl>
#include <QVBoxLayout>

namespace {

// Room for a picture in a row, in pixels.
constexpr QSize pictureFrame(144, 84);

} // namespace

MediaRowWidget::MediaRowWidget(const RowItem &item, QWidget *parent) : QWidget(parent), m_item(item)
{
    setFocusPolicy(Qt::StrongFocus);
    const QFileInfo file(sourcePath());
    m_content.inputName = file.fileName();
    setAccessibleName(m_content.inputName);
    m_content.in.format = file.suffix().toUpper();
    m_content.progressText = QStringLiteral("0.00");
}

bool MediaRowWidget::setInSight(bool inSight)
{
    if (inSight && !m_form) {
        makeForm();
        return true;
    }
    if (!inSight && m_form && !m_form->isEditing() &&
        !m_form->isAncestorOf(QApplication::focusWidget())) {
        m_form->deleteLater();
        m_form = nullptr;
    }
    return false;
}

void MediaRowWidget::makeForm()
{
    m_form = createForm();
    if (!layout()) {
        auto *whole = new QVBoxLayout(this);
        whole->setContentsMargins(0, 0, 0, 0);
    }
    layout()->addWidget(m_form);
    connect(m_form, &RowForm::deletePressed, this, &MediaRowWidget::on_btnDel_clicked);
    connect(m_form, &RowForm::playSourcePressed, this, &MediaRowWidget::on_btnPlaySrc_clicked);
    m_form->showContent(m_content);
    m_form->show();
    tabIntoForm();
}

QVector<QWidget *> MediaRowWidget::tabStops()
{
    QVector<QWidget *> stops{this};
    if (!m_form)
        return stops;
    for (QWidget *widget : m_form->findChildren<QWidget *>()) {
        if (widget->focusPolicy() & Qt::TabFocus)
            stops += widget;
    }
    return stops;
}

// Widgets that are made late come last in the window, behind those of all other rows.
void MediaRowWidget::tabIntoForm()
{
    const QVector<QWidget *> stops = tabStops();
    for (int i = 1; i < stops.size(); ++i)
        setTabOrder(stops.at(i - 1), stops.at(i));
}

void MediaRowWidget::tabAfter(MediaRowWidget *above)
{
    setTabOrder(above->tabStops().last(), this);
}

void MediaRowWidget::change(const std::function<void(RowContent &)> &changes)
{
    changes(m_content);
    if (m_form)
        m_form->showContent(m_content);
}

QString MediaRowWidget::sourcePath() const
{
    return m_item.data(SourcePathRole).toString();
}

QString MediaRowWidget::sourceSuffix() const
{
    return QFileInfo(sourcePath()).suffix();
}

QSharedPointer<MediaInfoData> MediaRowWidget::sourceInfo() const
{
    return m_item.data(MediaInfoRole).value<QSharedPointer<MediaInfoData>>();
}

void MediaRowWidget::adoptKnown()
{
    if (const auto known = sourceInfo()) {
        keepSource(known);
        showSource(*known);
    }
    if (hasPicture())
        showPicture();
}

void MediaRowWidget::probeSource()
{
    adoptKnown();
    if (sourceInfo())
        requestFirstPicture();
    else
        probe(sourcePath(), [this](const MediaInfoData &info) { showSource(info); });
}

void MediaRowWidget::requestFirstPicture()
{
    if (!hasPicture())
        requestPicture(0);
}

void MediaRowWidget::requestPicture(int atMs)
{
    const QString suffix = sourceSuffix();
    if (!isVideoFormat(suffix) || suffix.toUpper() == QLatin1String("QLV"))
        return;
    const auto show = [this](const QPixmap &picture) {
        if (picture.isNull() || item().isNull())
            return;
        setPicture(fittedPixmap(picture, pictureFrame, devicePixelRatioF()));
    };
    requestThumbnail(sourcePath(), this, show, atMs, sourceInfo());
}

bool MediaRowWidget::hasPicture() const
{
    return !m_item.data(PictureRole).isNull();
}

void MediaRowWidget::setPicture(const QPixmap &picture)
{
    m_item.setData(PictureRole, picture);
    showPicture();
    emit pictureTaken(picture);
}

void MediaRowWidget::showSource(const MediaInfoData &info)
{
    change([&](RowContent &content) {
        content.in.setFile(*info.format);
        content.out.duration = content.in.duration;
    });
    onSourceProbed(info);
}

void MediaRowWidget::showPicture()
{
    setShown(&RowContent::picture, m_item.data(PictureRole).value<QPixmap>());
}

// The library takes GIFs for still pictures, which have no length.
MediaInfoBase *MediaRowWidget::createReader(const QString &path)
{
    const QString suffix = QFileInfo(path).suffix();
    if (isGifFormat(suffix))
        return new FFMediaInfo(path, this);
    return createMediaInfo(suffix.toUpper(), path, this);
}

void MediaRowWidget::probe(const QString &path,
                           const std::function<void(const MediaInfoData &)> &take)
{
    MediaInfoBase *reader = createReader(path);
    const bool isSource = path == sourcePath();
    // Goes with the reader, in whatever way that goes.
    const auto held = isSource && usingTask() ? usingTask()->hold() : nullptr;
    const auto miss = [this, reader, isSource] {
        if (isSource) {
            missSource();
            requestFirstPicture();
        }
        reader->deleteLater();
    };
    connect(reader, &MediaInfoBase::error, this, miss);
    connect(reader, &MediaInfoBase::got, this, [this, reader, isSource, take, miss, held] {
        const auto info = reader->mediaInfo();
        const bool accepted = !isSource || acceptsSource(*reader);
        if (m_item.isNull() || !accepted || !info || !info->format) {
            miss();
            return;
        }
        if (isSource) {
            m_item.setData(MediaInfoRole, QVariant::fromValue(info));
            keepSource(info);
            requestFirstPicture();
        }
        take(*info);
        reader->deleteLater();
    });
    reader->start();
}

void MediaRowWidget::showOperate(MediaTask::Operate operate)
{
    if (operate == MediaTask::OperateQueued) {
        change([](RowContent &content) {
            content.progress = noProgress;
            content.progressText = tr("等待中");
            content.waiting = true;
            content.paused = false;
            content.page = RowContent::WorkingPage;
        });
    } else if (operate == MediaTask::OperateDequeued) {
        change([](RowContent &content) {
            content.progress = noProgress;
            content.waiting = false;
            content.page = RowContent::IdlePage;
        });
    }
}

void MediaRowWidget::showBegun()
{
    change([](RowContent &content) {
        content.progress = noProgress;
        content.progressText = QStringLiteral("0.00%");
        content.waiting = false;
        content.page = RowContent::WorkingPage;
    });
}

void MediaRowWidget::showProgress(double progress)
{
    change([&](RowContent &content) {
        const double percent = progress * 100;
        content.progress = int(percent);
        content.progressText = QStringLiteral("%1%").arg(percent, 0, 'f', 2);
    });
}

QVariantMap MediaRowWidget::previewInfo(MediaFunction function, const QString &mode)
{
    return {{QStringLiteral("event"), QStringLiteral("video_preview_view")},
            {QStringLiteral("track"), QVariantMap{{QStringLiteral("pageIndex"), int(function)},
                                                  {QStringLiteral("video_preview_mode"), mode}}}};
}

void MediaRowWidget::on_btnPlaySrc_clicked()
{
    QDesktopServices::openUrl(QUrl::fromLocalFile(sourcePath()));
}

bool MediaRowWidget::event(QEvent *event)
{
    switch (event->type()) {
    case QEvent::Enter:
        setHovered(true);
        break;
    case QEvent::Leave:
        setHovered(false);
        break;
    case QEvent::FocusIn:
    case QEvent::FocusOut:
        // The style of a child can't ask for a pseudo-state of its parent.
        setProperty("focused", hasFocus());
        repolish(this);
        break;
    default:
        break;
    }
    return QWidget::event(event);
}

void MediaRowWidget::setHovered(bool hovered)
{
    setProperty("mousestate", hovered ? QStringLiteral("hover") : QString());
    repolish(this);
}
