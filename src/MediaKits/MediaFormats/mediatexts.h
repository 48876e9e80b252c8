// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// A length of time in ms as "hh:mm:ss"; the hours start again at 00 after 23.
QString timeText(int ms);

/// A size in bytes in the largest of the units B, KB, MB and GB (steps of 1024) that leaves at
/// least 1, with two decimals above B.
QString sizeText(qint64 bytes);
