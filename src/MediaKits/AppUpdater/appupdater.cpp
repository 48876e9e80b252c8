// SPDX-License-Identifier: MIT
#include "MediaKits/AppUpdater/appupdater.h"

#include "MediaKits/AppInstance/LocalStore/appdirs.h"
#include "MediaKits/AppInstance/LocalStore/appini.h"
#include "MediaKits/AppInstance/LocalStore/setaside.h"
#include "MediaKits/AppUpdater/minidownloadobject.h"
#include "MediaKits/AppUpdater/Package/updatehandshake.h"
#include "MediaKits/AppUpdater/Package/updatepackage.h"
#include "MediaKits/AppUpdater/servicelink.h"
#include "MediaKits/Logger/logger.h"
#include "platform/namedlock.h"
#include "platform/startenvironment.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QEventLoop>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QProcess>
#include <QSettings>
#include <QThread>
#include <QTimer>

namespace {

constexpr int checkMs = 10000;
// Nobody who leaves the program waits longer for a disk.
constexpr int leaveMs = 500;
// An answer is a few lines of text.
constexpr qint64 mostAnswerBytes = 256 * 1024;

const QString silentName = QStringLiteral("/updatePackage.exe");
const QString askedName = QStringLiteral("/updatePackage2.exe");
const QString updaterName = QStringLiteral("/updater.exe");
const QString iniName = QStringLiteral("/update.ini");

const QString runKey = QStringLiteral("Update/run");
const QString packageKey = QStringLiteral("Update/package");
const QString forceKey = QStringLiteral("Update/isforce");
const QString timeKey = QStringLiteral("Update/datetime");
// From where it was fetched.
const QString linkKey = QStringLiteral("Update/link");

void emptyUpdateFolder()
{
    QDir(updateDir()).removeRecursively();
    updateDir();
}

QString refusalOf(const QString &package, const QByteArray &key)
{
    QFile file(package);
    if (!file.open(QIODevice::ReadOnly))
        return file.errorString();
    return readUpdatePackage(file, key, appNumber()).refusal;
}

// By its lines alone, since a start must not wait for more: the one that installs reads the rest.
bool isWorthInstalling(const QString &package, const QByteArray &key)
{
    QFile file(package);
    return file.open(QIODevice::ReadOnly) && readUpdateLines(file, key, appNumber()).isAccepted();
}

} // namespace

AppUpdater::AppUpdater(const UpdateSettings &settings) : m_settings(settings) {}

AppUpdater &AppUpdater::instance()
{
    static AppUpdater updater;
    return updater;
}

bool AppUpdater::run()
{
    if (m_settings.key.isEmpty() || !m_settings.isReplaceable()) {
        if (!m_settings.host.isEmpty())
            CLOG(INFO, "default") << "此安装由系统的软件包管理器升级，不检查新版本";
        return false;
    }
    // Unless the one that installs says so itself, and has failed to take it back.
    const bool failedBefore = beginUpdateTrial(m_settings.installFolder()) &&
                              !qEnvironmentVariableIsSet(updateFailedVariable);
    // One that waits for this start has it.
    if (!takeLock())
        return false;
    if (failedBefore ? takeBack() : applyPending())
        return true;
    if (!m_lock.isHeld())
        return false;
    m_background = std::make_unique<QObject>();
    ask(m_background.get(), [this](const std::optional<UpdateRecord> &record) {
        if (record && record->forceUpgrade != 0) {
            downloadSilently(*record);
        } else {
            emptyUpdateFolder();
            rest();
        }
    });
    return false;
}

bool AppUpdater::takeLock()
{
    m_lock = tryNamedLock(updateLockName(appCode()));
    return m_lock.isHeld();
}

bool AppUpdater::applyPending()
{
    if (!QFile::exists(updateDir() + iniName))
        return false;
    QSettings ini(clearedIniPath(updateDir() + iniName), QSettings::IniFormat);
    const QString package = ini.value(packageKey).toString();
    if (ini.value(runKey).toBool()) {
        // A full disk or a lost current is no reason never to try it again.
        if (qEnvironmentVariableIsSet(updateUnfitVariable))
            AppIni::instance().setValue(AppIni::Key::UpdateFailedLink, ini.value(linkKey));
        emptyUpdateFolder();
        return false;
    }
    if (package.isEmpty() || !ini.value(forceKey).toBool())
        return false;
    // The user may have asked for the same version meanwhile.
    if (!isWorthInstalling(package, m_settings.key)) {
        emptyUpdateFolder();
        return false;
    }
    ini.setValue(runKey, true);
    ini.sync();
    // What can't be noted would run again and again.
    if (ini.status() != QSettings::NoError)
        return false;
    if (launchUpdater(package))
        return true;
    ini.setValue(runKey, false);
    takeLock();
    return false;
}

