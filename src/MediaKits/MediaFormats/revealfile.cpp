// SPDX-License-Identifier: MIT
#include "MediaKits/MediaFormats/revealfile.h"

#include "platform/filemanager.h"

void revealInFileManager(const QString &path)
{
    if (!path.isEmpty())
        revealInDesktop(path);
}
