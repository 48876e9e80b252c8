// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

/// Freezes all threads of the process `pid`, and those of the processes in its own group when it
/// leads one, as a ChildProcess does. False when `pid` isn't above 0 or no such process may be
/// signalled.
bool suspendProcess(qint64 pid);

/// Lets a process that suspendProcess() froze go on. Errors as there.
bool resumeProcess(qint64 pid);
