// SPDX-License-Identifier: MIT
#pragma once

#include "support/toolrun.h"

#include <QString>
#include <QStringList>

/// What a test clip holds; made by ffmpeg's own sources.
struct ClipPlan
{
    double seconds = 0.5;
    int width = 320; ///< 0 for no picture
    int height = 240;
    int frameRate = 30;
    int channels = 2; ///< 0 for no sound
    int sampleRate = 44100;
};

/// Makes a clip; the suffix of `path` decides the container. Fails the running test when ffmpeg
/// can't make it.
void makeClip(const QString &path, const ClipPlan &plan = {});

/// Runs the system's ffmpeg, which tells errors only. `options` are divided at blanks, and each "@"
/// among them stands for the next of `paths`.
ToolRun runFfmpeg(const QString &options, const QStringList &paths);

/// The same, to make a file; fails the running test when it can't.
void makeMedia(const QString &options, const QStringList &paths);

/// What ffmpeg decodes from a file, into its raw form.
QByteArray decodedMedia(const QString &path, const QString &options);

/// Makes a picture of one colour.
void makePicture(const QString &path, const QString &colour, int width, int height);

/// Names of the files and folders in a folder, hidden ones too, sorted.
QStringList entriesOf(const QString &dir);
