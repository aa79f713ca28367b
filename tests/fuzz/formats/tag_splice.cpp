#include "platform/linux/tag_splice.h"

#include "fuzz/formats/formats.h"
#include "siblings/demomusic/id3_writer.h"

namespace melovane::fuzz {

using namespace Qt::Literals::StringLiterals;

namespace {

using linux_media::Bytes;
using linux_media::TagSplice;

Bytes viewOf(const QByteArray& bytes)
{
    return {reinterpret_cast<const quint8*>(bytes.constData()), size_t(bytes.size())};
}

TagChanges changesFor(const QByteArray& bytes)
{
    TagChanges changes{.Titel = u"Ωλ "_s + QString(bytes.size() % 50, u't'),
                       .Album = u""_s,
                       .Jahr = u"2001"_s,
                       .Kommentar = u"k"_s,
                       .Track = u"4"_s,
                       .Note = u"3"_s,
                       .User1 = u"ÿ"_s};
    if (bytes.size() % 3 == 0) {
        changes.cover = CoverPicture{bytes.left(50), u"image/png"_s};
    }
    return changes;
}

/// The tags at the beginning of the bytes, as long as they fit.
QByteArray frontOf(const QByteArray& bytes)
{
    qint64 end = 0;
    for (qint64 length = -1; length != 0; end += length) {
        length = linux_media::tagLength(viewOf(bytes.mid(end, 10)));
        if (end + length > bytes.size()) {
            return bytes;
        }
    }
    return bytes.first(end);
}

/// What is written once is written whole, fits, and is not written again.
QString check(const QByteArray& bytes)
{
    const QByteArray front = frontOf(bytes);
    const TagChanges changes = changesFor(bytes);
    const TagSplice splice(viewOf(front), changes);
    if (!splice.isPossible() || !splice.isChanged()) {
        return {};
    }
    const qint64 room = splice.needed() + bytes.size() % 7 * 100;
    const QByteArray after = splice.front(room);
    if (after.size() != room || linux_media::tagLength(viewOf(after)) == 0) {
        return u"%1 bytes for a room of %2"_s.arg(after.size()).arg(room);
    }
    const TagSplice again(viewOf(after), changes);
    if (!again.isPossible()) {
        return u"a tag of ours that cannot be walked"_s;
    }
    return again.isChanged() ? u"a field that was written and is not there"_s : QString();
}

std::vector<QByteArray> seeds()
{
    using demomusic::Id3v2Writer;
    std::vector<QByteArray> result{QByteArray()};
    for (const int version : {2, 3, 4}) {
        Id3v2Writer tag(version);
        tag.text("TIT2", u"Träume"_s).text("TRCK", u"3/12"_s).text("TYER", u"1999"_s);
        tag.comment({}, u"a comment"_s).rating("rating@melovane", 200).picture("\xFF\xD8\xFF");
        tag.userText(u"User1"_s, u"one"_s).frame("PRIV", QByteArray("x\0\xFF\0\xFF", 5));
        result.push_back(tag.tag(20));
        result.push_back(tag.unsynchronised() + tag.tag());
    }
    return result;
}

} // namespace

Format tagSplice()
{
    return {"tag_splice", check, seeds};
}

} // namespace melovane::fuzz
