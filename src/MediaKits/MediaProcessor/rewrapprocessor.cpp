// SPDX-License-Identifier: MIT
#include "MediaKits/MediaProcessor/rewrapprocessor.h"

#include "MediaKits/MediaProcessor/argumentcipher.h"

#include <QPointer>

RewrapProcessor::RewrapProcessor(const QString &tool, QObject *parent)
    : FileToolProcessor(parent), m_tool(tool)
{
}

void RewrapProcessor::start()
{
    const QString plain = m_fields.join(QLatin1Char('|'));
    launch(m_tool, {QString::fromLatin1(encipherArguments(plain.toLocal8Bit()))});
}

void RewrapProcessor::stop(bool)
{
    FileToolProcessor::stop(true);
}

void RewrapProcessor::childOutput(const QByteArray &bytes)
{
    static const QLatin1String key("progress=");
    const QPointer<RewrapProcessor> alive(this);
    const QStringList lines = m_output.feed(toolText(bytes));
    for (const QString &line : lines) {
        if (alive && line.startsWith(key))
            emit progressChanged(line.mid(key.size()).toDouble());
    }
}
