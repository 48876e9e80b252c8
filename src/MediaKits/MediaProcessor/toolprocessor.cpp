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

ToolProcessor::ToolProcessor(QObject *parent) : MediaProcessor(parent) {}

ToolProcessor::~ToolProcessor()
{
    m_child->disconnect(this);
    m_child->endNow();
    discardChild(std::move(m_child));
}

std::unique_ptr<ChildProcess> ToolProcessor::newChild()
{
    auto made = std::make_unique<ChildProcess>();
    ChildProcess *child = made.get();
    child->setNiceness(toolNiceness);
    connect(child, &QProcess::stateChanged, this, [this](QProcess::ProcessState childState) {
        if (childState == QProcess::Running)
            childRunning();
    });
    connect(child, &QProcess::readyReadStandardOutput, this,
            [this] { childOutput(m_child->readAllStandardOutput()); });
    connect(child, &QProcess::readyReadStandardError, this,
            [this] { childReport(m_child->readAllStandardError()); });
    connect(child, &QProcess::errorOccurred, this, &ToolProcessor::childFailed);
    connect(child, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), this,
            [this](int exitCode, QProcess::ExitStatus status) {
                if (!isFinal() && drain())
                    childFinished(exitCode, status);
            });
    return made;
}

void ToolProcessor::launch(const QString &program, const QStringList &arguments)
{
    const QPointer<ToolProcessor> alive(this);
    setState(ProcessorStarted);
    if (!alive)
        return;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (auto variable = m_variables.cbegin(); variable != m_variables.cend(); ++variable)
        environment.insert(variable.key(), variable.value());
    m_child->setProcessEnvironment(environment);
    m_child->start(program, arguments, QIODevice::ReadWrite);
    if (alive && isBlocking())
        m_child->waitForFinished(blockingWaitMs);
}

void ToolProcessor::setVariable(const QString &name, const QString &value)
{
    m_variables[name] = value;
}

void ToolProcessor::pause()
{
    if (!isFinal() && suspendProcess(m_child->processId()))
        setState(ProcessorPaused);
}

void ToolProcessor::resume()
{
    if (state() == ProcessorPaused && resumeProcess(m_child->processId()))
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
    note(error == QProcess::FailedToStart ? tr("无法启动工具：%1").arg(m_child->errorString())
                                          : tr("工具意外终止"));
    // A child whose streams broke may live on.
    if (error != QProcess::Crashed && m_child->state() == QProcess::Running) {
        m_child->disconnect(this);
        killChild();
    }
    setState(ProcessorError);
}

bool ToolProcessor::drain()
{
    const QPointer<ToolProcessor> alive(this);
    childReport(m_child->readAllStandardError());
    childOutput(m_child->readAllStandardOutput());
    return !alive.isNull();
}

void ToolProcessor::stop(bool force)
{
    if (isFinal())
        return;
    askToQuit();
    m_child->disconnect(this);
    if (force)
        killChild();
    setState(ProcessorFinished);
}

void ToolProcessor::askToQuit()
{
    // A paused child has to go on to be able to react.
    if (state() == ProcessorPaused)
        resumeProcess(m_child->processId());
    if (knowsQuitKey() && m_child->state() == QProcess::Running)
        m_child->write("q");
}

void ToolProcessor::killChild()
{
    const QPointer<ToolProcessor> alive(this);
    if (m_child->endNow() || !alive)
        return;
    CLOG(ERROR, "default") << QStringLiteral("工具无法结束：") << m_child->processId();
    discardChild(std::move(m_child));
    m_child = newChild();
}
