// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

/// Where updates come from and what they are installed over.
struct UpdateSettings
{
    /// Address of the service, as "https://host"; an empty one is never asked.
    QString host;
    bool verifiesPeer = true;
    /// Public key of the packages, 32 bytes; empty in a build that takes no updates.
    QByteArray key;
    /// Path of the program; its folder is what an update replaces.
    QString program;

    /// Those of this program.
    static UpdateSettings ofProgram();

    QString installFolder() const;
    /// The one that installs.
    QString updater() const;
    /// Whether this user may replace the installation: one of the system's package manager is left
    /// alone, and so is one without the program that installs.
    bool isReplaceable() const;
    /// Address of the check for this version.
    QString checkUrl() const;
};
