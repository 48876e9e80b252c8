// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// A folder with a program in it, which another one takes the place of. Whatever ends this process
/// and whenever, the folder holds either all of the old or all of the new.
class Installation
{
public:
    /// @param folder absolute
    explicit Installation(const QString &folder);

    /// Unpacks a genuine package beside the folder and brings along what isn't of a version: the
    /// settings, links to tools of the system, files of the user.
    /// @param program absolute path in the folder; the new one has to have it, too
    /// @return the reason of a failure, which leaves nothing behind; otherwise empty
    /// A package that would fail again is unfit.
    QString prepare(const QString &package, const QString &program);

    /// The one of two versions' same program that isn't in its place.
    /// @param program as for prepare()
    QString otherProgram(const QString &program) const;

    /// Lets old and new change places, at first and, by a second call, back.
    QString exchange();

    /// Whether an update was killed before the new one has started once.
    bool isOnTrial() const;
    /// Ends that: the new one stays.
    void keep();

    /// Removes the one that isn't in place.
    void tidy();

    bool isPackageUnfit() const { return m_isPackageUnfit; }

    /// Path of the file that a new program makes to tell that it runs.
    QString startedMark() const;

private:
    QString unpack(const QString &package);
    QString checkPrograms(const QString &program);
    QString bringOld() const;
    QString newFolder() const;

    const QString m_folder;
    const QString m_work;
    bool m_isPackageUnfit = false;
};
