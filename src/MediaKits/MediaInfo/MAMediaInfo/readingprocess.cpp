// SPDX-License-Identifier: MIT
#include "MediaKits/MediaInfo/MAMediaInfo/readingprocess.h"

#include "MediaKits/MediaProcessor/toolpaths.h"

#include <QCoreApplication>
#include <QDataStream>
#include <QFileInfo>

namespace {

// The tool itself gives a file half as long.
constexpr int patienceMs = 10000;
// Its start takes as long as some ten files, its memory some MB.
constexpr int idleMs = 30000;

} // namespace

ReadingProcess &ReadingProcess::instance()
{
    static QPointer<ReadingProcess> process;
    if (!process)
        process = new ReadingProcess(QCoreApplication::instance());
    return *process;
}

ReadingProcess::ReadingProcess(QObject *parent) : QObject(parent)
{
    m_patience.setSingleShot(true);
    m_patience.setInterval(patienceMs);
    connect(&m_patience, &QTimer::timeout, this, &ReadingProcess::onLost);
    m_idle.setSingleShot(true);
    m_idle.setInterval(idleMs);
    connect(&m_idle, &QTimer::timeout, this, &ReadingProcess::letGo);
}

ReadingProcess::~ReadingProcess()
{
    if (m_child)
        m_child->endNow();
}

void ReadingProcess::read(const ReadRequest &request, const QObject *context, const Take &take)
{
    const ReadRequest whole{QFileInfo(request.path).absoluteFilePath(), request.depth};
    m_jobs.enqueue({packed(whole), context, take});
    if (m_jobs.size() == 1)
        sendNext();
}

void ReadingProcess::sendNext()
{
    while (!m_jobs.isEmpty() && !m_jobs.head().context)
        m_jobs.dequeue();
    if (m_jobs.isEmpty()) {
        m_patience.stop();
        m_idle.start();
        return;
    }
    m_idle.stop();
    m_patience.start();
    if (!m_child)
        start();
    QDataStream stream(m_child.get());
    stream << m_jobs.head().message;
}

void ReadingProcess::start()
{
    m_child = std::make_unique<ChildProcess>();
    m_child->setStandardErrorFile(QProcess::nullDevice());
    // Once, and not by each of its forks.
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("LD_BIND_NOW"), QStringLiteral("1"));
    m_child->setProcessEnvironment(environment);
    const auto onEnd = [this, child = m_child.get()] {
        if (m_child.get() == child)
            onLost();
    };
    connect(m_child.get(), &QProcess::readyReadStandardOutput, this, &ReadingProcess::onOutput);
    connect(m_child.get(), &QProcess::errorOccurred, this, onEnd, Qt::QueuedConnection);
    connect(m_child.get(), QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), this,
            onEnd, Qt::QueuedConnection);
    m_child->start(mediaReaderPath(), QStringList());
}

// The child ends when nobody can ask it any more.
void ReadingProcess::letGo()
{
    if (!m_child)
        return;
    m_child->closeWriteChannel();
    discardChild(std::move(m_child));
}

void ReadingProcess::onOutput()
{
    QByteArray message;
    QDataStream stream(m_child.get());
    stream.startTransaction();
    stream >> message;
    if (stream.commitTransaction())
        answer(unpackedAnswer(message));
    else if (m_child->bytesAvailable() > mostAnswerBytes)
        onLost();
}

void ReadingProcess::onLost()
{
    if (m_child)
        m_child->kill();
    letGo();
    answer({});
}

// The next one is read while the answer is made use of.
void ReadingProcess::answer(const ReadAnswer &answer)
{
    if (m_jobs.isEmpty())
        return;
    const Job job = m_jobs.dequeue();
    sendNext();
    if (job.context)
        job.take(answer);
}
