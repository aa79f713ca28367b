#include "platform/linux/tag_splice.h"

#include "platform/linux/id3_text.h"
#include "platform/linux/own_frames.h"

#include <array>

namespace melovane::linux_media {

using namespace Qt::Literals::StringLiterals;

namespace {

using Change = std::optional<QString> TagChanges::*;

struct TextField
{
    Change change;
    FrameContent content;
    const char16_t* name; ///< of a text with a name of its own: it lies in the files, keep
};

/// In the order in which new frames are written.
constexpr std::array kTextFields = std::to_array<TextField>({
    {&TagChanges::Titel, FrameContent::Titel, u""},
    {&TagChanges::Interpret, FrameContent::Interpret, u""},
    {&TagChanges::Album, FrameContent::Album, u""},
    {&TagChanges::Genre, FrameContent::Genre, u""},
    {&TagChanges::Track, FrameContent::Track, u""},
    {&TagChanges::BPM, FrameContent::BPM, u""},
    {&TagChanges::Kommentar, FrameContent::Comment, u""},
    {&TagChanges::Note, FrameContent::Rating, u""},
    {&TagChanges::FID, FrameContent::UserText, u"FID"},
    {&TagChanges::Kategorie, FrameContent::UserText, u"Kategorie"},
    {&TagChanges::Situation, FrameContent::UserText, u"Situation"},
    {&TagChanges::Stimmung, FrameContent::UserText, u"Stimmung"},
    {&TagChanges::Tempo, FrameContent::UserText, u"Tempo"},
    {&TagChanges::User1, FrameContent::UserText, u"User1"},
    {&TagChanges::User2, FrameContent::UserText, u"User2"},
    {&TagChanges::User3, FrameContent::UserText, u"User3"},
    {&TagChanges::User4, FrameContent::UserText, u"User4"},
    {&TagChanges::User5, FrameContent::UserText, u"User5"},
});

/// What of a text can stand in a tag: up to the first zero character, without blanks at its end and
/// without halves of UTF-16 pairs.
QString storable(const QString& text)
{
    QString result = text.left(text.indexOf(QChar(u'\0'))).left(kLongestText);
    result = QString::fromUtf8(result.toUtf8());
    while (result.endsWith(u' ')) {
        result.chop(1);
    }
    return result;
}

/// "3/12" and "03" are the number 3, as long as nobody asks for a total.
bool isSameNumber(FrameContent content, const QString& shown, const QString& wanted)
{
    bool isNumber = false;
    bool wasNumber = false;
    if (content == FrameContent::Track && !wanted.contains(u'/')) {
        const int before = shown.section(u'/', 0, 0).toInt(&wasNumber);
        return before == wanted.toInt(&isNumber) && isNumber && wasNumber;
    }
    if (content == FrameContent::BPM) {
        const double before = shown.toDouble(&wasNumber);
        const double after = wanted.toDouble(&isNumber);
        return isNumber && wasNumber && !(before < after) && !(after < before);
    }
    return false;
}

/// The number with the total that the file knows.
QString withTotal(FrameContent content, const QString& shown, const QString& wanted)
{
    const qsizetype slash = shown.indexOf(u'/');
    const bool keeps = content == FrameContent::Track && slash >= 0 && !wanted.contains(u'/');
    return keeps ? wanted + shown.mid(slash) : wanted;
}

bool isCover(const StoredFrame& frame, int version)
{
    return frame.content == FrameContent::Picture && isFrontCover(version, frame.plainBytes());
}

} // namespace

TagSplice::TagSplice(Bytes front, const TagChanges& changes)
{
    takeApart(front);
    if (!m_possible) {
        return;
    }
    for (const TextField& field : kTextFields) {
        if (const auto& wanted = changes.*field.change) {
            setText({field.content, QString::fromUtf16(field.name)}, *wanted);
        }
        // Where a new tag shows the year.
        if (field.content == FrameContent::Genre && changes.Jahr) {
            setYear(storable(*changes.Jahr));
        }
    }
    if (changes.formerCover) {
        putBack(*changes.formerCover);
    } else if (changes.cover && changes.cover->bytes.isEmpty()) {
        removeCovers(isFrontPicture);
    } else if (changes.cover) {
        setCover(*changes.cover);
    }
}

void TagSplice::takeApart(Bytes front)
{
    while (!front.empty()) {
        const size_t length = std::min(front.size(), size_t(tagLength(front)));
        if (length == 0) {
            break;
        }
        if (auto parts = TagParts::of(front.first(length))) {
            m_tags.emplace_back(std::move(*parts));
        } else {
            m_tags.emplace_back(
                QByteArray(reinterpret_cast<const char*>(front.data()), qsizetype(length)));
        }
        front = front.subspan(length);
    }
    if (m_tags.empty()) {
        m_tags.emplace_back(TagParts());
    }
    m_possible = front.empty() && std::holds_alternative<TagParts>(m_tags.front());
}

FoundRating TagSplice::rating() const
{
    FoundRating rating;
    for (const Tag& tag : m_tags) {
        const auto* const parts = std::get_if<TagParts>(&tag);
        if (parts == nullptr) {
            continue;
        }
        for (const StoredFrame& frame : parts->frames()) {
            if (frame.content == FrameContent::Rating) {
                rating.take(frame.plainBytes());
            }
        }
    }
    return rating;
}

QString TagSplice::shown(const OwnField& field) const
{
    if (field.content == FrameContent::Rating) {
        return rating().shown();
    }
    for (const Tag& tag : m_tags) {
        const auto* const parts = std::get_if<TagParts>(&tag);
        if (parts == nullptr) {
            continue;
        }
        for (const StoredFrame& frame : parts->frames()) {
            if (frame.content == field.content) {
                const QString text = fieldText(field, frame.plainBytes(), parts->version());
                if (!text.isEmpty()) {
                    return text;
                }
            }
        }
    }
    return {};
}

void TagSplice::setText(const OwnField& field, const QString& wanted)
{
    const QString before = shown(field);
    const QString text = storable(wanted);
    if (text == before || isSameNumber(field.content, before, text)) {
        return;
    }
    // Ours without a rating says that none of another program counts.
    const bool isTold = field.content == FrameContent::Rating && !rating().foreign.isEmpty();
    if (text.isEmpty() && !isTold) {
        takeOut(field, 0);
    } else {
        put(field, withTotal(field.content, before, text));
    }
}

void TagSplice::setYear(const QString& wanted)
{
    const OwnField year{FrameContent::Year};
    const OwnField time{FrameContent::RecordingTime};
    const QString shownYear = shown(year);
    const QString before = shownYear.isEmpty() ? yearOfRecordingTime(shown(time)) : shownYear;
    if (wanted == before) {
        return;
    }
    if (wanted.isEmpty()) {
        takeOut(year, 0);
        takeOut(time, 0);
        return;
    }
    const auto has = [this](FrameContent content) {
        const auto& frames = first().frames();
        return std::any_of(frames.begin(), frames.end(),
                           [content](const auto& frame) { return frame.content == content; });
    };
    const bool hasYear = has(FrameContent::Year);
    const bool hasTime = has(FrameContent::RecordingTime);
    const bool isTimed = first().version() == 4;
    if (hasYear || (!hasTime && !isTimed)) {
        put(year, wanted);
    }
    // Readers of version 2.4 look for the time alone.
    if (hasTime || isTimed) {
        put(time, wanted);
    }
    // A year wins over a time, also one of a further tag.
    takeOut(year, hasYear ? m_tags.size() : 1);
}

void TagSplice::put(const OwnField& field, const QString& text)
{
    TagParts& tag = first();
    auto& frames = tag.frames();
    const auto isField = [&](const StoredFrame& frame) {
        return frame.content == field.content && holdsField(field, frame.plainBytes());
    };
    const auto place = std::find_if(frames.begin(), frames.end(), isField);
    m_changed = true;
    // Readers do not agree on which of several tags counts.
    takeOut(field, 1);
    if (place == frames.end()) {
        const QByteArray content = contentWith(field, text, tag.version(), {});
        addInFront(tag.frameWith(frameNameOf(field.content, tag.version()), content, nullptr));
        return;
    }
    StoredFrame frame =
        tag.frameWith({}, contentWith(field, text, tag.version(), place->plainBytes()), &*place);
    if (std::none_of(frames.begin(), place, [](const auto& other) { return other.isEmpty; })) {
        *place = std::move(frame);
        return;
    }
    frames.erase(place);
    addInFront(std::move(frame));
}

void TagSplice::addInFront(StoredFrame frame)
{
    auto& frames = first().frames();
    frames.insert(frames.begin() + qsizetype(m_added), std::move(frame));
    ++m_added;
}

void TagSplice::takeOut(const OwnField& field, size_t firstTag)
{
    for (size_t i = firstTag; i < m_tags.size(); ++i) {
        auto* const parts = std::get_if<TagParts>(&m_tags[i]);
        if (parts == nullptr) {
            continue;
        }
        auto& frames = parts->frames();
        for (size_t at = 0; at < frames.size();) {
            StoredFrame& frame = frames[at];
            if (frame.content != field.content || !holdsField(field, frame.plainBytes())) {
                ++at;
                continue;
            }
            m_changed = true;
            const QByteArray counted = field.content == FrameContent::Rating
                                           ? contentWithoutRating(frame.plainBytes())
                                           : QByteArray();
            if (!counted.isEmpty()) {
                frame = parts->frameWith({}, counted, &frame);
                ++at;
            } else {
                frames.erase(frames.begin() + qsizetype(at));
                m_added -= i == 0 && at < m_added ? 1 : 0;
            }
        }
    }
}

/// The frame that holds the front cover without a description; null for none.
StoredFrame* TagSplice::cover()
{
    TagParts& tag = first();
    const auto place =
        std::find_if(tag.frames().begin(), tag.frames().end(),
                     [&](const StoredFrame& frame) { return isCover(frame, tag.version()); });
    return place == tag.frames().end() ? nullptr : &*place;
}

void TagSplice::setCover(const CoverPicture& wanted)
{
    TagParts& tag = first();
    const StoredFrame* const there = cover();
    if (there == nullptr || !showsPicture(tag.version(), there->plainBytes(), wanted)) {
        putCover(tag.frameWith(frameNameOf(FrameContent::Picture, tag.version()),
                               coverContent(tag.version(), wanted), there));
    }
}

void TagSplice::removeCovers(bool (*isMeant)(int version, Bytes plain))
{
    TagParts& tag = first();
    const auto removed = std::erase_if(tag.frames(), [&](const StoredFrame& frame) {
        return frame.content == FrameContent::Picture && isMeant(tag.version(), frame.plainBytes());
    });
    m_changed = removed > 0 || m_changed;
}

void TagSplice::putBack(const QByteArray& former)
{
    const auto kept =
        TagParts::of({reinterpret_cast<const quint8*>(former.constData()), size_t(former.size())});
    if (!kept) {
        return;
    }
    const auto& frames = kept->frames();
    const auto ours = std::find_if(frames.begin(), frames.end(), [&](const StoredFrame& frame) {
        return isCover(frame, kept->version());
    });
    // They are gone only when the cover was taken off; what another program has put there since
    // stays.
    const bool addsOthers = !hasOtherCovers() && first().takesFramesOf(*kept);
    if (ours == frames.end()) {
        removeCovers(isFrontCover);
    }
    for (auto frame = frames.begin(); frame != frames.end(); ++frame) {
        if (frame == ours) {
            putBackFrame(*kept, *frame);
        } else if (addsOthers) {
            addFrame(*frame);
        }
    }
}

/// A tag that was made anew meanwhile, by a program that knows another version, takes the picture.
void TagSplice::putBackFrame(const TagParts& kept, const StoredFrame& frame)
{
    if (!first().takesFramesOf(kept)) {
        setCover(coverOf(kept.version(), frame.plainBytes()));
    } else if (const StoredFrame* const there = cover();
               there == nullptr || there->bytes != frame.bytes) {
        putCover(frame);
    }
}

/// Whether there are front covers besides the one that a new cover replaces.
bool TagSplice::hasOtherCovers()
{
    TagParts& tag = first();
    const auto covers =
        std::count_if(tag.frames().begin(), tag.frames().end(), [&](const StoredFrame& frame) {
            return frame.content == FrameContent::Picture &&
                   isFrontPicture(tag.version(), frame.plainBytes());
        });
    return covers > (cover() == nullptr ? 0 : 1);
}

void TagSplice::putCover(StoredFrame frame)
{
    m_changed = true;
    if (StoredFrame* const there = cover()) {
        *there = std::move(frame);
    } else {
        addFrame(std::move(frame));
    }
}

void TagSplice::addFrame(StoredFrame frame)
{
    m_changed = true;
    auto& frames = first().frames();
    if (std::any_of(frames.begin(), frames.end(),
                    [](const auto& other) { return other.isEmpty; })) {
        addInFront(std::move(frame));
    } else {
        frames.push_back(std::move(frame));
    }
}

qint64 TagSplice::needed() const
{
    qint64 size = 0;
    for (const Tag& tag : m_tags) {
        const auto* const parts = std::get_if<TagParts>(&tag);
        size += parts != nullptr ? parts->needed() : std::get<QByteArray>(tag).size();
    }
    return size;
}

QByteArray TagSplice::front(qint64 room) const
{
    const qint64 padding = room - needed();
    QByteArray bytes;
    bytes.reserve(room);
    for (const Tag& tag : m_tags) {
        const auto* const parts = std::get_if<TagParts>(&tag);
        if (parts == nullptr) {
            bytes += std::get<QByteArray>(tag);
        } else {
            bytes += parts->bytes(parts->needed() + (bytes.isEmpty() ? padding : 0));
        }
    }
    return bytes;
}

} // namespace melovane::linux_media
