// SPDX-License-Identifier: MIT
#include "browser/userinfomanager.h"

#include "MediaKits/AppInstance/LocalStore/appconfig.h"
#include "MediaKits/AppInstance/LocalStore/userinfostore.h"
#include "MediaKits/DataTracker/oskdatatracker.h"
#include "MediaKits/DataTracker/trackershared.h"
#include "MediaKits/DataTracker/volcdatatracker.h"
#include "MediaKits/Logger/logger.h"

#include <QJsonDocument>
#include <QNetworkRequest>

namespace {

constexpr char userPath[] = "/api/auth/me";

QString userIdKey()
{
    return QStringLiteral("user_unique_id");
}

// Empty for a user without one.
QString idIn(const QJsonObject &user)
{
    const QJsonValue id = user.value(QLatin1String("id"));
    // Long numbers lose digits as a double.
    return id.isDouble() ? QString::number(id.toVariant().toLongLong()) : id.toString();
}

} // namespace

UserInfoManager::UserInfoManager(const QString &host, UserInfoStore &store)
    : m_host(host), m_store(store), m_token(store.token()), m_id(store.id())
{
    qRegisterMetaType<UserInfoManager::LoginState>();
}

UserInfoManager &UserInfoManager::instance()
{
    static UserInfoManager manager(AppConfig::instance().serviceUser, UserInfoStore::instance());
    return manager;
}

void UserInfoManager::setUserInfoJson(const QString &text)
{
    const QJsonDocument document = QJsonDocument::fromJson(text.toUtf8());
    if (!document.isObject())
        return;
    // Its answer would be about the user before this one.
    m_request.cancel();
    apply(document.object());
}

void UserInfoManager::markLoggedIn()
{
    if (m_loggedIn)
        return;
    m_loggedIn = true;
    emit loginStateChanged(LoggedIn);
}

void UserInfoManager::logout()
{
    if (!m_loggedIn)
        return;
    // Its answer would log the user in again.
    m_request.cancel();
    VolcDataTracker::instance().event(QStringLiteral("logout"), {{userIdKey(), m_id}});
    OskDataTracker::instance().setUserId({});
    m_store.setToken({});
    for (QString *field : {&m_token, &m_id, &m_name, &m_mobile, &m_avatar})
        field->clear();
    m_loggedIn = false;
    emit userInfoChanged();
    emit loginStateChanged(LoggedOut);
}

void UserInfoManager::refreshUserInfo()
{
    if (m_host.isEmpty())
        return;
    QNetworkRequest request(QUrl(QString::fromStdString(serviceUrl(m_host, userPath))));
    request.setRawHeader("Authorization", m_store.token().toUtf8());
    m_request.get(request, [this](const QJsonObject &answer, const QString &error) {
        handleAnswer(answer, error);
    });
}

void UserInfoManager::apply(const QJsonObject &user)
{
    const QJsonValue token = user.value(QLatin1String("token"));
    if (token.isString() && token.toString() != m_token) {
        m_token = token.toString();
        m_store.setToken(m_token);
    }
    const QString id = idIn(user);
    if (!id.isEmpty() && id != m_id) {
        m_id = id;
        m_store.setId(id);
        VolcDataTracker::instance().setUser({{userIdKey(), id}});
        OskDataTracker::instance().setUserId(id);
    }
    m_name = user.value(QLatin1String("name")).toString();
    m_mobile = user.value(QLatin1String("mobile")).toString();
    m_avatar = user.value(QLatin1String("avatar")).toString();
    emit userInfoChanged();
}

void UserInfoManager::handleAnswer(const QJsonObject &answer, const QString &error)
{
    bool accepted = false;
    const QJsonObject user = ServiceRequest::acceptedData(answer, accepted);
    if (!error.isEmpty()) {
        CLOG(ERROR, "default") << "用户信息获取失败 " << error;
        accepted = false;
    }
    if (!accepted) {
        markLoggedOut();
        return;
    }
    apply(user);
    markLoggedIn();
}

void UserInfoManager::markLoggedOut()
{
    if (!m_loggedIn)
        return;
    m_loggedIn = false;
    emit loginStateChanged(LoggedOut);
}
