// SPDX-License-Identifier: MIT
#pragma once

#include <QFile>
#include <QObject>
#include <QPointer>

class QNetworkReply;

/// One download into a file, which has its name only once it is whole; until then it is the name
/// with ".part" behind. Deletes itself when the download has ended.
class MiniDownloadObject : public QObject
{
    Q_OBJECT

public:
    /// Takes over the reply, which has just been asked for.
    /// @param limit of the file's size in bytes: a server may lie, or never end
    MiniDownloadObject(QNetworkReply *reply, const QString &path, qint64 limit, QObject *parent);
    /// A download that hasn't ended leaves nothing.
    ~MiniDownloadObject() override;

    /// Makes the file; false when that fails.
    bool open();
    /// Ends the download without a signal.
    void cancel();

signals:
    /// In bytes; `total` is -1 while it isn't known.
    void downloadProgress(qlonglong received, qlonglong total);
    void downloadFinished();
    void downloadError();

private:
    void onReadyRead();
    void onFinished();
    bool keep();

    QPointer<QNetworkReply> m_reply;
    QFile m_file;
    const QString m_path;
    const qint64 m_limit;
    bool m_failed = false;
};
