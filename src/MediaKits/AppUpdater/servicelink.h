// SPDX-License-Identifier: MIT
#pragma once

#include <QNetworkRequest>
#include <QUrl>

/// Whether an address may be asked at all: http or https, with a host.
bool isServiceLink(const QUrl &address);

/// A request that follows no redirect.
/// @param stallMs how long the other side may be silent
QNetworkRequest serviceRequest(const QUrl &address, bool verifiesPeer, int stallMs);
