#pragma once

#include <QByteArray>

#include <algorithm>
#include <vector>

namespace melovane::test {

/// A frame as it stands in a tag.
struct RawFrame
{
    QByteArray name;
    QByteArray bytes; ///< header and content

    bool operator==(const RawFrame& other) const = default;
};

/// A tag as its bytes say, walked without the program's own classes: sizes of seven bits in version
/// 4, plain ones before, no extended header, no unsynchronisation.
struct RawTag
{
    int version = 0;
    int flags = 0;
    qint64 size = 0; ///< with its header
    std::vector<RawFrame> frames;
    QByteArray rest; ///< behind the last frame, with the padding
};

inline qint64 rawNumber(const QByteArray& bytes, int bits)
{
    qint64 number = 0;
    for (const char byte : bytes) {
        number = number << bits | (quint8(byte) & ((1 << bits) - 1));
    }
    return number;
}

/// \param skip bytes of an extended header in front of the frames
inline RawTag rawTag(const QByteArray& bytes, qint64 skip = 0)
{
    RawTag tag;
    if (bytes.size() < 10 || !bytes.startsWith("ID3")) {
        return tag;
    }
    tag.version = static_cast<unsigned char>(bytes[3]);
    tag.flags = quint8(bytes[5]);
    tag.size = 10 + rawNumber(bytes.mid(6, 4), 7);
    const qsizetype nameLength = tag.version == 2 ? 3 : 4;
    const qsizetype header = tag.version == 2 ? 6 : 10;
    qint64 place = 10 + skip;
    while (place + header <= tag.size) {
        const QByteArray name = bytes.mid(place, nameLength);
        if (!std::all_of(name.begin(), name.end(), [](char letter) {
                return (letter >= 'A' && letter <= 'Z') || (letter >= '0' && letter <= '9');
            })) {
            break;
        }
        const qint64 size =
            rawNumber(bytes.mid(place + nameLength, nameLength), tag.version == 4 ? 7 : 8);
        if (place + header + size > tag.size) {
            break;
        }
        tag.frames.push_back({name, bytes.mid(place, header + size)});
        place += header + size;
    }
    tag.rest = bytes.mid(place, tag.size - place);
    return tag;
}

inline std::vector<QByteArray> namesOf(const RawTag& tag)
{
    std::vector<QByteArray> names;
    for (const RawFrame& frame : tag.frames) {
        names.push_back(frame.name);
    }
    return names;
}

} // namespace melovane::test
