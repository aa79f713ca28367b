#include "platform/linux/id3_cover.h"
#include "siblings/demomusic/id3_writer.h"
#include "support/mp3_maker.h"
#include "support/temp_folder.h"

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

QByteArray sevenBits(qsizetype number)
{
    QByteArray bytes;
    for (int shift = 21; shift >= 0; shift -= 7) {
        bytes.append(char((number >> shift) & 0x7F));
    }
    return bytes;
}

QByteArray plainSize(qsizetype number)
{
    QByteArray bytes;
    for (int shift = 24; shift >= 0; shift -= 8) {
        bytes.append(char((number >> shift) & 0xFF));
    }
    return bytes;
}

/// A picture frame of version 2.3 with a description in the encoding given.
QByteArray picture(int kind,
                   const QByteArray& bytes,
                   const QByteArray& mime = "image/jpeg",
                   const QByteArray& description = QByteArray(1, '\0'),
                   char encoding = 0)
{
    const QByteArray content =
        QByteArray(1, encoding) + mime + '\0' + char(kind) + description + bytes;
    return "APIC" + plainSize(content.size()) + QByteArray(2, '\0') + content;
}

QByteArray tag(const QByteArray& frames, char version = 3, char flags = 0)
{
    return QByteArray("ID3") + version + '\0' + flags + sevenBits(frames.size()) + frames;
}

class Id3Cover : public testing::Test
{
protected:
    [[nodiscard]] QByteArray coverOf(const QByteArray& bytes)
    {
        return linux_media::Id3CoverReader().cover(folder.write(u"lied.mp3"_s, bytes));
    }

    test::TempFolder folder;
};

TEST_F(Id3Cover, TheFrontCoverGoesBeforeOneOfNoKindAndThatBeforeOthers)
{
    const QByteArray back = picture(4, "back");
    const QByteArray icon = picture(1, "icon");
    const QByteArray artist = picture(8, "artist");
    const QByteArray none = picture(0, "none");
    const QByteArray front = picture(3, "front");
    const QByteArray sound = test::shortStream();
    EXPECT_EQ(coverOf(tag(icon + back + artist + none + front) + sound), "front");
    EXPECT_EQ(coverOf(tag(icon + back + artist + none) + sound), "none");
    EXPECT_EQ(coverOf(tag(icon + back + artist) + sound), "artist");
    EXPECT_EQ(coverOf(tag(icon + back) + sound), "back");
    EXPECT_EQ(coverOf(tag(icon) + sound), "icon");
    EXPECT_EQ(coverOf(tag(front + picture(3, "second")) + sound), "front");
}

TEST_F(Id3Cover, ALinkIsNeverFollowed)
{
    EXPECT_EQ(coverOf(tag(picture(3, "http://example.org/a.jpg", "-->")) + test::shortStream()),
              QByteArray());
}

TEST_F(Id3Cover, DescriptionsInEveryEncodingAreSkipped)
{
    const QByteArray wide("\xFF\xFE"
                          "a\0b\0\0\0",
                          8);
    EXPECT_EQ(coverOf(tag(picture(3, "bild", "image/png", wide, 1)) + test::shortStream()), "bild");
    EXPECT_EQ(coverOf(tag(picture(3, "bild", "image/png", QByteArray("ab\0", 3), 3)) +
                      test::shortStream()),
              "bild");
}

TEST_F(Id3Cover, APictureLargerThanAPieceOfTheFileIsReadWhole)
{
    QByteArray large(3 * 1024 * 1024 + 17, 'x');
    large.front() = 'a';
    large.back() = 'z';
    EXPECT_EQ(coverOf(tag(picture(3, large)) + test::shortStream()), large);
}

TEST_F(Id3Cover, WhatDemoMusicWritesIsRead)
{
    for (const int version : {2, 3, 4}) {
        demomusic::Id3v2Writer writer(version);
        writer.picture("bild");
        const QByteArray whole = writer.tag(20) + test::shortStream();
        EXPECT_EQ(coverOf(whole), "bild") << version;
        const QByteArray decoded = writer.unsynchronised() + test::shortStream();
        EXPECT_EQ(coverOf(decoded), "bild") << version;
    }
}

TEST_F(Id3Cover, OnlyAPictureOfThatKindIsAFrontCover)
{
    const auto hasFront = [this](const QByteArray& bytes) {
        return linux_media::Id3CoverReader().hasFrontCover(folder.write(u"lied.mp3"_s, bytes));
    };
    const QByteArray sound = test::shortStream();
    EXPECT_TRUE(hasFront(tag(picture(0, "none") + picture(3, "front")) + sound));
    EXPECT_FALSE(hasFront(tag(picture(0, "none") + picture(4, "back")) + sound));
    EXPECT_FALSE(hasFront(sound));
}

TEST_F(Id3Cover, WhatANewCoverWillReplaceIsGivenAsATagOfItsOwn)
{
    const auto frontCoverOf = [this](const QByteArray& bytes) {
        return linux_media::Id3CoverReader().frontCover(folder.write(u"lied.mp3"_s, bytes));
    };
    const QByteArray front = picture(3, "front");
    const QByteArray sound = test::shortStream();
    EXPECT_EQ(frontCoverOf(tag(picture(0, "none") + front + picture(3, "second")) + sound),
              tag(front + picture(3, "second")))
        << "taking the cover off removes the second one, too";
    EXPECT_EQ(frontCoverOf(tag(picture(0, "none")) + sound), tag({}));
    EXPECT_EQ(frontCoverOf(tag(front, 4, char(0x80)) + sound), tag(front, 4, char(0x80)));
    EXPECT_EQ(frontCoverOf(sound), tag({})) << "no tag at all";
    EXPECT_EQ(frontCoverOf(tag(front).left(20)), QByteArray()) << "cut short";
    EXPECT_EQ(frontCoverOf("ID3\x03" + QByteArray(2, '\0') + sevenBits(100'000'000) + front),
              QByteArray());
    EXPECT_EQ(linux_media::Id3CoverReader().frontCover(u"/nirgends.mp3"_s), QByteArray());
}

TEST_F(Id3Cover, DamagedTagsGiveNoPictureAndNoHarm)
{
    const QByteArray whole = tag(picture(3, "bild"));
    for (qsizetype length = 0; length < whole.size(); ++length) {
        EXPECT_EQ(coverOf(whole.left(length)), QByteArray()) << length;
    }
    EXPECT_EQ(coverOf("ID3\x03" + QByteArray(2, '\0') + sevenBits(100'000'000) + "APIC"),
              QByteArray());
    EXPECT_EQ(coverOf(tag("APIC" + plainSize(1000) + QByteArray(30, '\0'))), QByteArray());
    EXPECT_EQ(coverOf(tag("APIC" + plainSize(3) + QByteArray(5, 'x'))), QByteArray());
    EXPECT_EQ(linux_media::Id3CoverReader().cover(u"/nirgends.mp3"_s), QByteArray());
}

} // namespace
} // namespace melovane
