// SPDX-License-Identifier: MIT
#include "browser/pagecalls.h"

#include "MediaKits/AppInstance/LocalStore/appconfig.h"
#include "MediaKits/AppInstance/LocalStore/appdirs.h"
#include "MediaKits/DataTracker/volcdatatracker.h"
#include "MediaKits/Logger/logger.h"
#include "platform/computerinfo.h"

#include <QDesktopServices>
#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QUrl>

namespace {

// As it stands between the quotes of a JSON string.
QString jsonInside(const QString &text)
{
    const QByteArray list = QJsonDocument(QJsonArray{text}).toJson(QJsonDocument::Compact);
    const QString quoted = QString::fromUtf8(list);
    return quoted.mid(2, quoted.size() - 4);
}

} // namespace

QString deviceText()
{
    return QStringLiteral("{\"deviceId\":\"%1\",\"deviceName\":\"%2\",\"appType\":\"%3\","
                          "\"code\":%4,\"channel\":\"%5\"}")
        .arg(jsonInside(Win32Env::ComputerInfo::getDeviceID()),
             jsonInside(QDir(QDir::homePath()).dirName()), platformName(),
             QString::number(appNumber()), jsonInside(AppConfig::instance().store));
}

QVariant openNewWindow(const QVariantList &arguments)
{
    const QUrl address(arguments.value(0).toString(), QUrl::StrictMode);
    const bool isOfWeb =
        address.scheme() == QLatin1String("http") || address.scheme() == QLatin1String("https");
    if (isOfWeb && !address.host().isEmpty())
        QDesktopServices::openUrl(address);
    else
        CLOG(WARNING, "default") << "登录页面的地址不予打开";
    return {};
}

QVariant setMarkPoint(const QVariantList &arguments)
{
    if (arguments.size() >= 2)
        VolcDataTracker::instance().eventFromJson(arguments[0].toString(), arguments[1].toString());
    return {};
}
