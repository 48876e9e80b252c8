// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/AppUpdater/Package/updatepackage.h"

#include <QObject>
#include <QPointer>
#include <QString>

class MiniDownloadObject;
class QNetworkAccessManager;

/// Fetches files over http and https.
class MiniDownloader : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;
    ~MiniDownloader() override;

    /// What a file may hold at most, in bytes.
    void setLimit(qint64 bytes) { m_limit = bytes; }

    /// Starts to fetch `url` into the file `path`.
    /// @param verifiesPeer whether a server needs a certificate that the system trusts
    /// @return null when there is nothing to fetch or nothing can be written; otherwise an object
    ///         that deletes itself when the download has ended
    MiniDownloadObject *download(const QString &url, const QString &path, bool verifiesPeer = true);

    /// The connections, made at the first call; they go with the application object at the latest.
    QNetworkAccessManager *network();

private:
    qint64 m_limit = largestPackage;
    QPointer<QNetworkAccessManager> m_network;
};
