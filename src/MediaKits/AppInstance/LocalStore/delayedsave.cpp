// SPDX-License-Identifier: MIT
#include "MediaKits/AppInstance/LocalStore/delayedsave.h"

#include <QCoreApplication>
#include <QTimer>

#include <utility>

namespace {

constexpr int intervalMs = 2000;

} // namespace

void DelayedSave::request()
{
    if (!qApp || std::exchange(m_isRequested, true))
        return;
    QTimer::singleShot(intervalMs, &m_alive, [this] {
        m_isRequested = false;
        m_save();
    });
}
