// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/Editors/Mask/videomask.h"

#include <QObject>
#include <QPointer>
#include <QRectF>
#include <QSize>

/// Base of what stands between an editor, which knows only the picture's own pixels, and a mask
/// over the surface that shows the picture fitted into it.
class MaskAdapter : public QObject
{
    Q_OBJECT

public:
    QSize videoSize() const { return m_videoSize; }
    /// Size of the picture in its own pixels, turned as it is shown.
    /// @param pixelAspect width of a pixel by its height
    void setVideoSize(const QSize &size, double pixelAspect = 1.0);
    void setMaskEnabled(bool enabled);
    /// Widget pixels a picture pixel, by their height; below 0 as long as it isn't known.
    double scale() const { return m_scale; }

    bool eventFilter(QObject *watched, QEvent *event) override;

protected:
    /// @param target the surface, which owns the mask
    MaskAdapter(QWidget *target, QWidget *content, QObject *parent);

    virtual void onScaleChanged() = 0;
    bool isScaleKnown() const { return m_scale > 0.0; }
    double pixelAspect() const { return m_pixelAspect; }
    // The same place in the other's pixels.
    QRectF onWidget(const QRectF &inPicture) const;
    QRectF inPicture(const QRectF &onWidget) const;
    QWidget *target() const { return m_target; }
    VideoMask *mask() const { return m_mask; }

private:
    void updateScale();

    const QPointer<QWidget> m_target;
    const QPointer<VideoMask> m_mask;
    QSize m_videoSize{-1, -1};
    double m_pixelAspect = 1.0;
    double m_scale = -1.0;
};
