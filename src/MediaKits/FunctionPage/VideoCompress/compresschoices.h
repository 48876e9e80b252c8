// SPDX-License-Identifier: MIT
#pragma once

#include "catalogue/encparam.h"

#include <QVariant>
#include <QVector>

/// One entry of a combo box.
struct CompressChoice
{
    QString text;
    QVariant value;
};

/// What the advanced settings offer. The source's own value leads each list, with "(自动)" behind
/// it; where it isn't known, it is 0, which leaves the choice to the tool.
namespace CompressChoices {
/// Values are QSize, as the picture is seen: a source that stands upright by its rotation too.
QVector<CompressChoice> resolutions(const VEncParam &source);
/// Values are int, kbit/s.
QVector<CompressChoice> videoBitrates(int own);
/// Values are double, frames a second.
QVector<CompressChoice> frameRates(double own);
/// Values are int, kbit/s.
QVector<CompressChoice> audioBitrates(int own);
/// Values are int, Hz.
QVector<CompressChoice> sampleRates(int own);
} // namespace CompressChoices
