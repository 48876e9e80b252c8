// SPDX-License-Identifier: MIT
#include "updater/rawserver.h"

#include <QTcpSocket>

RawServer::RawServer(const QByteArray &answer, Then then) : m_answer(answer), m_then(then)
{
    connect(this, &QTcpServer::newConnection, this, &RawServer::serve);
    listen(QHostAddress::LocalHost);
}

QString RawServer::address(const char *path) const
{
    return "http://127.0.0.1:%1"_s.arg(serverPort()) + QLatin1String(path);
}

void RawServer::serve()
{
    QTcpSocket *socket = nextPendingConnection();
    connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
    connect(socket, &QTcpSocket::readyRead, socket, [this, socket] {
        if (!socket->readAll().contains("\r\n\r\n"))
            return;
        socket->write(m_answer);
        if (m_then == Then::Close)
            socket->disconnectFromHost();
        else if (m_then == Then::Repeat)
            connect(socket, &QTcpSocket::bytesWritten, socket, [this, socket] {
                if (socket->bytesToWrite() == 0)
                    socket->write(QByteArray(1024 * 1024, 'x'));
            });
    });
}
