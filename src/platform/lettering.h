// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QFont>
#include <QImage>
#include <QSize>
#include <QString>

class QPainter;

/// A text that is put on a picture. Whatever shows it, be it an editor or a file, lets it be
/// painted here, so that it is the same everywhere: same face, same letters, same place.
///
/// The text is plain: every character stands for itself. A face that the desktop lacks is replaced
/// by its nearest one, as is one that lacks a character.
struct Lettering
{
    QString text;
    QFont font; ///< family and pixel size
    QColor color;
    int inset = 0; ///< pixels around the text, at the font's size

    /// An inset that leaves room for what reaches out of a line: accents, slanted letters.
    static int roomyInset(const QFont &font);

    /// At the font's size, with the inset; both sides are even.
    QSize size() const;
    /// From the painter's origin at the font's size.
    void paint(QPainter &painter) const;
    /// On a clear ground, scaled to fill the picture.
    QImage picture(const QSize &pixels) const;
};
