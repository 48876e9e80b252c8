// SPDX-License-Identifier: MIT
#include "screencap/recordingrepair.h"

#include "MediaKits/AppInstance/LocalStore/tempmarker.h"

void RecordingRepair::start()
{
    if (isRunning())
        return;
    m_folders = recordingFolders();
    m_files.clear();
    next();
}

void RecordingRepair::letGo()
{
    m_folders.clear();
    m_saver.reset();
}

void RecordingRepair::next()
{
    while (!m_folders.isEmpty()) {
        auto folder = RecordingFolder::takeOver(m_folders.takeFirst());
        if (!folder)
            continue;
        m_saver = std::make_unique<RecordingSaver>(std::move(folder));
        connect(m_saver.get(), &RecordingSaver::done, this, &RecordingRepair::onSaved);
        m_saver->start();
        return;
    }
    emit done(m_files);
}

void RecordingRepair::onSaved()
{
    m_files += m_saver->files();
    m_saver.release()->deleteLater();
    next();
}
