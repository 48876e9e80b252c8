// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaTasksManager/trialconversion.h"

#include <QTimer>

/// Estimates how large a GIF becomes from a second of it, which is converted in the background.
class GifSample : public QObject
{
    Q_OBJECT

public:
    explicit GifSample(QObject *parent);

    /// Begins soon, unless it is told of another GIF meanwhile. What was under way is stopped.
    void take(const ConvertTaskParam &gif);
    /// Stops what was under way, and begins nothing.
    void cancel();

signals:
    /// @param bytes of the whole GIF; -1 when they can't be told
    void estimated(qint64 bytes);

private:
    void begin();
    qint64 wholeSize() const;

    ConvertTaskParam m_gif;
    TimeSpan m_span; // of the sample
    QTimer m_pause;
    TrialConversion m_trial;
};
