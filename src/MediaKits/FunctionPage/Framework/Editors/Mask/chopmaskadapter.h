// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/Editors/Mask/maskadapter.h"

#include <QRect>

class ChopMaskWidget;

/// The frame of what is kept of a picture, in picture pixels.
class ChopMaskAdapter : public MaskAdapter
{
    Q_OBJECT

public:
    explicit ChopMaskAdapter(QWidget *target, QObject *parent = nullptr);

public slots:
    /// These two move the frame as it is.
    void setChopX(int x);
    void setChopY(int y);
    /// These two keep its upper left corner.
    void setChopW(int w);
    void setChopH(int h);
    void setChopRect(QRect rt);

signals:
    void chopRectChanged(QRect rect);

private:
    void onScaleChanged() override;
    void onMaskRectChanged(const QRect &rect);
    void placeFrame();

    ChopMaskWidget *const m_chopWidget; ///< owned by the mask
    QRect m_chopRect;
    bool m_placing = false;
};
