// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// A folder of its own below tempDir() for files that go with the object. One that a crash leaves
/// is swept like every work folder.
class WorkFolder
{
public:
    WorkFolder();
    ~WorkFolder();
    WorkFolder(const WorkFolder &) = delete;
    WorkFolder &operator=(const WorkFolder &) = delete;

    QString path() const { return m_path; }
    QString filePath(const QString &name) const;

private:
    const QString m_path;
};
