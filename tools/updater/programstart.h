// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

/// A program that was started on its own, and goes on when this process ends.
class ProgramStart
{
public:
    /// @param name and value of a variable on top of this process's environment; none when empty
    ProgramStart(const QString &program, const char *name, const QByteArray &value);

    /// False also when it could not be started.
    bool isRunning();
    /// Ends it at once and waits for that.
    void kill();

private:
    int m_pid = -1;
};