void AppUpdater::ask(QObject *asker, const Answer &answer)
{
    const QUrl address(m_settings.checkUrl());
    if (m_settings.host.isEmpty() || !isServiceLink(address)) {
        answer({});
        return;
    }
    QNetworkReply *reply =
        m_downloader.network()->get(serviceRequest(address, m_settings.verifiesPeer, checkMs));
    QTimer::singleShot(checkMs, reply, &QNetworkReply::abort);
    connect(reply, &QNetworkReply::downloadProgress, reply, [reply](qint64 received) {
        if (received > mostAnswerBytes)
            reply->abort();
    });
    connect(reply, &QNetworkReply::finished, reply, &QObject::deleteLater);
    connect(reply, &QNetworkReply::finished, asker, [reply, answer] {
        const bool failed = reply->error() != QNetworkReply::NoError;
        if (failed)
            CLOG(ERROR, "default") << "检查升级失败 " << reply->errorString();
        answer(failed ? std::nullopt : UpdateRecord::parse(reply->readAll()));
    });
}

bool AppUpdater::check(UpdateRecord &record)
{
    if (m_isChecking)
        return false;
    m_isChecking = true;
    QEventLoop loop;
    // The program may be left while the service is silent: then the answer finds nobody.
    const auto answered = std::make_shared<std::optional<UpdateRecord>>();
    ask(this, [answered, waiting = QPointer<QEventLoop>(&loop)](const auto &answer) {
        *answered = answer;
        // Also when the answer comes before the loop does.
        if (waiting)
            QMetaObject::invokeMethod(waiting, &QEventLoop::quit, Qt::QueuedConnection);
    });
    loop.exec();
    m_isChecking = false;
    record = answered->value_or(UpdateRecord());
    return answered->has_value();
}

// What an update has put in place never came to its event loop, and nobody watched.
bool AppUpdater::takeBack()
{
    CLOG(ERROR, "default") << "新版本无法启动，恢复原来的版本";
    if (launchUpdater(updateDir() + silentName))
        return true;
    takeLock();
    return false;
}

// By an earlier run that could not start the one that installs.
bool AppUpdater::isFetched(const UpdateRecord &record) const
{
    const QSettings ini(clearedIniPath(updateDir() + iniName), QSettings::IniFormat);
    return ini.value(linkKey) == record.apkLink &&
           isWorthInstalling(ini.value(packageKey).toString(), m_settings.key);
}

void AppUpdater::downloadSilently(const UpdateRecord &record)
{
    const QString package = updateDir() + silentName;
    const QString failed = AppIni::instance().value(AppIni::Key::UpdateFailedLink).toString();
    m_silent = record.apkLink == failed || isFetched(record)
                   ? nullptr
                   : m_downloader.download(record.apkLink, package, m_settings.verifiesPeer);
    if (!m_silent) {
        rest();
        return;
    }
    QObject *background = m_background.get();
    connect(m_silent, &MiniDownloadObject::downloadProgress, this, &AppUpdater::downloadProgress);
    connect(m_silent, &MiniDownloadObject::downloadError, background, [this] { rest(); });
    connect(m_silent, &MiniDownloadObject::downloadFinished, background, [=] {
        examine(package, background, [this, record](const QString &refusal) {
            noteFetched(record, refusal);
            rest();
        });
    });
}

