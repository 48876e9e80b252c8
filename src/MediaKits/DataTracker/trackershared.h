// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <chrono>
#include <memory>
#include <string>

class HttpTaskManager;

/// The number by which the tracking services know this program.
inline constexpr char trackedProduct[] = "3018";

/// How long what is still queued may keep the program when it ends, and when it crashes. The crash
/// hook waits for three seconds.
inline constexpr std::chrono::milliseconds leavingLimit(400);
inline constexpr std::chrono::milliseconds crashLimit(2500);

/// @param host as "https://host"; without a scheme https is meant
/// @param path begins with "/"
std::string serviceUrl(const QString &host, const char *path);

/// A worker that sends to the host; null when the host is empty and the tracker thus off.
std::unique_ptr<HttpTaskManager> makeHttpWorker(const QString &host, const char *name);
