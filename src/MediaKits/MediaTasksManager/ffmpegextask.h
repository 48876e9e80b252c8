// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaTasksManager/ffmpegtask.h"

struct FFmpegExTaskParam : MediaTaskParam
{
    static constexpr int paramType = 3;
    explicit FFmpegExTaskParam(const QVariantMap &tree) : MediaTaskParam(paramType), options(tree)
    {
    }

    QVariant options; ///< the option tree, a `QVariantMap`
};

/// Runs one ffmpeg command that is given as a tree. Keys: "options" (global ones), "input" with
/// "inputs" (each "inputUrl" and "options"), "output" ("outputUrl" and "options") and "duration"
/// in ms. An option is a map of "name", with its dash, and an optional "value".
class FFmpegExTask : public ParamTask<FFmpegExTaskParam, FFmpegTask>
{
    Q_OBJECT

public:
    using ParamTask::ParamTask;

    /// The tree as the argument text of the ffmpeg runner: file names are quoted, values stand as
    /// they are.
    static QString commandText(const QVariantMap &tree);

    /// An option map; without a value it is a flag.
    static QVariantMap option(const QString &name, const QVariant &value = {});

protected:
    void prepare() override;
};
