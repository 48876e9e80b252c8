// SPDX-License-Identifier: MIT
#include "MediaKits/Player/thumbnail.h"

#include "MediaKits/AppInstance/LocalStore/appdirs.h"
#include "MediaKits/MediaFormats/mediaformats.h"
#include "MediaKits/MediaTasksManager/mediatasksmanager.h"
#include "MediaKits/MediaTasksManager/videoimagepicktask.h"

#include <QFile>
#include <QFileInfo>
#include <QUuid>

#include <utility>

namespace {

MediaTasksManager &thumbnailManager()
{
    static MediaTasksManager manager;
    return manager;
}

// The manager rests until there is something to do and while there is a break.
int breaks = 0;
bool wanted = false;

void runManager()
{
    if (wanted && breaks == 0)
        thumbnailManager().startTimer();
    else
        thumbnailManager().stopTimer();
}

} // namespace

void requestThumbnail(const QString &path, QObject *context,
                      const std::function<void(const QPixmap &)> &callback, int atMs,
                      const QSharedPointer<MediaInfoData> &source)
{
    const QFileInfo file(path);
    if (!file.exists() || !isVideoFormat(file.suffix())) {
        callback({});
        return;
    }
    const QString target = QStringLiteral("%1/%2.png")
                               .arg(tempDir(), QUuid::createUuid().toString(QUuid::WithoutBraces));
    auto *task = new VideoImagePickTask(context);
    auto *param = new VideoImagePickTaskParam(path, target, atMs);
    param->sourceInfo = source;
    task->setParam(param);
    QObject::connect(task, &MediaTask::taskStateChanged, context, [=](MediaTask::State state) {
        if (!MediaTask::isFinal(state))
            return;
        QPixmap picture;
        if (state == MediaTask::FINISHED)
            picture.load(target);
        task->deleteLater();
        callback(picture);
    });
    QObject::connect(task, &QObject::destroyed, task, [target] { QFile::remove(target); });
    thumbnailManager().addTask(task);
    if (!std::exchange(wanted, true))
        runManager();
}

ThumbnailBreak::ThumbnailBreak()
{
    ++breaks;
    runManager();
}

ThumbnailBreak::~ThumbnailBreak()
{
    --breaks;
    runManager();
}
