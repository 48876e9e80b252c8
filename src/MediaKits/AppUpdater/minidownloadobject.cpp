// SPDX-License-Identifier: MIT
#include "MediaKits/AppUpdater/minidownloadobject.h"

#include "MediaKits/Logger/logger.h"

#include <QNetworkReply>

MiniDownloadObject::MiniDownloadObject(QNetworkReply *reply, const QString &path, qint64 limit,
                                       QObject *parent)
    : QObject(parent),
      m_reply(reply),
      m_file(path + QLatin1String(".part")),
      m_path(path),
      m_limit(limit)
{
    // So much at most waits in memory for a disk that is slower than the network.
    constexpr int waitingBytes = 4 * 1024 * 1024;
    reply->setParent(this);
    reply->setReadBufferSize(waitingBytes);
    connect(reply, &QNetworkReply::readyRead, this, &MiniDownloadObject::onReadyRead);
    connect(reply, &QNetworkReply::downloadProgress, this, &MiniDownloadObject::downloadProgress);
    connect(reply, &QNetworkReply::finished, this, &MiniDownloadObject::onFinished);
}

MiniDownloadObject::~MiniDownloadObject()
{
    if (m_reply)
        m_reply->disconnect(this);
    if (m_file.isOpen())
        m_file.remove();
}

bool MiniDownloadObject::open()
{
    m_file.remove();
    if (m_file.open(QIODevice::WriteOnly | QIODevice::NewOnly | QIODevice::Unbuffered))
        return true;
    CLOG(ERROR, "default") << "DL:file open error " << m_file.fileName();
    return false;
}

void MiniDownloadObject::cancel()
{
    m_reply->disconnect(this);
    m_reply->abort();
    m_file.remove();
    deleteLater();
}

void MiniDownloadObject::onReadyRead()
{
    const QByteArray bytes = m_reply->readAll();
    if (m_failed)
        return;
    m_failed = m_file.write(bytes) != bytes.size() || m_file.size() > m_limit;
    if (m_failed)
        m_reply->abort();
}

void MiniDownloadObject::onFinished()
{
    if (m_reply->error() == QNetworkReply::NoError)
        onReadyRead();
    const bool isWhole = m_reply->error() == QNetworkReply::NoError && !m_failed;
    if (!isWhole)
        CLOG(ERROR, "default") << "DL:" << m_reply->errorString() << ' ' << m_file.errorString();
    const bool isKept = isWhole && keep();
    if (!isKept)
        m_file.remove();
    deleteLater();
    if (isKept)
        emit downloadFinished();
    else
        emit downloadError();
}

bool MiniDownloadObject::keep()
{
    m_file.close();
    QFile::remove(m_path);
    return m_file.rename(m_path);
}
