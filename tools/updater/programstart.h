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
    /// @param option its only argument
    ProgramStart(const QString &program, const QByteArray &option);

    /// False also when it could not be started.
    bool isRunning();
    /// Whether it was seen to end by itself, with 0.
    bool hasEndedWell() const { return m_hasEndedWell; }
    /// Ends it at once and waits for that.
    void kill();

private:
    void start(const QString &program, QByteArray option);

    int m_pid = -1;
    bool m_hasEndedWell = false;
};
