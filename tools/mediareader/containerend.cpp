// SPDX-License-Identifier: MIT
#include "mediareader/containerend.h"

#include <QFile>
#include <QtEndian>

#include <algorithm>
#include <cstring>

namespace {

// The headers that are looked for stand in here.
constexpr int headBytes = 8192;

template<class Number>
Number littleEndianAt(const QByteArray &head, int at)
{
    return at >= 0 && at + int(sizeof(Number)) <= head.size()
               ? qFromLittleEndian<Number>(head.constData() + at)
               : Number(0);
}

qint64 riffSize(const QByteArray &head)
{
    constexpr int headSize = 8;
    const auto size = littleEndianAt<quint32>(head, 4);
    return size == 0 || size == 0xFFFFFFFFU ? 0 : qint64(size) + headSize;
}

qint64 wave64Size(const QByteArray &head)
{
    constexpr int sizeAt = 16;
    return std::max<qint64>(littleEndianAt<qint64>(head, sizeAt), 0);
}

// A number whose first byte's leading zeros tell how many bytes it has; with all bits set it means
// "unknown". Moves `at` behind it.
// @return 0 for unknown or for a number that isn't there
qint64 ebmlSize(const QByteArray &head, int &at)
{
    if (at >= head.size() || head[at] == 0)
        return 0;
    const auto first = quint8(head[at++]);
    int following = 0;
    while ((first & (0x80 >> following)) == 0)
        ++following;
    qint64 value = first & (0x7F >> following);
    bool isOpen = value == (0x7F >> following);
    for (int i = 0; i < following; ++i) {
        if (at >= head.size())
            return 0;
        const auto byte = quint8(head[at++]);
        isOpen = isOpen && byte == 0xFF;
        value = value << 8 | byte;
    }
    return isOpen ? 0 : value;
}

// An EBML header, then the one segment that holds everything else.
qint64 matroskaSize(const QByteArray &head)
{
    static const QByteArray segmentId("\x18\x53\x80\x67", 4);
    int at = 4;
    const qint64 headerSize = ebmlSize(head, at);
    if (headerSize >= headBytes)
        return 0;
    at += int(headerSize);
    if (head.mid(at, segmentId.size()) != segmentId)
        return 0;
    at += segmentId.size();
    const qint64 size = ebmlSize(head, at);
    return size == 0 ? 0 : at + size;
}

// The file's size stands in the object of its properties, behind the object's size and an id.
qint64 asfSize(const QByteArray &head)
{
    static const QByteArray propertiesId(
        "\xA1\xDC\xAB\x8C\x47\xA9\xCF\x11\x8E\xE4\x00\xC0\x0C\x20\x53\x65", 16);
    constexpr int sizeBehind = 40;
    const int at = head.indexOf(propertiesId);
    return at < 0 ? 0 : std::max<qint64>(littleEndianAt<qint64>(head, at + sizeBehind), 0);
}

// A property of the script data at the file's beginning: its name, a zero and a number.
qint64 flvSize(const QByteArray &head)
{
    static const QByteArray name("filesize\0", 9);
    const int at = head.indexOf(name) + name.size();
    if (at < name.size() || at + int(sizeof(double)) > head.size())
        return 0;
    const auto bits = qFromBigEndian<quint64>(head.constData() + at);
    double size = 0.0;
    std::memcpy(&size, &bits, sizeof size);
    constexpr double most = 1e18;
    return size > 0.0 ? qint64(std::min(size, most)) : 0;
}

// The properties that follow the file's own header tell where the chunk begins that holds all that
// is to be played, and that its own size. Numbers are big-endian.
qint64 realMediaSize(const QByteArray &head)
{
    constexpr int propertiesAt = 18;
    constexpr int dataAt = propertiesAt + 42;
    constexpr int numberSize = int(sizeof(quint32));
    if (head.mid(propertiesAt, 4) != "PROP" || head.size() < dataAt + numberSize)
        return 0;
    const qint64 begin = qFromBigEndian<quint32>(head.constData() + dataAt);
    if (begin + 2 * numberSize > head.size() || head.mid(int(begin), 4) != "DATA")
        return 0;
    // Ffmpeg counts some bytes of the chunk's head twice.
    constexpr qint64 chunkHead = 18;
    return begin + qFromBigEndian<quint32>(head.constData() + begin + numberSize) - chunkHead;
}

} // namespace

std::optional<qint64> toldFileSize(const QString &path)
{
    const struct
    {
        QByteArray begin;
        qint64 (*size)(const QByteArray &head);
    } containers[] = {
        {"RIFF", riffSize},
        {"riff", wave64Size},
        {"\x1A\x45\xDF\xA3", matroskaSize},
        {"\x30\x26\xB2\x75", asfSize},
        {"FLV\x01", flvSize},
        {".RMF", realMediaSize},
    };
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    const QByteArray head = file.read(headBytes);
    for (const auto &container : containers) {
        if (head.startsWith(container.begin))
            return container.size(head);
    }
    return std::nullopt;
}
