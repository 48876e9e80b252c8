// SPDX-License-Identifier: MIT
#include "clirun.h"

#include <QJsonDocument>

ToolRun runCli(const QStringList &arguments, const QStringList &extraEnvironment)
{
    return runTool(builtProgram("morvane-cli"_s), arguments, extraEnvironment);
}

QJsonArray cliPresets()
{
    const ToolRun run = runCli({"presets"_s, "--json"_s});
    return QJsonDocument::fromJson(run.out).array();
}

QList<QJsonObject> jobRecords(const ToolRun &run)
{
    QList<QJsonObject> records;
    const QStringList lines = run.outLines();
    for (const QString &line : lines)
        records += QJsonDocument::fromJson(line.toUtf8()).object();
    return records;
}

QJsonObject convertOne(const QString &file, int preset, const QString &outDir,
                       const QStringList &more)
{
    const ToolRun run = runCli(QStringList{"convert"_s, file, "--preset"_s, QString::number(preset),
                                           "--out"_s, outDir, "--json"_s} +
                               more);
    const QList<QJsonObject> records = jobRecords(run);
    return records.size() == 1 ? records.first() : QJsonObject();
}
