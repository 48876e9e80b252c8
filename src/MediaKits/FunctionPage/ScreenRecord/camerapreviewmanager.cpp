// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/ScreenRecord/camerapreviewmanager.h"

#include "MediaKits/FunctionPage/ScreenRecord/camerapreviewwnd.h"

#include <QCameraInfo>
#include <QEvent>
#include <QGuiApplication>
#include <QScreen>

#include <algorithm>

CameraPreviewManager::~CameraPreviewManager()
{
    qDeleteAll(m_windows);
}

void CameraPreviewManager::reloadCameras()
{
    for (CameraPreviewWnd *window : qAsConst(m_windows)) {
        window->removeEventFilter(this);
        window->hide();
        window->deleteLater();
    }
    m_windows.clear();
    const QList<QCameraInfo> cameras = QCameraInfo::availableCameras();
    for (const QCameraInfo &camera : cameras) {
        // The screen itself, where it counts as a camera.
        if (camera.description() == QLatin1String("MorvaneScreenRecorder"))
            continue;
        auto *window = new CameraPreviewWnd;
        window->installEventFilter(this);
        window->setCamera(camera);
        m_windows += window;
    }
}

void CameraPreviewManager::showAll()
{
    const QRect desktop = QGuiApplication::primaryScreen()->availableGeometry();
    int top = desktop.top();
    for (CameraPreviewWnd *window : qAsConst(m_windows)) {
        window->move(desktop.left() + desktop.width() - window->width(), top);
        top += window->height();
        window->showCamera();
    }
}

void CameraPreviewManager::hideAll()
{
    for (CameraPreviewWnd *window : qAsConst(m_windows))
        window->hide();
}

bool CameraPreviewManager::allHidden() const
{
    return std::none_of(m_windows.begin(), m_windows.end(),
                        [](const CameraPreviewWnd *window) { return window->isVisible(); });
}

bool CameraPreviewManager::eventFilter(QObject *watched, QEvent *event)
{
    // Spontaneous ones tell of a minimised window.
    if (event->type() == QEvent::Hide && !event->spontaneous() && allHidden())
        emit allHideActive();
    return QObject::eventFilter(watched, event);
}
