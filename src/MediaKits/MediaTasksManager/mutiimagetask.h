// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaTasksManager/chaintask.h"
#include "MediaKits/MediaTasksManager/paramtask.h"

#include <QVariantMap>

/// Pictures of chosen moments of a video, as a map with these keys:
/// "inputUrl" the video, "outputDir" folder and "baseName" base name of the results, "format"
/// "png", "jpg" or "bmp", "images" list of maps with "pos" (int, ms) and "scale" (float, 1.0 and 0
/// are the video's size), "isPiiic" (bool) stitches two or more moments into one picture, "columns"
/// (int) above 0 lays them side by side instead, with name and time below each, "watermark" path of
/// a picture for the middle of each shot, empty or absent for none, "sourceInfo" the probed video
/// (`QSharedPointer<MediaInfoData>`), which is read at the start when it is absent.
struct MutiImageTaskParam : MediaTaskParam
{
    static constexpr int paramType = 16;
    explicit MutiImageTaskParam(const QVariantMap &wanted = {})
        : MediaTaskParam(paramType), map(wanted)
    {
    }

    QVariantMap map;
};

/// Makes one picture for each chosen moment, "name_1.png" and so on, or one of all moments,
/// "name.png": on top of each other, or a sheet of small ones. What is laid together has one size,
/// that of the largest. Each finished picture is told by a message of type `OutputMoved`.
class MutiImageTask : public ParamTask<MutiImageTaskParam, ChainTask>
{
    Q_OBJECT

public:
    using ParamTask::ParamTask;

    /// The option tree that lays numbered pictures together.
    /// @param stitch map with "inputUrl" (a pattern), "outputUrl", "line" and "column" (counts),
    /// and
    ///        "gap" (pixels between and around the pictures, 0 for none)
    static QVariantMap stitchTree(const QVariantMap &stitch);

    /// Whether all moments go into one picture.
    bool isOnePicture() const;

protected:
    QString problem() const override;
    GroupMediaTask *buildGroup() override;
    QString subject() const override;

private:
    QString text(const char *key) const;
    QVariantList imageList() const;
    int columns() const; ///< of a sheet; 0 for none
    double onePictureScale() const;
    QString numberedName(int number) const; ///< counted from 1
    QString sizeProblem() const;
    void addShots(QVector<TaskItem> &items, const QString &pictureDir);
    void addStitch(QVector<TaskItem> &items, const QString &pictureDir) const;

    QSharedPointer<MediaInfoData> m_source; ///< of the present run; null when it can't be read
};
