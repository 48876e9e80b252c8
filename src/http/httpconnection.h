// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <cstddef>
#include <map>
#include <string>
#include <vector>

/// How the certificate of a server is checked; the values are HttpConnectionConfig::tlsMode's.
enum HttpTlsMode { TlsDefault = 1, TlsVerifyWithFile = 2, TlsVerifyNothing = 3 };

struct HttpConnectionConfig
{
    /// Writes what libcurl sends and receives to standard output and to the log stream std::clog.
    bool debug = false;
    int tlsMode = TlsDefault;
    /// Certificates to check against in the mode TlsVerifyWithFile.
    std::string caFile;
    /// A request ends within a moment when this becomes true; it outlives the connection.
    const std::atomic<bool> *cancel = nullptr;
};

/// Blocking requests through libcurl, which stays initialised as long as this object lives. Each
/// thread that makes requests has one of its own.
class HttpConnection
{
public:
    /// An answer with a longer body is given up.
    static constexpr std::size_t maxBodyBytes = 1024 * 1024;

    explicit HttpConnection(HttpConnectionConfig config = {});
    ~HttpConnection();

    HttpConnection(const HttpConnection &) = delete;
    HttpConnection &operator=(const HttpConnection &) = delete;

    /// @param headers complete header lines
    /// @param params query parameters, appended to `url` in the order of their keys, unescaped
    /// @param response the answer's body is appended to it
    /// @return libcurl's result code; a request takes at most 3 seconds
    int performGet(const std::string &url, const std::vector<std::string> &headers,
                   const std::map<std::string, std::string> &params, std::string &response) const;

    /// As performGet(), with at most 5 seconds.
    /// @param params fields of a multipart form
    /// @param body sent in place of the form unless it is empty
    int performPost(const std::string &url, const std::vector<std::string> &headers,
                    const std::map<std::string, std::string> &params, const std::string &body,
                    std::string &response) const;

private:
    void applyDebug(void *easy) const;
    void applyTlsMode(void *easy) const;
    int perform(void *easy) const;
    bool isCancelled() const;

    const HttpConnectionConfig m_config;
};
