// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

#include <functional>

/// Saves a store two seconds after its first change at the latest, so that a crash loses little and
/// a hundred changes are one write. Without an event loop it does nothing.
class DelayedSave
{
public:
    /// @param save is called as long as this object lives
    explicit DelayedSave(const std::function<void()> &save) : m_save(save) {}
    Q_DISABLE_COPY(DelayedSave)

    void request();

private:
    const std::function<void()> m_save;
    const QObject m_alive;
    bool m_isRequested = false;
};
