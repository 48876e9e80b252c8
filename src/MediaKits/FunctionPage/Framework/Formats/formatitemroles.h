// SPDX-License-Identifier: MIT
#pragma once

#include <Qt>

/// Data of the rows of the format dialog's lists.
enum FormatItemRole {
    /// quint32: the category in the list of categories, else the preset.
    FormatIdRole = Qt::UserRole + 2,
    /// QSharedPointer<EncParam> in the list of presets, else QSharedPointer<VADisplayCategory>.
    FormatRecordRole = Qt::UserRole + 3,
    /// QSharedPointer<EncParam>, in the recent list.
    RecentPresetRole = Qt::UserRole + 4,
    /// QSize, in the list of presets: the size of pictures whose preset has none.
    OpenSizeRole = Qt::UserRole + 5,
};
