// SPDX-License-Identifier: MIT
#include "platform/wordsize.h"

#include <QString>
#include <QSysInfo>

bool isWideSystem()
{
    // "x86_64", "arm64", "ia64" and their like: the kernel's word, not this program's.
    return QSysInfo::currentCpuArchitecture().contains(QLatin1String("64"));
}
