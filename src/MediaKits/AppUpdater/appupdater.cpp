// SPDX-License-Identifier: MIT
#include "MediaKits/AppUpdater/appupdater.h"

#include "MediaKits/AppInstance/LocalStore/appdirs.h"
#include "MediaKits/AppInstance/LocalStore/appini.h"
#include "MediaKits/AppUpdater/minidownloadobject.h"
#include "MediaKits/AppUpdater/Package/updatehandshake.h"
#include "MediaKits/AppUpdater/Package/updatepackage.h"
#include "MediaKits/AppUpdater/servicelink.h"
#include "MediaKits/Logger/logger.h"
#include "platform/namedlock.h"
#include "platform/startenvironment.h"

#include <QDateTime>
#include <QDir>
#include <QEventLoop>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QPointer>
#include <QProcess>
#include <QSettings>
#include <QThread>
#include <QTimer>

#include <memory>

namespace {

constexpr int checkMs = 10000;
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
// Of the version that fetched it, and from where: a package that has run and left this version in
// place isn't fetched again without being asked for.
const QString fromKey = QStringLiteral("Update/from");
const QString linkKey = QStringLiteral("Update/link");

void emptyUpdateFolder()
{
    QDir(updateDir()).removeRecursively();
    updateDir();
}

void noteFailed(const QString &link)
{
    AppIni::instance().setValue(AppIni::Key::UpdateFailedLink, link);
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
    m_lock = tryNamedLock(updateLockName(appCode()));
    if (!m_lock.isHeld())
        return false;
    if (applyPending())
        return true;
    ask([this](const std::optional<UpdateRecord> &record) {
        if (record && record->forceUpgrade != 0) {
            downloadSilently(*record);
        } else {
            emptyUpdateFolder();
            rest();
        }
    });
    return false;
}

bool AppUpdater::applyPending()
{
    if (!QFile::exists(updateDir() + iniName))
        return false;
    QSettings ini(updateDir() + iniName, QSettings::IniFormat);
    const QString package = ini.value(packageKey).toString();
    if (ini.value(runKey).toBool()) {
        if (ini.value(fromKey).toInt() == appNumber())
            noteFailed(ini.value(linkKey).toString());
        emptyUpdateFolder();
        return false;
    }
    if (package.isEmpty() || !ini.value(forceKey).toBool())
        return false;
    ini.setValue(runKey, true);
    ini.sync();
    // What can't be noted would run again and again.
    return ini.status() == QSettings::NoError && launchUpdater(package);
}

void AppUpdater::ask(const Answer &answer)
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
    connect(reply, &QNetworkReply::finished, this, [reply, answer] {
        reply->deleteLater();
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
    ask([answered, waiting = QPointer<QEventLoop>(&loop)](const auto &answer) {
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

void AppUpdater::downloadSilently(const UpdateRecord &record)
{
    const QString package = updateDir() + silentName;
    const QString failed = AppIni::instance().value(AppIni::Key::UpdateFailedLink).toString();
    MiniDownloadObject *download =
        record.apkLink == failed
            ? nullptr
            : m_downloader.download(record.apkLink, package, m_settings.verifiesPeer);
    if (download == nullptr) {
        rest();
        return;
    }
    connect(download, &MiniDownloadObject::downloadProgress, this, &AppUpdater::downloadProgress);
    connect(download, &MiniDownloadObject::downloadError, this, &AppUpdater::rest);
    connect(download, &MiniDownloadObject::downloadFinished, this, [this, record] {
        noteFetched(record);
        rest();
    });
}

void AppUpdater::noteFetched(const UpdateRecord &record)
{
    const QString package = updateDir() + silentName;
    const QString refusal = refusalOf(package);
    if (!refusal.isEmpty()) {
        CLOG(ERROR, "default") << "升级包: " << refusal;
        QFile::remove(package);
        noteFailed(record.apkLink);
        return;
    }
    QFile::remove(updateDir() + iniName);
    QSettings ini(updateDir() + iniName, QSettings::IniFormat);
    ini.setValue(forceKey, record.forceUpgrade);
    ini.setValue(packageKey, package);
    ini.setValue(timeKey,
                 QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")));
    ini.setValue(fromKey, appNumber());
    ini.setValue(linkKey, record.apkLink);
}

void AppUpdater::rest()
{
    m_lock = DirectoryLock();
    emit idle();
}

MiniDownloadObject *AppUpdater::downloadAsked(const UpdateRecord &record)
{
    return m_downloader.download(record.apkLink, askedPackage(), m_settings.verifiesPeer);
}

QString AppUpdater::askedPackage()
{
    return updateDir() + askedName;
}

QString AppUpdater::refusalOf(const QString &package) const
{
    QFile file(package);
    if (!file.open(QIODevice::ReadOnly))
        return file.errorString();
    return readUpdatePackage(file, m_settings.key, appNumber()).refusal;
}

bool AppUpdater::launchUpdater(const QString &package)
{
    m_lock = DirectoryLock();
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
