// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaTasksManager/mediatask.h"

/// Kinds of the pages' top-level tasks.
enum GroupTaskKind {
    ComplexConvertKind = 0,
    ConcatKind = 1,
    MutiImageKind = 2,
};

/// Makes a page's top-level task, owned by the caller.
/// @param kind a `GroupTaskKind`
/// @return null for any other number
MediaTask *createGroupTask(int kind);
