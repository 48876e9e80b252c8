// SPDX-License-Identifier: MIT
#pragma once

class AppUpdater;
class MainWindow;

/// The check for a new version that the user asked for. Returns when that has come to an end, which
/// may be the program's.
void checkForUpdate(MainWindow *window, AppUpdater &updater);

/// For a window that has just been opened: its start counts as one that worked, and an update that
/// failed before it is told to the user.
void noteStart(MainWindow *window);
