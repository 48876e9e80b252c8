// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaTasksManager/mediaselection.h"

#include <QString>

/// What all fragments of a medium have, whatever is made of them.
struct CutFragment
{
    QString name;                       ///< base name of the output
    QSharedPointer<TimeSpan> timeRange; ///< null for the whole length
};
