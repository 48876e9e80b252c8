// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

#include <optional>

// The form in which the program hands its argument to the rewrapping tools: Base64 of one byte of
// value 4, a random word of four bytes, least significant first, and the text in blocks of 16
// bytes, filled up with zeros, each enciphered with AES-256 under a key whose first four bytes are
// the random word.

/// @param plain text without zero bytes
QByteArray encipherArguments(const QByteArray &plain);

/// The same with a given random word.
QByteArray encipherArguments(const QByteArray &plain, quint32 word);

/// The way back, cut at the first zero byte; nothing when `argument` hasn't this form.
std::optional<QByteArray> decipherArguments(const QByteArray &argument);

/// One block of 16 bytes under AES (FIPS 197) in electronic codebook mode.
/// @param key 16, 24 or 32 bytes
QByteArray encipherBlock(const QByteArray &block, const QByteArray &key);
