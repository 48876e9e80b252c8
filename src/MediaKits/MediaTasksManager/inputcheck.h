// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// Why a file can't be a source, in words for the user; empty when nothing speaks against it.
/// @param path absolute path
QString inputProblem(const QString &path);
