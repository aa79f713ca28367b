// Two other readers must see the same as ours: the tag library the texts, the decoder the length.

#include "platform/linux/tag_reader.h"
#include "support/mp3_maker.h"
#include "support/temp_folder.h"

#include <QFile>

#include <apetag.h>
#include <gtest/gtest.h>
#include <id3v1tag.h>
#include <id3v2tag.h>
#include <mpegfile.h>
#include <mpg123.h>
#include <tdebuglistener.h>
#include <textidentificationframe.h>
#include <tpropertymap.h>

#include <random>

namespace {

using namespace melovane;
using namespace melovane::demomusic;
using namespace melovane::test;
using namespace Qt::Literals::StringLiterals;

class SilentListener : public TagLib::DebugListener
{
    void printMessage(const TagLib::String&) override {}
};

QString textOf(const TagLib::ID3v2::Tag& tag, const char* id)
{
    const auto& frames = tag.frameListMap()[id];
    if (frames.isEmpty()) {
        return {};
    }
    const auto* frame = dynamic_cast<TagLib::ID3v2::TextIdentificationFrame*>(frames.front());
    if (frame == nullptr || frame->fieldList().isEmpty()) {
        return {};
    }
    QString text = QString::fromStdString(frame->fieldList().front().to8Bit(true));
    while (text.endsWith(u' ')) {
        text.chop(1);
    }
    return text;
}

struct Decoded
{
    double milliseconds = 0;
    double frameMilliseconds = 0;
    int sampleRate = 0;
    bool variable = false;
};

Decoded decode(const QString& path)
{
    mpg123_handle* handle = mpg123_new(nullptr, nullptr);
    mpg123_param(handle, MPG123_ADD_FLAGS, MPG123_QUIET, 0);
    mpg123_param(handle, MPG123_REMOVE_FLAGS, MPG123_GAPLESS, 0);
    mpg123_param(handle, MPG123_RESYNC_LIMIT, -1, 0);
    Decoded result;
    long rate = 0;
    int channels = 0;
    int encoding = 0;
    if (mpg123_open(handle, QFile::encodeName(path).constData()) == MPG123_OK &&
        mpg123_getformat(handle, &rate, &channels, &encoding) == MPG123_OK &&
        mpg123_scan(handle) == MPG123_OK && rate > 0) {
        result.sampleRate = static_cast<int>(rate);
        result.milliseconds =
            static_cast<double>(mpg123_length(handle)) * 1000.0 / static_cast<double>(rate);
        result.frameMilliseconds = mpg123_spf(handle) * 1000.0 / static_cast<double>(rate);
        mpg123_frameinfo info;
        mpg123_info(handle, &info);
        result.variable = info.vbr == MPG123_VBR;
    }
    mpg123_close(handle);
    mpg123_delete(handle);
    return result;
}

class CrossCheck : public testing::Test
{
protected:
    void SetUp() override { TagLib::setDebugListener(&m_silent); }

    void TearDown() override { TagLib::setDebugListener(nullptr); }

    QString write(const QByteArray& bytes) { return m_folder.write(u"x.mp3"_s, bytes); }

