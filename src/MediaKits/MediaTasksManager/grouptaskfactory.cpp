// SPDX-License-Identifier: MIT
#include "MediaKits/MediaTasksManager/grouptaskfactory.h"

#include "MediaKits/MediaTasksManager/complexconverttask.h"
#include "MediaKits/MediaTasksManager/concattask.h"
#include "MediaKits/MediaTasksManager/mutiimagetask.h"

MediaTask *createGroupTask(int kind)
{
    switch (kind) {
    case ComplexConvertKind:
        return new ComplexConvertTask(QStringLiteral("ComplexConvertTask"), QString());
    case ConcatKind:
        return new ConcatTask(QStringLiteral("ConcatTask"), QString());
    case MutiImageKind:
        return new MutiImageTask(QStringLiteral("MutiImage"), QString());
    default:
        return nullptr;
    }
}
