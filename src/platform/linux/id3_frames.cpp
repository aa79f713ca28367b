#include "platform/linux/id3_frames.h"

#include <zlib.h>

#include <algorithm>

namespace melovane::linux_media {

namespace {

constexpr quint32 frameName(const char (&text)[5])
{
    return static_cast<quint32>(text[0]) << 24U | static_cast<quint32>(text[1]) << 16U |
           static_cast<quint32>(text[2]) << 8U | static_cast<quint32>(text[3]);
}

constexpr quint32 frameName(const char (&text)[4])
{
    return static_cast<quint32>(text[0]) << 16U | static_cast<quint32>(text[1]) << 8U |
           static_cast<quint32>(text[2]);
}

/// The beginning of what the bytes unpack to, up to kLongestFrame; empty when they are damaged from
/// the start.
std::vector<quint8> unpacked(std::vector<quint8>& bytes)
{
    std::vector<quint8> result(kLongestFrame);
    z_stream stream = {};
    stream.next_in = bytes.data();
    stream.avail_in = static_cast<uInt>(bytes.size());
    stream.next_out = result.data();
    stream.avail_out = static_cast<uInt>(result.size());
    if (inflateInit(&stream) != Z_OK) {
        return {};
    }
    inflate(&stream, Z_FINISH);
    result.resize(result.size() - stream.avail_out);
    inflateEnd(&stream);
    return result;
}

bool isNameLetter(quint8 letter)
{
    return (letter >= 'A' && letter <= 'Z') || (letter >= '0' && letter <= '9');
}

} // namespace

FrameContent contentOf(quint32 name)
{
    switch (name) {
    case frameName("TIT2"):
    case frameName("TT2"):
        return FrameContent::Titel;
    case frameName("TPE1"):
    case frameName("TP1"):
        return FrameContent::Interpret;
    case frameName("TALB"):
    case frameName("TAL"):
        return FrameContent::Album;
    case frameName("TCON"):
    case frameName("TCO"):
        return FrameContent::Genre;
    case frameName("TYER"):
    case frameName("TYE"):
        return FrameContent::Year;
    case frameName("TDRC"):
        return FrameContent::RecordingTime;
    case frameName("TRCK"):
    case frameName("TRK"):
        return FrameContent::Track;
    case frameName("TBPM"):
    case frameName("TBP"):
        return FrameContent::BPM;
    case frameName("COMM"):
    case frameName("COM"):
        return FrameContent::Comment;
    case frameName("POPM"):
    case frameName("POP"):
        return FrameContent::Rating;
    case frameName("TXXX"):
    case frameName("TXX"):
        return FrameContent::UserText;
    case frameName("APIC"):
    case frameName("PIC"):
        return FrameContent::Picture;
    default:
        return FrameContent::Nothing;
    }
}

std::vector<quint8> synchronised(Bytes bytes)
{
    std::vector<quint8> result;
    result.reserve(bytes.size());
    for (size_t i = 0; i < bytes.size(); ++i) {
        result.push_back(bytes[i]);
        if (bytes[i] == 0xFF && i + 1 < bytes.size() && bytes[i + 1] == 0) {
            ++i;
        }
    }
    return result;
}

std::optional<FrameHeader> FrameWalk::headerAt(qint64 place) const
{
    const auto header = anyHeaderAt(place);
    const bool fits = header && header->size <= m_body.length() - place - headerLength();
    return fits ? header : std::nullopt;
}

std::optional<FrameHeader> FrameWalk::anyHeaderAt(qint64 place) const
{
    const Bytes bytes = m_body.at(place, headerLength());
    const size_t nameLength = m_version == 2 ? 3 : 4;
    if (bytes.size() < static_cast<size_t>(headerLength()) ||
        !std::all_of(bytes.begin(), bytes.begin() + static_cast<long>(nameLength), isNameLetter)) {
        return std::nullopt;
    }
    FrameHeader header;
    if (m_version == 2) {
        header.name = bigEndian24(bytes.data());
        header.size = bigEndian24(bytes.data() + 3);
        return header;
    }
    header.name = bigEndian32(bytes.data());
    const quint32 plain = bigEndian32(bytes.data() + 4);
    const unsigned flags = bytes[9];
    if (m_version == 3) {
        header.size = plain;
        header.compressed = header.hasLength = (flags & 0x80U) != 0;
        header.encrypted = (flags & 0x40U) != 0;
        header.grouped = (flags & 0x20U) != 0;
        return header;
    }
    header.grouped = (flags & 0x40U) != 0;
    header.compressed = (flags & 0x08U) != 0;
    header.encrypted = (flags & 0x04U) != 0;
    header.unsynchronised = m_unsynchronised || (flags & 0x02U) != 0;
    header.hasLength = (flags & 0x01U) != 0;
    header.size = sizeOfVersion4(place, plain, sevenBits32(bytes.data() + 4));
    return header;
}

/// Some programs write plain sizes into version 4; the place of the next frame tells.
qint64 FrameWalk::sizeOfVersion4(qint64 place, quint32 plain, quint32 sevenBits) const
{
    const qint64 begin = place + headerLength();
    if (plain == sevenBits || startsFrame(begin + sevenBits)) {
        return sevenBits;
    }
    // In front of padding, too, unless something of another program stands where the frame ends by
    // its size of seven bits.
    const bool fits = startsFrame(begin + plain) &&
                      (startsNamedFrame(begin + plain) || !startsStrange(begin + sevenBits));
    return fits ? plain : sevenBits;
}

/// True for a frame's name, padding, and the end of the tag.
bool FrameWalk::startsFrame(qint64 place) const
{
    const Bytes name = m_body.at(place, 4);
    return place == m_body.length() || startsNamedFrame(place) ||
           (!name.empty() &&
            std::all_of(name.begin(), name.end(), [](quint8 byte) { return byte == 0; }));
}

bool FrameWalk::startsNamedFrame(qint64 place) const
{
    const Bytes name = m_body.at(place, 4);
    return !name.empty() && std::all_of(name.begin(), name.end(), isNameLetter);
}

/// True for a frame whose name has small letters, as some programs write their own.
bool FrameWalk::startsStrange(qint64 place) const
{
    const Bytes header = m_body.at(place, headerLength());
    const auto isAnyLetter = [](quint8 letter) {
        return isNameLetter(letter) || (letter >= 'a' && letter <= 'z');
    };
    return qint64(header.size()) == headerLength() &&
           std::all_of(header.begin(), header.begin() + 4, isAnyLetter) &&
           bigEndian32(header.data() + 4) <= m_body.length() - place - headerLength();
}

Bytes FrameWalk::contentAt(const FrameHeader& header,
                           qint64 place,
                           std::vector<quint8>& decoded,
                           qint64 longest) const
{
    const qint64 extra = (header.grouped ? 1 : 0) + (header.hasLength ? 4 : 0);
    const qint64 length = header.size - extra;
    if (length <= 0 || header.encrypted) {
        return {};
    }
    const Bytes stored = m_body.at(place + headerLength() + extra, std::min(length, longest));
    if (!header.unsynchronised && !header.compressed) {
        return stored;
    }
    decoded = header.unsynchronised ? synchronised(stored)
                                    : std::vector<quint8>(stored.begin(), stored.end());
    if (header.compressed) {
        decoded = unpacked(decoded);
    }
    return decoded;
}

qint64 extendedHeader(const TagBody& body, int version)
{
    const Bytes size = body.at(0, 4);
    if (size.size() < 4) {
        return 0;
    }
    return version == 4 ? qint64{sevenBits32(size.data())} : qint64{bigEndian32(size.data())} + 4;
}

qint64 tagSize(const quint8* bytes)
{
    const bool plain = std::any_of(bytes, bytes + 4, [](quint8 byte) { return byte >= 0x80; });
    return plain ? bigEndian32(bytes) : sevenBits32(bytes);
}

} // namespace melovane::linux_media
