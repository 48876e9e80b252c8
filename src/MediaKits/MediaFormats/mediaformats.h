// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <QUrl>

/// Classes of file suffixes; a sum of them chooses several.
enum FormatClass {
    VideoFormatClass = 1,
    SpecialVideoFormatClass = 2,
    AudioFormatClass = 4,
};

/// What a suffix says about a file.
enum MediaClass {
    UnknownMediaClass = 0,
    VideoMediaClass = 1,
    AudioMediaClass = 2,
};

/// Lists of suffixes, lower case and without a dot; they live as long as the program.
const QStringList &videoFormats();
const QStringList &specialVideoFormats();
const QStringList &audioFormats();
const QStringList &videoAndSpecialFormats();
const QStringList &videoAndAudioFormats();
/// Everything that a user may drop on a page; more than the lists above hold together.
const QStringList &allFormats();

/// The suffix, in any case of letters, belongs to a streaming service's own container.
bool isSpecialFormat(const QString &suffix);
bool isAudioFormat(const QString &suffix);
/// Special formats count as video.
bool isVideoFormat(const QString &suffix);
/// One of pictures that move without a sound.
bool isGifFormat(const QString &suffix);
/// A suffix that is both, were there one, counts as audio.
MediaClass mediaClassOf(const QString &suffix);

/// File name patterns ("*.mp4") of the classes in `flags`, a sum of FormatClass values.
QStringList suffixPatterns(int flags);

/// Name filters for a file dialog, joined by ";;": one for each class in `flags`, one for all of
/// these together and, when all classes are chosen, one for allFormats() at the front.
QString fileDialogFilter(int flags);

/// At least one of `urls` is an existing local file, not a folder, with one of `suffixes`.
bool acceptsUrls(const QList<QUrl> &urls, const QStringList &suffixes);
