// SPDX-License-Identifier: MIT
#pragma once

#include <cstdio>

/// Whether a stream of this process is shown on a terminal.
bool isTerminal(FILE *stream);
