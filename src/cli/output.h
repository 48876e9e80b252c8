// SPDX-License-Identifier: MIT
#pragma once

#include <QJsonDocument>
#include <QString>

// What the command line prints: results on standard output, everything else on standard error.

/// Whether all that was printed as a result has been taken, so far.
bool allPrinted();

/// One line of text on standard output, at once.
void printLine(const QString &text);
/// A JSON value on standard output, indented.
void printJson(const QJsonDocument &document);
/// A JSON object on one line.
void printJsonLine(const QJsonObject &object);
/// One line on standard error behind the program's name; control characters show as "?".
void printMessage(const QString &text);
