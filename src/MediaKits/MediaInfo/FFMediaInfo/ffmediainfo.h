// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaInfo/mediainfobase.h"
#include "MediaKits/MediaProcessor/ffprobeprocessor.h"

/// Reads a file's facts from the JSON text of ffprobe.
class FFMediaInfo : public MediaInfoBase
{
    Q_OBJECT

public:
    FFMediaInfo(const QString &path, QObject *parent);

    void start() override;

private:
    void onProcessorState(MediaProcessor::State state);
    void readOutput();

    FFProbeProcessor *m_processor;
};
