// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaTasksManager/chaintask.h"
#include "MediaKits/MediaTasksManager/filealiases.h"
#include "MediaKits/MediaTasksManager/paramtask.h"

#include <QVariantMap>

/// Pictures of chosen moments of a video, as a map with these keys:
/// "inputUrl" the video, "outputDir" folder and "baseName" base name of the results, "format"
/// "png", "jpg" or "bmp", "images" list of maps with "pos" (int, ms) and "scale" (float, 1.0 is
/// the video's size), "isPiiic" (bool) stitches two or more moments into one picture, "watermark"
/// path of a picture for the middle of each shot, empty or absent for none, "sourceInfo" the probed
/// video (`QSharedPointer<MediaInfoData>`), which is read at the start when it is absent.
struct MutiImageTaskParam : MediaTaskParam
{
    static constexpr int paramType = 16;
    explicit MutiImageTaskParam(const QVariantMap &wanted = {})
        : MediaTaskParam(paramType), map(wanted)
    {
    }

    QVariantMap map;
};

/// Makes one picture for each chosen moment, "name_1.png" and so on, or one of all moments on top
/// of each other, "name.png". Each finished picture is told by a message of type `OutputMoved`.
class MutiImageTask : public ParamTask<MutiImageTaskParam, ChainTask>
{
    Q_OBJECT

public:
    using ParamTask::ParamTask;

    /// The option tree that lays numbered pictures together.
    /// @param stitch map with "inputUrl" (a pattern), "outputUrl", "line" and "column" (counts)
    static QVariantMap stitchTree(const QVariantMap &stitch);

protected:
    QString problem() const override;
    GroupMediaTask *buildGroup() override;
    QString subject() const override;

private:
    QString text(const char *key) const;
    QVariantList imageList() const;
    bool isStitched() const;
    QString numberedName(int number) const; ///< counted from 1
    void addShots(QVector<TaskItem> &items, const QString &pictureDir, bool stitched);
    void addStitch(QVector<TaskItem> &items, const QString &pictureDir) const;

    FileAliases m_aliases;
};
