// SPDX-License-Identifier: MIT
#pragma once

#include "support/utf8.h"

#include <QByteArray>
#include <QProcessEnvironment>
#include <QStringList>

/// What a program that has ended left behind.
struct ToolRun
{
    int exitCode = -1;
    bool crashed = false;
    QByteArray out;
    QByteArray err;

    QStringList outLines() const;
};

/// Runs a program to its end.
/// @param extraEnvironment "NAME=value" texts on top of this process's environment
ToolRun runTool(const QString &program, const QStringList &arguments,
                const QStringList &extraEnvironment = {});

/// Path of a program of the build, as "morvane-cli" or "module/ffmpeg/ffmpeg".
QString builtProgram(const QString &name);

/// The environment of this process with such texts on top.
QProcessEnvironment environmentWith(const QStringList &extraEnvironment);

/// State letter of a process as the kernel tells it ('R', 'S', 'T', 'Z' …); 0 when it is gone.
char processState(qint64 pid);

/// Ids of the living processes whose command line holds `text`.
QList<qint64> processesWith(const QString &text);

/// Whether there are processes, and all of them are stopped.
bool areHeld(const QList<qint64> &processes);
