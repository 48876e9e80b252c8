// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/ScreenRecord/camerapreviewwnd.h"

#include "MediaKits/FunctionPage/ScreenRecord/camerapreview.h"

#include <QCameraInfo>
#include <QHideEvent>
#include <QPushButton>
#include <QVariant>
#include <QVBoxLayout>

namespace {
constexpr QSize largestSize(320, 180);
constexpr int buttonSide = 24;
} // namespace

CameraPreviewWnd::CameraPreviewWnd(QWidget *parent)
    : FramelessWidget(parent), m_preview(new CameraPreview(this)), m_close(new QPushButton(this))
{
    setWindowFlag(Qt::WindowStaysOnTopHint);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setStyleSheet(QStringLiteral("CameraPreviewWnd { background: #000000; }"));
    setCursor(Qt::OpenHandCursor);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_preview);
    m_close->setObjectName(QStringLiteral("btnClose"));
    m_close->setProperty("cls", QStringLiteral("overVideo"));
    m_close->setAccessibleName(tr("关闭"));
    m_close->setIcon(QIcon(QStringLiteral(":/drawable/screencap/camera_close.png")));
    m_close->setFixedSize(buttonSide, buttonSide);
    m_close->setCursor(Qt::PointingHandCursor);
    m_close->hide();
    connect(m_close, &QPushButton::clicked, this, &CameraPreviewWnd::on_btnClose_clicked);
    connect(m_preview, &CameraPreview::supportResolutionComed, this, &CameraPreviewWnd::fitPicture);
    resize(largestSize);
}

void CameraPreviewWnd::setCamera(const QCameraInfo &info)
{
    setWindowTitle(info.description());
    m_preview->setCamera(info);
}

void CameraPreviewWnd::showCamera()
{
    m_preview->start();
    show();
}

void CameraPreviewWnd::fitPicture(const QList<QSize> &sizes)
{
    if (!sizes.isEmpty())
        resize(sizes.first().scaled(largestSize, Qt::KeepAspectRatio));
}

void CameraPreviewWnd::on_btnClose_clicked()
{
    hide();
}

void CameraPreviewWnd::enterEvent(QEvent *event)
{
    m_close->show();
    m_close->raise();
    FramelessWidget::enterEvent(event);
}

void CameraPreviewWnd::leaveEvent(QEvent *event)
{
    m_close->hide();
    FramelessWidget::leaveEvent(event);
}

void CameraPreviewWnd::resizeEvent(QResizeEvent *event)
{
    FramelessWidget::resizeEvent(event);
    m_close->move(width() - m_close->width(), 0);
}

void CameraPreviewWnd::hideEvent(QHideEvent *event)
{
    // A minimised one goes on.
    if (!event->spontaneous())
        m_preview->stop();
    FramelessWidget::hideEvent(event);
}
