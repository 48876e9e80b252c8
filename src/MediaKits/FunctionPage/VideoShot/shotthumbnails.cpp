// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoShot/shotthumbnails.h"

#include "MediaKits/MediaTasksManager/shottask.h"

#include <QFile>
#include <QUuid>

#include <algorithm>
#include <utility>

namespace {

// The next one begins as soon as one has ended.
constexpr int intervalMs = 1;

} // namespace

ShotThumbnails::ShotThumbnails(QObject *parent) : QObject(parent), m_manager(intervalMs, 1) {}

ShotThumbnails::~ShotThumbnails()
{
    m_manager.stopTimer();
    m_wishes.clear();
    // The tool first, which may still be writing.
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
    m_wishes.push_back({posMs, context, done});
    runNext();
}

bool ShotThumbnails::prefer(const QObject *context)
{
    const auto wish = std::find_if(m_wishes.begin(), m_wishes.end(), [context](const Wish &other) {
        return other.context == context;
    });
    if (wish == m_wishes.end())
        return m_task && m_context == context;
    std::rotate(m_wishes.begin(), wish, wish + 1);
    return true;
}

void ShotThumbnails::runNext()
{
    while (!m_task && !m_wishes.empty()) {
        const Wish wish = std::move(m_wishes.front());
        m_wishes.pop_front();
        if (wish.context)
            begin(wish);
    }
}

void ShotThumbnails::begin(const Wish &wish)
{
    const QString file = newFile();
    QObject *context = wish.context;
    auto *task = new ShotTask({{QStringLiteral("inputUrl"), m_file},
                               {QStringLiteral("outputUrl"), file},
                               {QStringLiteral("pos"), wish.posMs},
                               {QStringLiteral("width"), m_width}},
                              m_info);
    task->setParent(this);
    connect(task, &MediaTask::taskStateChanged, context, [=](MediaTask::State state) {
        if (MediaTask::isFinal(state))
            wish.done(state == MediaTask::FINISHED ? file : QString());
    });
    connect(context, &QObject::destroyed, task, &QObject::deleteLater);
    connect(task, &QObject::destroyed, this, [file] { QFile::remove(file); });
    m_context = context;
    run(task);
}

void ShotThumbnails::requestLength(const std::function<void(int)> &done)
{
    auto *task = new FFmpegExTask(QString(), QString(), this);
    task->setParam(new FFmpegExTaskParam(ShotTask::endTree(m_file)));
    connect(task, &MediaTask::taskStateChanged, this, [=](MediaTask::State state) {
        if (state == MediaTask::FINISHED)
            done(int(task->account().writtenMs));
    });
    run(task);
}

void ShotThumbnails::run(MediaTask *task)
{
    m_task = task;
    connect(task, &MediaTask::taskStateChanged, this, [=](MediaTask::State state) {
        if (MediaTask::isFinal(state))
            task->deleteLater();
    });
    connect(task, &QObject::destroyed, this, [this] {
        m_manager.stopTimer();
        runNext();
    });
    m_manager.addTask(task);
    m_manager.startTimer();
}
