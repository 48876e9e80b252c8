// SPDX-License-Identifier: MIT
#pragma once

#include "browser/servicerequest.h"

#include <QObject>
#include <QString>

/// The addresses of the web pages that the configuration service gives out.
class WebInterface : public QObject
{
    Q_OBJECT

public:
    /// Asks the service at once.
    /// @param host as "https://host"; an empty one is never asked
    /// @param isVerified whether the service's certificate is checked
    explicit WebInterface(const QString &host, bool isVerified = true);

    /// The one that is configured by main.ini. Needs the application object.
    static WebInterface &instance();

    /// Address of the login page, empty until the service has answered.
    QString loginUrl() const { return m_loginUrl; }

private:
    void getInterface(const QString &host, bool isVerified);
    void handleAnswer(const QJsonObject &answer);

    QString m_loginUrl;
    ServiceRequest m_request;
};
