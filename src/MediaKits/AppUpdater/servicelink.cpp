// SPDX-License-Identifier: MIT
#include "MediaKits/AppUpdater/servicelink.h"

#include <QSslConfiguration>

bool isServiceLink(const QUrl &address)
{
    return address.isValid() && !address.host().isEmpty() &&
           (address.scheme() == QLatin1String("https") ||
            address.scheme() == QLatin1String("http"));
}

QNetworkRequest serviceRequest(const QUrl &address, bool verifiesPeer, int stallMs)
{
    QNetworkRequest request(address);
    request.setTransferTimeout(stallMs);
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                         QNetworkRequest::ManualRedirectPolicy);
    // Also for http, which may lead on to https.
    QSslConfiguration tls = QSslConfiguration::defaultConfiguration();
    tls.setProtocol(QSsl::TlsV1_2OrLater);
    if (!verifiesPeer)
        tls.setPeerVerifyMode(QSslSocket::VerifyNone);
    request.setSslConfiguration(tls);
    return request;
}
