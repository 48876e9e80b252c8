// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

#include <optional>

/// What a rewrapping tool is told.
struct RewrapOrder
{
    QString input;
    QString output;
};

/// Reads an enciphered argument.
/// @param fields 2 for input and output, 3 for these and a mode, a whole number
/// @return nothing when the argument can't be deciphered or hasn't these fields
std::optional<RewrapOrder> readOrder(const QByteArray &argument, int fields);

/// Copies picture and sound of whatever ffmpeg reads behind the input's suffix into the output,
/// with "progress=" lines on standard output; on failure says why on standard error and leaves no
/// output.
/// @return exit code
int rewrap(const RewrapOrder &order);
