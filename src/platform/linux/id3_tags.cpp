#include "platform/linux/id3_tags.h"

#include "platform/linux/id3_frames.h"
#include "platform/linux/id3_text.h"
#include "platform/linux/mpeg_file.h"

#include <QHash>

#include <algorithm>
#include <array>
#include <cstring>
#include <vector>

namespace melovane::linux_media {

namespace {

constexpr qint64 kHeaderLength = 10;
/// Of an unsynchronised tag so much is read; texts stand in front of pictures in practice.
constexpr qint64 kLongestUnsynchronised = qint64{1024} * 1024;
constexpr int kMaxTags = 8;

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
    // Comments with a description hold data of other programs.
    if (const NamedText comment = decodeComment(body); comment.name.isEmpty()) {
        keepFirst(tags.id3v2.Kommentar, comment.text);
    }
}

void takeUserText(TrackTags& tags, Bytes body)
{
    const NamedText text = decodeUserText(body);
    if (QString* field = userField(tags, text.name)) {
        keepFirst(*field, text.text);
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

QString* textField(Collected& into, FrameContent content)
{
    TagFields& fields = into.tags.id3v2;
    switch (content) {
    case FrameContent::Titel:
        return &fields.Titel;
    case FrameContent::Interpret:
        return &fields.Interpret;
    case FrameContent::Album:
        return &fields.Album;
    case FrameContent::Genre:
        return &fields.Genre;
    case FrameContent::Track:
        return &fields.Track;
    case FrameContent::BPM:
        return &into.tags.BPM;
    case FrameContent::Year:
        return &into.year;
    case FrameContent::RecordingTime:
        return &into.recordingTime;
    case FrameContent::Comment:
    case FrameContent::Rating:
    case FrameContent::UserText:
    case FrameContent::Picture:
    case FrameContent::Nothing:
        return nullptr;
    }
    return nullptr;
}

void takeFrame(Collected& into, FrameContent content, Bytes body)
{
    if (body.empty()) {
        return;
    }
    if (QString* field = textField(into, content)) {
        keepFirst(*field, decodeText(body[0], body.subspan(1)));
    } else if (content == FrameContent::Comment) {
        takeComment(into.tags, body);
    } else if (content == FrameContent::UserText) {
        takeUserText(into.tags, body);
    } else if (content == FrameContent::Rating) {
        takeRating(into.tags, body);
    }
}

/// Takes the fields out of the frames of a tag, from `place` on.
void readFramesFrom(qint64 place, const FrameWalk& walk, Collected& into)
{
    std::vector<quint8> decoded;
    for (int i = 0; i < kMaxFrames; ++i) {
        const auto header = walk.headerAt(place);
        if (!header) {
            return;
        }
        const FrameContent content = contentOf(header->name);
        if (content == FrameContent::Picture) {
            // Its bytes may be many, and nobody asks for them here.
            into.tags.hasPicture = into.tags.hasPicture || (header->size > 0 && !header->encrypted);
        } else if (content != FrameContent::Nothing) {
            takeFrame(into, content, walk.contentAt(*header, place, decoded));
        }
        place += walk.headerLength() + header->size;
    }
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
    readFramesFrom(skip, FrameWalk(body, version, unsynchronised), into);
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
    tags.id3v2.Jahr = into.year.isEmpty() ? yearOfRecordingTime(into.recordingTime) : into.year;
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
