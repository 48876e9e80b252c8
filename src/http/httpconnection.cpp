// SPDX-License-Identifier: MIT
#include "http/httpconnection.h"

#include <curl/curl.h>

#include <cstddef>
#include <iostream>
#include <memory>
#include <mutex>
#include <utility>

namespace {

constexpr long getTimeoutSeconds = 3;
constexpr long postTimeoutSeconds = 5;
constexpr long lowSpeedBytesPerSecond = 50;
constexpr long lowSpeedSeconds = 5;
constexpr int cancelIntervalMs = 50;

// libcurl counts its initialisations without a lock of its own on some systems. A thread makes no
// other call of libcurl before its own pair has begun, so a lock on the pairs is enough.
std::mutex g_globalInitMutex;

struct CurlDeleter
{
    void operator()(CURL *easy) const { curl_easy_cleanup(easy); }
    void operator()(curl_slist *list) const { curl_slist_free_all(list); }
    void operator()(curl_mime *form) const { curl_mime_free(form); }
};
using EasyHandle = std::unique_ptr<CURL, CurlDeleter>;
using HeaderList = std::unique_ptr<curl_slist, CurlDeleter>;
using Form = std::unique_ptr<curl_mime, CurlDeleter>;

std::size_t appendToString(char *data, std::size_t size, std::size_t count, void *target)
{
    if (data == nullptr || target == nullptr) {
        return static_cast<std::size_t>(-1);
    }
    auto *text = static_cast<std::string *>(target);
    if (text->size() + size * count > HttpConnection::maxBodyBytes) {
        return 0;
    }
    text->append(data, size * count);
    return count;
}

const char *debugTag(curl_infotype type)
{
    switch (type) {
    case CURLINFO_HEADER_IN:
        return "[HEADER_IN]";
    case CURLINFO_HEADER_OUT:
        return "[HEADER_OUT]";
    case CURLINFO_DATA_IN:
        return "[DATA_IN]";
    case CURLINFO_DATA_OUT:
        return "[DATA_OUT]";
    default:
        return nullptr;
    }
}

int writeDebug(CURL *, curl_infotype type, char *data, std::size_t size, void *)
{
    if (const char *tag = debugTag(type)) {
        const std::string line = tag + std::string(data, size) + '\n';
        std::cout << line;
        std::clog << line;
    }
    return 0;
}

HeaderList headerList(const std::vector<std::string> &headers)
{
    HeaderList list;
    for (const std::string &header : headers) {
        if (curl_slist *longer = curl_slist_append(list.get(), header.c_str())) {
            // The head stays the same but for the first line.
            (void)list.release();
            list.reset(longer);
        }
    }
    return list;
}

Form formOf(CURL *easy, const std::map<std::string, std::string> &params)
{
    if (params.empty()) {
        return nullptr;
    }
    Form form(curl_mime_init(easy));
    for (const auto &[name, value] : params) {
        curl_mimepart *part = curl_mime_addpart(form.get());
        curl_mime_name(part, name.c_str());
        curl_mime_data(part, value.data(), value.size());
    }
    return form;
}

std::string urlWithQuery(std::string url, const std::map<std::string, std::string> &params)
{
    if (!params.empty() && url.find('?') == std::string::npos) {
        url += '?';
    }
    for (const auto &[key, value] : params) {
        url.append("&").append(key).append("=").append(value);
    }
    return url;
}

void applyCommon(CURL *easy, const std::string &url, long timeoutSeconds, std::string &response)
{
    // Without it libcurl uses signals for its time limits, which only a single thread may do.
    curl_easy_setopt(easy, CURLOPT_NOSIGNAL, 1L);
    curl_easy_setopt(easy, CURLOPT_URL, url.c_str());
    curl_easy_setopt(easy, CURLOPT_READFUNCTION, static_cast<curl_read_callback>(nullptr));
    curl_easy_setopt(easy, CURLOPT_WRITEFUNCTION, appendToString);
    curl_easy_setopt(easy, CURLOPT_WRITEDATA, &response);
    curl_easy_setopt(easy, CURLOPT_CONNECTTIMEOUT, timeoutSeconds);
    curl_easy_setopt(easy, CURLOPT_TIMEOUT, timeoutSeconds);
    // A name that is still being looked up holds nobody up.
    curl_easy_setopt(easy, CURLOPT_QUICK_EXIT, 1L);
}

void applyPostContent(CURL *easy, curl_mime *form, const std::string &body)
{
    if (form != nullptr) {
        curl_easy_setopt(easy, CURLOPT_MIMEPOST, form);
    }
    // With neither, libcurl would read the content from standard input.
    if (!body.empty() || form == nullptr) {
        curl_easy_setopt(easy, CURLOPT_POSTFIELDS, body.c_str());
        curl_easy_setopt(easy, CURLOPT_POSTFIELDSIZE, static_cast<long>(body.size()));
    }
}

} // namespace

