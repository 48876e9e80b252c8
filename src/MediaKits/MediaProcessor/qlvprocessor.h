// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaProcessor/rewrapprocessor.h"

/// Rewraps QLV files.
class QlvProcessor : public RewrapProcessor
{
    Q_OBJECT

public:
    using RewrapProcessor::RewrapProcessor;

    void setInOut(const QString &input, const QString &output) { setFiles(input, output); }

protected:
    QString tool() const override;
    QString plainArgument() const override;
};
