// SPDX-License-Identifier: MIT
#pragma once

#include "support/toolrun.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QList>

/// Runs morvane-cli of the build to its end.
ToolRun runCli(const QStringList &arguments, const QStringList &extraEnvironment = {});

/// What `presets --json` tells.
QJsonArray cliPresets();

/// One record a job of `--json`.
QList<QJsonObject> jobRecords(const ToolRun &run);

/// Converts one file with `--json`.
/// @return the job's record
QJsonObject convertOne(const QString &file, int preset, const QString &outDir,
                       const QStringList &more = {});
