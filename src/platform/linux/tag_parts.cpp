#include "platform/linux/tag_parts.h"

#include <algorithm>
#include <cstring>

namespace melovane::linux_media {

namespace {

constexpr qint64 kHeaderLength = 10;
/// Flags of a tag's header.
constexpr quint8 kUnsynchronised = 0x80;
constexpr quint8 kExtended = 0x40; ///< in version 2.2 a compression that was never defined
constexpr quint8 kFooter = 0x10;
/// Flags of a frame, in its tenth byte.
constexpr char kGroup3 = 0x20;
constexpr char kGroup4 = 0x40;
constexpr char kFrameUnsynchronised = 0x02;

QByteArray bytesOf(Bytes bytes)
{
    return {reinterpret_cast<const char*>(bytes.data()), qsizetype(bytes.size())};
}

QByteArray all(const TagBody& body, qint64 begin, qint64 end)
{
    return bytesOf(body.at(begin, end - begin));
}

QByteArray plainNumber(qint64 number, int bytes)
{
    QByteArray result;
    for (int i = bytes - 1; i >= 0; --i) {
        result += char(number >> (8 * i) & 0xFF);
    }
    return result;
}

QByteArray sevenBits(qint64 number)
{
    QByteArray result;
    for (int i = 3; i >= 0; --i) {
        result += char(number >> (7 * i) & 0x7F);
    }
    return result;
}

/// Puts a zero behind each 0xFF that would be mistaken for sound, or for such a pair.
QByteArray unsynchronised(const QByteArray& bytes)
{
    QByteArray result;
    for (qsizetype i = 0; i < bytes.size(); ++i) {
        result += bytes[i];
        const quint8 next = i + 1 < bytes.size() ? quint8(bytes[i + 1]) : 0xFF;
        if (quint8(bytes[i]) == 0xFF && (next == 0 || next >= 0xE0)) {
            result += '\0';
        }
    }
    return result;
}

/// Length of something that has a frame's header but not its name; 0 when nothing of that kind
/// stands here.
qint64 strangeLength(const TagBody& body, qint64 place, int version)
{
    const qint64 headerLength = version == 2 ? 6 : 10;
    const Bytes header = body.at(place, headerLength);
    if (qint64(header.size()) < headerLength || header[0] == 0) {
        return 0;
    }
    const qint64 size = version == 2   ? bigEndian24(header.data() + 3)
                        : version == 3 ? bigEndian32(header.data() + 4)
                                       : sevenBits32(header.data() + 4);
    return size <= body.length() - place - headerLength ? headerLength + size : 0;
}

/// The byte that names a frame's group, if it has one.
QByteArray groupOf(const StoredFrame& frame, int version)
{
    if (version == 2 || frame.bytes.size() < kHeaderLength) {
        return {};
    }
    const char flags = frame.bytes[9];
    // In version 2.3 the length of what is compressed stands in front of it.
    const qsizetype place = version == 3 && quint8(flags) >= 0x80 ? 14 : kHeaderLength;
    const char group = version == 3 ? kGroup3 : kGroup4;
    return (flags & group) != 0 ? frame.bytes.mid(place, 1) : QByteArray();
}

} // namespace

qint64 tagLength(Bytes header)
{
    if (header.size() < size_t(kHeaderLength) || std::memcmp(header.data(), "ID3", 3) != 0 ||
        header[3] == 0xFF) {
        return 0;
    }
    const bool footer = header[3] == 4 && (header[5] & kFooter) != 0;
    return kHeaderLength + tagSize(header.data() + 6) + (footer ? kHeaderLength : 0);
}

std::optional<TagParts> TagParts::of(Bytes tag)
{
    const qint64 length = tagLength(tag);
    if (length == 0 || length > qint64(tag.size())) {
        return std::nullopt;
    }
    TagParts parts;
    parts.m_version = tag[3];
    parts.m_revision = char(tag[4]);
    const quint8 flags = tag[5];
    if (parts.m_version < 2 || parts.m_version > 4 ||
        (parts.m_version == 2 && (flags & kExtended) != 0)) {
        return std::nullopt;
    }
    const Bytes stored = tag.subspan(kHeaderLength, size_t(tagSize(tag.data() + 6)));
    const bool decode = (flags & kUnsynchronised) != 0 && parts.m_version != 4;
    const TagBody body(decode ? synchronised(stored)
                              : std::vector<quint8>(stored.begin(), stored.end()));
    parts.m_flags = flags;
    qint64 place = 0;
    if ((flags & kExtended) != 0) {
        place = extendedHeader(body, parts.m_version);
        if (!parts.takeExtendedHeader(body, place)) {
            return std::nullopt;
        }
    }
    parts.takeRest(body, parts.takeFrames(body, place));
    parts.m_flags &= quint8(~(parts.m_version == 4 ? kFooter : kUnsynchronised));
    return parts;
}

TagParts TagParts::withOnly(std::vector<StoredFrame> frames) const
{
    TagParts parts;
    parts.m_version = m_version;
    parts.m_revision = m_revision;
    parts.m_flags = m_flags & quint8(~kExtended);
    parts.m_frames = std::move(frames);
    return parts;
}

bool TagParts::takesFramesOf(const TagParts& other) const
{
    const auto decodes = [](quint8 flags) { return flags & kUnsynchronised; };
    return m_version == other.m_version && decodes(m_flags) == decodes(other.m_flags);
}

bool TagParts::takeExtendedHeader(const TagBody& body, qint64 length)
{
    const QByteArray header = all(body, 0, length);
    if (header.size() < length) {
        return false;
    }
    if (m_version == 3) {
        constexpr qint64 kWithoutChecksum = 10;
        if (length < kWithoutChecksum) {
            return false;
        }
        m_extended = header.first(kWithoutChecksum);
        m_extended.replace(0, 4, plainNumber(kWithoutChecksum - 4, 4));
        m_extended[4] = char(m_extended[4] & 0x7F);
        return true;
    }
    if (length < 6 || header[4] != 1) {
        return false;
    }
    constexpr char kUpdate = 0x40;
    constexpr char kRestrictions = 0x10;
    const char kept = char(header[5] & (kUpdate | kRestrictions));
    const QByteArray restrictions = (kept & kRestrictions) != 0 ? header.last(2) : QByteArray();
    const QByteArray data = (kept & kUpdate) != 0 ? QByteArray(1, '\0') : QByteArray();
    m_extended = QByteArray(1, '\1') + kept + data + restrictions;
    m_extended.prepend(sevenBits(m_extended.size() + 4));
    return restrictions.isEmpty() || restrictions[0] == 1;
}

qint64 TagParts::takeFrames(const TagBody& body, qint64 place)
{
    const FrameWalk walk(body, m_version, (m_flags & kUnsynchronised) != 0);
    std::vector<quint8> decoded;
    while (const auto header = walk.headerAt(place)) {
        StoredFrame frame;
        frame.isEmpty = header->size == 0;
        const qint64 end = place + walk.headerLength() + header->size;
        frame.bytes = all(body, place, end);
        m_plainSizes =
            m_plainSizes || (m_version == 4 && frame.bytes.mid(4, 4) != sevenBits(header->size));
        if (m_frames.size() < size_t(kMaxFrames) && !header->encrypted) {
            frame.content = contentOf(header->name);
        }
        if (frame.content != FrameContent::Nothing) {
            frame.plain = bytesOf(walk.contentAt(*header, place, decoded, body.length()));
        }
        m_frames.push_back(frame);
        place = end;
    }
    return place;
}

void TagParts::takeRest(const TagBody& body, qint64 place)
{
    qint64 end = place;
    for (qint64 length = strangeLength(body, end, m_version); length > 0;
         length = strangeLength(body, end, m_version)) {
        end += length;
    }
    const QByteArray behind = all(body, end, body.length());
    qsizetype used = behind.size();
    while (used > 0 && behind[used - 1] == '\0') {
        --used;
    }
    m_rest = all(body, place, end) + behind.first(used);
}

StoredFrame TagParts::frameWith(const QByteArray& name,
                                const QByteArray& content,
                                const StoredFrame* former) const
{
    StoredFrame frame;
    frame.content = former != nullptr ? former->content : FrameContent::Nothing;
    frame.plain = content;
    const QByteArray called =
        former != nullptr ? former->bytes.first(m_version == 2 ? 3 : 4) : name;
    if (m_version == 2) {
        frame.bytes = called + plainNumber(content.size(), 3) + content;
        return frame;
    }
    const QByteArray group = former != nullptr ? groupOf(*former, m_version) : QByteArray();
    const char groupFlag = m_version == 3 ? kGroup3 : kGroup4;
    char flags = group.isEmpty() ? '\0' : groupFlag;
    QByteArray stored = content;
    if (m_version == 4 && (m_flags & kUnsynchronised) != 0) {
        stored = unsynchronised(content);
        flags = char(flags | (stored.size() > content.size() ? kFrameUnsynchronised : '\0'));
    }
    stored.prepend(group);
    frame.bytes =
        called + sizeFor(stored) + (former != nullptr ? former->bytes[8] : '\0') + flags + stored;
    return frame;
}

/// In a tag of plain sizes some readers take every size for a plain one. Ours and others look where
/// the next frame stands, so nothing that looks like one may stand where a size of seven bits
/// points.
QByteArray TagParts::sizeFor(const QByteArray& content) const
{
    const QByteArray plain = plainNumber(content.size(), 4);
    if (m_version == 3) {
        return plain;
    }
    const auto place = qsizetype(sevenBits32(reinterpret_cast<const quint8*>(plain.constData())));
    const QByteArray there = content.mid(place, 4);
    const bool isClear = std::any_of(there.begin(), there.end(), [](char byte) {
        return byte != '\0' && (byte < '0' || byte > 'Z');
    });
    return m_plainSizes && isClear ? plain : sevenBits(content.size());
}

qint64 TagParts::needed() const
{
    qint64 size = kHeaderLength + m_extended.size() + m_rest.size();
    for (const StoredFrame& frame : m_frames) {
        size += frame.bytes.size();
    }
    return size;
}

QByteArray TagParts::extendedHeaderFor(qint64 padding) const
{
    QByteArray header = m_extended;
    if (m_version == 3 && !header.isEmpty()) {
        constexpr qsizetype kPlaceOfPadding = 6;
        header.replace(kPlaceOfPadding, 4, plainNumber(padding, 4));
    }
    return header;
}

QByteArray TagParts::bytes(qint64 length) const
{
    const qint64 padding = length - needed();
    QByteArray tag;
    tag.reserve(length);
    tag += "ID3";
    tag += char(m_version);
    tag += m_revision;
    tag += char(m_flags);
    tag += sevenBits(length - kHeaderLength);
    tag += extendedHeaderFor(padding);
    for (const StoredFrame& frame : m_frames) {
        tag += frame.bytes;
    }
    tag += m_rest;
    return tag + QByteArray(padding, '\0');
}

} // namespace melovane::linux_media
