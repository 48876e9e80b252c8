// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoShot/shotthumbnails.h"

#include "MediaKits/AppInstance/LocalStore/appdirs.h"
#include "MediaKits/AppInstance/LocalStore/removedir.h"
#include "MediaKits/AppInstance/LocalStore/tempmarker.h"
#include "MediaKits/MediaTasksManager/shottask.h"

#include <QDir>
#include <QFile>
#include <QUuid>

namespace {

// The next one begins as soon as one has ended.
constexpr int intervalMs = 1;

QString newName()
{
    return QUuid::createUuid().toString(QUuid::WithoutBraces);
}

} // namespace

ShotThumbnails::ShotThumbnails(QObject *parent) : QObject(parent), m_manager(intervalMs, 1) {}

ShotThumbnails::~ShotThumbnails()
{
    m_manager.stopTimer();
    // The tools first, which may still be writing.
    qDeleteAll(findChildren<MediaTask *>(QString(), Qt::FindDirectChildrenOnly));
    if (m_folder.isEmpty())
        return;
    removeDirRecursively(m_folder);
    releaseWorkFolder(m_folder);
}

void ShotThumbnails::setSource(const QString &file, const QSharedPointer<MediaInfoData> &info,
                               int width)
{
    m_file = file;
    m_info = info;
    m_width = width;
}

QString ShotThumbnails::newFile()
{
    if (m_folder.isEmpty()) {
        m_folder = QDir(createTempMarkerDir(tempDir())).absoluteFilePath(newName());
        QDir().mkpath(m_folder);
        claimWorkFolder(m_folder);
    }
    return m_folder + QLatin1Char('/') + newName() + QLatin1String(".png");
}

void ShotThumbnails::request(int posMs, QObject *context,
                             const std::function<void(const QString &)> &done)
{
    const QString file = newFile();
    auto *task = new ShotTask({{QStringLiteral("inputUrl"), m_file},
                               {QStringLiteral("outputUrl"), file},
                               {QStringLiteral("pos"), posMs},
                               {QStringLiteral("width"), m_width}},
                              m_info);
    task->setParent(this);
    connect(task, &MediaTask::taskStateChanged, context, [=](MediaTask::State state) {
        if (MediaTask::isFinal(state))
            done(state == MediaTask::FINISHED ? file : QString());
    });
    connect(task, &MediaTask::taskStateChanged, this, [=](MediaTask::State state) {
        if (MediaTask::isFinal(state))
            task->deleteLater();
    });
    connect(context, &QObject::destroyed, task, &QObject::deleteLater);
    ++m_waiting;
    connect(task, &QObject::destroyed, this, [this, file] {
        QFile::remove(file);
        if (--m_waiting == 0)
            m_manager.stopTimer();
    });
    m_manager.addTask(task);
    m_manager.startTimer();
}
