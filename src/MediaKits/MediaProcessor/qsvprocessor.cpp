// SPDX-License-Identifier: MIT
#include "MediaKits/MediaProcessor/qsvprocessor.h"

#include "MediaKits/MediaProcessor/toolpaths.h"

void QsvProcessor::setInOut(const QString &input, const QString &output, int qsvMode)
{
    setFiles(input, output);
    m_qsvMode = qsvMode;
}

QString QsvProcessor::tool() const
{
    return tool2Path();
}

QString QsvProcessor::plainArgument() const
{
    return QStringLiteral("%1|%2|%3").arg(inputFile(), outputFile(), QString::number(m_qsvMode));
}
