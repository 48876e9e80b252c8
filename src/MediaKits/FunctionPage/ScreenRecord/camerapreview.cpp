// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/ScreenRecord/camerapreview.h"

#include <QCamera>
#include <QCameraInfo>
#include <QCameraViewfinder>
#include <QVBoxLayout>

CameraPreview::CameraPreview(QWidget *parent)
    : QWidget(parent), m_viewfinder(new QCameraViewfinder(this))
{
    // The window below is moved by a drag.
    setAttribute(Qt::WA_TransparentForMouseEvents);
    m_viewfinder->setAttribute(Qt::WA_TransparentForMouseEvents);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_viewfinder);
}

CameraPreview::~CameraPreview()
{
    // Before its viewfinder goes.
    delete m_camera;
}

void CameraPreview::setCamera(const QCameraInfo &info)
{
    if (m_camera)
        m_camera->deleteLater();
    m_camera = new QCamera(info, this);
    m_camera->setViewfinder(m_viewfinder);
    connect(m_camera, &QCamera::stateChanged, this, &CameraPreview::onStateChanged);
}

void CameraPreview::start()
{
    if (m_camera)
        m_camera->start();
}

void CameraPreview::stop()
{
    if (m_camera)
        m_camera->stop();
}

void CameraPreview::onStateChanged()
{
    if (m_camera->state() == QCamera::ActiveState)
        emit supportResolutionComed(m_camera->supportedViewfinderResolutions());
}
