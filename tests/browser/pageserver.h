// SPDX-License-Identifier: MIT
#pragma once

#include "support/utf8.h"

#include <httplib.h>

#include <QByteArray>
#include <QMap>
#include <QString>

#include <atomic>
#include <memory>
#include <mutex>
#include <thread>

/// What a PageServer answers at a path.
struct ServedPage
{
    QByteArray content;
    const char *type = "text/html; charset=utf-8";
    QByteArray header = {}; ///< one more, as "Name: value"
    int status = 200;
    bool isWithheld = false; ///< until the server goes or has another page there
};

/// A web server on a free port of 127.0.0.1.
class PageServer
{
public:
    /// @param isSecret speaks TLS, with a certificate that nobody trusts
    explicit PageServer(const QMap<QString, ServedPage> &pages = {}, bool isSecret = false);
    ~PageServer();
    Q_DISABLE_COPY(PageServer)

    /// @param path begins with "/"; without one the origin alone
    QString address(const QString &path = {}) const;
    void setPage(const QString &path, const ServedPage &page);
    /// The paths that were asked for, in order.
    QStringList asked() const;
    /// All that was posted; each post is answered as well received.
    QByteArray posted() const;

private:
    void answer(const httplib::Request &request, httplib::Response &reply);

    ServedPage pageAt(const QString &path) const;

    const bool m_isSecret;
    std::unique_ptr<httplib::Server> m_server;
    int m_port = 0;
    mutable std::mutex m_mutex;
    QMap<QString, ServedPage> m_pages;
    QByteArray m_posted;
    std::atomic<bool> m_isEnding{false};
    QStringList m_asked;
    std::thread m_thread;
};
