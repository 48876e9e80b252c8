// SPDX-License-Identifier: MIT
#include "program/screenfilm.h"

#include "platform/compositor.h"
#include "support/testmedia.h"

static const QColor frameColour(0, 0x88, 0xff);

void ScreenFilm::make(const QString &path)
{
    makeMedia("-f lavfi -i color=%1:s=640x480:r=10:d=%3[a];color=%2:s=640x480:r=10:d=%3[b];"
              "[a][b]concat,format=yuv420p -f lavfi -i sine -preset ultrafast -shortest @"_s
                  .arg(firstColour.name(), secondColour.name())
                  .arg(halfSeconds),
              {path});
}

bool ScreenFilm::isFilm(const QColor &colour)
{
    return Desktop::isLike(colour, firstColour) || Desktop::isLike(colour, secondColour);
}

bool CropFrame::isSeen(const QColor &film) const
{
    const auto dim = [](int part) { return (part * 75 + 200 * 180) / 255; };
    const QColor dimmed(dim(film.red()), dim(film.green()), dim(film.blue()));
    return Desktop::isLike(Desktop::seenAt(onItsEdge()), frameColour) &&
           Desktop::isLike(Desktop::seenAt(inside()), film) &&
           Desktop::isLike(Desktop::seenAt(outside()), isCompositingActive() ? dimmed : film);
}

bool CropFrame::isUnseen() const
{
    return !Desktop::isLike(Desktop::seenAt(onItsEdge()), frameColour) &&
           !Desktop::isLike(Desktop::seenAt(inside()), ScreenFilm::firstColour);
}

Cover::Cover(const QRect &over)
{
    const QString words = "-immutable -size %1x%2 -geometry +%3+%4 xc:%5"_s;
    m_program.start("display"_s, words.arg(over.width())
                                     .arg(over.height())
                                     .arg(over.x())
                                     .arg(over.y())
                                     .arg(colour().name())
                                     .split(u' '));
}

Cover::~Cover()
{
    m_program.terminate();
    m_program.waitForFinished();
}
