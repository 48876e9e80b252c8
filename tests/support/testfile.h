// SPDX-License-Identifier: MIT
#pragma once

#include "support/utf8.h"

#include <QByteArray>
#include <QProcess>
#include <QString>

/// Writes a file and makes the folders above it; fails the running test when it can't.
void writeTestFile(const QString &path, const QByteArray &content = QByteArrayLiteral("x"));

/// All that a file holds; null when it can't be read.
QByteArray contentOf(const QString &path);

/// Writes a shell script that can be run as a program.
void writeTestProgram(const QString &path, const QByteArray &script);

/// The next line of a running program's output without its end; empty after 10 s without one.
QByteArray nextLine(QProcess *process);
