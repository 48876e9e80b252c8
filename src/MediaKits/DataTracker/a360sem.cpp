// SPDX-License-Identifier: MIT
#include "MediaKits/DataTracker/a360sem.h"

#include "MediaKits/AppInstance/LocalStore/appconfig.h"
#include "MediaKits/DataTracker/trackershared.h"
#include "MediaKits/Logger/logger.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QTimer>

namespace {
constexpr char reportPath[] = "/api/point/postDataTo360Api";
// As for the other trackers' requests.
constexpr int timeLimitMs = 5000;
} // namespace

A360Sem::A360Sem(const A360SemConfig &config) : m_config(config) {}

A360Sem::~A360Sem()
{
    delete m_network;
}

A360Sem &A360Sem::instance()
{
    static A360Sem sem([]() {
        const AppConfig &ini = AppConfig::instance();
        return A360SemConfig{ini.serviceMarketing, ini.om, ini.qhclickid};
    }());
    return sem;
}

void A360Sem::report(const QString &event)
{
    QCoreApplication *application = QCoreApplication::instance();
    if (m_config.host.isEmpty() || m_config.channel != QLatin1String("360") ||
        application == nullptr)
        return;
    if (!m_network)
        m_network = new QNetworkAccessManager(application);

    QNetworkRequest request(QUrl(QString::fromStdString(serviceUrl(m_config.host, reportPath))));
    request.setHeader(QNetworkRequest::ContentTypeHeader,
                      QStringLiteral("application/x-www-form-urlencoded"));
    request.setTransferTimeout(timeLimitMs);
    const QString text = QStringLiteral("fromChanncel=") + m_config.channel +
                         QStringLiteral("&qhclick=") + m_config.clickId +
                         QStringLiteral("&event=") + event;
    QNetworkReply *reply = m_network->post(request, text.toUtf8());
    ++m_open;
    connect(reply, &QNetworkReply::finished, this, [this, reply]() {
        --m_open;
        CLOG(INFO, "default") << "A360Sem: " << QString::fromUtf8(reply->readAll());
        if (reply->error() != QNetworkReply::NoError)
            CLOG(ERROR, "default") << "A360Sem: " << reply->errorString();
        reply->deleteLater();
        emit answered();
    });
}

void A360Sem::finish(std::chrono::milliseconds limit)
{
    QEventLoop loop;
    QTimer timer;
    timer.setSingleShot(true);
    connect(&timer, &QTimer::timeout, &loop, &QEventLoop::quit);
    connect(this, &A360Sem::answered, &loop, &QEventLoop::quit);
    timer.start(limit);
    while (m_open > 0 && timer.isActive())
        loop.exec();
}
