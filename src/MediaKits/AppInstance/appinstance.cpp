// SPDX-License-Identifier: MIT
#include "MediaKits/AppInstance/appinstance.h"

#include "browser/userinfomanager.h"
#include "browser/webinterface.h"
#include "catalogue/encparamcatalog.h"
#include "MediaKits/AppInstance/displayscale.h"
#include "MediaKits/AppInstance/LocalStore/appconfig.h"
#include "MediaKits/AppInstance/LocalStore/appdirs.h"
#include "MediaKits/AppInstance/LocalStore/appini.h"
#include "MediaKits/AppInstance/LocalStore/encparamhistory.h"
#include "MediaKits/AppInstance/LocalStore/functionsettings.h"
#include "MediaKits/AppInstance/LocalStore/historyrecord.h"
#include "MediaKits/AppInstance/LocalStore/jsonfile.h"
#include "MediaKits/AppInstance/LocalStore/localstores.h"
#include "MediaKits/AppInstance/LocalStore/persiststore.h"
#include "MediaKits/AppInstance/LocalStore/tempmarker.h"
#include "MediaKits/AppInstance/LocalStore/userinfostore.h"
#include "MediaKits/AppUpdater/appupdater.h"
#include "MediaKits/DataTracker/a360sem.h"
#include "MediaKits/DataTracker/oskdatatracker.h"
#include "MediaKits/DataTracker/trackershared.h"
#include "MediaKits/DataTracker/volcdatatracker.h"
#include "MediaKits/FunctionPage/Framework/Dialogs/mediamessagebox.h"
#include "MediaKits/FunctionPage/Framework/Intake/fileaddtype.h"
#include "MediaKits/Logger/logger.h"
#include "MediaKits/Manifest/playermanifest.h"
#include "platform/crashhook.h"
#include "platform/runtimeroot.h"
#include "platform/terminationwatcher.h"
#include "platform/windowsystem.h"
#include "resources/look.h"

#include <QDateTime>
#include <QTranslator>

#include <algorithm>
#include <chrono>
#include <functional>
#include <future>
#include <iterator>
#include <thread>

namespace {

const QLatin1String applicationId("morvane");
const QLatin1String secondStartMessage("runing");
constexpr int secondStartTimeoutMs = 5000;

const QLatin1String installOption("install");
const QLatin1String updateOption("update");
const QLatin1String uninstallOption("preuninst");
// Of the installer: it only wants the marks of the installation, no window.
const QLatin1String installOnly("norun");
constexpr const char *updateRefusals[] = {"skip", "no", "non"};

// Two of them fit into the crash hook's limit.
constexpr std::chrono::seconds crashReportLimit(3);

// So that each loads its file now.
void touchStores()
{
    qRegisterMetaType<FileAddType>();
    AppConfig::instance();
    EncParamHistory::instance();
    FunctionSettings::instance();
    HistoryRecord::instance();
    PersistStore::instance();
    UserInfoStore::instance();
    EncParamCatalog::instance();
}

void startTracking()
{
    QVariantMap user;
    const QString id = UserInfoStore::instance().id();
    if (!id.isEmpty())
        user.insert(QStringLiteral("user_unique_id"), id);
    VolcDataTracker::instance().setUp(user);
    VolcDataTracker::instance().event(QStringLiteral("launch"));
}

void decideScale()
{
    decideDisplayScale();
    configPlayerManifest(dpiScaleMode() == DpiScaleSystem ? PlayerScaling::BySystem
                                                          : PlayerScaling::ByPlayer);
}

// An installer waits for nothing but its marks, for which the usual moment may not do.
void sendMarks()
{
    constexpr std::chrono::milliseconds limit(2500);
    A360Sem::instance().finish(limit);
    VolcDataTracker::instance().stop(limit);
    OskDataTracker::instance().stop(limit);
}

// A crash may have happened inside a tracker, on its worker or under its lock: then its report
// never ends.
void runWithin(std::chrono::seconds limit, const std::function<void()> &work)
{
    std::packaged_task<void()> task(work);
    const std::future<void> done = task.get_future();
    std::thread(std::move(task)).detach();
    done.wait_for(limit);
}

} // namespace

