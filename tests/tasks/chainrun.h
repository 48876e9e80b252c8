// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/AppInstance/LocalStore/tempmarker.h"
#include "MediaKits/MediaTasksManager/converttaskparam.h"
#include "MediaKits/MediaTasksManager/mediatask.h"
#include "support/testfile.h"
#include "support/testmedia.h"
#include "support/toolrun.h"
#include "support/utf8.h"

#include <QFileInfo>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

constexpr int endLimitMs = 60000;

inline bool waitForEnd(const MediaTask &task)
{
    return QTest::qWaitFor([&task] { return MediaTask::isFinal(task.state()); }, endLimitMs);
}

/// A task and what it told its listeners.
template<class Task>
struct Watched
{
    explicit Watched(MediaTaskParam *param) : task(std::make_unique<Task>())
    {
        task->setParam(param);
        QObject::connect(task.get(), &MediaTask::taskStateChanged, task.get(),
                         [this](MediaTask::State state) { states += state; });
    }

    /// Starts the task and waits for its end.
    MediaTask::State run()
    {
        task->start();
        waitForEnd(*task);
        return task->state();
    }
    QString cause() const { return task->failure().cause; }
    double lastProgress() const { return progress.isEmpty() ? 0.0 : progress.last()[0].toDouble(); }

    // In front of the task, whose destructor still tells a state.
    QVector<MediaTask::State> states;
    std::unique_ptr<Task> task;
    QSignalSpy progress{task.get(), &MediaTask::taskProgress};
    QSignalSpy messages{task.get(), &MediaTask::taskCustomeMsgCome};
};

/// A fresh folder for one test, with an output folder in it that doesn't exist yet.
struct TestFolder
{
    QString path(const QString &name) const { return root.filePath(name); }
    QString result(const QString &format) const { return out + "/b."_s + format; }

    /// A conversion to "b" with the suffix `format`.
    ConvertTaskParam *convertParam(const QString &input, const QString &format) const
    {
        auto *param = new ConvertTaskParam;
        param->inputFile = input;
        param->inputFormat = QFileInfo(input).suffix();
        param->outputName = "b"_s;
        param->outputDir = out;
        param->format = format;
        return param;
    }

    /// The entries of the output folder and those of the marker folder in it, which itself stays
    /// until the process ends.
    QStringList outputs() const
    {
        const QString marker = tempMarkerPath(out);
        QStringList entries = entriesOf(out);
        entries.removeAll(QFileInfo(marker).fileName());
        return entries + entriesOf(marker);
    }

    QTemporaryDir root;
    QString out = root.filePath("输出 out"_s);
};
