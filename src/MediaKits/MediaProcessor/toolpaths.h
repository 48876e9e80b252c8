// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

// Paths of the external tools, all in the "module" folder beside the program. Each is computed
// once. The files are laid out by the build and by the installation.

QString ffmpegPath();
QString ffprobePath();
QString kuxFfmpegPath();
QString macPath();
QString mediaReaderPath();
QString mplayerPath();
QString playerPath();
QString toolPath();
QString tool2Path();
