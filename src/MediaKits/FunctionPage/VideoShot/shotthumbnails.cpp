// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoShot/shotthumbnails.h"

#include "MediaKits/MediaTasksManager/shottask.h"

#include <QFile>
#include <QUuid>

namespace {

// The next one begins as soon as one has ended.
constexpr int intervalMs = 1;

} // namespace

ShotThumbnails::ShotThumbnails(QObject *parent) : QObject(parent), m_manager(intervalMs, 1) {}

ShotThumbnails::~ShotThumbnails()
{
    m_manager.stopTimer();
    // The tools first, which may still be writing.
    qDeleteAll(findChildren<MediaTask *>(QString(), Qt::FindDirectChildrenOnly));
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
    if (!m_folder)
        m_folder = std::make_unique<WorkFolder>();
    return m_folder->filePath(QUuid::createUuid().toString(QUuid::WithoutBraces) +
                              QLatin1String(".png"));
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
