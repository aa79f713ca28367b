#include "fuzz/formats/formats.h"
#include "fuzz/formats/scratch.h"
#include "platform/linux/id3_text.h"
#include "platform/linux/tag_reader.h"
#include "siblings/demomusic/id3_writer.h"
#include "siblings/demomusic/mp3_frames.h"

namespace melovane::fuzz {

using namespace Qt::Literals::StringLiterals;

namespace {

QString textFault(const QString& text)
{
    if (text.contains(QChar(u'\0'))) {
        return u"a text that goes on behind its end"_s;
    }
    return text.size() > linux_media::kLongestText ? u"a text of %1 letters"_s.arg(text.size())
                                                   : QString();
}

QString check(const QByteArray& bytes)
{
    static const Scratch scratch;
    const MediaReading reading =
        linux_media::LinuxTagReader().read(scratch.file(u"a.mp3"_s, bytes));
    const TrackTags& tags = reading.tags;
    for (const TagFields* fields : {&tags.id3v1, &tags.id3v2}) {
        for (const QString& text : {fields->Titel, fields->Interpret, fields->Album, fields->Genre,
                                    fields->Jahr, fields->Kommentar, fields->Track}) {
            if (const QString fault = textFault(text); !fault.isEmpty()) {
                return fault;
            }
        }
    }
    for (const QString& text : {tags.BPM, tags.FID, tags.Kategorie, tags.Situation, tags.Stimmung,
                                tags.Tempo, tags.User1, tags.User5}) {
        if (const QString fault = textFault(text); !fault.isEmpty()) {
            return fault;
        }
    }
    if (!tags.Note.isEmpty() && (tags.Note < u"1"_s || tags.Note > u"5"_s)) {
        return u"a rating of "_s + tags.Note;
    }
    const AudioFacts& audio = reading.audio;
    const bool isSound = audio.sampleRate >= 8000 && audio.sampleRate <= 48000 &&
                         (audio.channels == 1 || audio.channels == 2) && audio.milliseconds >= 0;
    if (reading.fault == MediaFault::None && !isSound) {
        return u"sound of %1 Hz, %2 channels, %3 ms"_s.arg(audio.sampleRate)
            .arg(audio.channels)
            .arg(audio.milliseconds);
    }
    const bool hasReason = reading.fault == MediaFault::None || !reading.detail.isEmpty();
    return hasReason ? QString() : u"refused without a reason"_s;
}

QByteArray tagged(int version, demomusic::TextEncoding encoding, bool unsynchronised = false)
{
    demomusic::Id3v2Writer tag(version, encoding);
    tag.text("TIT2", u"Träume"_s).text("TPE1", u"Queen"_s).text("TCON", u"(17)"_s);
    tag.text("TRCK", u"3/12"_s).text(version == 4 ? "TDRC" : "TYER", u"1999"_s);
    tag.userText(u"FID"_s, u"800000000001"_s).userText(u"User5"_s, u"five"_s);
    tag.comment({}, u"a comment"_s).rating("rating@melovane", 200).picture("\xFF\xD8\xFF");
    return unsynchronised ? tag.unsynchronised() : tag.tag(10);
}

std::vector<QByteArray> seeds()
{
    using demomusic::FrameFormat;
    using demomusic::StreamHeader;
    using demomusic::TextEncoding;
    // Frames of a few bytes, so that many fit into a short input.
    const FrameFormat low{demomusic::MpegVersion::V25, 8, 8000, true};
    const QByteArray plain = demomusic::constantStream(low, 6);
    const QByteArray varying = demomusic::variableStream(low, 6, 3);
    const QByteArray old = demomusic::id3v1Tag({"Song", "Artist", "Album", "1999", "none", 7, 17});
    return {tagged(2, TextEncoding::Latin1) + plain,
            tagged(3, TextEncoding::Utf16) + plain + old,
            tagged(4, TextEncoding::Utf8) + tagged(4, TextEncoding::Utf16Be) + plain,
            tagged(3, TextEncoding::Latin1, true) + plain,
            demomusic::withHeader(StreamHeader::Xing, low, varying, 6) + old,
            demomusic::withHeader(StreamHeader::Vbri, low, varying, 6),
            demomusic::freeFormatStream(low, 4, 40),
            QByteArray()};
}

} // namespace

Format tags()
{
    return {"tags", check, seeds};
}

} // namespace melovane::fuzz
