// SPDX-License-Identifier: MIT
#pragma once

#include "catalogue/encparam.h"

#include <QMetaType>
#include <QSharedPointer>

/// How one row is compressed.
struct CompressSettingsParam
{
    bool advanced = false; ///< by `encParam`, otherwise by `rate`
    double rate = 1.0;     ///< wanted share of the source's size, up to 1
    QSharedPointer<EncParam> encParam;
    int leastPicture = 0; ///< kbit/s that the encoder takes at least; 0 until it was measured
};

Q_DECLARE_METATYPE(QSharedPointer<CompressSettingsParam>)
