// SPDX-License-Identifier: MIT
#pragma once

#include "platform/directorylock.h"
#include "updater/arguments.h"
#include "updater/installation.h"

#include <QDeadlineTimer>

/// One update, from the end of the running program to the start of the next.
class Update
{
public:
    enum class Outcome {
        Installed,
        Refused,  ///< nothing was changed, and the old program was started
        WentBack, ///< the new program didn't start, and the old one did
        GivenUp,  ///< the program went on running, or another update did
    };

    /// How long is waited, in ms.
    struct Patience
    {
        int forEnd = 600000; ///< of the program that gives way; it may ask its user first
        int forStart = 60000;
    };

    Update(const UpdaterArguments &arguments, Patience patience);
    explicit Update(const UpdaterArguments &arguments) : Update(arguments, Patience()) {}

    /// Where an update was killed before the new program had started once, this goes back from it
    /// and installs nothing.
    Outcome run();
    /// What went wrong; empty after Installed.
    QString error() const { return m_error; }

private:
    bool awaitEnd();
    QString replace(bool &isPackageUnfit);
    bool canBegin();
    bool startsWell();
    Outcome goBack(bool isPackageUnfit);
    void startOld(bool isPackageUnfit);

    const UpdaterArguments m_arguments;
    const Patience m_patience;
    Installation m_installation;
    DirectoryLock m_updateLock;
    DirectoryLock m_programLock;
    QString m_error;
};
