// SPDX-License-Identifier: MIT
#pragma once

#include <QProcessEnvironment>

/// The environment that this process was started with, whatever it has set for itself since: what a
/// new start of the program has to begin with.
QProcessEnvironment startEnvironment();
