// SPDX-License-Identifier: MIT
#pragma once

#include <QLatin1String>
#include <QVector>

class Stage;

/// One picture: its file's base name, and what brings the windows into the state that it shows.
struct Shot
{
    QString name;
    void (*prepare)(Stage &stage);
    /// Whether no later picture needs what it leaves behind.
    bool standsAlone = false;
};

/// All pictures, in the order in which they have to be made.
const QVector<Shot> &allShots();
