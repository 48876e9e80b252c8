// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/AppInstance/myapplication.h"

#include <QCommandLineParser>

#include <functional>
#include <memory>

/// Everything that comes before the first window and behind the last: stores, trackers, display
/// scale, application object, command line, the one instance, log, and the look.
class AppInstance
{
    Q_DECLARE_TR_FUNCTIONS(AppInstance)

public:
    /// Makes the application object. Ends the process on an option that it doesn't know.
    /// @param argc lives as long as this object
    AppInstance(int &argc, char **argv);
    /// Writes the stores, and lets the trackers send what is left for a moment.
    ~AppInstance();
    Q_DISABLE_COPY(AppInstance)

    const QtSingleApplication &application() const { return *m_application; }

    /// Whether the main window is to be made. Otherwise this start has done what it was for.
    bool init();

    /// Runs the event loop, which also ends in good order at the system's wish, and gives back its
    /// exit code.
    /// @param finishWork called before it ends at that wish; returns within a few seconds
    static int exec(const std::function<void()> &finishWork);

    /// For the process's crash: tells the trackers and the log. Any thread that may wait.
    /// @return 1, the word for a process that may end now
    static int callback();

private:
    void addOptions();
    void installTranslator();
    static bool mayStandBeside();
    static void tellRefusedDirs();
    bool runInstallStep() const;
    bool runUpdateStep() const;

    QCommandLineParser m_parser;
    std::unique_ptr<MyApplication> m_application;
    bool m_ownsStores = false; // otherwise another instance writes them
};
