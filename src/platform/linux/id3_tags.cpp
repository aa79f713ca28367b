#include "platform/linux/id3_tags.h"

#include "platform/linux/id3_text.h"
#include "platform/linux/mpeg_file.h"

#include <QHash>

#include <zlib.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <vector>

namespace melovane::linux_media {

namespace {

using Bytes = std::span<const quint8>;

constexpr qint64 kHeaderLength = 10;
/// A frame with texts is read up to here; the rest of a longer one is not looked at.
constexpr qint64 kLongestFrame = qint64{256} * 1024;
/// Of an unsynchronised tag so much is read; texts stand in front of pictures in practice.
constexpr qint64 kLongestUnsynchronised = qint64{1024} * 1024;
constexpr int kMaxFrames = 4096;
constexpr int kMaxTags = 8;

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

/// What a frame holds for us.
enum class Content
{
    Nothing,
    Titel,
    Interpret,
    Album,
    Genre,
    Year,          ///< TYER
    RecordingTime, ///< TDRC
    Track,
    BPM,
    Comment,
    Rating,
    UserText,
    Picture
};

Content contentOf(quint32 name)
{
    switch (name) {
    case frameName("TIT2"):
    case frameName("TT2"):
        return Content::Titel;
    case frameName("TPE1"):
    case frameName("TP1"):
        return Content::Interpret;
    case frameName("TALB"):
    case frameName("TAL"):
        return Content::Album;
    case frameName("TCON"):
    case frameName("TCO"):
        return Content::Genre;
    case frameName("TYER"):
    case frameName("TYE"):
        return Content::Year;
    case frameName("TDRC"):
        return Content::RecordingTime;
    case frameName("TRCK"):
    case frameName("TRK"):
        return Content::Track;
    case frameName("TBPM"):
    case frameName("TBP"):
        return Content::BPM;
    case frameName("COMM"):
    case frameName("COM"):
        return Content::Comment;
    case frameName("POPM"):
    case frameName("POP"):
        return Content::Rating;
    case frameName("TXXX"):
    case frameName("TXX"):
        return Content::UserText;
    case frameName("APIC"):
    case frameName("PIC"):
        return Content::Picture;
    default:
        return Content::Nothing;
    }
}

void keepFirst(QString& field, const QString& text)
{
    if (field.isEmpty()) {
        field = text;
    }
}

/// Fields that are stored as texts with a name of our own.
QString* userField(TrackTags& tags, const QString& name)
{
    using Member = QString TrackTags::*;
    static const QHash<QString, Member> members = {
        {QStringLiteral("fid"), &TrackTags::FID},
        {QStringLiteral("kategorie"), &TrackTags::Kategorie},
        {QStringLiteral("situation"), &TrackTags::Situation},
        {QStringLiteral("stimmung"), &TrackTags::Stimmung},
        {QStringLiteral("tempo"), &TrackTags::Tempo},
        {QStringLiteral("user1"), &TrackTags::User1},
        {QStringLiteral("user2"), &TrackTags::User2},
        {QStringLiteral("user3"), &TrackTags::User3},
        {QStringLiteral("user4"), &TrackTags::User4},
        {QStringLiteral("user5"), &TrackTags::User5}};
    const auto found = members.constFind(name.toLower());
    return found == members.constEnd() ? nullptr : &(tags.*found.value());
}

void takeComment(TrackTags& tags, Bytes body)
{
    constexpr size_t kLanguage = 3;
    if (body.size() < 1 + kLanguage) {
        return;
    }
    const int encoding = body[0];
    const Bytes texts = body.subspan(1 + kLanguage);
    // Comments with a description hold data of other programs.
    if (decodeText(encoding, texts).isEmpty()) {
        keepFirst(tags.id3v2.Kommentar, decodeText(encoding, behindText(encoding, texts)));
    }
}

void takeUserText(TrackTags& tags, Bytes body)
{
    const int encoding = body[0];
    const Bytes texts = body.subspan(1);
    constexpr size_t kLongestName = 64;
    const QString name = decodeText(encoding, texts.first(std::min(texts.size(), kLongestName)));
    if (QString* field = userField(tags, name)) {
        keepFirst(*field, decodeText(encoding, behindText(encoding, texts)));
    }
}

void takeRating(TrackTags& tags, Bytes body)
{
    constexpr size_t kLength = sizeof(kRatingAddress); // with its terminator
    if (body.size() > kLength && std::memcmp(body.data(), kRatingAddress, kLength) == 0) {
        keepFirst(tags.Note, ratingOfByte(body[kLength]));
    }
}

/// The fields of a tag while its frames are read.
struct Collected
{
    TrackTags& tags;
    QString year;
    QString recordingTime;
};

QString* textField(Collected& into, Content content)
{
    TagFields& fields = into.tags.id3v2;
    switch (content) {
    case Content::Titel:
        return &fields.Titel;
    case Content::Interpret:
        return &fields.Interpret;
    case Content::Album:
        return &fields.Album;
    case Content::Genre:
        return &fields.Genre;
    case Content::Track:
        return &fields.Track;
    case Content::BPM:
        return &into.tags.BPM;
    case Content::Year:
        return &into.year;
    case Content::RecordingTime:
        return &into.recordingTime;
    case Content::Comment:
    case Content::Rating:
    case Content::UserText:
    case Content::Picture:
    case Content::Nothing:
        return nullptr;
    }
    return nullptr;
}

void takeFrame(Collected& into, Content content, Bytes body)
{
    if (body.empty()) {
        return;
    }
    if (QString* field = textField(into, content)) {
        keepFirst(*field, decodeText(body[0], body.subspan(1)));
    } else if (content == Content::Comment) {
        takeComment(into.tags, body);
    } else if (content == Content::UserText) {
        takeUserText(into.tags, body);
    } else if (content == Content::Rating) {
        takeRating(into.tags, body);
    } else if (content == Content::Picture) {
        into.tags.hasPicture = true;
    }
}

/// The frames of one tag: bytes of the file, or of memory when they had to be decoded first.
class TagBody
{
public:
    TagBody(MpegFile& file, qint64 begin, qint64 length)
        : m_file(&file)
        , m_begin(begin)
        , m_length(length)
    {}

