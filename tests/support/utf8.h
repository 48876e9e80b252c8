// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

inline QString utf8(const char *text)
{
    return QString::fromUtf8(text);
}
