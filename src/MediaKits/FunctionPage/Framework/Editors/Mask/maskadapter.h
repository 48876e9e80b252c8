// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/Editors/Mask/videomask.h"

#include <QObject>
#include <QPointer>
#include <QSize>

/// Base of what stands between an editor, which knows only the picture's own pixels, and a mask
/// over the surface that shows the picture fitted into it.
class MaskAdapter : public QObject
{
    Q_OBJECT

public:
    QSize videoSize() const { return m_videoSize; }
    /// Size of the picture in its own pixels, as it is shown.
    void setVideoSize(const QSize &size);
    void setMaskEnabled(bool enabled);
    /// Widget pixels a picture pixel; below 0 as long as it isn't known.
    double scale() const { return m_scale; }

    bool eventFilter(QObject *watched, QEvent *event) override;

protected:
    /// @param target the surface, which owns the mask
    MaskAdapter(QWidget *target, QWidget *content, QObject *parent);

    virtual void onScaleChanged() = 0;
    bool isScaleKnown() const { return m_scale > 0.0; }
    QWidget *target() const { return m_target; }
    VideoMask *mask() const { return m_mask; }

private:
    void updateScale();

    const QPointer<QWidget> m_target;
    const QPointer<VideoMask> m_mask;
    QSize m_videoSize{-1, -1};
    double m_scale = -1.0;
};