    SilentListener m_silent;
    TempFolder m_folder;
    linux_media::LinuxTagReader m_reader;
};

/// Letters that every encoding of a tag of that version can hold.
QString randomText(std::mt19937& random, bool wide)
{
    static const QString narrow = u"abc XYZ 0129 äöüßÉñ'\"&*[]?/;-"_s;
    static const QString all = narrow + u"ЖΩ中文€"_s;
    const QString& letters = wide ? all : narrow;
    QString text;
    const auto length = static_cast<qsizetype>(1 + random() % 60);
    for (qsizetype i = 0; i < length; ++i) {
        text += letters.at(static_cast<qsizetype>(random() % static_cast<quint32>(letters.size())));
    }
    return text;
}

QByteArray randomStream(std::mt19937& random)
{
    static const std::vector<FrameFormat> formats = {
        {MpegVersion::V1, 128, 44100, false}, {MpegVersion::V1, 192, 48000, true},
        {MpegVersion::V1, 40, 32000, false},  {MpegVersion::V2, 32, 22050, false},
        {MpegVersion::V2, 64, 24000, true},   {MpegVersion::V25, 16, 8000, true}};
    const FrameFormat format = formats.at(random() % formats.size());
    const int frames = 10 + static_cast<int>(random() % 300);
    switch (random() % 4) {
    case 0:
        return constantStream(format, frames);
    case 1:
        return withHeader(StreamHeader::Info, format, constantStream(format, frames), frames);
    case 2:
        return withHeader(StreamHeader::Xing, format, variableStream(format, frames, random()),
                          frames);
    default:
        return variableStream(format, frames, random());
    }
}

TEST_F(CrossCheck, TextsOfHundredsOfTagsAreTheSame)
{
    static const std::vector<QByteArray> ids = {"TIT2", "TPE1", "TALB", "TCON", "TRCK", "TBPM"};
    std::mt19937 random(4711);
    for (int round = 0; round < 400; ++round) {
        const int version = 2 + static_cast<int>(random() % 3);
        const auto encoding = static_cast<TextEncoding>(random() % (version == 4 ? 4U : 2U));
        Id3v2Writer writer(version, encoding);
        for (const QByteArray& id : ids) {
            if (random() % 5 != 0) {
                writer.text(id, randomText(random, encoding != TextEncoding::Latin1));
            }
        }
        const bool unsynchronised = version != 4 && random() % 4 == 0;
        const QByteArray tag =
            unsynchronised ? writer.unsynchronised() : writer.tag(static_cast<int>(random() % 300));
        const QString path = write(tag + shortStream());
        const MediaReading reading = m_reader.read(path);
        TagLib::MPEG::File file(QFile::encodeName(path).constData(), false);
        const TagLib::ID3v2::Tag& other = *file.ID3v2Tag();
        ASSERT_EQ(reading.tags.id3v2.Titel, textOf(other, "TIT2")) << round;
        ASSERT_EQ(reading.tags.id3v2.Interpret, textOf(other, "TPE1")) << round;
        ASSERT_EQ(reading.tags.id3v2.Album, textOf(other, "TALB")) << round;
        ASSERT_EQ(reading.tags.id3v2.Track, textOf(other, "TRCK")) << round;
        ASSERT_EQ(reading.tags.BPM, textOf(other, "TBPM")) << round;
    }
}

TEST_F(CrossCheck, AnApeTagOfTheOtherLibraryIsReadAsWritten)
{
    const QString path = write(shortStream());
    {
        TagLib::MPEG::File file(QFile::encodeName(path).constData(), false);
        TagLib::APE::Tag& ape = *file.APETag(true);
        ape.setTitle(TagLib::String("Größe Ж", TagLib::String::UTF8));
        ape.setAlbum("Album");
        ape.setComment("kurz");
        ape.setGenre("Rock");
        ape.setYear(2004);
        ape.setTrack(3);
        ape.addValue("ARTIST", "One", true);
        ape.addValue("ARTIST", "Two", false);
        ASSERT_TRUE(file.save(TagLib::MPEG::File::APE));
    }
    const MediaReading reading = m_reader.read(path);
    const TagFields& fields = reading.tags.id3v2;
    EXPECT_EQ(fields.Titel, u"Größe Ж"_s);
    EXPECT_EQ(fields.Interpret, u"One; Two"_s);
    EXPECT_EQ(fields.Album, u"Album"_s);
    EXPECT_EQ(fields.Kommentar, u"kurz"_s);
    EXPECT_EQ(fields.Genre, u"Rock"_s);
    EXPECT_EQ(fields.Jahr, u"2004"_s);
    EXPECT_EQ(fields.Track, u"3"_s);
    EXPECT_EQ(reading.fault, MediaFault::None);
}

TEST_F(CrossCheck, SeveralArtistsAreThoseThatTheOtherLibraryWrites)
{
    const QString path = write(shortStream());
    {
        TagLib::MPEG::File file(QFile::encodeName(path).constData(), false);
        TagLib::PropertyMap properties;
        properties["ARTIST"] = TagLib::StringList("One")
                                   .append(TagLib::String("Zwölf", TagLib::String::UTF8))
                                   .append(TagLib::String("Ж", TagLib::String::UTF8));
        properties["GENRE"] = TagLib::StringList("House").append("Pop");
        file.setProperties(properties);
        ASSERT_TRUE(file.save(TagLib::MPEG::File::ID3v2, TagLib::File::StripNone, TagLib::ID3v2::v4,
                              TagLib::File::DoNotDuplicate));
    }
    const TagFields fields = m_reader.read(path).tags.id3v2;
    EXPECT_EQ(fields.Interpret, u"One; Zwölf; Ж"_s);
    EXPECT_EQ(fields.Genre, u"House; Pop"_s);
}

TEST_F(CrossCheck, LengthsOfHundredsOfStreamsAreWithinOneFrame)
{
    std::mt19937 random(1234);
    for (int round = 0; round < 300; ++round) {
        const QString path =
            write(Id3v2Writer().text("TIT2", u"x"_s).tag(50) + randomStream(random));
        const AudioFacts ours = m_reader.read(path).audio;
        const Decoded theirs = decode(path);
        ASSERT_GT(theirs.milliseconds, 0) << "the decoder refuses a generated file, " << round;
        ASSERT_NEAR(ours.milliseconds, theirs.milliseconds, theirs.frameMilliseconds + 1) << round;
        ASSERT_EQ(ours.sampleRate, theirs.sampleRate) << round;
        if (theirs.variable) {
            ASSERT_EQ(ours.bitRate, -99) << round;
        }
    }
}

TEST_F(CrossCheck, LengthsOfFilesWithDamagedSoundStayClose)
{
    std::mt19937 random(99);
    for (int round = 0; round < 100; ++round) {
        QByteArray stream = randomStream(random);
        const auto place = static_cast<qsizetype>(
            2000 + random() % static_cast<quint32>(std::max<qsizetype>(1, stream.size() - 2000)));
        stream.truncate(std::max<qsizetype>(place, 3000));
        const QString path = write(stream);
        const Decoded theirs = decode(path);
        if (theirs.milliseconds <= 0) {
            continue;
        }
        ASSERT_NEAR(m_reader.read(path).audio.milliseconds, theirs.milliseconds,
                    2 * theirs.frameMilliseconds + 1)
            << round;
    }
}

TEST_F(CrossCheck, TheDecoderPlaysEveryGeneratedFile)
{
    const FrameFormat format;
    for (const QByteArray& bytes :
         {constantStream(format, 30), variableStream(format, 30, 2),
          withHeader(StreamHeader::Info, format, constantStream(format, 30), 30),
          withHeader(StreamHeader::Xing, format, variableStream(format, 30, 2), 30)}) {
        EXPECT_NEAR(decode(write(bytes)).milliseconds, millisecondsOf(30), 1);
    }
}

TEST_F(CrossCheck, TheOldTagIsTheSame)
{
    const QString path =
        write(shortStream() + id3v1Tag({"Titel \xE4", "Artist", "Album", "1999", "Comment", 5, 9}));
    const TagFields ours = m_reader.read(path).tags.id3v1;
    TagLib::MPEG::File file(QFile::encodeName(path).constData(), false);
    const TagLib::ID3v1::Tag& theirs = *file.ID3v1Tag();
    EXPECT_EQ(ours.Titel, QString::fromStdString(theirs.title().to8Bit(true)));
    EXPECT_EQ(ours.Interpret, QString::fromStdString(theirs.artist().to8Bit(true)));
    EXPECT_EQ(ours.Album, QString::fromStdString(theirs.album().to8Bit(true)));
    EXPECT_EQ(ours.Kommentar, QString::fromStdString(theirs.comment().to8Bit(true)));
    EXPECT_EQ(ours.Jahr.toUInt(), theirs.year());
    EXPECT_EQ(ours.Track.toUInt(), theirs.track());
    EXPECT_EQ(ours.Genre.toUInt(), theirs.genreNumber());
}

TEST_F(CrossCheck, FreeFormatIsLeftToTheDecoderAndAgrees)
{
    const QString path = write(freeFormatStream(FrameFormat(), 60, 300));
    const Decoded theirs = decode(path);
    ASSERT_GT(theirs.milliseconds, 0);
    EXPECT_NEAR(m_reader.read(path).audio.milliseconds, theirs.milliseconds, 1);
}

} // namespace
