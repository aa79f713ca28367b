#include "platform/linux/ape_tag.h"

#include "platform/linux/id3_text.h"
#include "platform/linux/mpeg_file.h"
#include "platform/linux/tag_places.h"

#include <QByteArray>

#include <algorithm>
#include <array>

namespace melovane::linux_media {

namespace {

/// Numbers of ID3v2, whose texts are decoded in the same way.
constexpr int kSingleBytes = 0;
constexpr int kUtf8 = 3;

constexpr int kMaxItems = 1024;
/// Size and flags of an item; its name and a zero follow.
constexpr qint64 kItemHeader = 8;
constexpr qint64 kLongestName = 255;

struct ApeField
{
    const char* name; ///< in small letters
    QString TagFields::*field;
    bool isJoined = false;
};

constexpr std::array kFields = std::to_array<ApeField>({
    {"title", &TagFields::Titel},
    {"artist", &TagFields::Interpret, true},
    {"album", &TagFields::Album},
    {"year", &TagFields::Jahr},
    {"genre", &TagFields::Genre, true},
    {"track", &TagFields::Track},
    {"comment", &TagFields::Kommentar},
});

quint32 littleEndian32(const quint8* bytes)
{
    return quint32{bytes[3]} << 24U | quint32{bytes[2]} << 16U | quint32{bytes[1]} << 8U | bytes[0];
}

void take(const QByteArray& name, std::span<const quint8> value, bool isUtf8, TagFields& fields)
{
    const auto* const field =
        std::find_if(kFields.begin(), kFields.end(),
                     [&](const ApeField& each) { return name.toLower() == each.name; });
    if (field == kFields.end() || !(fields.*field->field).isEmpty()) {
        return;
    }
    const int encoding = isUtf8 ? kUtf8 : kSingleBytes;
    fields.*field->field =
        field->isJoined ? decodeValues(encoding, value) : decodeText(encoding, value);
}

} // namespace

void readApe(MpegFile& file, const ApePlace& place, TagFields& fields)
{
    constexpr quint32 kKindOfContent = 6; // 0 is text
    const qint64 end = place.begin + place.length;
    qint64 at = place.begin;
    for (int i = 0; i < kMaxItems && at < end; ++i) {
        const auto header = file.at(at, std::min(end - at, kItemHeader + kLongestName + 1));
        const auto zero = qint64(header.size()) <= kItemHeader
                              ? header.end()
                              : std::find(header.begin() + kItemHeader, header.end(), quint8{0});
        if (zero == header.end()) {
            break;
        }
        const qint64 size = littleEndian32(header.data());
        const quint32 flags = littleEndian32(header.data() + 4);
        const QByteArray name(reinterpret_cast<const char*>(header.data()) + kItemHeader,
                              zero - header.begin() - kItemHeader);
        at += kItemHeader + name.size() + 1;
        if (size > end - at) {
            break;
        }
        if ((flags & kKindOfContent) == 0) {
            // A letter has four bytes at most.
            take(name, file.at(at, std::min<qint64>(size, qint64{4} * kLongestText)), place.isUtf8,
                 fields);
        }
        at += size;
    }
    fields.Jahr = yearOfRecordingTime(fields.Jahr);
}

} // namespace melovane::linux_media
