// SPDX-License-Identifier: MIT
#pragma once

#include "http/httptaskmanager.h"
#include "MediaKits/DataTracker/trackershared.h"

#include <QJsonObject>
#include <QList>
#include <QPointer>
#include <QTimer>
#include <QVariantMap>

#include <atomic>
#include <memory>
#include <mutex>

struct OskEvent;

/// Where and as what the collector is spoken to.
struct OskTrackerConfig
{
    /// An empty host turns the tracker off: it keeps no events, has no thread and no connection.
    QString host;
    int flushIntervalMs = 15000;
    QString oaid;
    QString marketName;
};

/// Collects numbered usage events and posts them in batches, on a worker thread. No operation but
/// stop(), trackCrash() and the destructor waits for the network, and none reports errors.
class OskDataTracker
{
public:
    explicit OskDataTracker(const OskTrackerConfig &config);
    /// As stop().
    ~OskDataTracker();
    Q_DISABLE_COPY(OskDataTracker)

    /// The one that is configured by main.ini.
    static OskDataTracker &instance();

    /// Queues an event of the table; an unknown number does nothing.
    /// @param params go along as strings
    void trackTableEvent(int id, const QVariantMap &params = {});
    void trackInstall();
    void trackStart();
    void trackLogin();
    /// Sends the crash with all that is queued, then stop(). May be called on any thread.
    void trackCrash();

    /// Goes with every later event; empty when nobody is logged in.
    void setUserId(const QString &userId);
    QString userId() const;

    /// Hands on the queued events and returns when they have been sent or have failed. Later
    /// events are dropped.
    /// @param limit how long it may take; what is not sent by then is dropped
    void stop(std::chrono::milliseconds limit = leavingLimit);

private:
    bool isActive() const { return m_manager && !m_stopped; }
    void trackDirectEvent(const char *type, const char *code, const char *name);
    /// @param carried values beside the event's own ones
    QJsonObject eventObject(const OskEvent &event, QJsonObject carried) const;
    void append(const QJsonObject &event);
    void ensureFlushTimer();
    void flush(bool force);
    void post(const QList<QJsonObject> &events);
    QJsonObject commonObject() const;

    OskTrackerConfig m_config;
    QString m_deviceId;
    QString m_systemVersion;
    /// Guards the pending events and the user id: a crash comes on any thread.
    mutable std::mutex m_mutex;
    QList<QJsonObject> m_pending;
    QString m_userId;
    std::atomic<bool> m_stopped{false};
    /// Child of the application object.
    QPointer<QTimer> m_flushTimer;
    std::unique_ptr<HttpTaskManager> m_manager;
};
