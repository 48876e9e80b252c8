// SPDX-License-Identifier: MIT
#pragma once

#include "platform/directorylock.h"

#include <QApplication>
#include <QLocalServer>

#include <memory>

class QLocalSocket;

/// An application that knows whether this user runs it already, and can send a text to that
/// instance. The first to ask isRunning() is the instance that the others send to, until it ends
/// in whatever way.
class QtSingleApplication : public QApplication
{
    Q_OBJECT

public:
    /// @param id tells programs apart; fit for a folder's name
    /// @param argc lives as long as this object
    QtSingleApplication(const QString &id, int &argc, char **argv);

    /// Whether another instance is there; if not, this one takes its place.
    bool isRunning();
    /// Whether this is the instance that the others send to, as far as that can be known.
    bool hasPlace() const { return m_hasPlace; }

    /// Sends to the other instance and waits until it has taken the text; an instance that is just
    /// starting takes it as soon as its event loop runs. When the other one ends meanwhile, this
    /// one takes its place.
    /// @return whether the text was taken within `timeoutMs`
    bool sendMessage(const QString &message, int timeoutMs = 5000);

signals:
    /// A text from another instance.
    void messageReceived(const QString &message);

private:
    QString socketPath() const;
    bool claimPlace();
    void listen();
    void onConnection();
    void read(QLocalSocket *socket);

    const QString m_directory;
    DirectoryLock m_lock;
    bool m_hasPlace = false;
    std::unique_ptr<QLocalServer> m_server;
};