AppInstance::AppInstance(int &argc, char **argv)
{
    installCrashHook(&AppInstance::callback);
    touchStores();
    startTracking();
    decideScale();
    chooseWindowSystem();
    // Qt's own answer to a log-out is to close all windows and to call it off when one stays, as
    // the main window does, which only hides.
    QGuiApplication::setFallbackSessionManagementEnabled(false);
    m_application = std::make_unique<MyApplication>(applicationId, argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setAttribute(Qt::AA_DontCreateNativeWidgetSiblings);
    addOptions();
    m_parser.process(QApplication::arguments());
    installTranslator();
}

AppInstance::~AppInstance()
{
    // Before the place is given up, and before anything that may wait for a server.
    if (m_ownsStores)
        saveStores();
    else
        JsonFile::forbidWriting();
    VolcDataTracker::instance().stop();
    OskDataTracker::instance().stop();
}

bool AppInstance::init()
{
    if (m_parser.isSet(uninstallOption))
        return false;
    if (m_application->isRunning() &&
        m_application->sendMessage(secondStartMessage, secondStartTimeoutMs))
        return false;
    if (!m_application->hasPlace() && !mayStandBeside())
        return false;
    reloadStores();
    m_ownsStores = true;
    Logger::init(appDir() + QLatin1String("/log.conf"), logDir());
    sweepStaleMarkers();
    removeDeadSockets(QStringLiteral("morplayer-*"));
    WebInterface::instance();
    if (!runInstallStep())
        return false;
    if (runUpdateStep() && AppUpdater::instance().run())
        return false;
    Look::apply();
    tellRefusedDirs();
    return true;
}

void AppInstance::tellRefusedDirs()
{
    const QStringList folders = refusedDirs();
    if (!folders.isEmpty())
        MediaMessageBox::showMessage(
            tr("墨泉影音工坊"),
            tr("以下位置是链接、文件或他人的文件夹，程序已改用其他位置：\n%1")
                .arg(folders.join(QLatin1Char('\n'))),
            nullptr);
}

// Two instances know nothing of each other's settings.
bool AppInstance::mayStandBeside()
{
    Look::apply();
    return MediaMessageBox::ask(tr("墨泉影音工坊"),
                                tr("程序已在运行，但没有响应。仍要再启动一个吗？"), nullptr);
}

int AppInstance::exec(const std::function<void()> &finishWork)
{
    const TerminationWatcher watcher;
    QObject::connect(&watcher, &TerminationWatcher::requested, qApp, [&finishWork] {
        finishWork();
        QCoreApplication::quit();
    });
    const int exitCode = QApplication::exec();
    VolcDataTracker::instance().event(QStringLiteral("close"));
    return exitCode;
}

int AppInstance::callback()
{
    runWithin(crashReportLimit, []() { OskDataTracker::instance().trackCrash(); });
    runWithin(crashReportLimit, []() {
        VolcDataTracker &tracker = VolcDataTracker::instance();
        tracker.event(QStringLiteral("crash"),
                      {{QStringLiteral("crash_part"), QStringLiteral("主程序")}});
        tracker.stop(crashLimit);
    });
    CLOG(ERROR, "default") << "软件崩溃";
    return 1;
}

void AppInstance::addOptions()
{
    m_parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
    m_parser.addOption({installOption, QString(), QStringLiteral("runing")});
    m_parser.addOption({updateOption, QString(), QStringLiteral("yes")});
    m_parser.addOption(QCommandLineOption(uninstallOption));
}

void AppInstance::installTranslator()
{
    auto *translator = new QTranslator(m_application.get());
    translator->load(QStringLiteral(":/languages/qm/qt_zh_CN.qm"));
    QApplication::installTranslator(translator);
}

bool AppInstance::runInstallStep() const
{
    OskDataTracker &tracker = OskDataTracker::instance();
    const QString userId = UserInfoManager::instance().id();
    if (!userId.isEmpty())
        tracker.setUserId(userId);
    tracker.trackStart();
    if (!m_parser.isSet(installOption))
        return true;

    tracker.trackInstall();
    A360Sem::instance().report(QStringLiteral("REGISTERED"));
    VolcDataTracker::instance().event(QStringLiteral("main_activation"));
    AppIni &ini = AppIni::instance();
    if (!ini.contains(AppIni::Key::InstallTime))
        ini.setValue(AppIni::Key::InstallTime, QDateTime::currentMSecsSinceEpoch());
    if (m_parser.value(installOption) != installOnly)
        return true;
    sendMarks();
    return false;
}

bool AppInstance::runUpdateStep() const
{
    const QString update = m_parser.value(updateOption);
    return std::none_of(std::begin(updateRefusals), std::end(updateRefusals),
                        [&update](const char *word) { return update == QLatin1String(word); });
}