    explicit TagBody(std::vector<quint8> bytes)
        : m_bytes(std::move(bytes))
        , m_length(static_cast<qint64>(m_bytes.size()))
    {}

    [[nodiscard]] qint64 length() const { return m_length; }

    [[nodiscard]] Bytes at(qint64 offset, qint64 length) const
    {
        if (offset < 0 || offset >= m_length) {
            return {};
        }
        length = std::min(length, m_length - offset);
        if (m_file != nullptr) {
            return m_file->at(m_begin + offset, length);
        }
        return Bytes(m_bytes).subspan(static_cast<size_t>(offset), static_cast<size_t>(length));
    }

private:
    MpegFile* m_file = nullptr;
    std::vector<quint8> m_bytes;
    qint64 m_begin = 0;
    qint64 m_length = 0;
};

/// Takes the zero out that was put behind each 0xFF.
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

struct FrameHeader
{
    quint32 name = 0;
    qint64 size = 0;
    bool grouped = false;
    bool compressed = false;
    bool encrypted = false;
    bool unsynchronised = false;
    bool hasLength = false;
};

class FrameReader
{
public:
    FrameReader(const TagBody& body, int version, bool unsynchronised, Collected& into)
        : m_body(body)
        , m_version(version)
        , m_unsynchronised(unsynchronised && version == 4)
        , m_into(into)
    {}

    void readFrom(qint64 place)
    {
        for (int i = 0; i < kMaxFrames; ++i) {
            const auto header = headerAt(place);
            if (!header || header->size > m_body.length() - place - headerLength()) {
                return;
            }
            take(*header, place + headerLength());
            place += headerLength() + header->size;
        }
    }

private:
    [[nodiscard]] qint64 headerLength() const { return m_version == 2 ? 6 : 10; }

