// SPDX-License-Identifier: MIT
#pragma once

#include <QJsonObject>
#include <QPointer>

#include <functional>

class QNetworkAccessManager;
class QNetworkReply;
class QNetworkRequest;

/// GET requests to a service that answers {"code": 0, "data": {…}}. The connection is made for the
/// first request and goes with the application object at the latest.
class ServiceRequest
{
public:
    /// Gets the whole answer and the transport's error, empty in its absence.
    using Handler = std::function<void(const QJsonObject &answer, const QString &error)>;

    ServiceRequest() = default;
    ~ServiceRequest();
    Q_DISABLE_COPY(ServiceRequest)

    /// Asks, and drops an earlier question that is still open. Without an application object
    /// nothing happens.
    void get(const QNetworkRequest &request, const Handler &handler);
    /// Drops the open question; its handler is not called any more.
    void cancel();

    /// The answer's "data" when its "code" is the number 0; empty otherwise.
    /// @param accepted set to whether there is such an object, be it an empty one
    static QJsonObject acceptedData(const QJsonObject &answer, bool &accepted);

private:
    QPointer<QNetworkAccessManager> m_network;
    QPointer<QNetworkReply> m_reply;
};
