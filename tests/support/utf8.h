// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

inline QString utf8(const char *text)
{
    return QString::fromUtf8(text);
}

inline QString operator""_s(const char *text, std::size_t size)
{
    return QString::fromUtf8(text, int(size));
}
