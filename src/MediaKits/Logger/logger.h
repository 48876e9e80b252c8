// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <easylogging++.h>

#include <ostream>

/// Lets a log line take Qt's texts, as UTF-8.
inline std::ostream &operator<<(std::ostream &stream, const QString &text)
{
    return stream << text.toStdString();
}

/// Set-up of the process's one logger, "default". Lines are written with
/// `CLOG(INFO, "default") << text`, which adds the source file and function by itself; until
/// set-up they go nowhere, so that no log line ever lands on a program's standard output.
class Logger
{
public:
    /// Configures the logger "default" from a file in the logging library's own format, in which
    /// the marker "%logpath" stands for the log directory, and writes the starting line.
    /// @param configFile path of "log.conf"; a missing file leaves the log silent
    /// @param logDir directory of the log files, existing
    static void init(const QString &configFile, const QString &logDir);

    /// The configuration text with "%logpath" replaced by `logDir` in native form with doubled
    /// backslashes.
    static QString configText(const QString &text, const QString &logDir);
};
