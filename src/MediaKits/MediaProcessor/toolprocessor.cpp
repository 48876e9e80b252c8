// SPDX-License-Identifier: MIT
#include "MediaKits/MediaProcessor/toolprocessor.h"

#include "MediaKits/Logger/logger.h"
#include "platform/processcontrol.h"

#include <QMetaEnum>
#include <QPointer>

namespace {
constexpr int blockingWaitMs = 30000;
// An encoder takes all processors there are; the window and the preview go before it.
constexpr int toolNiceness = 5;
} // namespace

ToolProcessor::ToolProcessor(QObject *parent) : MediaProcessor(parent)
{
    m_process.setNiceness(toolNiceness);
    connect(&m_process, &QProcess::stateChanged, this, [this](QProcess::ProcessState childState) {
        if (childState == QProcess::Running)
            childRunning();
    });
    connect(&m_process, &QProcess::readyReadStandardOutput, this,
            [this] { childOutput(m_process.readAllStandardOutput()); });
    connect(&m_process, &QProcess::readyReadStandardError, this,
            [this] { childReport(m_process.readAllStandardError()); });
    connect(&m_process, &QProcess::errorOccurred, this, &ToolProcessor::childFailed);
    connect(&m_process, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), this,
            [this](int exitCode, QProcess::ExitStatus status) {
                if (!isFinal() && drain())
                    childFinished(exitCode, status);
            });
}

ToolProcessor::~ToolProcessor()
{
    m_process.disconnect(this);
    if (m_process.state() != QProcess::NotRunning)
        killChild();
}

void ToolProcessor::launch(const QString &commandText)
{
    QStringList arguments = QProcess::splitCommand(commandText);
    const QString program = arguments.takeFirst();
    launch(program, arguments);
}

void ToolProcessor::launch(const QString &program, const QStringList &arguments)
{
    const QPointer<ToolProcessor> alive(this);
    setState(ProcessorStarted);
    if (!alive)
        return;
    m_process.start(program, arguments, QIODevice::ReadWrite);
    if (alive && isBlocking())
        m_process.waitForFinished(blockingWaitMs);
}

void ToolProcessor::pause()
{
    if (!isFinal() && suspendProcess(m_process.processId()))
        setState(ProcessorPaused);
}

void ToolProcessor::resume()
{
    if (state() == ProcessorPaused && resumeProcess(m_process.processId()))
        setState(ProcessorResumed);
}

void ToolProcessor::childRunning()
{
    // A pause may come while the child is still starting: it stays paused then.
    if (state() == ProcessorStarted)
        setState(ProcessorRunning);
}

void ToolProcessor::childReport(const QByteArray &bytes)
{
    m_tail.append(bytes);
}

void ToolProcessor::childFailed(QProcess::ProcessError error)
{
    if (isFinal())
        return;
    CLOG(ERROR, "default") << "FFmpeg Err:"
                           << QMetaEnum::fromType<QProcess::ProcessError>().valueToKey(error);
    if (!drain())
        return;
    note(error == QProcess::FailedToStart ? tr("无法启动工具：%1").arg(m_process.errorString())
                                          : tr("工具意外终止"));
    // A child whose streams broke may live on.
    if (error != QProcess::Crashed && m_process.state() == QProcess::Running) {
        m_process.disconnect(this);
        killChild();
    }
    setState(ProcessorError);
}

bool ToolProcessor::drain()
{
    const QPointer<ToolProcessor> alive(this);
    childReport(m_process.readAllStandardError());
    childOutput(m_process.readAllStandardOutput());
    return !alive.isNull();
}

void ToolProcessor::stop(bool force)
{
    if (isFinal())
        return;
    askToQuit();
    m_process.disconnect(this);
    if (force)
        killChild();
    setState(ProcessorFinished);
}

void ToolProcessor::askToQuit()
{
    // A paused child has to go on to be able to react.
    if (state() == ProcessorPaused)
        resumeProcess(m_process.processId());
    if (knowsQuitKey() && m_process.state() == QProcess::Running)
        m_process.write("q");
}

void ToolProcessor::killChild()
{
    m_process.kill();
    m_process.close();
}
