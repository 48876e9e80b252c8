// SPDX-License-Identifier: MIT
#include "MediaKits/DataTracker/volcdatatracker.h"

#include "MediaKits/AppInstance/LocalStore/appconfig.h"
#include "MediaKits/AppInstance/LocalStore/appdirs.h"
#include "MediaKits/AppInstance/LocalStore/jsonwriter.h"
#include "MediaKits/DataTracker/trackershared.h"
#include "MediaKits/Logger/logger.h"
#include "platform/computerinfo.h"
#include "platform/wordsize.h"

#include <QDateTime>
#include <QJsonDocument>

#include <utility>

namespace {

constexpr char registrationPath[] = "/service/2/device_register";
constexpr char singleEventPath[] = "/v2/event/json";
constexpr char eventListPath[] = "/v2/event/list";
// The service's own clients send it in this form.
constexpr char contentTypeLine[] = "Content-Type:Content-Type";
constexpr qint64 appNumberAtService = 10000023;
constexpr int maxPending = 20;

// What a registration tells, to be told again with every event.
constexpr const char *registrationKeys[] = {"ssid",      "bd_did",     "cd",
                                            "device_id", "install_id", "new_user"};

QString userIdKey()
{
    return QStringLiteral("user_unique_id");
}

QString compactJson(const QVariantMap &map)
{
    const QJsonDocument document(QJsonObject::fromVariantMap(map));
    return QString::fromUtf8(document.toJson(QJsonDocument::Compact));
}

QVariantMap parsedMap(const QString &jsonText)
{
    return QJsonDocument::fromJson(jsonText.toUtf8()).object().toVariantMap();
}

void insertAll(QVariantMap &target, const QVariantMap &values)
{
    for (auto it = values.begin(); it != values.end(); ++it)
        target.insert(it.key(), it.value());
}

// The reply's object when the service took the request; an empty one and a log line otherwise.
QJsonObject acceptedReply(int curlCode, const std::string &response)
{
    if (curlCode != 0) {
        CLOG(ERROR, "default") << "Tracker: curlCode=" << curlCode;
        return {};
    }
    const QJsonObject reply = QJsonDocument::fromJson(QByteArray::fromStdString(response)).object();
    if (reply.value(QLatin1String("message")).toString() == QLatin1String("success"))
        return reply;
    CLOG(ERROR, "default") << "Tracker:" << response;
    return {};
}

} // namespace

VolcDataTracker::VolcDataTracker(const VolcTrackerConfig &config)
    : m_config(config), m_manager(makeHttpWorker(config.host, "VolcDataTracker"))
{
    if (m_manager)
        m_deviceId = Win32Env::ComputerInfo::getDeviceID();
}

VolcDataTracker::~VolcDataTracker() = default;

VolcDataTracker &VolcDataTracker::instance()
{
    static VolcDataTracker tracker([]() {
        const AppConfig &ini = AppConfig::instance();
        return VolcTrackerConfig{ini.serviceEvents, ini.serviceAppKey, ini.package, ini.store};
    }());
    return tracker;
}

void VolcDataTracker::setUp(const QVariantMap &user)
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        insertAll(m_user, user);
        if (!m_manager || std::exchange(m_started, true))
            return;
    }
    const QVariantMap custom = customParameters();
    HttpTask task;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        // Values set before stay, but for those that describe this computer and version.
        QVariantMap merged = parsedMap(m_header.value(QStringLiteral("custom")).toString());
        insertAll(merged, custom);
        m_header.insert(QStringLiteral("custom"), compactJson(merged));
        task = registrationTask();
    }
    m_manager->addTask(task);
}

void VolcDataTracker::setHeader(const QVariantMap &header)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    insertAll(m_header, header);
}

void VolcDataTracker::setUser(const QVariantMap &user)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    insertAll(m_user, user);
}

void VolcDataTracker::event(const QString &name, const QVariantMap &params)
{
    if (!m_manager)
        return;
    setUp({});
    const QJsonObject object{
        {QStringLiteral("event"), name},
        {QStringLiteral("params"), compactJson(params)},
        {QStringLiteral("local_time_ms"), QDateTime::currentMSecsSinceEpoch()},
    };
    HttpTask task;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (m_stopped)
            return;
        if (!m_registered) {
            m_pending.append(object);
            if (m_pending.size() > maxPending)
                m_pending.removeFirst();
            return;
        }
        task = eventTask({object});
    }
    m_manager->addTask(task);
}

QString VolcDataTracker::headerAsJson() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    const QJsonDocument document(requestHeader());
    return QString::fromUtf8(document.toJson(QJsonDocument::Compact));
}

