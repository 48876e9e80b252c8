// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

/// Values of HttpTask::method; any other value means that no request is made.
enum HttpMethod { HttpGet = 1, HttpPost = 2 };

/// Base of what a caller wants to find again in its callback, by a dynamic cast.
struct HttpTaskUserData
{
    virtual ~HttpTaskUserData() = default;
};

/// One HTTP request and what is to be done with its result.
struct HttpTask
{
    int method = 0;
    /// Full URL.
    std::string url;
    /// Complete header lines without their line end, such as "Accept: text/plain".
    std::vector<std::string> headers;
    /// GET: query parameters, sent without escaping. POST: fields of a multipart form.
    std::map<std::string, std::string> params;
    /// POST only: sent as it is, in place of the form; empty means none.
    std::string body;
    /// May be empty. Gets a libcurl result code (0: the transfer worked, whatever the HTTP status)
    /// or one of HttpTaskManager's negative codes. The result counts for a POST alone: false asks
    /// for one more attempt at once, whose answer is appended to `response`. Runs on the worker
    /// thread or in the manager's destructor; it must not throw, as nothing catches there.
    std::function<bool(int code, const std::string &response, const HttpTask &task)> callback;
    /// May be null.
    std::shared_ptr<HttpTaskUserData> userData;
};
