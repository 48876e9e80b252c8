// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoGif/gifpictures.h"

#include <QFile>

namespace {

// What the file is made of, by the first byte of each part.
constexpr uchar picture = 0x2C;
constexpr uchar extension = 0x21;

constexpr qint64 headerSize = 13;
constexpr qint64 pictureHeadSize = 10;

// Walks over the parts of a GIF that lies in memory.
class Walk
{
public:
    Walk(const uchar *bytes, qint64 size) : m_bytes(bytes), m_size(size) {}

    qint64 place() const { return m_place; }
    uchar at(qint64 place) const { return place < m_size ? m_bytes[place] : 0; }
    uchar here() const { return at(m_place); }
    void skip(qint64 count) { m_place += count; }
    // A table of colours, whose size stands among flags; there may be none.
    void skipColours(uchar flags)
    {
        if (flags & 0x80)
            skip(3LL << ((flags & 7) + 1));
    }
    // Blocks with their length in front, up to an empty one.
    void skipBlocks()
    {
        while (here() != 0)
            skip(here() + 1);
        skip(1);
    }

private:
    const uchar *m_bytes;
    qint64 m_size;
    qint64 m_place = 0;
};

} // namespace

GifBytes gifBytes(const QString &path)
{
    QFile file(path);
    GifBytes found;
    if (!file.open(QIODevice::ReadOnly))
        return found;
    const uchar *bytes = file.map(0, file.size());
    if (!bytes)
        return found;
    found.all = file.size();
    Walk walk(bytes, file.size());
    walk.skip(headerSize);
    walk.skipColours(walk.at(headerSize - 3));
    while (walk.here() == picture || walk.here() == extension) {
        const bool isPicture = walk.here() == picture;
        walk.skip(isPicture ? pictureHeadSize : 2);
        if (isPicture) {
            walk.skipColours(walk.at(walk.place() - 1));
            walk.skip(1);
        }
        walk.skipBlocks();
        if (isPicture && found.pictures++ == 0)
            found.first = walk.place();
    }
    return found;
}
