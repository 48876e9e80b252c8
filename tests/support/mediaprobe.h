// SPDX-License-Identifier: MIT
#pragma once

#include "support/utf8.h"

#include <QJsonObject>
#include <QSize>
#include <QString>

/// The facts of a finished file as the system's ffprobe tells them, apart from the program's own
/// readers.
struct ProbedFile
{
    QString container; ///< "format_name"
    double seconds = 0.0;
    QJsonObject video; ///< the first picture stream, empty when there is none
    QJsonObject audio; ///< the first sound stream, empty when there is none

    bool isMedia() const { return !container.isEmpty(); }
    /// Of the picture, empty when there is none.
    QSize size() const { return {video["width"_s].toInt(), video["height"_s].toInt()}; }
};

ProbedFile probeMedia(const QString &path);
