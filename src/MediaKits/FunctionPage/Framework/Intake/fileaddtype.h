// SPDX-License-Identifier: MIT
#pragma once

#include <QMetaType>

/// How files came to a page.
enum class FileAddType {
    Dragged = 0,
    AddFile = 1,
    AddFolder = 2,
};

Q_DECLARE_METATYPE(FileAddType)
