// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoDubbing/loudnessscan.h"

#include "MediaKits/MediaProcessor/loudnessprocessor.h"

LoudnessScan::LoudnessScan(QObject *parent) : QObject(parent) {}

LoudnessScan::~LoudnessScan() = default;

void LoudnessScan::want(const QString &file)
{
    if (file.isEmpty() || isKnown(file) || m_waiting.contains(file))
        return;
    m_waiting += file;
    if (!m_runner)
        measureNext();
}

void LoudnessScan::measureNext()
{
    if (m_waiting.isEmpty())
        return;
    const QString file = m_waiting.first();
    m_runner = std::make_unique<LoudnessProcessor>(file);
    // Reports of the runner before may still come.
    const auto ended = [this, file, runner = m_runner.get()] {
        if (m_runner.get() != runner || !runner->isFinal())
            return;
        m_known.insert(file, m_runner->loudness());
        m_waiting.removeOne(file);
        m_runner->disconnect(this);
        m_runner.release()->deleteLater();
        emit measured();
        measureNext();
    };
    connect(m_runner.get(), &MediaProcessor::stateChanged, this, ended, Qt::QueuedConnection);
    m_runner->start();
}
