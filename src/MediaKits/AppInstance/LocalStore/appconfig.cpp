// SPDX-License-Identifier: MIT
#include "MediaKits/AppInstance/LocalStore/appconfig.h"

#include "MediaKits/AppInstance/LocalStore/appdirs.h"

#include <QFileInfo>
#include <QRegularExpression>
#include <QSettings>
#include <QStringList>
#include <QTextCodec>

namespace {

enum class Reading { Text, BaseName };

struct ConfigRow
{
    QString AppConfig::*field;
    const char *key;
    const char *defaultText;
    Reading reading;
};

constexpr ConfigRow configRows[] = {
    {&AppConfig::store, "App/store", "", Reading::Text},
    {&AppConfig::lock, "App/lock", "Lock_Morvane", Reading::Text},
    {&AppConfig::installer, "App/installer", "", Reading::BaseName},
    {&AppConfig::package, "App/package", "", Reading::BaseName},
    {&AppConfig::oaid, "App/oaid", "", Reading::Text},
    {&AppConfig::pointCode, "App/pointCode", "", Reading::Text},
    {&AppConfig::om, "App/om", "", Reading::Text},
    {&AppConfig::qhclickid, "App/qhclickid", "", Reading::Text},
    {&AppConfig::serviceCollector, "Service/collector", "", Reading::Text},
    {&AppConfig::serviceEvents, "Service/events", "", Reading::Text},
    {&AppConfig::serviceMarketing, "Service/marketing", "", Reading::Text},
    {&AppConfig::serviceUpdate, "Service/update", "", Reading::Text},
    {&AppConfig::serviceUpdateVerify, "Service/updateVerify", "on", Reading::Text},
    {&AppConfig::serviceConfiguration, "Service/configuration", "", Reading::Text},
    {&AppConfig::serviceConfigurationVerify, "Service/configurationVerify", "on", Reading::Text},
    {&AppConfig::serviceLoginUnchecked, "Service/loginUnchecked", "", Reading::Text},
    {&AppConfig::serviceUser, "Service/user", "", Reading::Text},
    {&AppConfig::serviceAppKey, "Service/appKey", "", Reading::Text},
    {&AppConfig::contactSite, "Contact/site", "", Reading::Text},
    {&AppConfig::contactNumber, "Contact/number", "", Reading::Text},
    {&AppConfig::contactPhone, "Contact/phone", "", Reading::Text},
    {&AppConfig::contactPicture, "Contact/picture", "", Reading::Text},
};

// In the order in which they are looked for.
constexpr const char *channelSeparators[] = {"_#", "__", "_-", "_!", "_.", "_'", "_-", "---", "@"};

// An unquoted text with commas comes as a list.
QString textOf(const QSettings &settings, const ConfigRow &row)
{
    const QVariant value =
        settings.value(QLatin1String(row.key), QString(QLatin1String(row.defaultText)));
    return value.toStringList().join(QLatin1Char(','));
}

// The installer may have noted a path of another system.
QString baseName(QString path)
{
    path.replace(QLatin1Char('\\'), QLatin1Char('/'));
    return QFileInfo(path).completeBaseName();
}

// "setup_#web(2)" was downloaded from the channel "web"; "(2)" is a browser's mark on a second
// copy.
QString channelOf(const QString &name)
{
    static const QRegularExpression copyMarks(QStringLiteral("(\\(\\d+\\))+"));
    for (const char *text : channelSeparators) {
        const QLatin1String separator(text);
        const int at = name.indexOf(separator);
        if (at >= 0)
            return name.mid(at + separator.size()).remove(copyMarks).trimmed();
    }
    return {};
}

QString storeOf(const AppConfig &config)
{
    QString channel = channelOf(config.installer);
    if (channel.isEmpty())
        channel = channelOf(config.package);
    return channel.isEmpty() ? QStringLiteral("other") : QStringLiteral("other_") + channel;
}

} // namespace

AppConfig::AppConfig(const QString &iniPath)
{
    QSettings settings(iniPath, QSettings::IniFormat);
    settings.setIniCodec(QTextCodec::codecForLocale());
    for (const ConfigRow &row : configRows) {
        const QString text = textOf(settings, row);
        this->*row.field = row.reading == Reading::BaseName ? baseName(text) : text;
    }
    if (installer.isEmpty())
        installer = package;
    if (store.isEmpty())
        store = storeOf(*this);
}

const AppConfig &AppConfig::instance()
{
    static const AppConfig config(appDir() + QStringLiteral("/main.ini"));
    return config;
}
