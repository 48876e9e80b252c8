// SPDX-License-Identifier: MIT
#include "MediaKits/MediaProcessor/filetoolprocessor.h"

void FileToolProcessor::setFiles(const QString &input, const QString &output)
{
    m_inputFile = input;
    m_outputFile = output;
}

void FileToolProcessor::childOutput(const QByteArray &) {}

void FileToolProcessor::childFinished(int exitCode, QProcess::ExitStatus status)
{
    if (isFinal())
        return;
    drain();
    const bool finished = exitCode == 0 && status == QProcess::NormalExit;
    setState(finished ? ProcessorFinished : ProcessorError);
}
