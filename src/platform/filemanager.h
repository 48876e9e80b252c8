// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

#include <functional>

/// Starts a program that outlives the call; false when it can't be started.
using DetachedStarter = std::function<bool(const QString &program, const QStringList &arguments)>;

/// Shows `path` selected in the desktop's file manager; for a path that doesn't exist, opens its
/// parent folder. A desktop whose file manager can't select gets the folder opened. Returns at
/// once and reports no errors. `start` replaces QProcess::startDetached().
void revealInDesktop(const QString &path, const DetachedStarter &start = {});
