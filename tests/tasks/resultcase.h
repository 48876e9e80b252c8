// SPDX-License-Identifier: MIT
#pragma once

#include "support/utf8.h"

#include <QImage>
#include <QRect>
#include <QString>

#include <functional>

/// A kind of source: eight coloured areas, as they are shown.
struct ResultSource
{
    const char *name;
    QSize shown;
    int tag;            // degrees that the file tells the player to turn by
    int codedTurn;      // quarter turns clockwise from the shown picture to the coded one
    double pixelAspect; // of the coded picture
    bool hasSound;
    const char *suffix;
};

/// A kind of result.
struct ResultPreset
{
    const char *name;
    QSize size;         // empty: as the source
    const char *suffix; // null: as the source
};

/// One combination of a source, a preset and options.
struct ResultCase
{
    /// @param words source, preset, "crop", quarter turns, flip ("h" or "v"), speed, mark
    ///        ("picture", "text" or "removal") and "dub"; "-" for none
    explicit ResultCase(const QStringList &words);

    static const QVector<ResultSource> &sources();

    bool hasPicture() const;
    bool hasSound() const { return source->hasSound || music; }
    bool isTurned() const { return turns % 2 != 0; }
    QString suffix() const;

    const ResultSource *source = nullptr;
    const ResultPreset *preset = nullptr;
    bool crop;
    int turns;
    bool hflip;
    bool vflip;
    int speed;
    QString mark;
    bool music;
};

/// Where the mark and the crop lie on the shown picture, in square pixels.
QRect markOf(const ResultSource &source);
QRect cropOf(const ResultSource &source);
/// The same in the pixels of the turned coded picture, which is what a record counts in.
QRect inPixels(const QRect &rect, const ResultSource &source);

QImage shownPicture(const ResultSource &source);
extern const QRgb markColour;
void fill(QImage &image, const QRect &rect, QRgb colour);
/// The smallest rectangle around all such pixels.
QRect boundsOf(const QImage &image, const std::function<bool(QRgb)> &isMeant);

/// What a result should show, drawn without the program's help.
struct ExpectedPicture
{
    explicit ExpectedPicture(const ResultCase &wanted);

    /// The largest mean difference of an area, as a part of the whole range.
    /// @param shown of the same size
    /// @param report takes the difference of each area
    double largestDifference(const QImage &shown, QString *report) const;

    QImage picture;
    QRect mark; ///< where a picture or a text comes to lie, upright

private:
    QImage m_index; // number of the area of each pixel, in its blue channel
};
