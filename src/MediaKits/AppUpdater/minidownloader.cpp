// SPDX-License-Identifier: MIT
#include "MediaKits/AppUpdater/minidownloader.h"

#include "MediaKits/AppUpdater/minidownloadobject.h"
#include "MediaKits/AppUpdater/servicelink.h"

#include <QCoreApplication>
#include <QNetworkAccessManager>

namespace {
// Without a byte.
constexpr int stallMs = 30000;
} // namespace

MiniDownloader::~MiniDownloader()
{
    delete m_network;
}

QNetworkAccessManager *MiniDownloader::network()
{
    if (!m_network)
        m_network = new QNetworkAccessManager(QCoreApplication::instance());
    return m_network;
}

MiniDownloadObject *MiniDownloader::download(const QString &url, const QString &path,
                                             bool verifiesPeer)
{
    const QUrl address(url);
    if (!isServiceLink(address))
        return nullptr;
    QNetworkRequest request = serviceRequest(address, verifiesPeer, stallMs);
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                         QNetworkRequest::NoLessSafeRedirectPolicy);
    auto *handle = new MiniDownloadObject(network()->get(request), path, m_limit, network());
    if (handle->open())
        return handle;
    delete handle;
    return nullptr;
}