HttpConnection::HttpConnection(HttpConnectionConfig config) : m_config(std::move(config))
{
    const std::lock_guard<std::mutex> lock(g_globalInitMutex);
    curl_global_init(CURL_GLOBAL_ALL);
}

HttpConnection::~HttpConnection()
{
    const std::lock_guard<std::mutex> lock(g_globalInitMutex);
    curl_global_cleanup();
}

int HttpConnection::performGet(const std::string &url, const std::vector<std::string> &headers,
                               const std::map<std::string, std::string> &params,
                               std::string &response) const
{
    const EasyHandle easy(curl_easy_init());
    if (!easy) {
        return CURLE_FAILED_INIT;
    }
    applyDebug(easy.get());
    applyCommon(easy.get(), urlWithQuery(url, params), getTimeoutSeconds, response);
    applyTlsMode(easy.get());
    const HeaderList lines = headerList(headers);
    curl_easy_setopt(easy.get(), CURLOPT_HTTPHEADER, lines.get());
    return perform(easy.get());
}

int HttpConnection::performPost(const std::string &url, const std::vector<std::string> &headers,
                                const std::map<std::string, std::string> &params,
                                const std::string &body, std::string &response) const
{
    const EasyHandle easy(curl_easy_init());
    if (!easy) {
        return CURLE_FAILED_INIT;
    }
    applyDebug(easy.get());
    if (url.rfind("https", 0) == 0) {
        curl_easy_setopt(easy.get(), CURLOPT_SSL_VERIFYPEER, 0L);
        curl_easy_setopt(easy.get(), CURLOPT_SSL_VERIFYHOST, 0L);
    }
    applyCommon(easy.get(), url, postTimeoutSeconds, response);
    curl_easy_setopt(easy.get(), CURLOPT_POST, 1L);
    curl_easy_setopt(easy.get(), CURLOPT_LOW_SPEED_LIMIT, lowSpeedBytesPerSecond);
    curl_easy_setopt(easy.get(), CURLOPT_LOW_SPEED_TIME, lowSpeedSeconds);
    applyTlsMode(easy.get());
    const HeaderList lines = headerList(headers);
    curl_easy_setopt(easy.get(), CURLOPT_HTTPHEADER, lines.get());
    const Form form = formOf(easy.get(), params);
    applyPostContent(easy.get(), form.get(), body);
    return perform(easy.get());
}

// As curl_easy_perform() does it, which can't be interrupted while nothing comes.
int HttpConnection::perform(void *easy) const
{
    CURLM *multi = curl_multi_init();
    if (multi == nullptr) {
        return CURLE_FAILED_INIT;
    }
    int result = CURLE_ABORTED_BY_CALLBACK;
    int running = 1;
    CURLMcode code = curl_multi_add_handle(multi, easy);
    while (code == CURLM_OK && running > 0 && !isCancelled()) {
        code = curl_multi_perform(multi, &running);
        if (code == CURLM_OK && running > 0) {
            code = curl_multi_poll(multi, nullptr, 0, cancelIntervalMs, nullptr);
        }
    }
    int waiting = 0;
    while (const CURLMsg *message = curl_multi_info_read(multi, &waiting)) {
        if (message->msg == CURLMSG_DONE) {
            result = message->data.result;
        }
    }
    curl_multi_remove_handle(multi, easy);
    curl_multi_cleanup(multi);
    return result;
}

bool HttpConnection::isCancelled() const
{
    return m_config.cancel != nullptr && m_config.cancel->load();
}

void HttpConnection::applyDebug(void *easy) const
{
    if (m_config.debug) {
        curl_easy_setopt(easy, CURLOPT_VERBOSE, 1L);
        curl_easy_setopt(easy, CURLOPT_DEBUGFUNCTION, writeDebug);
    }
}

void HttpConnection::applyTlsMode(void *easy) const
{
    if (m_config.tlsMode == TlsVerifyWithFile) {
        curl_easy_setopt(easy, CURLOPT_SSL_VERIFYPEER, 1L);
        curl_easy_setopt(easy, CURLOPT_CAINFO, m_config.caFile.c_str());
    } else if (m_config.tlsMode == TlsVerifyNothing) {
        curl_easy_setopt(easy, CURLOPT_SSL_VERIFYPEER, 0L);
        curl_easy_setopt(easy, CURLOPT_SSL_VERIFYHOST, 0L);
    }
}
