// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaProcessor/rewrapprocessor.h"
#include "MediaKits/MediaProcessor/toolpaths.h"

/// Rewraps QLV files.
class QlvProcessor : public RewrapProcessor
{
    Q_OBJECT

public:
    explicit QlvProcessor(QObject *parent = nullptr) : RewrapProcessor(toolPath(), parent) {}

    void setInOut(const QString &input, const QString &output) { setFields({input, output}); }
};
