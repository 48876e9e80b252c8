// SPDX-License-Identifier: MIT
#pragma once

#include "browser/servicerequest.h"

#include <QObject>
#include <QString>

class UserInfoStore;

/// The user of the online service, and whether he is logged in. Token and id are kept across runs.
class UserInfoManager : public QObject
{
    Q_OBJECT

public:
    enum LoginState { LoggedIn = 1, LoggedOut = 2 };
    Q_ENUM(LoginState)

    /// @param host as "https://host"; an empty one is never asked
    /// @param store outlives this object
    UserInfoManager(const QString &host, UserInfoStore &store);

    /// The one that is configured by main.ini.
    static UserInfoManager &instance();

    QString name() const { return m_name; }
    QString mobile() const { return m_mobile; }
    /// Address of the user's picture.
    QString avatar() const { return m_avatar; }
    QString token() const { return m_token; }
    /// Also that of the last user, before anybody has logged in.
    QString id() const { return m_id; }
    bool isLoggedIn() const { return m_loggedIn; }

    /// Takes over the user that the login page tells of; what is no JSON object changes nothing.
    void setUserInfoJson(const QString &text);
    void markLoggedIn();
    void logout();
    /// Asks the service who the user is. The answer logs in or out.
    void refreshUserInfo();

signals:
    void loginStateChanged(UserInfoManager::LoginState state);
    void userInfoChanged();

private:
    void apply(const QJsonObject &user);
    void handleAnswer(const QJsonObject &answer, const QString &error);
    void markLoggedOut();

    const QString m_host;
    UserInfoStore &m_store;
    QString m_name;
    QString m_mobile;
    QString m_avatar;
    QString m_token;
    QString m_id;
    bool m_loggedIn = false;
    ServiceRequest m_request;
};
