// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <memory>

/// A folder that is held open: what is done through it reaches that folder, whatever has taken its
/// name since. Copies hold the same one.
class OpenFolder
{
public:
    /// Holds nothing.
    OpenFolder() = default;
    /// See openWorkPlace() for what is refused.
    static OpenFolder at(const QString &path);

    bool isOpen() const { return m_descriptor != nullptr; }
    /// A path that leads to it while it is held by this process; empty when nothing is held.
    QString path() const;
    /// The same for an entry of it.
    QString filePath(const QString &name) const;
    /// Deletes an entry and all that it holds, read-only folders too. Follows no links.
    bool remove(const QString &name) const;

private:
    std::shared_ptr<const int> m_descriptor; ///< null for none
};

/// Makes a folder, with its parents, that is this user's alone (mode 0700), or makes the one that
/// is there so. Where a file system keeps no owners, any folder will do.
/// @return false when there can't be such a folder: a link, a file, or another user's folder is in
/// the way
bool makePrivateFolder(const QString &path);

/// This user's numeric id.
QString userNumber();
