// SPDX-License-Identifier: MIT
#include "MediaKits/AppInstance/LocalStore/userinfostore.h"

#include "MediaKits/AppInstance/LocalStore/appdirs.h"

namespace {

const QLatin1String userInfoKey("userinfo");
const QLatin1String tokenKey("token");
const QLatin1String idKey("id");

} // namespace

UserInfoStore::UserInfoStore() : m_file(dataDir() + QStringLiteral("/UserInfo.json"))
{
    load();
}

void UserInfoStore::load()
{
    const QJsonObject info = m_file.read()[userInfoKey].toObject();
    m_token = info[tokenKey].toString();
    m_id = info[idKey].toString();
    m_file.compareWith(content());
}

UserInfoStore::~UserInfoStore()
{
    write();
}

void UserInfoStore::change(QString &value, const QString &to)
{
    if (value == to)
        return;
    value = to;
    write();
}

void UserInfoStore::write()
{
    m_file.write(content(), QJsonDocument::Compact);
}

QJsonObject UserInfoStore::content() const
{
    return {{userInfoKey, QJsonObject{{tokenKey, m_token}, {idKey, m_id}}}};
}

UserInfoStore &UserInfoStore::instance()
{
    static UserInfoStore store;
    return store;
}
