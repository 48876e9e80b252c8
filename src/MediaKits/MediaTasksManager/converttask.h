// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaTasksManager/converttaskparam.h"
#include "MediaKits/MediaTasksManager/ffmpegextask.h"

/// The one place where a description of a wanted result becomes an ffmpeg command. A film of a song
/// whose cover can't be decoded is black.
class ConvertTask : public ParamTask<ConvertTaskParam, FFmpegExTask>
{
    Q_OBJECT

public:
    using ParamTask::ParamTask;

    void start() override;
    FFmpegAccount account() const override;

    /// The text of "-filter_complex", possibly empty.
    static QString buildFilterText(const ConvertTaskParam &param);
    /// The tree of `FFmpegExTask`, without its "duration".
    static QVariantMap buildOptionTree(const ConvertTaskParam &param);
    /// Length in ms of what will be produced, for progress; 0 when unknown.
    static int outputDuration(const ConvertTaskParam &param);

protected:
    void prepare() override;
    bool goesOn(bool endedWell) override;

private:
    SourceCover m_cover = SourceCover::Usual;
};
