// SPDX-License-Identifier: MIT
#include "MediaKits/AppInstance/LocalStore/workfolder.h"

#include "MediaKits/AppInstance/LocalStore/appdirs.h"
#include "MediaKits/AppInstance/LocalStore/removedir.h"
#include "MediaKits/AppInstance/LocalStore/tempmarker.h"

#include <QDir>

WorkFolder::WorkFolder() : m_path(newWorkFolderPath(tempDir()))
{
    makeWorkFolder(m_path);
}

WorkFolder::~WorkFolder()
{
    removeDirRecursively(m_path);
    releaseWorkFolder(m_path);
}

QString WorkFolder::filePath(const QString &name) const
{
    return QDir(m_path).filePath(name);
}
