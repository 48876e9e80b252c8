// SPDX-License-Identifier: MIT
#include "clirun.h"

#include <QJsonDocument>

ToolRun runCli(const QStringList &arguments, const QStringList &extraEnvironment)
{
    return runTool(builtProgram(QStringLiteral("morvane-cli")), arguments, extraEnvironment);
}

QJsonArray cliPresets()
{
    const ToolRun run = runCli({QStringLiteral("presets"), QStringLiteral("--json")});
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
    const ToolRun run =
        runCli(QStringList{QStringLiteral("convert"), file, QStringLiteral("--preset"),
                           QString::number(preset), QStringLiteral("--out"), outDir,
                           QStringLiteral("--json")} +
               more);
    const QList<QJsonObject> records = jobRecords(run);
    return records.size() == 1 ? records.first() : QJsonObject();
}
