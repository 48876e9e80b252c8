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
};

Q_DECLARE_METATYPE(QSharedPointer<CompressSettingsParam>)
