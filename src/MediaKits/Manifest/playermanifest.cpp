// SPDX-License-Identifier: MIT
#include "MediaKits/Manifest/playermanifest.h"

#include "MediaKits/Manifest/manifestconfig.h"

void configPlayerManifest(PlayerScaling scaling, const QString &path)
{
    const bool aware = scaling == PlayerScaling::ByPlayer;
    const QVariantMap settings{
        {QStringLiteral("dpiAware"), aware ? QStringLiteral("true") : QStringLiteral("false")},
        {QStringLiteral("dpiAwareness"),
         aware ? QStringLiteral("system") : QStringLiteral("unaware")},
    };
    ManifestConfig::configWindowsSettings(path, settings);
}
