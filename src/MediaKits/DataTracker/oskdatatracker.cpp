// SPDX-License-Identifier: MIT
#include "MediaKits/DataTracker/oskdatatracker.h"

#include "MediaKits/AppInstance/LocalStore/appconfig.h"
#include "MediaKits/AppInstance/LocalStore/appdirs.h"
#include "MediaKits/DataTracker/oskevent.h"
#include "MediaKits/DataTracker/oskhttptaskuserdata.h"
#include "MediaKits/DataTracker/trackershared.h"
#include "MediaKits/Logger/logger.h"
#include "platform/computerinfo.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QJsonArray>
#include <QJsonDocument>
#include <QThread>

#include <utility>

namespace {

constexpr char collectorPath[] = "/realtimeaidataprobe/v/v/morvzh";
constexpr int batchSize = 30;
constexpr int crashEventId = 40;

QString localTime()
{
    return QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd hh:mm:ss.zzz"));
}

QJsonObject asStrings(const QVariantMap &params)
{
    QJsonObject texts;
    for (auto it = params.begin(); it != params.end(); ++it)
        texts[it.key()] = it.value().toString();
    return texts;
}

// Whether the collector has spoken its last word on the post: 500 is its word for a batch that
// it will never take.
bool isAnswered(int curlCode, const std::string &response)
{
    if (curlCode != 0)
        return false;
    const QJsonDocument reply = QJsonDocument::fromJson(QByteArray::fromStdString(response));
    const int code = reply.object().value(QLatin1String("code")).toVariant().toInt();
    return code == 200 || code == 500;
}

bool onPosted(int curlCode, const std::string &response, const HttpTask &task)
{
    if (isAnswered(curlCode, response))
        return true;
    auto *data = dynamic_cast<OskHttpTaskUserData *>(task.userData.get());
    const bool ends = data == nullptr || --data->attemptsLeft <= 0;
    if (ends)
        CLOG(ERROR, "default") << "Tracker: the collector took no events, curlCode=" << curlCode;
    return ends;
}

} // namespace

OskDataTracker::OskDataTracker(const OskTrackerConfig &config)
    : m_config(config), m_manager(makeHttpWorker(config.host, "OskDataTracker"))
{
    // Read now, so that they are at hand in a crash and at the very end of the process.
    if (m_manager) {
        m_deviceId = Win32Env::ComputerInfo::getDeviceID();
        m_systemVersion = Win32Env::ComputerInfo::systemVersion();
    }
}

OskDataTracker::~OskDataTracker()
{
    stop();
    delete m_flushTimer;
}

OskDataTracker &OskDataTracker::instance()
{
    static OskDataTracker tracker([]() {
        const AppConfig &ini = AppConfig::instance();
        OskTrackerConfig config;
        config.host = ini.serviceCollector;
        config.oaid = ini.oaid;
        config.marketName = ini.store;
        return config;
    }());
    return tracker;
}

void OskDataTracker::trackTableEvent(int id, const QVariantMap &params)
{
    const OskEvent *event = findOskEvent(id);
    if (!isActive() || event == nullptr)
        return;
    QJsonObject carried{{QStringLiteral("page_id"), QString::fromUtf8(event->page)}};
    if (!params.isEmpty())
        carried[QStringLiteral("extra_event_map")] = asStrings(params);
    append(eventObject(*event, carried));
    if (id == crashEventId) {
        stop(crashLimit);
        return;
    }
    ensureFlushTimer();
    flush(false);
}

void OskDataTracker::trackInstall()
{
    trackDirectEvent("install", "app_install", "安装");
}

void OskDataTracker::trackStart()
{
    trackDirectEvent("start", "app_start", "app启动");
}

void OskDataTracker::trackLogin()
{
    trackDirectEvent("custom", "login", "app登录");
}

void OskDataTracker::trackCrash()
{
    trackTableEvent(crashEventId);
}

void OskDataTracker::setUserId(const QString &userId)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_userId = userId;
}

QString OskDataTracker::userId() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_userId;
}

void OskDataTracker::stop(std::chrono::milliseconds limit)
{
    if (!m_manager || m_stopped.exchange(true))
        return;
    flush(true);
    m_manager->stop(limit);
}

void OskDataTracker::trackDirectEvent(const char *type, const char *code, const char *name)
{
    if (!isActive())
        return;
    append(eventObject({0, "", type, code, name}, {}));
    ensureFlushTimer();
    flush(false);
}

QJsonObject OskDataTracker::eventObject(const OskEvent &event, QJsonObject carried) const
{
    carried[QStringLiteral("event_code")] = QString::fromUtf8(event.code);
    carried[QStringLiteral("event_name")] = QString::fromUtf8(event.name);
    carried[QStringLiteral("event_type")] = QString::fromUtf8(event.type);
    carried[QStringLiteral("ts")] = localTime();
    carried[QStringLiteral("user_id")] = userId();
    return carried;
}

void OskDataTracker::append(const QJsonObject &event)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_pending.append(event);
}

// Events come before the application object exists, too: the first one after that makes the timer.
void OskDataTracker::ensureFlushTimer()
{
    QCoreApplication *application = QCoreApplication::instance();
    if (application == nullptr || QThread::currentThread() != application->thread() || m_flushTimer)
        return;
    m_flushTimer = new QTimer(application);
    QObject::connect(m_flushTimer.data(), &QTimer::timeout, application, [this]() { flush(true); });
    m_flushTimer->start(m_config.flushIntervalMs);
}

void OskDataTracker::flush(bool force)
{
    QList<QJsonObject> events;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (m_pending.isEmpty() || (!force && m_pending.size() < batchSize))
            return;
        events = std::exchange(m_pending, {});
    }
    post(events);
}

void OskDataTracker::post(const QList<QJsonObject> &events)
{
    QJsonArray array;
    for (const QJsonObject &event : events)
        array.append(event);
    const QJsonObject document{{QStringLiteral("common"), commonObject()},
                               {QStringLiteral("events"), array}};

    HttpTask task;
    task.method = HttpPost;
    task.url = serviceUrl(m_config.host, collectorPath);
    task.body = QJsonDocument(document).toJson(QJsonDocument::Compact).toStdString();
    task.callback = onPosted;
    task.userData = std::make_shared<OskHttpTaskUserData>();
    m_manager->addTask(task);
}

QJsonObject OskDataTracker::commonObject() const
{
    QString uploadTime = localTime();
    uploadTime.chop(1);
    return {
        {QStringLiteral("oaid"), m_config.oaid},
        {QStringLiteral("market_name"), m_config.marketName},
        {QStringLiteral("message_id"), QStringLiteral("1")},
        {QStringLiteral("product_name"), QLatin1String(trackedProduct)},
        {QStringLiteral("uuid"), m_deviceId},
        {QStringLiteral("imei"), QString()},
        {QStringLiteral("android_id"), m_deviceId},
        {QStringLiteral("app_id"), QStringLiteral("301801")},
        {QStringLiteral("os_system"), QStringLiteral("3")},
        {QStringLiteral("os_version"), m_systemVersion},
        {QStringLiteral("app_version"), appVersion()},
        {QStringLiteral("upload_time"), uploadTime},
    };
}
