// SPDX-License-Identifier: MIT
#include "screencap/spacewatch.h"

#include "platform/diskspace.h"

#include <utility>

namespace {
constexpr qint64 mebibyte = 1024 * 1024;
constexpr qint64 lowSpace = 500 * mebibyte;
constexpr qint64 leastSpace = 100 * mebibyte;
} // namespace

SpaceWatch::SpaceWatch() : m_freeSpace(&freeDiskSpace) {}

void SpaceWatch::setSource(const std::function<qint64(const QString &)> &freeSpace)
{
    m_freeSpace = freeSpace;
}

bool SpaceWatch::begin(const QString &folder)
{
    m_folder = folder;
    m_isLowTold = false;
    m_bytesLeft = m_freeSpace(m_folder);
    return m_bytesLeft < 0 || m_bytesLeft >= leastSpace;
}

SpaceWatch::State SpaceWatch::look()
{
    m_bytesLeft = m_freeSpace(m_folder);
    if (m_bytesLeft < 0 || m_bytesLeft >= lowSpace)
        return Enough;
    if (m_bytesLeft < leastSpace)
        return Full;
    return std::exchange(m_isLowTold, true) ? Enough : Low;
}
