// SPDX-License-Identifier: MIT
#include "MediaKits/AppInstance/qtsingleapplication.h"

#include "MediaKits/Logger/logger.h"
#include "platform/openfolder.h"
#include "platform/runtimeroot.h"

#include <QDataStream>
#include <QDeadlineTimer>
#include <QLocalSocket>
#include <QThread>

namespace {

constexpr char acknowledgement[] = "ack";
// Between two tries to reach an instance that doesn't listen yet, or no longer.
constexpr int retryIntervalMs = 50;
// Nobody sends more than a word.
constexpr qint64 maxMessageSize = 64 * 1024;

// True when the other side has taken the message.
bool deliver(QLocalSocket &socket, const QString &message, const QDeadlineTimer &deadline)
{
    QDataStream stream(&socket);
    stream.setVersion(QDataStream::Qt_5_15);
    stream << message;
    while (socket.bytesAvailable() < int(sizeof acknowledgement) - 1) {
        if (!socket.waitForReadyRead(int(deadline.remainingTime())))
            return false;
    }
    return socket.readAll() == acknowledgement;
}

} // namespace

QtSingleApplication::QtSingleApplication(const QString &id, int &argc, char **argv)
    : QApplication(argc, argv), m_directory(runtimeRoot() + QLatin1Char('/') + id)
{
}

bool QtSingleApplication::isRunning()
{
    return !m_lock.isHeld() && !claimPlace();
}

bool QtSingleApplication::sendMessage(const QString &message, int timeoutMs)
{
    const QDeadlineTimer deadline(timeoutMs);
    while (!deadline.hasExpired()) {
        QLocalSocket socket;
        socket.connectToServer(socketPath());
        if (socket.waitForConnected(int(deadline.remainingTime())) &&
            deliver(socket, message, deadline))
            return true;
        if (claimPlace())
            return false;
        QThread::msleep(retryIntervalMs);
    }
    return false;
}

QString QtSingleApplication::socketPath() const
{
    return m_directory + QLatin1String("/socket");
}

// The lock dies with its process, so that a crash never bars the next start; the socket's file
// stays and tells nothing.
bool QtSingleApplication::claimPlace()
{
    // Without a folder no other instance can be found either.
    if (!makePrivateFolder(m_directory))
        return m_hasPlace = true;
    m_lock = DirectoryLock::tryExclusive(m_directory);
    m_hasPlace = m_lock.isHeld();
    if (m_hasPlace)
        listen();
    return m_hasPlace;
}

void QtSingleApplication::listen()
{
    QLocalServer::removeServer(socketPath());
    m_server = std::make_unique<QLocalServer>();
    m_server->setSocketOptions(QLocalServer::UserAccessOption);
    connect(m_server.get(), &QLocalServer::newConnection, this, &QtSingleApplication::onConnection);
    if (!m_server->listen(socketPath()))
        CLOG(ERROR, "default") << "单实例: " << m_server->errorString();
}

void QtSingleApplication::onConnection()
{
    while (QLocalSocket *socket = m_server->nextPendingConnection()) {
        connect(socket, &QLocalSocket::readyRead, this, [this, socket]() { read(socket); });
        connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
        read(socket);
    }
}

void QtSingleApplication::read(QLocalSocket *socket)
{
    if (socket->bytesAvailable() > maxMessageSize) {
        socket->abort();
        return;
    }
    QDataStream stream(socket);
    stream.setVersion(QDataStream::Qt_5_15);
    stream.startTransaction();
    QString message;
    stream >> message;
    if (!stream.commitTransaction())
        return;
    socket->write(acknowledgement);
    socket->flush();
    emit messageReceived(message);
}
