// SPDX-License-Identifier: MIT
#pragma once

#include "screencap/recordingsaver.h"

/// Makes files of what recordings have left that were cut off by a crash, one after the other.
/// Recordings of this and of other running programs are left alone.
class RecordingRepair : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// Does nothing while it is at it.
    void start();
    bool isRunning() const { return m_saver != nullptr; }
    /// Ends the work; what isn't done stays for the next start.
    void letGo();

signals:
    /// @param files that there are now; may be none
    void done(const QStringList &files);

private:
    void next();
    void onSaved();

    QStringList m_folders; // still to be looked at
    QStringList m_files;
    std::unique_ptr<RecordingSaver> m_saver;
};
