#include "platform/linux/tag_places.h"

#include "platform/linux/id3_frames.h"
#include "platform/linux/mpeg_file.h"

#include <QByteArray>

#include <algorithm>
#include <cstring>
#include <string_view>

namespace melovane::linux_media {

namespace {

constexpr qint64 kHeaderLength = 10;
constexpr qint64 kApeFooterLength = 32;
/// As many tags are looked at, at the beginning and at the end.
constexpr int kMaxTags = 8;

/// A tag with the place of its first byte behind it.
struct FoundTag
{
    Id3Place place;
    qint64 end = 0;
};

std::optional<FoundTag> id3v2At(MpegFile& file, qint64 at)
{
    const Bytes header = file.at(at, kHeaderLength);
    if (header.size() < size_t(kHeaderLength) || std::memcmp(header.data(), "ID3", 3) != 0 ||
        header[3] == 0xFF) {
        return std::nullopt;
    }
    constexpr unsigned kFooter = 0x10;
    FoundTag tag{{at + kHeaderLength, tagSize(header.data() + 6), header[3], header[5]}, 0};
    const bool hasFooter = tag.place.version == 4 && (tag.place.flags & kFooter) != 0;
    tag.end = tag.place.begin + tag.place.length + (hasFooter ? kHeaderLength : 0);
    return tag;
}

bool isReadable(const Id3Place& tag)
{
    return tag.version >= 2 && tag.version <= 4;
}

bool has(MpegFile& file, qint64 place, std::string_view mark)
{
    const Bytes bytes = file.at(place, qint64(mark.size()));
    return bytes.size() == mark.size() && std::memcmp(bytes.data(), mark.data(), mark.size()) == 0;
}

quint32 littleEndian32(const quint8* bytes)
{
    return quint32{bytes[3]} << 24U | quint32{bytes[2]} << 16U | quint32{bytes[1]} << 8U | bytes[0];
}

/// The tags in front of `end`, the last one of the file first.
class EndWalk
{
public:
    EndWalk(MpegFile& file, TagPlaces& places)
        : m_file(file)
        , m_places(places)
    {}

    /// Where a tag begins at the end of the file, of version 2; nothing when there is none.
    [[nodiscard]] std::optional<qint64> id3v2() const { return m_id3v2; }

    void walk()
    {
        m_places.soundEnd = m_file.size();
        for (int i = 0; i < kMaxTags; ++i) {
            const qint64 end = m_places.soundEnd;
            // The smallest look is at the last 355 bytes: one piece for all questions.
            static_cast<void>(m_file.at(std::max<qint64>(0, end - 355), 355));
            const qint64 length = lengthInFrontOf(end);
            if (length <= 0 || end - length < m_places.soundBegin) {
                return;
            }
            m_places.soundEnd -= length;
        }
    }

private:
    qint64 lengthInFrontOf(qint64 end)
    {
        if (has(m_file, end - 128, "TAG")) {
            return has(m_file, end - 128 - 227, "TAG+") ? 128 + 227 : 128;
        }
        if (has(m_file, end - kApeFooterLength, "APETAGEX")) {
            return ape(end);
        }
        if (has(m_file, end - 9, "LYRICS200")) {
            const Bytes digits = m_file.at(end - 15, 6);
            const QByteArray text(reinterpret_cast<const char*>(digits.data()),
                                  qsizetype(digits.size()));
            return qint64{text.toUInt()} + 15;
        }
        return has(m_file, end - kHeaderLength, "3DI") ? id3v2InFrontOf(end) : 0;
    }

    qint64 ape(qint64 end)
    {
        const Bytes footer = m_file.at(end - kApeFooterLength, kApeFooterLength);
        if (footer.size() < size_t(kApeFooterLength)) {
            return 0;
        }
        constexpr quint32 kVersion2 = 2000;
        constexpr quint32 kHasHeader = 0x80000000U;
        const quint32 version = littleEndian32(footer.data() + 8);
        const qint64 size = littleEndian32(footer.data() + 12);
        const bool hasHeader = (littleEndian32(footer.data() + 20) & kHasHeader) != 0;
        const qint64 whole = size + (hasHeader ? kApeFooterLength : 0);
        if (!m_places.ape && size > kApeFooterLength && end - whole >= m_places.soundBegin) {
            m_places.ape = {end - size, size - kApeFooterLength, version >= kVersion2};
        }
        return whole;
    }

    qint64 id3v2InFrontOf(qint64 end)
    {
        const Bytes size = m_file.at(end - 4, 4);
        if (size.size() < 4) {
            return 0;
        }
        const qint64 length = qint64{sevenBits32(size.data())} + 2 * kHeaderLength;
        if (!m_id3v2 && end - length >= m_places.soundBegin && has(m_file, end - length, "ID3")) {
            m_id3v2 = end - length;
        }
        return length;
    }

    MpegFile& m_file;
    TagPlaces& m_places;
    std::optional<qint64> m_id3v2;
};

void findLeading(MpegFile& file, TagPlaces& places)
{
    for (int i = 0; i < kMaxTags; ++i) {
        const auto tag = id3v2At(file, places.soundBegin);
        if (!tag) {
            return;
        }
        if (tag->end > file.size()) {
            places.oversized = true;
            return;
        }
        if (isReadable(tag->place)) {
            places.id3v2.push_back(tag->place);
        }
        places.soundBegin = tag->end;
    }
}

/// The bytes between this tag and the next one, as its frame SEEK tells; nothing without one.
std::optional<qint64> seekOf(MpegFile& file, const Id3Place& tag)
{
    constexpr quint32 kSeek = 0x5345454B; // "SEEK"
    if (tag.version != 4) {
        return std::nullopt;
    }
    const TagBody body(file, tag.begin, tag.length);
    const FrameWalk walk(body, tag.version, tag.isUnsynchronised());
    std::vector<quint8> decoded;
    qint64 place = tag.isExtended() ? extendedHeader(body, tag.version) : 0;
    for (int i = 0; i < kMaxFrames; ++i) {
        const auto header = walk.headerAt(place);
        if (!header) {
            return std::nullopt;
        }
        if (header->name == kSeek) {
            const Bytes offset = walk.contentAt(*header, place, decoded);
            return offset.size() < 4 ? std::nullopt
                                     : std::optional<qint64>(bigEndian32(offset.data()));
        }
        place += walk.headerLength() + header->size;
    }
    return std::nullopt;
}

/// Adds the tag that stands at `at` behind the sound, if one does.
void addTrailing(MpegFile& file, qint64 at, TagPlaces& places)
{
    const auto tag = id3v2At(file, at);
    if (!tag || !isReadable(tag->place) || at < places.soundBegin || tag->end > file.size()) {
        return;
    }
    places.id3v2.push_back(tag->place);
    if (at < places.soundEnd && tag->end >= places.soundEnd) {
        places.soundEnd = at;
    }
}

} // namespace

TagPlaces tagPlaces(MpegFile& file)
{
    TagPlaces places;
    findLeading(file, places);
    places.hasLeading = !places.id3v2.empty();
    EndWalk end(file, places);
    end.walk();
    if (!places.hasLeading) {
        if (end.id3v2()) {
            addTrailing(file, *end.id3v2(), places);
        }
    } else if (const auto seek = seekOf(file, places.id3v2.back())) {
        addTrailing(file, places.soundBegin + *seek, places);
    }
    return places;
}

} // namespace melovane::linux_media