void AppUpdater::noteFetched(const UpdateRecord &record, const QString &refusal)
{
    const QString package = updateDir() + silentName;
    if (!refusal.isEmpty()) {
        CLOG(ERROR, "default") << "升级包: " << refusal;
        QFile::remove(package);
        return;
    }
    QFile::remove(updateDir() + iniName);
    QSettings ini(updateDir() + iniName, QSettings::IniFormat);
    ini.setValue(forceKey, record.forceUpgrade);
    ini.setValue(packageKey, package);
    ini.setValue(timeKey,
                 QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")));
    ini.setValue(linkKey, record.apkLink);
}

void AppUpdater::rest()
{
    m_lock = DirectoryLock();
    emit idle();
}

// Its answer, or its download, is worth nothing beside what the user asks for.
void AppUpdater::stopBackground()
{
    if (!m_background)
        return;
    m_background.reset();
    if (m_silent)
        m_silent->cancel();
    rest();
}

MiniDownloadObject *AppUpdater::downloadAsked(const UpdateRecord &record)
{
    stopBackground();
    if (!m_lock.isHeld() && !takeLock())
        return nullptr;
    m_asked = m_downloader.download(record.apkLink, askedPackage(), m_settings.verifiesPeer);
    if (!m_asked) {
        m_lock = DirectoryLock();
        return nullptr;
    }
    // Unless the user has asked again meanwhile.
    connect(m_asked, &QObject::destroyed, this, [this] {
        if (!m_asked)
            m_lock = DirectoryLock();
    });
    return m_asked;
}

QString AppUpdater::askedPackage()
{
    return updateDir() + askedName;
}

void AppUpdater::examine(const QString &package, QObject *asker, const Verdict &verdict) const
{
    const auto refusal = std::make_shared<QString>();
    QThread *thread = QThread::create(
        [package, key = m_settings.key, refusal] { *refusal = refusalOf(package, key); });
    connect(thread, &QThread::finished, asker, [refusal, verdict] { verdict(*refusal); });
    connect(thread, &QThread::finished, thread, &QObject::deleteLater);
    connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, thread, [thread] {
        thread->requestInterruption();
        thread->wait(leaveMs);
    });
    thread->start();
}

bool AppUpdater::launchUpdater(const QString &package)
{
    stopBackground();
    m_lock = DirectoryLock();
    // One that was fetched without asking must not follow it.
    if (package == askedPackage())
        QFile::remove(updateDir() + iniName);
    // An update replaces the program that installs it, too.
    const QString copy = updateDir() + updaterName;
    QFile::remove(copy);
    QProcess process;
    process.setProgram(copy);
    process.setArguments({
        QStringLiteral("-downloadurl=") +
            QString::fromLatin1(QUrl::fromLocalFile(package).toEncoded()),
        QStringLiteral("-downloadscale=5"),
        QStringLiteral("-installpath=") + m_settings.installFolder(),
        QStringLiteral("-lock=") + appCode(),
        QStringLiteral("-startup=") + m_settings.program,
    });
    // It starts the program again, which must not take this one's settings for the user's.
    process.setProcessEnvironment(startEnvironment());
    const bool launched = QFile::copy(m_settings.updater(), copy) && process.startDetached();
    CLOG(INFO, "default") << "升级 " << package << (launched ? " 开始" : " 无法开始");
    return launched;
}

QString AppUpdater::confirmStart()
{
    const QByteArray mark = qgetenv(updateStartedVariable);
    const QByteArray failure = qgetenv(updateFailedVariable);
    qunsetenv(updateStartedVariable);
    qunsetenv(updateFailedVariable);
    qunsetenv(updateUnfitVariable);
    QFile::remove(updateTrialNote(m_settings.installFolder()));
    if (mark.isEmpty())
        clearLeftovers();
    else
        QFile(QFile::decodeName(mark)).open(QIODevice::WriteOnly);
    return QString::fromUtf8(failure);
}

// Of an update that was killed: half of the new version, or all of the old one.
void AppUpdater::clearLeftovers()
{
    const QString folder = updateWorkFolder(m_settings.installFolder());
    if (!m_settings.isReplaceable() || !QFileInfo(folder).isDir())
        return;
    const auto lock = std::make_shared<DirectoryLock>();
    if (!m_lock.isHeld())
        *lock = tryNamedLock(updateLockName(appCode()));
    if (!m_lock.isHeld() && !lock->isHeld())
        return;
    QThread *thread = QThread::create([folder, lock] { QDir(folder).removeRecursively(); });
    connect(thread, &QThread::finished, thread, &QObject::deleteLater);
    thread->start(QThread::LowPriority);
}
