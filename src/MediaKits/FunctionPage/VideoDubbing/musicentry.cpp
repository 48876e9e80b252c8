// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoDubbing/musicentry.h"

void mergeInto(QVariantMap &entry, const QVariantMap &values)
{
    for (auto value = values.cbegin(); value != values.cend(); ++value)
        entry.insert(value.key(), value.value());
}
