// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/AppUpdater/updatesettings.h"
#include "support/utf8.h"

#include <QFile>
#include <QStringList>
#include <QTemporaryDir>

#include <string>

/// Where the program lies whose folder updates replace, with a stand-in for the one that installs.
class StandIn
{
public:
    StandIn();

    QString path(const char *name) const { return m_dir.filePath(QLatin1String(name)); }
    /// Settings of a program that takes updates.
    UpdateSettings settings(const std::string &host) const;
    /// What the stand-in was told; waits for it.
    QStringList told() const;
    bool wasStarted() const { return QFile::exists(path("told")); }

private:
    QTemporaryDir m_dir;
};

/// What a service answers.
std::string answerOf(int force, const std::string &link);

/// Names of what lies in the update folder.
QStringList updateFiles();
