#include "platform/linux/id3_cover.h"

#include "platform/linux/id3_frames.h"
#include "platform/linux/own_frames.h"
#include "platform/linux/tag_parts.h"
#include "platform/linux/tag_places.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <string_view>

namespace melovane::linux_media {

namespace {

constexpr qint64 kHeaderLength = 10;

/// What stands in front of the bytes of a picture is no longer than this.
constexpr qint64 kLongestHead = qint64{4} * 1024;

/// The kind of a picture that leads to none.
constexpr int kNoKind = -1;

constexpr int kFrontCoverRank = 0;

/// Which of two kinds is shown: front cover, no kind, any other, back cover, the two small icons.
int rankOf(int kind)
{
    static constexpr std::array kLast = {4, 1, 2};
    if (kind == 3) {
        return kFrontCoverRank;
    }
    if (kind == 0) {
        return 1;
    }
    const auto* const found = std::find(kLast.begin(), kLast.end(), kind);
    return found == kLast.end() ? 2 : 3 + int(found - kLast.begin());
}

/// What the beginning of a picture frame tells.
struct PictureHead
{
    int kind = kNoKind;
    qint64 length = 0; ///< bytes in front of the picture
};

/// Where the zero that ends a text stands; the size of the bytes when there is none.
size_t endOfText(Bytes bytes, size_t from, bool isWide)
{
    const size_t step = isWide ? 2 : 1;
    for (size_t at = from; at + step <= bytes.size(); at += step) {
        if (bytes[at] == 0 && (!isWide || bytes[at + 1] == 0)) {
            return at;
        }
    }
    return bytes.size();
}

PictureHead headOf(Bytes bytes, int version)
{
    constexpr size_t kFormatLength = 3; // of version 2.2
    if (bytes.size() < 1 + kFormatLength + 1) {
        return {};
    }
    const size_t typeAt = version == 2 ? 1 + kFormatLength : endOfText(bytes, 1, false) + 1;
    const size_t mimeEnd = version == 2 ? typeAt : typeAt - 1;
    const std::string_view mime(reinterpret_cast<const char*>(bytes.data()) + 1,
                                std::min(mimeEnd, bytes.size()) - 1);
    if (typeAt + 1 >= bytes.size() || mime == "-->") {
        return {};
    }
    const bool isWide = bytes[0] == 1 || bytes[0] == 2;
    const size_t end = endOfText(bytes, typeAt + 1, isWide);
    const size_t length = end + (isWide ? 2 : 1);
    return length < bytes.size() ? PictureHead{bytes[typeAt], qint64(length)} : PictureHead{};
}

/// The bytes of a frame that stand in the file as they are, from `begin` on.
QByteArray plainBytes(const TagBody& body, qint64 begin, qint64 length)
{
    QByteArray result;
    result.reserve(length);
    while (result.size() < length) {
        const Bytes piece = body.at(begin + result.size(), length - result.size());
        if (piece.empty()) {
            return {};
        }
        result.append(reinterpret_cast<const char*>(piece.data()), qsizetype(piece.size()));
    }
    return result;
}

/// The best picture so far: only one of a lower rank takes its place.
struct Best
{
    int rank = 99;
    QByteArray bytes = {};
};

void takePicture(const TagBody& body,
                 const FrameWalk& walk,
                 const FrameHeader& header,
                 qint64 place,
                 int version,
                 Best& best)
{
    std::vector<quint8> decoded;
    const Bytes start = walk.contentAt(header, place, decoded, kLongestHead);
    const PictureHead head = headOf(start, version);
    if (head.kind == kNoKind || rankOf(head.kind) >= best.rank) {
        return;
    }
    const bool isPlain = !header.grouped && !header.compressed && !header.encrypted &&
                         !header.unsynchronised && !header.hasLength;
    QByteArray bytes;
    if (isPlain) {
        bytes =
            plainBytes(body, place + walk.headerLength() + head.length, header.size - head.length);
    } else {
        const Bytes whole = walk.contentAt(header, place, decoded, kLargestPicture);
        const Bytes picture = whole.subspan(std::min(size_t(head.length), whole.size()));
        bytes =
            QByteArray(reinterpret_cast<const char*>(picture.data()), qsizetype(picture.size()));
    }
    if (!bytes.isEmpty()) {
        best = {rankOf(head.kind), bytes};
    }
}

void readPictures(const TagBody& body, int version, bool isUnsynchronised, qint64 place, Best& best)
{
    const FrameWalk walk(body, version, isUnsynchronised);
    for (int i = 0; i < kMaxFrames; ++i) {
        const auto header = walk.headerAt(place);
        if (!header) {
            return;
        }
        if (contentOf(header->name) == FrameContent::Picture && !header->encrypted &&
            header->size <= kLargestPicture) {
            takePicture(body, walk, *header, place, version, best);
        }
        place += walk.headerLength() + header->size;
    }
}

void readTag(MpegFile& file, const Id3Place& tag, Best& best)
{
    const bool isDecoded = tag.isUnsynchronised() && tag.version != 4;
    if (tag.version == 2 && tag.isExtended()) {
        return;
    }
    if (isDecoded && tag.length > MpegFile::kLargestPiece) {
        return; // it would have to be decoded as a whole
    }
    const TagBody body = isDecoded ? TagBody(synchronised(file.at(tag.begin, tag.length)))
                                   : TagBody(file, tag.begin, tag.length);
    const qint64 skip = tag.isExtended() ? extendedHeader(body, tag.version) : 0;
    readPictures(body, tag.version, tag.isUnsynchronised(), skip, best);
}

/// The picture of a file that goes before that one.
QByteArray pictureBefore(const QString& path, Best best)
{
    MpegFile file(path);
    if (file.isOpen()) {
        for (const Id3Place& tag : tagPlaces(file).id3v2) {
            readTag(file, tag, best);
        }
    }
    return best.bytes;
}

} // namespace

QByteArray Id3CoverReader::cover(const QString& path) const
{
    return pictureBefore(path, {});
}

bool Id3CoverReader::hasFrontCover(const QString& path) const
{
    return !pictureBefore(path, {.rank = kFrontCoverRank + 1}).isEmpty();
}

QByteArray Id3CoverReader::frontCover(const QString& path) const
{
    MpegFile file(path);
    if (!file.isOpen()) {
        return {};
    }
    const qint64 length = tagLength(file.at(0, kHeaderLength));
    if (length > kLargestPicture) {
        return {};
    }
    const QByteArray front = plainBytes(TagBody(file, 0, file.size()), 0, length);
    const Bytes view(reinterpret_cast<const quint8*>(front.constData()), size_t(front.size()));
    const auto parts = length == 0 ? TagParts() : TagParts::of(view);
    if (!parts) {
        return {};
    }
    std::vector<StoredFrame> covers;
    std::copy_if(parts->frames().begin(), parts->frames().end(), std::back_inserter(covers),
                 [&](const StoredFrame& frame) {
                     return frame.content == FrameContent::Picture &&
                            isFrontPicture(parts->version(), frame.plainBytes());
                 });
    const TagParts kept = parts->withOnly(std::move(covers));
    return kept.bytes(kept.needed());
}

} // namespace melovane::linux_media
