// SPDX-License-Identifier: MIT
#pragma once

#include "controls/framelesswidget.h"

#include <QList>
#include <QSize>

class CameraPreview;
class QCameraInfo;
class QPushButton;

/// A small window above all others that shows a camera, and so becomes part of a recording.
class CameraPreviewWnd : public FramelessWidget
{
    Q_OBJECT

public:
    explicit CameraPreviewWnd(QWidget *parent = nullptr);

    void setCamera(const QCameraInfo &info);
    /// Shows the window and its camera, which runs until it is hidden.
    void showCamera();
    /// Takes the shape of the first of these sizes, within 320 x 180.
    void fitPicture(const QList<QSize> &sizes);

protected:
    void enterEvent(QEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private slots:
    void on_btnClose_clicked();

private:
    CameraPreview *m_preview;
    QPushButton *m_close;
};
