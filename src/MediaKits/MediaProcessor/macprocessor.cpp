// SPDX-License-Identifier: MIT
#include "MediaKits/MediaProcessor/macprocessor.h"

#include "MediaKits/MediaProcessor/toolpaths.h"

void MacProcessor::setInOut(const QString &input, const QString &output)
{
    m_input = input;
    m_output = output;
}

void MacProcessor::start()
{
    // Compression level "high".
    launch(macPath(), {m_input, m_output, QStringLiteral("-c3000")});
}
