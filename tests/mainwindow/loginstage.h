// SPDX-License-Identifier: MIT
#pragma once

#include "browser/pageserver.h"
#include "MediaKits/MainWindow/mainwindow.h"

#include <QList>

#include <memory>

/// A program that is set up for a login service, with its window and that service. The test program
/// has to lie in a folder of its own, which becomes its program folder.
class LoginStage
{
public:
    /// Fails the running test when something isn't there.
    LoginStage();

    PageServer &service() { return m_service; }
    MainWindow &window() { return *m_window; }
    /// Closes the window.
    void end() { m_window.reset(); }

private:
    PageServer m_service;
    std::unique_ptr<MainWindow> m_window;
};

/// Whether this process has opened the web engine.
bool hasEngine();

/// Ids of the engine's processes that this process and its children have started.
QList<qint64> engineProcesses();
/// Of these, those that read pages.
QList<qint64> renderProcesses();
