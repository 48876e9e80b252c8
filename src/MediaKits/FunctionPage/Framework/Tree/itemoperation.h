// SPDX-License-Identifier: MIT
#pragma once

#include <QMetaType>

/// What the row of a source asks of the tree that holds it.
enum class ItemOperation {
    AddFragments = 0,
    Delete = 1,
};

Q_DECLARE_METATYPE(ItemOperation)
