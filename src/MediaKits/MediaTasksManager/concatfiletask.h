// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaTasksManager/synchronoustask.h"

struct ConcatFileTaskParam : MediaTaskParam
{
    static constexpr int paramType = 7;
    ConcatFileTaskParam(const QStringList &parts, const QString &list)
        : MediaTaskParam(paramType), files(parts), listFile(list)
    {
    }

    QStringList files; ///< the parts, in the folder of the list
    QString listFile;
};

/// Writes the list that ffmpeg's concat demuxer reads.
class ConcatFileTask : public SynchronousTask
{
    Q_OBJECT

public:
    using SynchronousTask::SynchronousTask;

    MediaTaskParam *param() const override { return m_param.data(); }
    void setParam(MediaTaskParam *param) override { takeParam(param, m_param); }

protected:
    QString perform() override { return createConcatFile(); }

private:
    QString createConcatFile() const;

    QSharedPointer<ConcatFileTaskParam> m_param;
};
