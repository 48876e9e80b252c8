// SPDX-License-Identifier: MIT
#include "updater/update.h"

#include "MediaKits/AppUpdater/Package/updatehandshake.h"
#include "platform/namedlock.h"
#include "updater/programstart.h"
#include "updater/texts.h"

#include <QFile>
#include <QThread>

namespace {
constexpr int lookIntervalMs = 50;
} // namespace

Update::Update(const UpdaterArguments &arguments, Patience patience)
    : m_arguments(arguments), m_patience(patience), m_installation(arguments.installFolder)
{
}

Update::Outcome Update::run()
{
    if (!awaitEnd()) {
        m_error = Texts::tr("软件仍在运行");
        return Outcome::GivenUp;
    }
    if (m_installation.isOnTrial())
        return goBack(false);
    m_error = m_installation.prepare(m_arguments.package, m_arguments.program);
    if (m_error.isEmpty()) {
        m_error = m_installation.exchange();
        if (!m_error.isEmpty())
            m_installation.tidy();
    }
    if (!m_error.isEmpty()) {
        startOld(m_installation.isPackageUnfit());
        return Outcome::Refused;
    }
    if (startsWell()) {
        m_installation.keep();
        return Outcome::Installed;
    }
    return goBack(true);
}

Update::Outcome Update::goBack(bool isPackageUnfit)
{
    m_error = Texts::tr("新版本无法启动");
    const QString failure = m_installation.exchange();
    if (failure.isEmpty())
        m_installation.tidy();
    else
        m_error += QLatin1String(": ") + failure;
    startOld(isPackageUnfit);
    return Outcome::WentBack;
}

// The one lock is held by a program that looks for an update, the other by one that runs.
bool Update::awaitEnd()
{
    const QDeadlineTimer deadline(m_patience.forEnd);
    while (!m_updateLock.isHeld() || !m_programLock.isHeld()) {
        if (!m_updateLock.isHeld())
            m_updateLock = tryNamedLock(updateLockName(m_arguments.lock));
        if (!m_programLock.isHeld())
            m_programLock = tryNamedLock(m_arguments.lock);
        if (deadline.hasExpired())
            return false;
        QThread::msleep(lookIntervalMs);
    }
    return true;
}

bool Update::startsWell()
{
    m_programLock = DirectoryLock();
    const QString mark = m_installation.startedMark();
    ProgramStart start(m_arguments.program, updateStartedVariable, QFile::encodeName(mark));
    const QDeadlineTimer deadline(m_patience.forStart);
    while (!deadline.hasExpired() && start.isRunning()) {
        if (QFile::exists(mark))
            return true;
        QThread::msleep(lookIntervalMs);
    }
    start.kill();
    // It may have ended because the user was quicker to start it, and that one runs.
    return QFile::exists(mark) || !tryNamedLock(m_arguments.lock).isHeld();
}

void Update::startOld(bool isPackageUnfit)
{
    // It takes both at once.
    m_programLock = DirectoryLock();
    m_updateLock = DirectoryLock();
    if (isPackageUnfit)
        qputenv(updateUnfitVariable, "1");
    ProgramStart(m_arguments.program, updateFailedVariable, m_error.toUtf8());
}
