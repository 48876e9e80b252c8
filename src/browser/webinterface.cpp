// SPDX-License-Identifier: MIT
#include "browser/webinterface.h"

#include "MediaKits/AppInstance/LocalStore/appconfig.h"
#include "MediaKits/DataTracker/trackershared.h"
#include "MediaKits/Logger/logger.h"

#include <QNetworkRequest>
#include <QSslConfiguration>

namespace {
constexpr char addressesPath[] = "/api/config/urls";
} // namespace

WebInterface::WebInterface(const QString &host, bool isVerified)
{
    if (!host.isEmpty())
        getInterface(host, isVerified);
}

WebInterface &WebInterface::instance()
{
    static WebInterface interface(AppConfig::instance().serviceConfiguration,
                                  AppConfig::instance().serviceConfigurationVerify !=
                                      QLatin1String("off"));
    return interface;
}

void WebInterface::getInterface(const QString &host, bool isVerified)
{
    const QString url = QString::fromStdString(serviceUrl(host, addressesPath));
    QNetworkRequest request{QUrl(url)};
    if (!isVerified && url.startsWith(QLatin1String("https"))) {
        QSslConfiguration tls = QSslConfiguration::defaultConfiguration();
        tls.setPeerVerifyMode(QSslSocket::VerifyNone);
        request.setSslConfiguration(tls);
    }
    m_request.get(request, [this](const QJsonObject &answer, const QString &error) {
        if (error.isEmpty())
            handleAnswer(answer);
        else
            CLOG(ERROR, "default") << "接口获取失败 " << error;
    });
}

void WebInterface::handleAnswer(const QJsonObject &answer)
{
    bool accepted = false;
    const QJsonValue web = ServiceRequest::acceptedData(answer, accepted)[QLatin1String("web")];
    if (web.isObject())
        m_loginUrl = web[QLatin1String("login")].toString();
}
