#include "platform/linux/id3_tags.h"

#include "platform/linux/id3_frames.h"
#include "platform/linux/id3_text.h"
#include "platform/linux/mpeg_file.h"
#include "platform/linux/tag_places.h"

#include <QHash>

#include <algorithm>
#include <array>
#include <cstring>
#include <string_view>
#include <vector>

namespace melovane::linux_media {

namespace {

/// Of an unsynchronised tag so much is read; texts stand in front of pictures in practice.
constexpr qint64 kLongestUnsynchronised = qint64{1024} * 1024;

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

/// The fields of a tag while its frames are read.
struct Collected
{
    TrackTags& tags;
    QString year;
    QString recordingTime;
    FoundRating rating;
    int version = 3; ///< of the tag whose frames are read
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
        const Bytes text = body.subspan(1);
        keepFirst(*field, holdsValues(content, into.version) ? decodeValues(body[0], text)
                                                             : decodeText(body[0], text));
    } else if (content == FrameContent::Comment) {
        takeComment(into.tags, body);
    } else if (content == FrameContent::UserText) {
        takeUserText(into.tags, body);
    } else if (content == FrameContent::Rating) {
        into.rating.take(body);
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

void readTag(MpegFile& file, const Id3Place& tag, Collected& into)
{
    if (tag.version == 2 && tag.isExtended()) {
        return;
    }
    const TagBody body =
        tag.isUnsynchronised() && tag.version != 4
            ? TagBody(
                  synchronised(file.at(tag.begin, std::min(tag.length, kLongestUnsynchronised))))
            : TagBody(file, tag.begin, tag.length);
    const qint64 skip = tag.isExtended() ? extendedHeader(body, tag.version) : 0;
    into.version = tag.version;
    readFramesFrom(skip, FrameWalk(body, tag.version, tag.isUnsynchronised()), into);
}

} // namespace

void FoundRating::take(Bytes content)
{
    const auto end = std::find(content.begin(), content.end(), quint8{0});
    if (content.end() - end < 2) {
        return;
    }
    const QString rating = ratingOfByte(*(end + 1));
    const std::string_view address(reinterpret_cast<const char*>(content.data()),
                                   size_t(end - content.begin()));
    if (address == kRatingAddress) {
        own = own.value_or(rating);
    } else {
        keepFirst(foreign, rating);
    }
}

QString ratingOfByte(int byte)
{
    if (byte <= 0) {
        return {};
    }
    const int stars = byte < 32 ? 1 : byte < 96 ? 2 : byte < 160 ? 3 : byte < 224 ? 4 : 5;
    return QString::number(stars);
}

void readId3v2(MpegFile& file, const TagPlaces& places, TrackTags& tags)
{
    Collected into{tags, {}, {}, {}};
    for (const Id3Place& tag : places.id3v2) {
        readTag(file, tag, into);
    }
    tags.hasId3v2 = places.hasLeading;
    tags.id3v2.Jahr = into.year.isEmpty() ? yearOfRecordingTime(into.recordingTime) : into.year;
    tags.Note = into.rating.shown();
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
