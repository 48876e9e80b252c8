// SPDX-License-Identifier: MIT
#include "browser/servicerequest.h"

#include <QCoreApplication>
#include <QJsonDocument>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>

ServiceRequest::~ServiceRequest()
{
    cancel();
    delete m_network;
}

void ServiceRequest::get(const QNetworkRequest &request, const Handler &handler)
{
    QCoreApplication *application = QCoreApplication::instance();
    if (application == nullptr)
        return;
    if (!m_network)
        m_network = new QNetworkAccessManager(application);
    cancel();

    QNetworkReply *reply = m_network->get(request);
    m_reply = reply;
    QObject::connect(reply, &QNetworkReply::finished, reply, [reply, handler]() {
        reply->deleteLater();
        const bool failed = reply->error() != QNetworkReply::NoError;
        handler(QJsonDocument::fromJson(reply->readAll()).object(),
                failed ? reply->errorString() : QString());
    });
}

void ServiceRequest::cancel()
{
    if (!m_reply)
        return;
    m_reply->disconnect();
    m_reply->abort();
    m_reply->deleteLater();
    m_reply.clear();
}

QJsonObject ServiceRequest::acceptedData(const QJsonObject &answer, bool &accepted)
{
    const QJsonValue code = answer.value(QLatin1String("code"));
    const QJsonValue data = answer.value(QLatin1String("data"));
    accepted = code.isDouble() && code.toDouble() == 0.0 && data.isObject();
    return accepted ? data.toObject() : QJsonObject();
}
