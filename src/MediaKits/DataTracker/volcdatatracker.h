// SPDX-License-Identifier: MIT
#pragma once

#include "http/httptaskmanager.h"
#include "MediaKits/DataTracker/trackershared.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QVariantMap>

#include <memory>
#include <mutex>

/// Where and as what the service of named events is spoken to.
struct VolcTrackerConfig
{
    /// An empty host turns the tracker off: it keeps no events, has no thread and no connection.
    QString host;
    /// 32 lower-case hexadecimal characters.
    QString appKey;
    QString package;
    QString channel;
};

/// Sends named usage events, on a worker thread. The computer is registered first; events that
/// come before the service has answered wait for that. No operation but stop() and the destructor
/// waits for the network, and none reports errors. All may be called on any thread.
class VolcDataTracker
{
public:
    explicit VolcDataTracker(const VolcTrackerConfig &config);
    ~VolcDataTracker();
    Q_DISABLE_COPY(VolcDataTracker)

    /// The one that is configured by main.ini.
    static VolcDataTracker &instance();

    /// Takes values of the user, as "user_unique_id", and registers the computer; the first event
    /// does that by itself. Later calls only take the values.
    void setUp(const QVariantMap &user);

    /// Values that go with every later event, on top of those set before.
    void setHeader(const QVariantMap &header);
    void setUser(const QVariantMap &user);

    void event(const QString &name, const QVariantMap &params = {});

    /// The header of the events, as compact JSON text.
    QString headerAsJson() const;
    /// @param jsonText object with the event's parameters; anything else counts as none
    void eventFromJson(const QString &name, const QString &jsonText);

    /// Returns when everything handed over has been sent or has failed. Later events are dropped.
    /// @param limit how long it may take; what is not sent by then is dropped
    void stop(std::chrono::milliseconds limit = leavingLimit);

private:
    QJsonObject registrationHeader() const;
    QJsonObject requestHeader() const;
    QVariantMap customParameters() const;
    HttpTask registrationTask();
    HttpTask eventTask(const QJsonArray &events) const;
    bool onRegistered(int curlCode, const std::string &response);
    void storeRegistration(const QJsonObject &reply);

    const VolcTrackerConfig m_config;
    QString m_deviceId;
    /// Guards all that follows it but the manager, which guards itself.
    mutable std::mutex m_mutex;
    bool m_started = false;
    bool m_registered = false;
    bool m_stopped = false;
    QVariantMap m_header;
    QVariantMap m_user;
    QJsonArray m_pending;
    /// Last, so that its worker has ended before what the callbacks use goes.
    std::unique_ptr<HttpTaskManager> m_manager;
};
