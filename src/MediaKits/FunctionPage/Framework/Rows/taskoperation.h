// SPDX-License-Identifier: MIT
#pragma once

#include <QMetaType>

/// What a row asks of the list or tree that holds it.
enum class TaskOperation {
    Start = 0,
    Pause = 1,
    Stop = 2,
    Resume = 3,
    OpenFolder = 4,
    Delete = 5,
    /// Once more from the beginning, whatever the task has done or does.
    Restart = 6,
};

Q_DECLARE_METATYPE(TaskOperation)
