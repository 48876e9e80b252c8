// SPDX-License-Identifier: MIT
#include "MediaKits/MediaTasksManager/picturemap.h"

#include "MediaKits/MediaInfo/shownpicture.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double quarterTurn = 90.0;

double evenBelow(double size)
{
    return std::floor(size / 2) * 2;
}

QSize targetSize(const ConvertTaskParam &step)
{
    if (!step.encParam || !step.encParam->video)
        return {};
    const QSize size(step.encParam->video->width / 2 * 2, step.encParam->video->height / 2 * 2);
    return step.turnsFrame ? size.transposed() : size;
}

} // namespace

PictureMap::PictureMap(const ConvertTaskParam &step)
{
    if (!step.sourceInfo || !step.sourceInfo->video)
        return;
    const VEncParam &source = *step.sourceInfo->video;
    m_size = turnedSize(source);
    m_pixelAspect = turnedPixelAspect(source);
    const QSize target = targetSize(step);
    if (step.cropRect && (!target.isEmpty() || step.cropsAlone))
        crop(*step.cropRect);
    if (!target.isEmpty() && isKnown())
        fit(target);
    if (step.beauty)
        flipAndTurn(*step.beauty);
}

QSize PictureMap::size() const
{
    return m_size.toSize();
}

QRectF PictureMap::upright(const QRectF &rect) const
{
    QRectF moved(0.0, 0.0, rect.width() * m_growth.width(), rect.height() * m_growth.height());
    moved.moveCenter(m_way.map(rect.center()));
    return moved;
}

void PictureMap::crop(const CropBox &box)
{
    m_way *= QTransform::fromTranslate(-box.x, -box.y);
    m_size = QSizeF(box.width, box.height);
}

// The largest even size with the picture's proportions, and bars around it.
void PictureMap::fit(const QSize &target)
{
    const double shape = m_size.width() / m_size.height() * m_pixelAspect;
    const double width = evenBelow(std::min(double(target.width()), target.height() * shape));
    const double height = evenBelow(std::min(target.width() / shape, double(target.height())));
    m_growth = QSizeF(width / m_size.width(), height / m_size.height());
    m_way *= QTransform::fromScale(m_growth.width(), m_growth.height());
    m_way *= QTransform::fromTranslate(std::floor((target.width() - width) / 2),
                                       std::floor((target.height() - height) / 2));
    m_size = target;
    m_pixelAspect = 1.0;
}

void PictureMap::flipAndTurn(const VideoBeautyParam &beauty)
{
    m_way *= QTransform::fromTranslate(-m_size.width() / 2, -m_size.height() / 2);
    m_way *= QTransform::fromScale(beauty.hflip ? -1.0 : 1.0, beauty.vflip ? -1.0 : 1.0);
    m_way *= QTransform().rotate(quarterTurn * beauty.rotate);
    if (beauty.rotate % 2 != 0) {
        m_size.transpose();
        // Pixels that aren't square lie down, what is drawn on them doesn't.
        m_growth.rwidth() *= m_pixelAspect;
        m_growth.rheight() /= m_pixelAspect;
    }
    m_way *= QTransform::fromTranslate(m_size.width() / 2, m_size.height() / 2);
}
