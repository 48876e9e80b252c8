// SPDX-License-Identifier: MIT
#include "MediaKits/AppUpdater/Package/updatekey.h"

QByteArray updateKey()
{
    return QByteArray::fromBase64(MORVANE_UPDATE_KEY);
}
