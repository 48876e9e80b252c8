// SPDX-License-Identifier: MIT
#include "MediaKits/AppInstance/displayscale.h"

#include "platform/displaysizes.h"

#include <QCoreApplication>

#include <cmath>

namespace {

constexpr char scaleVariable[] = "QT_SCALE_FACTOR";
constexpr double usualWidth = 1920.0;
constexpr double usualHeight = 1080.0;
constexpr double highResolution = 1.5;
// Measures that are no further apart count as equal.
constexpr double tolerance = 0.1;

struct ScaleRecord
{
    DisplayScale scale;
    double firstDisplayRatio = 0.0;
};

ScaleRecord &record()
{
    static ScaleRecord theRecord;
    return theRecord;
}

// 1.0 without a display.
double displayRatio(const DisplaySizes &sizes)
{
    const int reported = sizes.reported.width() + sizes.reported.height();
    return reported > 0 ? double(sizes.real.width() + sizes.real.height()) / reported : 1.0;
}

double resolutionRatio(const DisplaySizes &sizes)
{
    if (sizes.real.isEmpty())
        return 1.0;
    return (sizes.real.width() / usualWidth + sizes.real.height() / usualHeight) * 0.5;
}

// A process that scales by itself is told real pixels: what it enlarges is in the first measure.
double measuredDisplayRatio()
{
    const double measured = displayRatio(primaryDisplaySizes());
    double &first = record().firstDisplayRatio;
    if (first < tolerance) {
        first = measured;
        return measured;
    }
    return record().scale.mode == DpiScaleSystem ? measured : measured * first;
}

void setUpQt(DisplayScale &scale)
{
    const double wanted = scaleOfUser();
    switch (scale.mode) {
    case DpiScaleSystem:
        declareDpiStance(DpiStance::Unaware);
        return;
    case DpiScaleFactor:
        QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
        if (wanted > 0.0)
            scale.factor = wanted;
        else
            qputenv(scaleVariable, QByteArray::number(scale.factor, 'g', 6));
        break;
    case DpiScaleHigh:
        QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
        // Qt would multiply the two.
        if (wanted <= 0.0)
            QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
        break;
    case DpiScaleAuto:
        return;
    }
    declareDpiStance(DpiStance::Aware);
}

} // namespace

DisplayScale decidedScale(double p, double r, const DisplayScale &current)
{
    DisplayScale decided = current;
    DpiScaleMode outcome = DpiScaleFactor;
    if (r > highResolution)
        outcome = DpiScaleHigh;
    else if (std::abs(r - p) < tolerance)
        outcome = DpiScaleSystem;
    else
        decided.factor = r >= 1.0 && r < p ? r : p;
    if (current.mode == DpiScaleAuto)
        decided.mode = outcome;
    return decided;
}

void decideDisplayScale()
{
    const DisplaySizes sizes = primaryDisplaySizes();
    ScaleRecord &current = record();
    current.firstDisplayRatio = displayRatio(sizes);
    current.scale = decidedScale(current.firstDisplayRatio, resolutionRatio(sizes), current.scale);
    setUpQt(current.scale);
}

DpiScaleMode dpiScaleMode()
{
    return record().scale.mode;
}

void setDpiScaleMode(DpiScaleMode mode)
{
    record().scale.mode = mode;
}

double dpiScaleFactor()
{
    return record().scale.factor;
}

double effectiveScale()
{
    switch (dpiScaleMode()) {
    case DpiScaleSystem:
        return measuredDisplayRatio();
    case DpiScaleFactor:
        return dpiScaleFactor();
    case DpiScaleHigh:
        return std::round(measuredDisplayRatio());
    case DpiScaleAuto:
        break;
    }
    return 1.0;
}

double captureScale()
{
    return dpiScaleMode() == DpiScaleSystem ? 1.0 : effectiveScale();
}
