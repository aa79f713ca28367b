#include "platform/linux/tag_reader.h"
#include "support/mp3_maker.h"
#include "support/temp_folder.h"
#include "support/work_time.h"

#include <gtest/gtest.h>

#include <random>

namespace {

using namespace melovane;
using namespace melovane::demomusic;
using namespace melovane::test;
using namespace Qt::Literals::StringLiterals;

class HostileFiles : public testing::Test
{
protected:
    MediaReading read(const QByteArray& bytes)
    {
        return m_reader.read(m_folder.write(u"hostile.mp3"_s, bytes));
    }

    TempFolder m_folder;
    linux_media::LinuxTagReader m_reader;
};

TEST_F(HostileFiles, EachKindIsRefusedWithAReasonOrRead)
{
    for (const OddFile& odd : oddFiles()) {
        const MediaReading reading = read(odd.bytes);
        EXPECT_EQ(reading.fault == MediaFault::None, odd.playable)
            << odd.name << ": " << reading.detail.toStdString();
        if (odd.playable) {
            EXPECT_GT(reading.audio.milliseconds, 0) << odd.name;
            EXPECT_GT(reading.audio.sampleRate, 0) << odd.name;
            EXPECT_NE(reading.audio.bitRate, 0) << odd.name;
        } else {
            EXPECT_FALSE(reading.detail.isEmpty()) << odd.name;
        }
    }
}

TEST_F(HostileFiles, FaultsAreToldApart)
{
    const auto faultOf = [&](const char* name) {
        for (const OddFile& odd : oddFiles()) {
            if (qstrcmp(odd.name, name) == 0) {
                return read(odd.bytes).fault;
            }
        }
        ADD_FAILURE() << name;
        return MediaFault::None;
    };
    EXPECT_EQ(faultOf("empty"), MediaFault::Empty);
    EXPECT_EQ(faultOf("text"), MediaFault::NoAudio);
    EXPECT_EQ(faultOf("only_a_tag"), MediaFault::NoAudio);
    EXPECT_EQ(faultOf("cut_in_the_first_frame"), MediaFault::Truncated);
    EXPECT_EQ(faultOf("tag_size_absurd"), MediaFault::TagSize);
    EXPECT_EQ(faultOf("tag_size_all_ones"), MediaFault::TagSize);
    EXPECT_EQ(faultOf("cut_in_the_tag"), MediaFault::TagSize);
}

TEST_F(HostileFiles, AHugeTextIsCutAndItsFileRead)
{
    for (const OddFile& odd : oddFiles()) {
        if (qstrcmp(odd.name, "huge_text") == 0) {
            const MediaReading reading = read(odd.bytes);
            EXPECT_EQ(reading.tags.id3v2.Titel.size(), 64 * 1024);
            EXPECT_EQ(reading.tags.id3v2.Interpret, u"File"_s);
        }
    }
}

TEST_F(HostileFiles, HalfAnUtf16PairBecomesAReplacementLetter)
{
    Id3v2Writer writer;
    writer.frame("TIT2", QByteArray("\1\xFF\xFE\0\xD8\x41\0", 7));
    const MediaReading reading = read(writer.tag() + shortStream());
    EXPECT_EQ(reading.tags.id3v2.Titel, QString(QChar::ReplacementCharacter) + u'A');
}

TEST_F(HostileFiles, MegabytesOfMarksAreDecidedInAMoment)
{
    QByteArray marks;
    marks.fill('\xFF', 4'000'000);
    QByteArray headers = QByteArray("\xFF\xFB\x90\x64", 4).repeated(1'000'000);
    const WorkTime timer;
    EXPECT_NE(read(marks).fault, MediaFault::None);
    EXPECT_NE(read(headers).fault, MediaFault::None);
    static_cast<void>(read(variableStream(FrameFormat(), 60, 1) + marks));
    static_cast<void>(read(variableStream(FrameFormat(), 60, 1) + headers));
    EXPECT_LT(timer.elapsed(), 20'000);
}

/// Seeds of mutation: everything that the parser knows.
std::vector<QByteArray> originals()
{
    std::vector<QByteArray> files;
    const FrameFormat format;
    for (const int version : {2, 3, 4}) {
        Id3v2Writer writer(version, version == 4 ? TextEncoding::Utf8 : TextEncoding::Utf16);
        writer.text("TIT2", u"Title ä"_s)
            .text("TPE1", u"Artist"_s)
            .text("TCON", u"(17)Rock"_s)
            .comment(QString(), u"c"_s)
            .userText(u"FID"_s, u"654321000007"_s)
            .rating("rating@melovane", 196)
            .picture(QByteArray(300, 'p'));
        files.push_back(writer.tag(64) +
                        withHeader(StreamHeader::Xing, format, variableStream(format, 12, 3), 12));
        files.push_back(writer.unsynchronised() + variableStream(format, 12, 4) +
                        id3v1Tag({"T", "A", "B", "1999", "C", 4, 9}));
    }
    Id3v2Writer packed;
    packed.frame("TIT2", qCompress(QByteArray(1, '\0') + "packed title"), 0x0080);
    files.push_back(packed.tag() + withHeader(StreamHeader::Vbri, format, shortStream(), 20));
    files.push_back(shortStream() + "LYRICSBEGINx000012LYRICS200");
    return files;
}

QByteArray mutated(QByteArray bytes, std::mt19937& random)
{
    const int changes = 1 + static_cast<int>(random() % 6);
    for (int i = 0; i < changes && !bytes.isEmpty(); ++i) {
        // Most parsing happens in the first and last bytes.
        const auto size = static_cast<quint32>(bytes.size());
        const quint32 range = random() % 3 == 0 ? size : std::min<quint32>(size, 200);
        const auto place = static_cast<qsizetype>(random() % 4 == 0 ? size - 1 - random() % range
                                                                    : random() % range);
        switch (random() % 5) {
        case 0:
            bytes[place] = static_cast<char>(random());
            break;
        case 1:
            bytes[place] = static_cast<char>(0xFF);
            break;
        case 2:
            bytes.remove(place, static_cast<qsizetype>(random() % 40));
            break;
        case 3:
            bytes.insert(place, QByteArray(static_cast<qsizetype>(random() % 40),
                                           static_cast<char>(random())));
            break;
        default:
            bytes.truncate(place);
            break;
        }
    }
    return bytes;
}

TEST_F(HostileFiles, ThousandsOfDamagedFilesGiveAReadingEach)
{
    std::mt19937 random(20260314);
    int readable = 0;
    const std::vector<QByteArray> files = originals();
    constexpr int kRounds = 6000;
    for (int i = 0; i < kRounds; ++i) {
        const MediaReading reading =
            read(mutated(files.at(static_cast<size_t>(i) % files.size()), random));
        if (reading.fault == MediaFault::None) {
            ++readable;
            ASSERT_GT(reading.audio.milliseconds, 0);
        }
        ASSERT_LE(reading.tags.id3v2.Titel.size(), 64 * 1024);
    }
    EXPECT_GT(readable, kRounds / 10);
    EXPECT_LT(readable, kRounds);
}

} // namespace
