// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaProcessor/rewrapprocessor.h"
#include "MediaKits/MediaProcessor/toolpaths.h"

/// Rewraps QSV files.
class QsvProcessor : public RewrapProcessor
{
    Q_OBJECT

public:
    explicit QsvProcessor(QObject *parent = nullptr) : RewrapProcessor(tool2Path(), parent) {}

    /// @param qsvMode handed on to the tool
    void setInOut(const QString &input, const QString &output, int qsvMode)
    {
        setFields({input, output, QString::number(qsvMode)});
    }
};
