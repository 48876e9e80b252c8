// SPDX-License-Identifier: MIT
#include "MediaKits/MediaProcessor/rewrapprocessor.h"

#include "MediaKits/MediaProcessor/argumentcipher.h"

void RewrapProcessor::start()
{
    setState(ProcessorStarted);
    const QByteArray argument = encipherArguments(plainArgument().toLocal8Bit());
    launch(tool(), {QString::fromLatin1(argument)});
}

void RewrapProcessor::stop(bool)
{
    FileToolProcessor::stop(true);
}

void RewrapProcessor::childOutput(const QByteArray &bytes)
{
    static const QLatin1String key("progress=");
    const QStringList lines = m_output.feed(toolText(bytes));
    for (const QString &line : lines) {
        if (line.startsWith(key))
            emit progressChanged(line.mid(key.size()).toDouble());
    }
}
