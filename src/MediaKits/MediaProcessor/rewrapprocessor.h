// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaProcessor/ffmpegreport.h"
#include "MediaKits/MediaProcessor/filetoolprocessor.h"

/// Base of the runners of the two tools that rewrap a streaming service's files: they take one
/// enciphered argument and tell progress by "progress=" lines.
class RewrapProcessor : public FileToolProcessor
{
    Q_OBJECT

public:
    void start() override;
    /// Kills the tool, whatever `force` says.
    void stop(bool force) override;

protected:
    /// @param tool path of the tool
    RewrapProcessor(const QString &tool, QObject *parent);

    /// What the tool is told; no field may hold a "|".
    void setFields(const QStringList &fields) { m_fields = fields; }

    void childOutput(const QByteArray &bytes) override;

private:
    QString m_tool;
    QStringList m_fields;
    LineSplitter m_output;
};
