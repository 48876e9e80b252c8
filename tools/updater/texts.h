// SPDX-License-Identifier: MIT
#pragma once

#include <QCoreApplication>

/// Reasons that the user is told by the program, once it runs again.
class Texts
{
    Q_DECLARE_TR_FUNCTIONS(Updater)
};
