// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <functional>

/// Watches the free space of the folder that a recording grows in.
class SpaceWatch
{
public:
    enum State {
        Enough, ///< also when it isn't known
        Low,    ///< once a recording
        Full,
    };

    SpaceWatch();

    /// How the free space of a folder is found out, in bytes, below 0 when it isn't known; for
    /// tests.
    void setSource(const std::function<qint64(const QString &)> &freeSpace);
    /// @return false when it is full already
    bool begin(const QString &folder);
    State look();
    /// As look() has found it.
    qint64 bytesLeft() const { return m_bytesLeft; }

private:
    std::function<qint64(const QString &)> m_freeSpace;
    QString m_folder;
    qint64 m_bytesLeft = -1;
    bool m_isLowTold = false;
};
