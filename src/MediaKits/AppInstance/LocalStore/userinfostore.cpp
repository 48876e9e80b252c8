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
    const QJsonObject info{{tokenKey, m_token}, {idKey, m_id}};
    m_file.write({{userInfoKey, info}}, QJsonDocument::Compact);
}

UserInfoStore &UserInfoStore::instance()
{
    static UserInfoStore store;
    return store;
}
