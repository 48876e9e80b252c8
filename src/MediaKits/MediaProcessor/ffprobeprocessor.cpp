// SPDX-License-Identifier: MIT
#include "MediaKits/MediaProcessor/ffprobeprocessor.h"

#include "MediaKits/MediaProcessor/toolpaths.h"

// A picture stream has some kB; a film with a million tags is none.
static constexpr int mostBytes = 64 * 1024 * 1024;

FFProbeProcessor::FFProbeProcessor(QObject *parent) : ToolProcessor(parent) {}

QString FFProbeProcessor::output() const
{
    return QString::fromUtf8(m_output);
}

void FFProbeProcessor::start()
{
    m_output.clear();
    launch(ffprobePath(), QProcess::splitCommand(m_arguments));
}

void FFProbeProcessor::childOutput(const QByteArray &bytes)
{
    const int zero = bytes.indexOf('\0');
    m_output += zero < 0 ? bytes : bytes.left(zero);
    // A file with more to tell would take all memory.
    if (m_output.size() > mostBytes)
        m_output.clear();
}

void FFProbeProcessor::childFinished(int, QProcess::ExitStatus status)
{
    setState(status == QProcess::NormalExit ? ProcessorFinished : ProcessorError);
}
