// SPDX-License-Identifier: MIT
#include "MediaKits/MediaProcessor/kuxprocessor.h"

#include "MediaKits/MediaProcessor/toolpaths.h"

void KuxProcessor::setCommand(const QString &arguments, quint32 durationMs)
{
    m_arguments = arguments;
    m_durationMs = durationMs;
}

void KuxProcessor::start()
{
    // The program's folder may have blanks in its name, hence the quotes.
    launch(QStringLiteral("\"%1\" %2 -progress pipe:1 ").arg(kuxFfmpegPath(), m_arguments));
}

void KuxProcessor::stop(bool force)
{
    if (isFinal())
        return;
    askToQuit();
    if (force)
        killChild();
}

double KuxProcessor::progressAt(qint64 positionUs, quint32 durationMs) const
{
    return double(positionUs) / (double(durationMs) * 1000.0);
}

void KuxProcessor::childFinished(int exitCode, QProcess::ExitStatus status)
{
    if (endedWell(exitCode, status)) {
        setState(ProcessorFinished);
        return;
    }
    logFailure(exitCode);
    setState(ProcessorError);
}