void VolcDataTracker::eventFromJson(const QString &name, const QString &jsonText)
{
    event(name, parsedMap(jsonText));
}

void VolcDataTracker::stop(std::chrono::milliseconds limit)
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (!m_manager || std::exchange(m_stopped, true))
            return;
    }
    m_manager->stop(limit);
}

// The service knows desktop programs of this kind under "Android" and a version of its own.
QJsonObject VolcDataTracker::registrationHeader() const
{
    return {
        {QStringLiteral("aid"), appNumberAtService},
        {QStringLiteral("os"), QStringLiteral("Android")},
        {QStringLiteral("_device_id"), m_deviceId},
        {QStringLiteral("openudid"), m_deviceId},
        {QStringLiteral("app_version"), QStringLiteral("1.0.0")},
    };
}

QJsonObject VolcDataTracker::requestHeader() const
{
    QJsonObject header = m_manager ? registrationHeader() : QJsonObject();
    for (auto it = m_header.begin(); it != m_header.end(); ++it)
        header[it.key()] = QJsonValue::fromVariant(it.value());
    return header;
}

QVariantMap VolcDataTracker::customParameters() const
{
    using Win32Env::ComputerInfo;
    return {
        {QStringLiteral("_device_id"), m_deviceId},
        {QStringLiteral("app_name"), QLatin1String(trackedProduct)},
        {QStringLiteral("app_package"), m_config.package},
        {QStringLiteral("app_channel"), m_config.channel},
        {QStringLiteral("app_version"), appVersion()},
        {QStringLiteral("os_name"), QStringLiteral("windows")},
        {QStringLiteral("os_version"), ComputerInfo::systemVersion()},
        {QStringLiteral("os_bit"), isWideSystem() ? QStringLiteral("64") : QStringLiteral("32")},
        {QStringLiteral("resolution"), QStringLiteral("%1x%2")
                                           .arg(ComputerInfo::screenWidth())
                                           .arg(ComputerInfo::screenHeight())},
    };
}

HttpTask VolcDataTracker::registrationTask()
{
    const QJsonObject user{{userIdKey(), m_user.value(userIdKey()).toString()}};
    QByteArray body;
    JsonWriter::objectToJson(
        {{QStringLiteral("user"), user}, {QStringLiteral("header"), registrationHeader()}}, body);
    HttpTask task;
    task.method = HttpPost;
    task.url = serviceUrl(m_config.host, registrationPath);
    task.headers = {contentTypeLine};
    task.body = body.toStdString();
    task.callback = [this](int curlCode, const std::string &response, const HttpTask &) {
        return onRegistered(curlCode, response);
    };
    return task;
}

HttpTask VolcDataTracker::eventTask(const QJsonArray &events) const
{
    QJsonObject document{{QStringLiteral("user"), QJsonObject::fromVariantMap(m_user)},
                         {QStringLiteral("header"), requestHeader()}};
    QJsonArray documents;
    for (const QJsonValue event : events) {
        document[QStringLiteral("events")] = QJsonArray{event};
        documents.append(document);
    }
    const bool isSingle = documents.size() == 1;
    const QJsonDocument body = isSingle ? QJsonDocument(document) : QJsonDocument(documents);

    HttpTask task;
    task.method = HttpPost;
    task.url = serviceUrl(m_config.host, isSingle ? singleEventPath : eventListPath);
    task.headers = {contentTypeLine, "X-MCS-AppKey:" + m_config.appKey.toStdString()};
    task.body = body.toJson(QJsonDocument::Compact).toStdString();
    task.callback = [](int curlCode, const std::string &response, const HttpTask &) {
        acceptedReply(curlCode, response);
        return true;
    };
    return task;
}

bool VolcDataTracker::onRegistered(int curlCode, const std::string &response)
{
    const QJsonObject reply = acceptedReply(curlCode, response);
    if (reply.isEmpty())
        return true;
    HttpTask task;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        storeRegistration(reply);
        const QJsonArray events = std::exchange(m_pending, {});
        if (events.isEmpty())
            return true;
        task = eventTask(events);
    }
    m_manager->addTask(task);
    return true;
}

void VolcDataTracker::storeRegistration(const QJsonObject &reply)
{
    for (const char *key : registrationKeys) {
        const QLatin1String name(key);
        if (reply.contains(name))
            m_header.insert(name, reply.value(name).toVariant());
    }
    const QVariant ssid = reply.value(QLatin1String("ssid")).toVariant();
    m_user.insert(QStringLiteral("ssid"), ssid);
    if (m_user.value(userIdKey()).toString().isEmpty())
        m_user.insert(userIdKey(), ssid);
    m_registered = true;
}
