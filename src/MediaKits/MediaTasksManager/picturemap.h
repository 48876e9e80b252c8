// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaTasksManager/converttaskparam.h"

#include <QRectF>
#include <QSize>
#include <QTransform>

/// The way of a picture through the filters of a conversion, from the source as it is shown to the
/// place where overlays are drawn: crop, scale and bars, flips and turns, as the filter graph of
/// the record prints them.
class PictureMap
{
public:
    /// @param step what the graph is printed from
    explicit PictureMap(const ConvertTaskParam &step);

    /// Whether the source's size, and with it the way, is known.
    bool isKnown() const { return !m_size.isEmpty(); }
    /// Whether everything stays where it is.
    bool isIdentity() const { return m_way.isIdentity(); }
    /// The picture's size where overlays are drawn, in pixels.
    QSize size() const;

    /// Where an area of the source comes to lie.
    QRectF area(const QRectF &rect) const { return m_way.mapRect(rect); }
    /// Where something upright is drawn that was put into that rectangle of the source: it moves
    /// along with the picture and grows with it, but isn't turned.
    QRectF upright(const QRectF &rect) const;
    /// How many times as high something upright becomes.
    double heightFactor() const { return m_growth.height(); }

private:
    void crop(const CropBox &box);
    void fit(const QSize &target);
    void flipAndTurn(const VideoBeautyParam &beauty);

    QTransform m_way;
    QSizeF m_size;
    QSizeF m_growth{1.0, 1.0};
    double m_pixelAspect = 1.0;
};
