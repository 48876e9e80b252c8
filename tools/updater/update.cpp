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
    bool isUnfit = false;
    m_error = replace(isUnfit);
    if (!m_error.isEmpty()) {
        startOld(isUnfit);
        return Outcome::Refused;
    }
    if (startsWell()) {
        m_installation.keep();
        return Outcome::Installed;
    }
    return goBack(true);
}

QString Update::replace(bool &isPackageUnfit)
{
    QString error = m_installation.prepare(m_arguments.package, m_arguments.program);
    isPackageUnfit = m_installation.isPackageUnfit();
    if (!error.isEmpty())
        return error;
    isPackageUnfit = !canBegin();
    error = isPackageUnfit ? Texts::tr("新版本无法启动") : m_installation.exchange();
    if (!error.isEmpty())
        m_installation.tidy();
    return error;
}

// Before it is in its place: one that can't even begin would never bring the old one back, should
// this program be killed after the exchange.
bool Update::canBegin()
{
    // It opens the display and ends at once, in every version.
    ProgramStart trial(m_installation.otherProgram(m_arguments.program), "--preuninst");
    const QDeadlineTimer deadline(m_patience.forStart);
    while (trial.isRunning() && !deadline.hasExpired())
        QThread::msleep(lookIntervalMs);
    trial.kill();
    return trial.hasEndedWell();
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
