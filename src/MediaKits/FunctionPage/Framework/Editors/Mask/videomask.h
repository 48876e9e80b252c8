// SPDX-License-Identifier: MIT
#pragma once

#include <QPointer>
#include <QRegion>
#include <QWidget>

class QVBoxLayout;

/// A translucent window glued to the surface of a video, which an external player draws: only
/// another window can lie above it. It is the surface's child, so that it goes with it, and one of
/// the editor's transient windows, so that the window manager keeps it directly above the editor
/// and below everything above that; an editor that is modal is so for Qt alone, since some window
/// managers would lay it above its own transient windows too. The keyboard stays with the editor.
class VideoMask : public QWidget
{
    Q_OBJECT

public:
    explicit VideoMask(QWidget *target);

    /// Takes the content, and deletes the one before.
    void setContent(QWidget *content);
    QWidget *content() const { return m_content; }
    /// Whether the mask is to be shown whenever its target is.
    void setMaskEnabled(bool enabled);

    /// What the content draws, in its own pixels. Where no compositor runs, nothing else of the
    /// window is there, since it would be black; the target then passes on what the pointer does.
    void setDrawnRegion(const QRegion &region);

    bool eventFilter(QObject *watched, QEvent *event) override;

protected:
    void mousePressEvent(QMouseEvent *event) override;

private:
    void follow();
    void showAsEnabled();
    void showLater();
    void shapeAsNeeded();
    void onWindowEvent(const QEvent &event);
    bool passPointer(const QMouseEvent &event);
    void watchHandle();
    void onExposed();

    QWidget *const m_target;
    QPointer<QWindow> m_handle; ///< the editor's native window
    bool m_isUp = false;        ///< the window manager shows it
    QPointer<QWidget> m_content;
    QPointer<QWidget> m_pressed; ///< what a press on the target went on to
    QVBoxLayout *m_layout;
    bool m_maskEnabled = true;
    QRegion m_drawn;
};
