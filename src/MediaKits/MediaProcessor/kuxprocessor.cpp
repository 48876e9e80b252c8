// SPDX-License-Identifier: MIT
#include "MediaKits/MediaProcessor/kuxprocessor.h"

#include "MediaKits/MediaProcessor/toolpaths.h"

#include <QPointer>

#include <algorithm>

void KuxProcessor::setCommand(const QString &arguments, quint32 durationMs)
{
    m_arguments = arguments;
    m_durationMs = durationMs;
}

void KuxProcessor::start()
{
    launch(kuxFfmpegPath(), QProcess::splitCommand(m_arguments) +
                                QStringList{QStringLiteral("-progress"), QStringLiteral("pipe:1")});
}

void KuxProcessor::stop(bool force)
{
    if (isFinal())
        return;
    askToQuit();
    if (!force)
        return;
    const QPointer<KuxProcessor> alive(this);
    killChild();
    // A child that can't be ended tells nothing.
    if (alive && !isFinal())
        setState(ProcessorError);
}

double KuxProcessor::progressAt(qint64 positionUs, quint32 durationMs) const
{
    return std::min(double(positionUs) / (double(durationMs) * 1000.0), overrunProgress);
}
