// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaTasksManager/mediaselection.h"
#include "MediaKits/MediaTasksManager/videobeautyparam.h"

#include <QSize>
#include <QStringList>
#include <QVariantMap>
#include <QVector>

#include <optional>

enum class Command { Help, Categories, Presets, Probe, Convert, Gif, Merge, Shots, Record };

enum class ProbeReader { Auto, FFProbe, MediaInfo };

/// The pictures that are wanted of each file.
struct ShotWish
{
    QVector<int> atMs; ///< single moments
    int everyMs = 0;   ///< of a series; 0 for single moments
    int fromMs = 0;
    std::optional<int> toMs;
    QString format = QStringLiteral("png");
    double scale = 1.0; ///< 0 is the video's size, too
    bool isLong = false;
    int columns = 0; ///< of a sheet; 0 for none
};

/// The recording of the screen that is wanted.
struct RecordWish
{
    std::optional<CropBox> area; ///< in pixels of the screen
    std::optional<quint32> window;
    int sound = 1;   ///< bit 0 what is played, bit 1 microphones
    int seconds = 0; ///< to record; 0 until it is interrupted
};

/// What a user asked for, checked as far as it can be without looking at the files.
struct CommandLine
{
    Command command = Command::Help;
    QStringList files; ///< absolute paths
    QString category;  ///< upper-case title, empty for all
    ProbeReader reader = ProbeReader::Auto;
    quint32 presetId = 0;
    QString outputDir; ///< absolute; the function's default when none was given
    QString name;      ///< base name of the results, empty for the sources' own
    std::optional<int> fromMs;
    std::optional<int> toMs;
    std::optional<CropBox> crop;
    std::optional<VideoBeautyParam> beauty;
    QVariantList marks; ///< `videoFilters` of the conversion
    /// A dubbing of the conversion; empty for none.
    QVariantMap dubbing;
    ShotWish shots;
    RecordWish record;
    int speed = 0;
    QSize gifSize;           ///< pixels, empty for the preset's own
    int gifRate = 10;        ///< frames a second
    bool gifQuality = false; ///< colours chosen for each picture
    int jobs = 1;
    bool dryRun = false;
    bool json = false;
    bool strict = false; ///< a remark on a result counts as a failure
};

/// Reads the words behind the program's name.
/// @param error set to one line that says what is wrong when nothing comes back
std::optional<CommandLine> parseCommandLine(const QStringList &words, QString &error);
