// SPDX-License-Identifier: MIT
#include "MediaKits/MediaTasksManager/trialconversion.h"

#include "MediaKits/AppInstance/LocalStore/workfolder.h"
#include "MediaKits/MediaTasksManager/grouptaskfactory.h"

#include <QFile>

TrialConversion::TrialConversion(QObject *parent) : QObject(parent) {}

TrialConversion::~TrialConversion()
{
    stop();
}

void TrialConversion::start(const ConvertTaskParam &film, const TimeSpan &part)
{
    stop();
    if (m_folder)
        QFile::remove(file());
    else
        m_folder = std::make_unique<WorkFolder>();
    m_format = film.format;
    auto *param = new ConvertTaskParam(film);
    param->timeRange = QSharedPointer<TimeSpan>::create(part);
    param->outputDir = m_folder->path();
    // A number of its own: the one that was stopped may still have its file open.
    param->outputName = QString::number(++m_number);
    m_task.reset(createGroupTask(ComplexConvertKind));
    m_task->setParam(param);
    // Queued, as it may fail while it is started, and who is told may start another; what is told
    // late of one that was stopped says nothing of the present one.
    connect(
        m_task.get(), &MediaTask::taskStateChanged, this,
        [this] {
            if (m_task && MediaTask::isFinal(m_task->state()))
                end();
        },
        Qt::QueuedConnection);
    m_task->start();
}

void TrialConversion::stop()
{
    if (m_task)
        m_task->disconnect(this);
    m_task.reset();
}

QString TrialConversion::file() const
{
    return m_folder->filePath(QStringLiteral("%1.%2").arg(m_number).arg(m_format));
}

void TrialConversion::end()
{
    const std::unique_ptr<MediaTask> ended = std::move(m_task);
    if (ended->state() == MediaTask::FINISHED)
        emit made();
    else if (ended->state() == MediaTask::ERROR)
        emit failed(ended->failure().cause);
}