    /// Nothing at padding, at the end, and where no frame starts.
    [[nodiscard]] std::optional<FrameHeader> headerAt(qint64 place) const
    {
        const Bytes bytes = m_body.at(place, headerLength());
        const size_t nameLength = m_version == 2 ? 3 : 4;
        if (bytes.size() < static_cast<size_t>(headerLength()) ||
            !std::all_of(bytes.begin(), bytes.begin() + static_cast<long>(nameLength),
                         isNameLetter)) {
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
    [[nodiscard]] qint64 sizeOfVersion4(qint64 place, quint32 plain, quint32 sevenBits) const
    {
        if (plain == sevenBits || startsFrame(place + headerLength() + sevenBits)) {
            return sevenBits;
        }
        return startsFrame(place + headerLength() + plain) ? plain : sevenBits;
    }

    /// True for a frame's name, padding, and the end of the tag.
    [[nodiscard]] bool startsFrame(qint64 place) const
    {
        if (place == m_body.length()) {
            return true;
        }
        const Bytes name = m_body.at(place, 4);
        return !name.empty() &&
               (std::all_of(name.begin(), name.end(), isNameLetter) ||
                std::all_of(name.begin(), name.end(), [](quint8 byte) { return byte == 0; }));
    }

    void take(const FrameHeader& header, qint64 place)
    {
        const Content content = contentOf(header.name);
        if (content == Content::Nothing || header.encrypted) {
            return;
        }
        if (content == Content::Picture) {
            m_into.tags.hasPicture = m_into.tags.hasPicture || header.size > 0;
            return;
        }
        const qint64 extra = (header.grouped ? 1 : 0) + (header.hasLength ? 4 : 0);
        const qint64 length = header.size - extra;
        if (length <= 0) {
            return;
        }
        const Bytes body = m_body.at(place + extra, std::min(length, kLongestFrame));
        if (!header.unsynchronised && !header.compressed) {
            takeFrame(m_into, content, body);
            return;
        }
        takeDecoded(header, content, body);
    }

    void takeDecoded(const FrameHeader& header, Content content, Bytes body)
    {
        std::vector<quint8> bytes = header.unsynchronised
                                        ? synchronised(body)
                                        : std::vector<quint8>(body.begin(), body.end());
        takeFrame(m_into, content, header.compressed ? unpacked(bytes) : bytes);
    }

    const TagBody& m_body;
    int m_version;
    bool m_unsynchronised;
    Collected& m_into;
};

/// Bytes of an extended header in front of the frames.
qint64 extendedHeader(const TagBody& body, int version)
{
    const Bytes size = body.at(0, 4);
    if (size.size() < 4) {
        return 0;
    }
    return version == 4 ? qint64{sevenBits32(size.data())} : qint64{bigEndian32(size.data())} + 4;
}

void readFrames(MpegFile& file,
                qint64 begin,
                qint64 length,
                int version,
                unsigned flags,
                Collected& into)
{
    constexpr unsigned kUnsynchronised = 0x80;
    constexpr unsigned kExtended = 0x40;
    const bool unsynchronised = (flags & kUnsynchronised) != 0;
    if (version == 2 && (flags & kExtended) != 0) {
        return; // a compression that was never defined
    }
    const TagBody body =
        unsynchronised && version != 4
            ? TagBody(synchronised(file.at(begin, std::min(length, kLongestUnsynchronised))))
            : TagBody(file, begin, length);
    const qint64 skip = (flags & kExtended) != 0 ? extendedHeader(body, version) : 0;
    FrameReader(body, version, unsynchronised, into).readFrom(skip);
}

/// The first four digits of "2004-05-06T07:08:09" are the year; other texts stay as they are.
QString yearOf(const QString& recordingTime)
{
    return recordingTime.size() > 4 && recordingTime.at(4) == u'-' ? recordingTime.left(4)
                                                                   : recordingTime;
}

/// Size as its header tells it. Seven bits a byte, unless a byte shows that its writer didn't know.
qint64 tagSize(const quint8* bytes)
{
    const bool plain = std::any_of(bytes, bytes + 4, [](quint8 byte) { return byte >= 0x80; });
    return plain ? bigEndian32(bytes) : sevenBits32(bytes);
}

} // namespace

QString ratingOfByte(int byte)
{
    if (byte <= 0) {
        return {};
    }
    const int stars = byte < 32 ? 1 : byte < 96 ? 2 : byte < 160 ? 3 : byte < 224 ? 4 : 5;
    return QString::number(stars);
}

LeadingTags readId3v2(MpegFile& file, TrackTags& tags)
{
    LeadingTags result;
    Collected into{tags, {}, {}};
    for (int i = 0; i < kMaxTags; ++i) {
        const Bytes header = file.at(result.end, kHeaderLength);
        if (header.size() < kHeaderLength || std::memcmp(header.data(), "ID3", 3) != 0 ||
            header[3] == 0xFF) {
            break;
        }
        const int version = header[3];
        const unsigned flags = header[5];
        const qint64 size = tagSize(header.data() + 6);
        constexpr unsigned kFooter = 0x10;
        const qint64 footer = version == 4 && (flags & kFooter) != 0 ? kHeaderLength : 0;
        const qint64 begin = result.end + kHeaderLength;
        if (size > file.size() - begin - footer) {
            result.oversized = true;
            break;
        }
        if (version >= 2 && version <= 4) {
            tags.hasId3v2 = true;
            readFrames(file, begin, size, version, flags, into);
        }
        result.end = begin + size + footer;
    }
    tags.id3v2.Jahr = into.year.isEmpty() ? yearOf(into.recordingTime) : into.year;
    return result;
}

void readId3v1(MpegFile& file, TrackTags& tags)
{
    constexpr qint64 kLength = 128;
    const Bytes tag = file.at(file.size() - kLength, kLength);
    if (tag.size() < kLength || std::memcmp(tag.data(), "TAG", 3) != 0) {
        return;
    }
    tags.hasId3v1 = true;
    TagFields& fields = tags.id3v1;
    fields.Titel = decodeSingleBytes(tag.subspan(3, 30));
    fields.Interpret = decodeSingleBytes(tag.subspan(33, 30));
    fields.Album = decodeSingleBytes(tag.subspan(63, 30));
    fields.Jahr = decodeSingleBytes(tag.subspan(93, 4));
    const bool withTrack = tag[125] == 0 && tag[126] != 0;
    fields.Kommentar = decodeSingleBytes(tag.subspan(97, withTrack ? 28 : 30));
    fields.Track = withTrack ? QString::number(tag[126]) : QString();
    constexpr int kNoGenre = 255;
    fields.Genre = tag[127] == kNoGenre ? QString() : QString::number(tag[127]);
}

} // namespace melovane::linux_media
