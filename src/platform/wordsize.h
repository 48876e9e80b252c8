// SPDX-License-Identifier: MIT
#pragma once

/// Whether the system, whatever this program was built for, is a 64-bit one.
bool isWideSystem();
