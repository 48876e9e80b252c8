// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

#include <memory>

/// The hidden folder in which a recording grows, in the marker directory of its output folder. What
/// is in it outlives the process until remove() is called. While the object lives, no other process
/// takes the folder for a left one.
class RecordingFolder
{
public:
    /// @param target path that the finished file is to have
    /// @return null when nothing can be written there
    static std::unique_ptr<RecordingFolder> create(const QString &target);
    /// A folder that a dead process has left; null when it is in use.
    static std::unique_ptr<RecordingFolder> takeOver(const QString &path);
    ~RecordingFolder();
    RecordingFolder(const RecordingFolder &) = delete;
    RecordingFolder &operator=(const RecordingFolder &) = delete;

    /// Path for the recording's next piece, which is there once it has been recorded.
    QString newPiece();
    /// The pieces that are there, in order.
    QStringList pieces() const;
    QString filePath(const QString &name) const;
    QString target() const { return m_target; }
    void remove();

private:
    explicit RecordingFolder(const QString &path);

    const QString m_path;
    QString m_target;
    int m_count = 0;
};
