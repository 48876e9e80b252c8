// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaInfo/Facts/factsstream.h"
#include "platform/childprocess.h"

#include <QObject>
#include <QPointer>
#include <QQueue>
#include <QTimer>

#include <functional>
#include <memory>

/// The child process in which the MediaInfo library reads files for this program, one at a time.
/// It is there from the first request on and until none has come for a while. Main thread only.
class ReadingProcess : public QObject
{
    Q_OBJECT

public:
    using Take = std::function<void(const ReadAnswer &)>;

    ~ReadingProcess() override;

    /// Lives as long as the application object.
    static ReadingProcess &instance();

    /// @param request its path may be relative to the program's current folder
    /// @param take gets the answer, later, unless `context` has gone by then
    void read(const ReadRequest &request, const QObject *context, const Take &take);

    /// Process id of the child, 0 when none is there.
    qint64 processId() const { return m_child ? m_child->processId() : 0; }

private:
    struct Job
    {
        QByteArray message;
        QPointer<const QObject> context;
        Take take;
    };

    explicit ReadingProcess(QObject *parent);

    void sendNext();
    void start();
    void letGo();
    void onOutput();
    void onLost();
    void answer(const ReadAnswer &answer);

    std::unique_ptr<ChildProcess> m_child;
    QQueue<Job> m_jobs; ///< the first has been sent
    QTimer m_patience;
    QTimer m_idle;
};
