// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

/// Whether this user's processes can be fenced in. Root's can't: the engine refuses.
enum class Fence { Works, IsRoot, IsForbidden };
Fence availableFence();
