// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QPointer>
#include <QSize>
#include <QWidget>

class QCamera;
class QCameraInfo;
class QCameraViewfinder;

/// The live picture of a camera.
class CameraPreview : public QWidget
{
    Q_OBJECT

public:
    explicit CameraPreview(QWidget *parent = nullptr);
    ~CameraPreview() override;

    void setCamera(const QCameraInfo &info);
    void start();
    void stop();

signals:
    /// The camera runs now, and offers pictures of these sizes; none when it doesn't tell.
    void supportResolutionComed(const QList<QSize> &sizes);

private:
    void onStateChanged();

    QCameraViewfinder *m_viewfinder;
    QPointer<QCamera> m_camera;
};
