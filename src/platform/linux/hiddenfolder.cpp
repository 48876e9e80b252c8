// SPDX-License-Identifier: MIT
#include "platform/hiddenfolder.h"

void hideFolder(const QString &path)
{
    Q_UNUSED(path)
}
