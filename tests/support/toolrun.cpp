// SPDX-License-Identifier: MIT
#include "support/toolrun.h"

#include <QDir>
#include <QFile>
#include <QProcess>

#include <algorithm>

QStringList ToolRun::outLines() const
{
    return QString::fromUtf8(out).split(u'\n', Qt::SkipEmptyParts);
}

QProcessEnvironment environmentWith(const QStringList &extraEnvironment)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const QString &text : extraEnvironment) {
        const int equals = text.indexOf(u'=');
        environment.insert(text.left(equals), text.mid(equals + 1));
    }
    return environment;
}

ToolRun runTool(const QString &program, const QStringList &arguments,
                const QStringList &extraEnvironment)
{
    constexpr int timeoutMs = 300000;
    QProcess process;
    process.setProcessEnvironment(environmentWith(extraEnvironment));
    process.start(program, arguments, QIODevice::ReadOnly);
    process.waitForFinished(timeoutMs);
    ToolRun run;
    run.exitCode = process.exitCode();
    run.crashed =
        process.error() != QProcess::UnknownError || process.exitStatus() == QProcess::CrashExit;
    run.out = process.readAllStandardOutput();
    run.err = process.readAllStandardError();
    return run;
}

QString builtProgram(const QString &name)
{
    return QStringLiteral(MORVANE_PROGRAM_DIR "/") + name;
}

char processState(qint64 pid)
{
    QFile stat("/proc/%1/stat"_s.arg(pid));
    if (!stat.open(QIODevice::ReadOnly))
        return 0;
    const QByteArray text = stat.readAll();
    // The name before the state stands in brackets and may hold any character.
    const int bracket = text.lastIndexOf(')');
    return bracket >= 0 && bracket + 2 < text.size() ? text[bracket + 2] : char(0);
}

QList<qint64> processesWith(const QString &text)
{
    QList<qint64> found;
    const QStringList pids = QDir("/proc"_s).entryList(QDir::Dirs);
    for (const QString &name : pids) {
        bool isPid = false;
        const qint64 pid = name.toLongLong(&isPid);
        QFile commandLine("/proc/%1/cmdline"_s.arg(name));
        if (isPid && commandLine.open(QIODevice::ReadOnly) &&
            commandLine.readAll().contains(text.toUtf8()))
            found += pid;
    }
    return found;
}

bool areHeld(const QList<qint64> &processes)
{
    return !processes.isEmpty() &&
           std::all_of(processes.begin(), processes.end(),
                       [](qint64 process) { return processState(process) == 'T'; });
}
