// SPDX-License-Identifier: MIT
#include "MediaKits/AppInstance/LocalStore/appini.h"

#include "MediaKits/AppInstance/LocalStore/appdirs.h"
#include "MediaKits/AppInstance/LocalStore/setaside.h"

#include <QMap>
#include <QRect>

#include <utility>

namespace {

struct IniRow
{
    QString name;
    QVariant defaultValue;
};

const IniRow &rowOf(AppIni::Key key)
{
    using Key = AppIni::Key;
    static const QMap<Key, IniRow> rows = {
        {Key::InstallTime, {QStringLiteral("Init/InstallTime"), qint64(0)}},
        {Key::UpdateRun, {QStringLiteral("Update/run"), false}},
        {Key::UpdatePackage, {QStringLiteral("Update/package"), QString()}},
        {Key::UpdateIsForce, {QStringLiteral("Update/isforce"), false}},
        {Key::UpdateFailedLink, {QStringLiteral("Update/failed"), QString()}},
        {Key::PreviewShowWhenAdded, {QStringLiteral("Preview/ShowWhenAdded"), true}},
        {Key::PreviewVolume, {QStringLiteral("Preview/Volume"), 10}},
        {Key::IsExitTips, {QStringLiteral("App/IsExitTips"), true}},
        {Key::ExitMode, {QStringLiteral("App/ExitMode"), 0}},
        {Key::WindowPlace, {QStringLiteral("Window/Place"), QRect()}},
        {Key::WindowIsMaximized, {QStringLiteral("Window/IsMaximized"), false}},
    };
    return *rows.constFind(key);
}

} // namespace

AppIni::AppIni()
    : m_settings(clearedIniPath(dataDir() + QStringLiteral("/app.ini")), QSettings::IniFormat)
{
    // Sections are understood when they are asked for.
    m_settings.allKeys();
    m_holdsMore = m_settings.status() == QSettings::FormatError;
}

AppIni &AppIni::instance()
{
    static AppIni ini;
    return ini;
}

bool AppIni::contains(Key key) const
{
    return m_settings.contains(rowOf(key).name);
}

QVariant AppIni::value(Key key) const
{
    const IniRow &row = rowOf(key);
    QVariant value = m_settings.value(row.name, row.defaultValue);
    return value.convert(row.defaultValue.userType()) ? value : row.defaultValue;
}

void AppIni::setValue(Key key, const QVariant &value)
{
    // Lines that weren't understood would go.
    if (std::exchange(m_holdsMore, false))
        copyAside(m_settings.fileName());
    m_settings.setValue(rowOf(key).name, value);
}
