// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/AppInstance/LocalStore/jsonfile.h"

#include <QString>

/// The saved login in UserInfo.json: read by the constructor, written at each change, so that a
/// crash loses no login, and by the destructor. Both values are empty when nobody is logged in.
class UserInfoStore
{
public:
    UserInfoStore();
    ~UserInfoStore();
    Q_DISABLE_COPY(UserInfoStore)

    static UserInfoStore &instance();

    QString id() const { return m_id; }
    void setId(const QString &id) { change(m_id, id); }
    QString token() const { return m_token; }
    void setToken(const QString &token) { change(m_token, token); }

    /// Reads the file anew.
    void load();

private:
    void change(QString &value, const QString &to);
    void write();
    QJsonObject content() const;

    JsonFile m_file;
    QString m_id;
    QString m_token;
};
