// SPDX-License-Identifier: MIT
#pragma once

#include <QSettings>
#include <QVariant>

/// The settings in app.ini. QSettings writes the file by itself, at the latest when this object
/// is destroyed. A file that isn't one, or was understood in part, is set aside before.
class AppIni
{
public:
    enum class Key {
        /// Time of the first start, ms since the epoch; 0 when it isn't known.
        InstallTime,
        UpdateRun,
        UpdatePackage,
        UpdateIsForce,
        /// Address of the package that could not be installed without being asked for.
        UpdateFailedLink,
        PreviewShowWhenAdded,
        /// 0 to 200
        PreviewVolume,
        IsExitTips,
        /// 0 to the tray, 1 out of the program
        ExitMode,
        /// Of the main window when it is neither maximized nor minimized; empty at first.
        WindowPlace,
        WindowIsMaximized,
    };

    AppIni();
    Q_DISABLE_COPY(AppIni)

    static AppIni &instance();

    /// Whether the file holds the key.
    bool contains(Key key) const;
    /// The stored value in the type of the key's default, or that default when nothing of that
    /// type is stored.
    QVariant value(Key key) const;
    void setValue(Key key, const QVariant &value);

private:
    QSettings m_settings;
    bool m_holdsMore = false; ///< the file, than was understood
};
