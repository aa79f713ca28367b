#include "platform/linux/id3_text.h"
#include "platform/linux/tag_splice.h"

#include <array>

namespace melovane::linux_media {

namespace {

/// Places in the old tag.
constexpr qsizetype kComment = 97;
constexpr qsizetype kTrackMark = 125; ///< zero when a track number stands behind it
constexpr qsizetype kTrack = 126;
constexpr qsizetype kGenre = 127;
constexpr qsizetype kCommentLength = 30;

struct Place
{
    std::optional<QString> TagChanges::*change;
    qsizetype begin;
    qsizetype length;
};

constexpr std::array kPlaces = std::to_array<Place>({
    {&TagChanges::Titel, 3, 30},
    {&TagChanges::Interpret, 33, 30},
    {&TagChanges::Album, 63, 30},
    {&TagChanges::Jahr, 93, 4},
});

QByteArray singleBytes(const QString& text)
{
    QByteArray bytes;
    for (const char32_t letter : text.toUcs4()) {
        const bool fits = (letter >= 0x20 && letter < 0x80) || (letter >= 0xA0 && letter <= 0xFF);
        bytes += fits ? char(letter) : '?';
    }
    return bytes;
}

QString textAt(const QByteArray& tag, qsizetype begin, qsizetype length)
{
    return decodeSingleBytes(
        {reinterpret_cast<const quint8*>(tag.constData()) + begin, size_t(length)});
}

/// A text that reads the same already keeps its bytes, whatever they are padded with.
void put(QByteArray& tag, qsizetype begin, qsizetype length, const QString& text)
{
    QByteArray bytes = singleBytes(text).left(length);
    bytes.append(length - bytes.size(), '\0');
    if (textAt(bytes, 0, length) != textAt(tag, begin, length)) {
        tag.replace(begin, length, bytes);
    }
}

void putTrack(QByteArray& tag, const QString& text)
{
    const int number = text.section(u'/', 0, 0).toInt();
    const bool fits = number > 0 && number <= 255;
    const bool has = tag[kTrackMark] == '\0' && tag[kTrack] != '\0';
    if (!fits && !has) {
        return;
    }
    tag[kTrackMark] = '\0';
    tag[kTrack] = char(fits ? number : 0);
}

/// Leaves the place of a track number free: some readers take any letter there for one.
void putComment(QByteArray& tag, const QString& text)
{
    const bool withTrack = tag[kTrackMark] == '\0' && tag[kTrack] != '\0';
    const QByteArray whole = singleBytes(text).left(kCommentLength);
    if (!withTrack && textAt(tag, kComment, kCommentLength) == textAt(whole, 0, whole.size())) {
        return;
    }
    put(tag, kComment, kCommentLength - 2, text);
    if (!withTrack) {
        tag[kTrackMark] = '\0';
        tag[kTrack] = '\0';
    }
}

} // namespace

std::optional<QByteArray> changedId3v1(const QByteArray& tag, const TagChanges& changes)
{
    QByteArray changed = tag;
    for (const Place& place : kPlaces) {
        if (const auto& text = changes.*place.change) {
            put(changed, place.begin, place.length, *text);
        }
    }
    if (changes.Track) {
        putTrack(changed, *changes.Track);
    }
    if (changes.Kommentar) {
        putComment(changed, *changes.Kommentar);
    }
    if (changes.Genre) {
        changed[kGenre] = char(changes.genreNumber);
    }
    return changed == tag ? std::nullopt : std::optional(changed);
}

} // namespace melovane::linux_media
