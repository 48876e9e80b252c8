// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaProcessor/rewrapprocessor.h"

/// Rewraps QSV files.
class QsvProcessor : public RewrapProcessor
{
    Q_OBJECT

public:
    using RewrapProcessor::RewrapProcessor;

    /// @param qsvMode handed on to the tool
    void setInOut(const QString &input, const QString &output, int qsvMode);

protected:
    QString tool() const override;
    QString plainArgument() const override;

private:
    int m_qsvMode = 0;
};
