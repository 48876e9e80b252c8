// SPDX-License-Identifier: MIT
#include "updater/programstart.h"

#include <QFile>

#include <csignal>

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

ProgramStart::ProgramStart(const QString &program, const char *name, const QByteArray &value)
{
    if (!value.isEmpty())
        qputenv(name, value);
    start(program, {});
    qunsetenv(name);
}

ProgramStart::ProgramStart(const QString &program, const QByteArray &option)
{
    start(program, option);
}

// QProcess would either end the program with its object or not tell whether it still runs.
void ProgramStart::start(const QString &program, QByteArray option)
{
    posix_spawnattr_t attributes;
    ::posix_spawnattr_init(&attributes);
    ::posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSID);
    QByteArray path = QFile::encodeName(program);
    char *const arguments[] = {path.data(), option.isEmpty() ? nullptr : option.data(), nullptr};
    pid_t pid = -1;
    if (::posix_spawn(&pid, path.constData(), nullptr, &attributes, arguments, environ) == 0)
        m_pid = pid;
    ::posix_spawnattr_destroy(&attributes);
}

bool ProgramStart::isRunning()
{
    int status = -1;
    const pid_t ended = m_pid > 0 ? ::waitpid(m_pid, &status, WNOHANG) : 0;
    if (ended != 0)
        m_pid = -1;
    if (ended > 0)
        m_hasEndedWell = WIFEXITED(status) && WEXITSTATUS(status) == 0;
    return m_pid > 0;
}

void ProgramStart::kill()
{
    if (!isRunning())
        return;
    ::kill(m_pid, SIGKILL);
    ::waitpid(m_pid, nullptr, 0);
    m_pid = -1;
}
