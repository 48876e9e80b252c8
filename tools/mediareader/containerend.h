// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <optional>

/// Size in bytes that a file should have by the header of its container.
/// @return 0 where the header leaves the size open, as one does that was written into a pipe;
///         nothing for another container than RIFF (WAV, AVI), Wave64, Matroska (MKV, WebM), ASF
///         (WMV, WMA) and FLV
std::optional<qint64> toldFileSize(const QString &path);
