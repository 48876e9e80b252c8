// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

/// What the program that gives way to its update tells.
struct UpdaterArguments
{
    QString package;       ///< path of the package
    QString installFolder; ///< where the program lies
    QString lock;          ///< the product code, which names the locks to wait for
    QString program;       ///< what is started again; lies in the folder

    /// Reads "-downloadurl=file:///…", "-downloadscale=…", "-installpath=…", "-lock=…" and
    /// "-startup=…", in any order. Nothing is fetched here, so the scale of a download's progress
    /// has no effect.
    /// @param error set when one is missing, comes twice, is unknown or makes no sense
    static UpdaterArguments parse(const QStringList &words, QString &error);
};
