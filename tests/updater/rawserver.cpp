// SPDX-License-Identifier: MIT
#include "updater/rawserver.h"

#include "support/testfile.h"
#include "support/toolrun.h"

#include <QSslKey>
#include <QSslSocket>
#include <QTemporaryDir>

RawServer::RawServer(const QByteArray &answer, Then then, bool isSecret)
    : m_answer(answer), m_then(then), m_isSecret(isSecret)
{
    connect(this, &QTcpServer::newConnection, this, &RawServer::serve);
    listen(QHostAddress::LocalHost);
}

QString RawServer::address(const char *path) const
{
    return QLatin1String(m_isSecret ? "https" : "http") + "://127.0.0.1:%1"_s.arg(serverPort()) +
           QLatin1String(path);
}

void RawServer::incomingConnection(qintptr handle)
{
    if (!m_isSecret) {
        QTcpServer::incomingConnection(handle);
        return;
    }
    const QTemporaryDir dir;
    const QString key = dir.filePath("key"_s);
    const QString certificate = dir.filePath("certificate"_s);
    runTool("openssl"_s, {"req"_s, "-x509"_s, "-newkey"_s, "rsa:2048"_s, "-nodes"_s, "-subj"_s,
                          "/CN=127.0.0.1"_s, "-keyout"_s, key, "-out"_s, certificate});
    auto *socket = new QSslSocket(this);
    socket->setSocketDescriptor(handle);
    socket->setPrivateKey(key);
    socket->setLocalCertificate(certificate);
    socket->startServerEncryption();
    addPendingConnection(socket);
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
