// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QVariantMap>

/// Writer of application manifests.
class ManifestConfig
{
public:
    /// Changes elements of "application/windowsSettings" in an XML manifest. Elements that the
    /// manifest lacks aren't added, and a manifest without that section stays as it is. Errors
    /// are only logged; the file is either replaced as a whole or left alone.
    /// @param path of the manifest
    /// @param settings element names to values
    static void configWindowsSettings(const QString &path, const QVariantMap &settings);
};
