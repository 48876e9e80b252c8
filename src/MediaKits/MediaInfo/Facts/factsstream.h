// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaInfo/Facts/mediainfodata.h"

// The words between the program and the tool that reads files for it (`tools/mediareader`): each
// message is a `QByteArray` on a `QDataStream`, its length in four bytes ahead of it.

/// How far the library looks into a file.
enum class ReadDepth : quint8 {
    Streams,
    Headers, ///< enough for what containers tell; some codecs' own facts stay unknown
};

/// What has come of a reading.
enum class ReadOutcome : quint8 {
    Read,
    NoMedia,
    Failed, ///< the library took too long, or crashed
};

/// More than any answer takes: some hundred bytes for a stream.
constexpr quint32 mostAnswerBytes = 1 << 20;

struct ReadRequest
{
    QString path; ///< absolute
    ReadDepth depth = ReadDepth::Streams;
};

struct ReadAnswer
{
    ReadOutcome outcome = ReadOutcome::Failed;
    QSharedPointer<MediaInfoData> info; ///< null unless it was read
};

QByteArray packed(const ReadRequest &request);
QByteArray packed(const ReadAnswer &answer);
ReadRequest unpackedRequest(const QByteArray &message);
/// `Failed` for what isn't the whole of a message; the facts are sensible.
ReadAnswer unpackedAnswer(const QByteArray &message);

/// A new format record that carries the upper-cased suffix of a path.
QSharedPointer<MediaFormatInfo> newFormatInfo(const QString &path);
