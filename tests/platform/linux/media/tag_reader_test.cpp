#include "platform/linux/id3_tags.h"
#include "platform/linux/tag_reader.h"
#include "support/mp3_maker.h"
#include "support/temp_folder.h"

#include <QFile>

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace {

using namespace melovane;
using namespace melovane::demomusic;
using namespace melovane::test;
using namespace Qt::Literals::StringLiterals;

class TagReaderTest : public testing::Test
{
protected:
    MediaReading read(const QByteArray& bytes)
    {
        return m_reader.read(m_folder.write(u"a.mp3"_s, bytes));
    }

    MediaReading readTag(const QByteArray& tag) { return read(tag + shortStream()); }

    TempFolder m_folder;
    linux_media::LinuxTagReader m_reader;
};

struct Version
{
    const char* name;
    int version;
    TextEncoding encoding;
};

class EveryTagVersion : public TagReaderTest, public testing::WithParamInterface<Version>
{};

TEST_P(EveryTagVersion, GivesAllFieldsWithUmlauts)
{
    Id3v2Writer writer(GetParam().version, GetParam().encoding);
    writer.text("TIT2", u"Über die Brücke"_s)
        .text("TPE1", u"Käthe Straßner"_s)
        .text("TALB", u"Größe"_s)
        .text("TCON", u"(17)"_s)
        .text(GetParam().version == 4 ? "TDRC" : "TYER", u"1998"_s)
        .text("TRCK", u"3/12"_s)
        .text("TBPM", u"128"_s)
        .comment(u"iTunNORM"_s, u"000012"_s)
        .comment(QString(), u"schön"_s)
        .rating("other@program", 20)
        .rating(linux_media::kRatingAddress, 196)
        .userText(u"FID"_s, u"654321000007"_s)
        .userText(u"Kategorie"_s, u"Tanz"_s)
        .userText(u"Situation"_s, u"Abend"_s)
        .userText(u"Stimmung"_s, u"fröhlich"_s)
        .userText(u"Tempo"_s, u"schnell"_s)
        .userText(u"User1"_s, u"u1"_s)
        .userText(u"User5"_s, u"u5"_s)
        .picture(QByteArray(5000, 'p'));
    const MediaReading reading = readTag(writer.tag(100));
    ASSERT_EQ(reading.fault, MediaFault::None) << reading.detail.toStdString();
    const TrackTags& tags = reading.tags;
    EXPECT_TRUE(tags.hasId3v2);
    EXPECT_FALSE(tags.hasId3v1);
    EXPECT_EQ(tags.id3v2.Titel, u"Über die Brücke"_s);
    EXPECT_EQ(tags.id3v2.Interpret, u"Käthe Straßner"_s);
    EXPECT_EQ(tags.id3v2.Album, u"Größe"_s);
    EXPECT_EQ(tags.id3v2.Genre, u"(17)"_s);
    EXPECT_EQ(tags.id3v2.Jahr, u"1998"_s);
    EXPECT_EQ(tags.id3v2.Track, u"3/12"_s);
    EXPECT_EQ(tags.id3v2.Kommentar, u"schön"_s);
    EXPECT_EQ(tags.BPM, u"128"_s);
    EXPECT_EQ(tags.Note, u"4"_s);
    EXPECT_EQ(tags.FID, u"654321000007"_s);
    EXPECT_EQ(tags.Kategorie, u"Tanz"_s);
    EXPECT_EQ(tags.Situation, u"Abend"_s);
    EXPECT_EQ(tags.Stimmung, u"fröhlich"_s);
    EXPECT_EQ(tags.Tempo, u"schnell"_s);
    EXPECT_EQ(tags.User1, u"u1"_s);
    EXPECT_EQ(tags.User5, u"u5"_s);
    EXPECT_TRUE(tags.hasPicture);
}

INSTANTIATE_TEST_SUITE_P(All,
                         EveryTagVersion,
                         testing::Values(Version{"v22Latin1", 2, TextEncoding::Latin1},
                                         Version{"v22Utf16", 2, TextEncoding::Utf16},
                                         Version{"v23Latin1", 3, TextEncoding::Latin1},
                                         Version{"v23Utf16", 3, TextEncoding::Utf16},
                                         Version{"v24Utf16", 4, TextEncoding::Utf16},
                                         Version{"v24Utf16Be", 4, TextEncoding::Utf16Be},
                                         Version{"v24Utf8", 4, TextEncoding::Utf8}),
                         [](const auto& row) { return row.param.name; });

TEST_F(TagReaderTest, TheOldTagGivesTextsTrackAndGenreNumber)
{
    const MediaReading reading =
        read(shortStream() + id3v1Tag({"T\xFC r", "Artist", "Album  ", "1987", "note", 7, 17}));
    EXPECT_TRUE(reading.tags.hasId3v1);
    EXPECT_FALSE(reading.tags.hasId3v2);
    EXPECT_EQ(reading.tags.id3v1.Titel, u"Tü r"_s);
    EXPECT_EQ(reading.tags.id3v1.Interpret, u"Artist"_s);
    EXPECT_EQ(reading.tags.id3v1.Album, u"Album"_s);
    EXPECT_EQ(reading.tags.id3v1.Jahr, u"1987"_s);
    EXPECT_EQ(reading.tags.id3v1.Kommentar, u"note"_s);
    EXPECT_EQ(reading.tags.id3v1.Track, u"7"_s);
    EXPECT_EQ(reading.tags.id3v1.Genre, u"17"_s);
    EXPECT_EQ(reading.audio.milliseconds, millisecondsOf(20));
}

TEST_F(TagReaderTest, AnOldTagOfVersion1HasThirtyLettersOfCommentAndNoTrack)
{
    const QByteArray comment = "abcdefghijklmnopqrstuvwxyz1234";
    const MediaReading reading = read(shortStream() + id3v1Tag({{}, {}, {}, {}, comment, 0, 255}));
    EXPECT_EQ(reading.tags.id3v1.Kommentar, QString::fromLatin1(comment));
    EXPECT_EQ(reading.tags.id3v1.Track, QString());
    EXPECT_EQ(reading.tags.id3v1.Genre, QString());
}

TEST_F(TagReaderTest, SingleBytesAreWindows1252)
{
    Id3v2Writer writer;
    writer.frame("TIT2", QByteArray("\0\x80uro \x96 \x84x\x93", 11));
    EXPECT_EQ(readTag(writer.tag()).tags.id3v2.Titel, u"€uro – „x“"_s);
}

TEST_F(TagReaderTest, OfSeveralValuesTheFirstIsTakenAndBlanksAtItsEndAreCut)
{
    Id3v2Writer writer(4, TextEncoding::Utf8);
    writer.text("TALB", u"First  "_s + QChar(0) + u"Second"_s).text("TIT2", u" x "_s);
    const MediaReading reading = readTag(writer.tag());
    EXPECT_EQ(reading.tags.id3v2.Album, u"First"_s);
    EXPECT_EQ(reading.tags.id3v2.Titel, u" x"_s);
}

TEST_F(TagReaderTest, SeveralArtistsAndGenresOfVersion4AreJoined)
{
    for (const TextEncoding encoding :
         {TextEncoding::Latin1, TextEncoding::Utf16, TextEncoding::Utf16Be, TextEncoding::Utf8}) {
        Id3v2Writer writer(4, encoding);
        writer.text("TPE1", u"First "_s + QChar(0) + QChar(0) + u"Second"_s + QChar(0))
            .text("TCON", u"17"_s + QChar(0) + u"Häuser"_s);
        const TagFields fields = readTag(writer.tag()).tags.id3v2;
        EXPECT_EQ(fields.Interpret, u"First; Second"_s);
        EXPECT_EQ(fields.Genre, u"17; Häuser"_s);
    }
    Id3v2Writer older(3, TextEncoding::Utf16);
    older.text("TPE1", u"First"_s + QChar(0) + u"rubbish"_s);
    EXPECT_EQ(readTag(older.tag()).tags.id3v2.Interpret, u"First"_s) << "a zero ends the text";
}

TEST_F(TagReaderTest, Utf8InAPlaceOfSingleBytesIsRecognised)
{
    const auto titleOf = [this](const QByteArray& bytes) {
        return readTag(Id3v2Writer().frame("TIT2", '\0' + bytes).tag()).tags.id3v2.Titel;
    };
    EXPECT_EQ(titleOf(u"Über die Brücke – Жизнь 🎵"_s.toUtf8()), u"Über die Brücke – Жизнь 🎵"_s);
    EXPECT_EQ(titleOf("\xDC"
                      "ber"),
              u"Über"_s);
    EXPECT_EQ(titleOf("\xC3\xBC \xFC"), u"Ã¼ ü"_s) << "one byte is none of UTF-8";
    EXPECT_EQ(titleOf("\xC3"), u"Ã"_s);
    EXPECT_EQ(titleOf("\xC2\x80"), u"Â€"_s) << "a control character";
    EXPECT_EQ(titleOf("\xC0\xAF \xED\xA0\x80"), u"À¯ í\u00A0€"_s) << "too long, and half a pair";
}

TEST_F(TagReaderTest, AnOldTagIsAlwaysOfSingleBytes)
{
    const QByteArray bytes = shortStream() + id3v1Tag({"\xC3\xBC", {}, {}, {}, {}, 0, 255});
    EXPECT_EQ(read(bytes).tags.id3v1.Titel, u"Ã¼"_s);
}

TEST_F(TagReaderTest, Utf16WithoutAMarkIsReadInTheOrderOfItsBytes)
{
    const auto titleOf = [this](char encoding, const QByteArray& bytes) {
        return readTag(Id3v2Writer(4).frame("TIT2", encoding + bytes).tag()).tags.id3v2.Titel;
    };
    EXPECT_EQ(titleOf(1, QByteArray("L\0\xF6\0w\0e\0", 8)), u"Löwe"_s);
    EXPECT_EQ(titleOf(1, QByteArray("\0L\0\xF6\0w\0e", 8)), u"Löwe"_s);
    EXPECT_EQ(titleOf(1, QByteArray("\x16\x04\x38\x04", 4)), u"Жи"_s);
}

TEST_F(TagReaderTest, OfTwoEqualFramesTheFirstWithATextCounts)
{
    Id3v2Writer writer;
    writer.text("TIT2", QString()).text("TIT2", u"One"_s).text("TIT2", u"Two"_s);
    EXPECT_EQ(readTag(writer.tag()).tags.id3v2.Titel, u"One"_s);
}

TEST_F(TagReaderTest, ACommentWithADescriptionIsNoComment)
{
    Id3v2Writer writer;
    writer.comment(u"Songs-DB_Custom1"_s, u"x"_s);
    EXPECT_EQ(readTag(writer.tag()).tags.id3v2.Kommentar, QString());
}

TEST_F(TagReaderTest, ARecordingTimeGivesItsYear)
{
    Id3v2Writer writer(4, TextEncoding::Utf8);
    writer.text("TDRC", u"2004-05-06T07:08"_s);
    EXPECT_EQ(readTag(writer.tag()).tags.id3v2.Jahr, u"2004"_s);
}

TEST(RatingBands, AreReadAsTold)
{
    using linux_media::ratingOfByte;
    EXPECT_EQ(ratingOfByte(0), QString());
    const std::vector<std::pair<int, QString>> bands = {
        {1, u"1"_s},   {31, u"1"_s},  {32, u"2"_s},  {95, u"2"_s},  {96, u"3"_s},
        {159, u"3"_s}, {160, u"4"_s}, {223, u"4"_s}, {224, u"5"_s}, {255, u"5"_s}};
    for (const auto& [byte, stars] : bands) {
        EXPECT_EQ(ratingOfByte(byte), stars) << byte;
    }
}

TEST_F(TagReaderTest, RatingsOfOtherProgramsCountByTheBandsWhereOursIsMissing)
{
    const auto noteOf = [this](Id3v2Writer& writer) { return readTag(writer.tag()).tags.Note; };
    const std::vector<std::pair<int, QString>> bands = {
        {0, QString()}, {1, u"1"_s}, {64, u"2"_s}, {128, u"3"_s}, {196, u"4"_s}, {255, u"5"_s}};
    for (const auto& [byte, stars] : bands) {
        Id3v2Writer writer;
        EXPECT_EQ(noteOf(writer.rating("Windows Media Player 9 Series", byte)), stars) << byte;
    }
    Id3v2Writer ours;
    EXPECT_EQ(noteOf(ours.rating("a@b", 255).rating(linux_media::kRatingAddress, 64)), u"2"_s);
    Id3v2Writer taken;
    EXPECT_EQ(noteOf(taken.rating(linux_media::kRatingAddress, 0).rating("a@b", 255)), QString())
        << "the user has taken the rating away";
    Id3v2Writer second;
    EXPECT_EQ(noteOf(second.rating("a@b", 0).rating("c@d", 255)), u"5"_s);
    Id3v2Writer cut;
    EXPECT_EQ(noteOf(cut.frame("POPM", "no zero")), QString());
    EXPECT_EQ(noteOf(cut.frame("POPM", QByteArray("a@b\0", 4))), QString());
}

TEST_F(TagReaderTest, AnUnsynchronisedTagIsRead)
{
    Id3v2Writer writer;
    writer.text("TIT2", u"ÿà über"_s).text("TPE1", u"x"_s);
    const MediaReading reading = readTag(writer.unsynchronised());
    EXPECT_EQ(reading.tags.id3v2.Titel, u"ÿà über"_s);
    EXPECT_EQ(reading.tags.id3v2.Interpret, u"x"_s);
}

TEST_F(TagReaderTest, AnUnsynchronisedFrameOfVersion4IsRead)
{
    Id3v2Writer writer(4);
    writer
        .frame("TIT2",
               QByteArray("\1\xFF\0\xFE"
                          "a\0b\0",
                          8),
               0x0002)
        .text("TPE1", u"x"_s);
    const MediaReading reading = readTag(writer.tag());
    EXPECT_EQ(reading.tags.id3v2.Titel, u"ab"_s);
    EXPECT_EQ(reading.tags.id3v2.Interpret, u"x"_s);
}

TEST_F(TagReaderTest, ACompressedFrameIsRead)
{
    const QByteArray body = QByteArray("\0", 1) + QByteArray("packed ").repeated(20) + "end";
    Id3v2Writer writer;
    writer.frame("TIT2", qCompress(body), 0x0080).text("TPE1", u"x"_s);
    const MediaReading reading = readTag(writer.tag());
    EXPECT_EQ(reading.tags.id3v2.Titel, QString::fromLatin1(body.mid(1)));
    EXPECT_EQ(reading.tags.id3v2.Interpret, u"x"_s);
}

TEST_F(TagReaderTest, AFrameThatUnpacksToMegabytesIsCutAndCostsNoMemory)
{
    Id3v2Writer writer;
    writer.frame("TIT2", qCompress(QByteArray(1, '\0') + QByteArray(20'000'000, 'x')), 0x0080);
    EXPECT_LE(readTag(writer.tag()).tags.id3v2.Titel.size(), 64 * 1024);
}

TEST_F(TagReaderTest, PlainFrameSizesInVersion4AreUnderstood)
{
    Id3v2Writer writer(4, TextEncoding::Utf8);
    const QString longTitle(200, u't');
    writer.text("TIT2", longTitle).lieAboutLastSize(201).text("TPE1", u"x"_s);
    const MediaReading reading = readTag(writer.tag());
    EXPECT_EQ(reading.tags.id3v2.Titel, longTitle);
    EXPECT_EQ(reading.tags.id3v2.Interpret, u"x"_s);
}

TEST_F(TagReaderTest, OfSeveralLeadingTagsEachGivesWhatThoseBeforeItLack)
{
    Id3v2Writer first(3, TextEncoding::Utf16);
    first.text("TIT2", u"First"_s);
    Id3v2Writer second(4, TextEncoding::Utf8);
    second.text("TIT2", u"Second"_s).text("TPE1", u"Artist"_s);
    Id3v2Writer third(3, TextEncoding::Utf16);
    third.text("TALB", u"Album"_s);
    const MediaReading reading = readTag(first.tag(50) + second.tag() + third.tag());
    ASSERT_EQ(reading.fault, MediaFault::None) << reading.detail.toStdString();
    EXPECT_EQ(reading.tags.id3v2.Titel, u"First"_s);
    EXPECT_EQ(reading.tags.id3v2.Interpret, u"Artist"_s);
    EXPECT_EQ(reading.tags.id3v2.Album, u"Album"_s);
    EXPECT_EQ(reading.audio.milliseconds, read(shortStream()).audio.milliseconds);
}

TEST_F(TagReaderTest, TextsBehindALargePictureAreRead)
{
    Id3v2Writer writer;
    writer.picture(QByteArray(700'000, '\xFF')).text("TIT2", u"Behind"_s);
    const MediaReading reading = readTag(writer.tag());
    EXPECT_EQ(reading.fault, MediaFault::None);
    EXPECT_EQ(reading.tags.id3v2.Titel, u"Behind"_s);
}

struct Stream
{
    const char* name;
    FrameFormat format;
};

class EveryFormat : public TagReaderTest, public testing::WithParamInterface<Stream>
{};

TEST_P(EveryFormat, HasItsLengthRateAndChannels)
{
    const FrameFormat format = GetParam().format;
    const int frames = 400;
    const MediaReading reading = read(constantStream(format, frames));
    ASSERT_EQ(reading.fault, MediaFault::None);
    EXPECT_NEAR(reading.audio.milliseconds, millisecondsOf(frames, format),
                millisecondsOf(1, format));
    EXPECT_EQ(reading.audio.bitRate, format.bitRate);
    EXPECT_EQ(reading.audio.sampleRate, format.sampleRate);
    EXPECT_EQ(reading.audio.channels, format.mono ? 1 : 2);
}

TEST_P(EveryFormat, WithAHeaderHasExactlyTheFramesItTells)
{
    const FrameFormat format = GetParam().format;
    const int frames = 123;
    const QByteArray constant = constantStream(format, frames);
    const MediaReading info = read(withHeader(StreamHeader::Info, format, constant, frames));
    EXPECT_EQ(info.audio.milliseconds, millisecondsOf(frames, format));
    EXPECT_NE(info.audio.bitRate, -99);
    const QByteArray variable = variableStream(format, frames, 5);
    for (const StreamHeader kind : {StreamHeader::Xing, StreamHeader::Vbri}) {
        const MediaReading reading = read(withHeader(kind, format, variable, frames));
        EXPECT_EQ(reading.audio.milliseconds, millisecondsOf(frames, format));
        EXPECT_EQ(reading.audio.bitRate, -99);
    }
}

TEST_P(EveryFormat, WithVariableRateAndNoHeaderIsCounted)
{
    const FrameFormat format = GetParam().format;
    for (const int frames : {40, 3000}) {
        const MediaReading reading = read(variableStream(format, frames, 17));
        EXPECT_EQ(reading.audio.milliseconds, millisecondsOf(frames, format));
        EXPECT_EQ(reading.audio.bitRate, -99);
    }
}

INSTANTIATE_TEST_SUITE_P(All,
                         EveryFormat,
                         testing::Values(Stream{"cd128", {MpegVersion::V1, 128, 44100, false}},
                                         Stream{"cd320", {MpegVersion::V1, 320, 44100, false}},
                                         Stream{"mono48k", {MpegVersion::V1, 64, 48000, true}},
                                         Stream{"stereo32k", {MpegVersion::V1, 32, 32000, false}},
                                         Stream{"v2stereo", {MpegVersion::V2, 64, 22050, false}},
                                         Stream{"v2mono", {MpegVersion::V2, 8, 24000, true}},
                                         Stream{"v25mono", {MpegVersion::V25, 16, 8000, true}},
                                         Stream{"v25stereo", {MpegVersion::V25, 32, 11025, false}}),
                         [](const auto& row) { return row.param.name; });

TEST_F(TagReaderTest, AHeaderThatPromisesMoreThanTheFileHasIsNotBelieved)
{
    const FrameFormat format;
    const QByteArray whole =
        withHeader(StreamHeader::Xing, format, variableStream(format, 500, 3), 500);
    const MediaReading reading = read(whole.left(whole.size() / 2));
    EXPECT_LT(reading.audio.milliseconds, millisecondsOf(400));
    EXPECT_GT(reading.audio.milliseconds, millisecondsOf(100));
}

TEST_F(TagReaderTest, DamageInTheMiddleOfAVariableStreamCostsOnlyTheDamagedFrames)
{
    const FrameFormat format;
    QByteArray stream = variableStream(format, 300, 9);
    stream.replace(stream.size() / 2, 700, QByteArray(700, '\x55'));
    EXPECT_NEAR(read(stream).audio.milliseconds, millisecondsOf(300), millisecondsOf(8));
}

TEST_F(TagReaderTest, TagsAtTheEndAreNoSound)
{
    const FrameFormat format;
    const QByteArray items(20000, 'i');
    QByteArray apeFooter("APETAGEX\xD0\x07\0\0\x40\x4E\0\0\1\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0", 32);
    const QByteArray ape = items.left(0x4E40 - 32) + apeFooter;
    const QByteArray lyrics = "LYRICSBEGIN" + QByteArray(5000, 'l') + "005011LYRICS200";
    const QByteArray old = id3v1Tag({"T", "A", {}, {}, {}, 0, 255});
    const int frames = 2000;
    const MediaReading reading = read(constantStream(format, frames) + ape + lyrics + old);
    EXPECT_NEAR(reading.audio.milliseconds, millisecondsOf(frames), millisecondsOf(1));
    EXPECT_TRUE(reading.tags.hasId3v1);
}

/// The tag with a footer, as one stands at the end of a file.
QByteArray withFooter(QByteArray tag)
{
    tag[5] = char(tag[5] | 0x10);
    return tag + "3DI" + tag.mid(3, 7);
}

TEST_F(TagReaderTest, ATagAtTheEndIsReadWhereNoneStandsAtTheBeginning)
{
    Id3v2Writer writer(4, TextEncoding::Utf8);
    writer.text("TIT2", u"Am Ende"_s).text("TPE1", u"A"_s).rating("a@b", 255);
    const QByteArray sound = constantStream(FrameFormat(), 40);
    const QByteArray old = id3v1Tag({"T", {}, {}, {}, {}, 0, 255});
    for (const QByteArray& tail : {QByteArray(), old}) {
        const MediaReading reading = read(sound + withFooter(writer.tag()) + tail);
        EXPECT_EQ(reading.fault, MediaFault::None);
        EXPECT_EQ(reading.tags.id3v2.Titel, u"Am Ende"_s);
        EXPECT_EQ(reading.tags.Note, u"5"_s);
        EXPECT_FALSE(reading.tags.hasId3v2) << "most programs look at the beginning alone";
        EXPECT_EQ(reading.audio.milliseconds, millisecondsOf(40));
    }
    Id3v2Writer front;
    const MediaReading both =
        read(front.text("TIT2", u"Vorn"_s).tag() + sound + withFooter(writer.tag()));
    EXPECT_EQ(both.tags.id3v2.Titel, u"Vorn"_s);
    EXPECT_EQ(both.tags.id3v2.Interpret, QString()) << "nothing leads there";
}

TEST_F(TagReaderTest, ATagToWhichTheFirstOneLeadsGivesWhatThatLacks)
{
    const QByteArray sound = constantStream(FrameFormat(), 40);
    const auto leadTo = [](qint64 offset) {
        QByteArray bytes;
        for (int shift = 24; shift >= 0; shift -= 8) {
            bytes += char(offset >> shift & 0xFF);
        }
        return bytes;
    };
    Id3v2Writer behind(4, TextEncoding::Utf8);
    behind.text("TIT2", u"Hinten"_s).text("TPE1", u"Artist"_s);
    for (const QByteArray& tag : {behind.tag(), withFooter(behind.tag())}) {
        Id3v2Writer front(4, TextEncoding::Utf8);
        front.text("TIT2", u"Vorn"_s).frame("SEEK", leadTo(sound.size()));
        const MediaReading reading = read(front.tag(50) + sound + tag);
        EXPECT_EQ(reading.tags.id3v2.Titel, u"Vorn"_s);
        EXPECT_EQ(reading.tags.id3v2.Interpret, u"Artist"_s);
        EXPECT_EQ(reading.audio.milliseconds, millisecondsOf(40)) << "the tag is no sound";
    }
    for (const qint64 offset : {qint64{0}, qint64{17}, qint64{0xFFFFFFFF}, qint64{sound.size()}}) {
        Id3v2Writer front(4, TextEncoding::Utf8);
        front.text("TIT2", u"Vorn"_s).frame("SEEK", leadTo(offset));
        EXPECT_EQ(read(front.tag() + sound).tags.id3v2.Titel, u"Vorn"_s) << offset;
    }
}

/// An item of an APE tag.
QByteArray apeItem(const QByteArray& name, const QByteArray& value, quint32 flags = 0)
{
    const auto number = [](quint32 plain) {
        QByteArray bytes;
        for (int shift = 0; shift < 32; shift += 8) {
            bytes += char(plain >> shift & 0xFF);
        }
        return bytes;
    };
    return number(quint32(value.size())) + number(flags) + name + '\0' + value;
}

QByteArray apeTag(const QByteArray& items, int version = 2000)
{
    const auto size = quint32(items.size() + 32);
    QByteArray footer =
        QByteArray("APETAGEX") + char(version & 0xFF) + char(version >> 8) + QByteArray(2, '\0');
    for (int shift = 0; shift < 32; shift += 8) {
        footer += char(size >> shift & 0xFF);
    }
    return items + footer + char(9) + QByteArray(15, '\0');
}

TEST_F(TagReaderTest, AnApeTagIsReadWhereThereIsNoId3)
{
    const QByteArray items =
        apeItem("Cover Art (Front)", QByteArray("front.jpg\0bytes", 15), 2) +
        apeItem("TITLE", u"Größe"_s.toUtf8()) + apeItem("Artist", QByteArray("One\0Two", 7)) +
        apeItem("album", "Album") + apeItem("Year", "2004-05-06") + apeItem("Genre", "Rock") +
        apeItem("Track", "3/12") + apeItem("Comment", "kurz") + apeItem("title", "second");
    for (const QByteArray& tail : {QByteArray(), id3v1Tag({"alt", {}, {}, {}, {}, 0, 255})}) {
        const MediaReading reading = read(shortStream() + apeTag(items) + tail);
        const TagFields& fields = reading.tags.id3v2;
        EXPECT_EQ(fields.Titel, u"Größe"_s);
        EXPECT_EQ(fields.Interpret, u"One; Two"_s);
        EXPECT_EQ(fields.Album, u"Album"_s);
        EXPECT_EQ(fields.Jahr, u"2004"_s);
        EXPECT_EQ(fields.Genre, u"Rock"_s);
        EXPECT_EQ(fields.Track, u"3/12"_s);
        EXPECT_EQ(fields.Kommentar, u"kurz"_s);
        EXPECT_FALSE(reading.tags.hasId3v2);
    }
    EXPECT_EQ(read(Id3v2Writer().text("TIT2", u"T"_s).tag() + shortStream() + apeTag(items))
                  .tags.id3v2.Interpret,
              QString());
    EXPECT_EQ(read(shortStream() + apeTag(apeItem("Title", "\xFC"), 1000)).tags.id3v2.Titel,
              u"ü"_s);
}

TEST_F(TagReaderTest, ADamagedApeTagGivesWhatStandsInFrontOfTheDamage)
{
    const QByteArray title = apeItem("Title", "T");
    QByteArray large = apeItem("Artist", "A");
    large[1] = char(0x7F);
    EXPECT_EQ(read(shortStream() + apeTag(title + large)).tags.id3v2.Titel, u"T"_s);
    EXPECT_EQ(read(shortStream() + apeTag(title + large)).tags.id3v2.Interpret, QString());
    const QByteArray whole = apeTag(title + apeItem("Artist", "A"));
    for (qsizetype at = 0; at < whole.size(); ++at) {
        QByteArray broken = whole;
        broken[at] = char(broken[at] ^ 0xA5);
        EXPECT_EQ(read(shortStream() + broken).fault, MediaFault::None) << at;
    }
    EXPECT_EQ(read(shortStream() + apeTag(QByteArray(3000, 'x'))).tags.id3v2.Titel, QString());
}

TEST_F(TagReaderTest, NothingIsReadFromWhatIsNoPlainFile)
{
    EXPECT_EQ(m_reader.read(m_folder.file(u"missing.mp3"_s)).fault, MediaFault::NotFound);
    EXPECT_EQ(m_reader.read(m_folder.path()).fault, MediaFault::NotFound);
    const QString pipe = m_folder.file(u"pipe.mp3"_s);
    ASSERT_EQ(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    EXPECT_EQ(m_reader.read(pipe).fault, MediaFault::NotFound);
    EXPECT_EQ(m_reader.read(QString()).fault, MediaFault::NotFound);
}

TEST_F(TagReaderTest, ReadingChangesNothing)
{
    const QByteArray bytes = simpleMp3(u"T"_s, u"A"_s);
    static_cast<void>(read(bytes));
    EXPECT_EQ(m_folder.read(u"a.mp3"_s), bytes);
}

} // namespace
