// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

// Pure text functions for the places where a path or typed text ends up in filter text. Each
// place passes another number of parsers on its way, and so needs other escapes.

/// A value of a filter option in a task's graph.
QString escapeFilterValue(const QString &text);

/// A file's path as the value of "movie" and "amovie" in a task's graph.
QString quoteFilterPath(const QString &path);

/// The text of a "drawtext" in a task's graph: it passes the command line and two levels of
/// ffmpeg's own parsing.
QString escapeDrawtextText(const QString &text);

/// The same of a text in which nothing stands for anything else.
QString escapeLiteralText(const QString &text);

/// A path or an interval that an editor's preview hands to the player.
QString escapePreviewValue(const QString &text);

/// The text of a "drawtext" in a preview.
QString escapePreviewText(const QString &text);
