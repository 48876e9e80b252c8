// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>

/// What is done about a crash; 1 means that the process may now end.
using CrashCallback = int (*)();

/// Has `callback` run once when this process gets an invalid access, an uncaught exception or the
/// like, before it dies of that, with a core dump where the user has them switched on. The callback
/// runs on a thread of its own that waits for it from now on, so that it may lock and wait; all
/// other threads still run, but the faulting one is held. A fault in the callback, or one that
/// takes longer than `limit`, ends the process. For one call, at program start.
void installCrashHook(CrashCallback callback,
                      std::chrono::milliseconds limit = std::chrono::seconds(8));
