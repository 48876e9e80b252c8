// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

/// Keeps the installation current. So far it only tells that it can't.
class AppUpdater : public QObject
{
    Q_OBJECT

public:
    static AppUpdater &instance();

    /// For program start: whether an update is now being installed, so that the start has to end.
    bool run();

private:
    AppUpdater() = default;
};
