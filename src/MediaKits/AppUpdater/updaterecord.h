// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

/// What the service tells of the newest version.
struct UpdateRecord
{
    QString title;
    QString tip;
    /// Address of the package; empty when there is nothing newer.
    QString apkLink;
    /// Not 0 when the update is installed without asking.
    int forceUpgrade = 0;

    /// Reads {"code": 0, "data": {"result": {…}}}; nothing for any other answer.
    static std::optional<UpdateRecord> parse(const QByteArray &answer);
};
