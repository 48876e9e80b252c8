// SPDX-License-Identifier: MIT
#pragma once

#include <QElapsedTimer>
#include <QString>

/// A bar with percent and time left on standard error, rewritten in place; silent unless standard
/// error is a terminal.
class ConsoleProgress
{
public:
    ConsoleProgress();

    /// @param done share of the whole work, 0 to 1
    /// @param suffix a few words behind the bar
    void show(double done, const QString &suffix);
    /// Takes the bar off the line, so that something else can be printed there.
    void clear();

    /// The bar's line, without control characters.
    static QString line(double done, qint64 elapsedMs, const QString &suffix);

private:
    bool m_onTerminal;
    bool m_visible = false;
    QElapsedTimer m_total;
    QElapsedTimer m_sinceShown;
};
