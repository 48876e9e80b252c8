// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QObject>

class CameraPreviewWnd;

/// The windows that show the system's cameras, one each, down the right edge of the desktop.
class CameraPreviewManager : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;
    ~CameraPreviewManager() override;

    /// Makes a hidden window for each camera that is there now.
    void reloadCameras();
    bool isEmpty() const { return m_windows.isEmpty(); }
    void showAll();
    void hideAll();
    bool allHidden() const;

    bool eventFilter(QObject *watched, QEvent *event) override;

signals:
    /// The last of the windows has been hidden, by the user or by `hideAll`.
    void allHideActive();

private:
    QList<CameraPreviewWnd *> m_windows;
};
