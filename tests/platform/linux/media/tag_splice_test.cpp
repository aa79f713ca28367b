#include "platform/linux/id3_cover.h"
#include "platform/linux/id3_tags.h"
#include "platform/linux/tag_reader.h"
#include "platform/linux/tag_splice.h"
#include "platform/media/tag_writer.h"
#include "raw_tag.h"
#include "support/mp3_maker.h"
#include "support/temp_folder.h"

#include <gtest/gtest.h>

namespace {

using namespace melovane;
using namespace melovane::demomusic;
using namespace melovane::linux_media;
using namespace melovane::test;
using namespace Qt::Literals::StringLiterals;

Bytes viewOf(const QByteArray& bytes)
{
    return {reinterpret_cast<const quint8*>(bytes.constData()), size_t(bytes.size())};
}

/// What the program's reader shows of a tag in front of sound.
TrackTags readBack(const QByteArray& tag, const QByteArray& tail = {})
{
    const TempFolder folder;
    const MediaReading reading =
        LinuxTagReader().read(folder.write(u"x.mp3"_s, tag + shortStream() + tail));
    EXPECT_EQ(reading.fault, MediaFault::None);
    return reading.tags;
}

/// What is kept of a tag for a cover that is put back.
QByteArray frontCover(const QByteArray& tag)
{
    const TempFolder folder;
    return Id3CoverReader().frontCover(folder.write(u"x.mp3"_s, tag + shortStream()));
}

/// The tag with the changes; empty when it is not touched.
QByteArray spliced(const QByteArray& tag, const TagChanges& changes, qint64 padding = 100)
{
    const TagSplice splice(viewOf(tag), changes);
    EXPECT_TRUE(splice.isPossible());
    if (!splice.isPossible() || !splice.isChanged()) {
        return {};
    }
    const QByteArray result = splice.front(splice.needed() + padding);
    EXPECT_EQ(result.size(), splice.needed() + padding);
    return result;
}

TagChanges titleChange(const QString& title)
{
    TagChanges changes;
    changes.Titel = title;
    return changes;
}

/// Frames that this program knows nothing of, with bytes that tempt to be changed.
Id3v2Writer& addForeignFrames(Id3v2Writer& writer, int version)
{
    if (version == 2) {
        return writer.frame("TDA", QByteArray("\0003112", 5))
            .frame("RVA", QByteArray("\3\20\1\2\3\4", 6))
            .frame("CRM", QByteArray("a\0b\0\xFF\0\xFE", 7))
            .frame("XYZ", QByteArray("\0\0\0", 3));
    }
    return writer.frame("TDAT", QByteArray("\0003112\0", 6))
        .frame("PRIV", QByteArray("owner\0\xFF\xE0\0\1", 10))
        .frame("TPE2", QByteArray("\1\xFF\xFEZ\0\0\0", 7))
        .frame("TENC", QByteArray("\7unknown encoding", 17))
        .frame("CHAP", QByteArray("too short", 9))
        .frame("RVAD", QByteArray("\3\20\1\2\3\4", 6))
        .frame("TCMP", QByteArray("\0001", 2), 0x4000)
        .frame("ZZZ9", QByteArray("\0\0\0\xFF\xFB", 5), 0x8000);
}

class EachVersion : public testing::TestWithParam<int>
{
protected:
    [[nodiscard]] bool isOld() const { return GetParam() == 2; }

    [[nodiscard]] QByteArray name(const char* old, const char* current) const
    {
        return isOld() ? old : current;
    }
};

INSTANTIATE_TEST_SUITE_P(TagSplice, EachVersion, testing::Values(2, 3, 4), [](const auto& each) {
    return "v2" + std::to_string(each.param);
});

TEST_P(EachVersion, AChangedTitleStandsInItsPlaceAndEveryOtherFrameIsTheSameByteForByte)
{
    Id3v2Writer writer(GetParam(), TextEncoding::Latin1);
    writer.text("TPE1", u"Somebody"_s);
    writer.text("TIT2", u"Old"_s);
    const QByteArray before = addForeignFrames(writer, GetParam()).tag(50);

    const QByteArray after = spliced(before, titleChange(u"New and longer"_s));

    RawTag expected = rawTag(before);
    const RawTag found = rawTag(after);
    ASSERT_EQ(found.version, GetParam());
    ASSERT_EQ(namesOf(found), namesOf(expected));
    expected.frames[1] = found.frames[1];
    EXPECT_EQ(found.frames, expected.frames);
    EXPECT_EQ(readBack(after).id3v2.Titel, u"New and longer"_s);
    EXPECT_EQ(found.rest, QByteArray(100, '\0'));
}

TEST_P(EachVersion, EveryFieldIsReadBack)
{
    TagChanges changes{.Titel = u"Títel"_s,
                       .Interpret = u"Ωmega"_s,
                       .Album = u"Album €"_s,
                       .Genre = u"Rock"_s,
                       .Jahr = u"1999"_s,
                       .Kommentar = u"Kommentar ÿ"_s,
                       .Track = u"7"_s,
                       .BPM = u"128"_s,
                       .Note = u"4"_s,
                       .FID = u"123456789012"_s,
                       .Kategorie = u"Kat"_s,
                       .Situation = u"Sit"_s,
                       .Stimmung = u"Жtimmung"_s,
                       .Tempo = u"Tem"_s,
                       .User1 = u"u1"_s,
                       .User2 = u"u2"_s,
                       .User3 = u"u3"_s,
                       .User4 = u"u4"_s,
                       .User5 = u"u5"_s};
    const QByteArray after = spliced(Id3v2Writer(GetParam()).tag(20), changes);
    const TrackTags tags = readBack(after);
    EXPECT_EQ(tags.id3v2.Titel, changes.Titel);
    EXPECT_EQ(tags.id3v2.Interpret, changes.Interpret);
    EXPECT_EQ(tags.id3v2.Album, changes.Album);
    EXPECT_EQ(tags.id3v2.Genre, changes.Genre);
    EXPECT_EQ(tags.id3v2.Jahr, changes.Jahr);
    EXPECT_EQ(tags.id3v2.Kommentar, changes.Kommentar);
    EXPECT_EQ(tags.id3v2.Track, changes.Track);
    EXPECT_EQ(tags.BPM, changes.BPM);
    EXPECT_EQ(tags.Note, changes.Note);
    EXPECT_EQ(tags.FID, changes.FID);
    EXPECT_EQ(tags.Kategorie, changes.Kategorie);
    EXPECT_EQ(tags.Situation, changes.Situation);
    EXPECT_EQ(tags.Stimmung, changes.Stimmung);
    EXPECT_EQ(tags.Tempo, changes.Tempo);
    EXPECT_EQ(tags.User1, changes.User1);
    EXPECT_EQ(tags.User5, changes.User5);

    EXPECT_EQ(spliced(after, changes), QByteArray()) << "written twice";
}

TEST_P(EachVersion, EmptyFieldsAreTakenOutAndNothingElse)
{
    Id3v2Writer writer(GetParam(), TextEncoding::Latin1);
    writer.text("TIT2", u"Title"_s).text("TYER", u"1999"_s).comment(u""_s, u"mine"_s);
    writer.comment(u"iTunNORM"_s, u" 00000 "_s).userText(u"Kategorie"_s, u"x"_s);
    writer.userText(u"other"_s, u"y"_s);
    const QByteArray before = addForeignFrames(writer, GetParam()).tag(50);
    TagChanges changes{.Titel = u""_s, .Jahr = u""_s, .Kommentar = u""_s, .Kategorie = u""_s};

    const RawTag found = rawTag(spliced(before, changes));

    RawTag expected = rawTag(before);
    expected.frames.erase(expected.frames.begin() + 4); // the category
    expected.frames.erase(expected.frames.begin(), expected.frames.begin() + 3);
    EXPECT_EQ(found.frames, expected.frames);
}

TEST_P(EachVersion, ATagThatHoldsAllOfItIsNotTouched)
{
    Id3v2Writer writer(GetParam(), TextEncoding::Utf16);
    writer.text("TIT2", u"Ωld  "_s).text("TRCK", u"03/12"_s).text("TBPM", u"128.00"_s);
    writer.comment(u""_s, u"c"_s).rating(kRatingAddress, 186, 7);
    const TagChanges changes{.Titel = u"Ωld"_s,
                             .Album = u""_s,
                             .Jahr = u""_s,
                             .Kommentar = u"c"_s,
                             .Track = u"3"_s,
                             .BPM = u"128"_s,
                             .Note = u"4"_s,
                             .Tempo = u""_s};
    EXPECT_EQ(spliced(writer.tag(), changes), QByteArray());
}

TEST_P(EachVersion, FurtherValuesStayUntilTheFieldIsChanged)
{
    Id3v2Writer writer(GetParam(), TextEncoding::Latin1);
    writer.frame(name("TP1", "TPE1"), QByteArray("\0One\0Two", 8));
    const QByteArray before = writer.tag(30);
    TagChanges changes{.Titel = u"T"_s, .Interpret = GetParam() == 4 ? u"One; Two"_s : u"One"_s};
    const RawTag found = rawTag(spliced(before, changes));
    ASSERT_EQ(found.frames.size(), 2U);
    EXPECT_EQ(found.frames[1], rawTag(before).frames[0]);
}

TEST(TagSpliceTest, ArtistsOfSeveralValuesStaySeveralOnes)
{
    Id3v2Writer writer(4, TextEncoding::Latin1);
    writer.frame("TPE1", QByteArray("\0One\0Two", 8)).frame("TCON", QByteArray("\0A", 2));
    const RawTag found =
        rawTag(spliced(writer.tag(30), {.Interpret = u"One; Ωega; Three"_s, .Genre = u"A; B"_s}));
    EXPECT_TRUE(found.frames.at(0).bytes.endsWith("\3" + u"One"_s.toUtf8() + '\0' +
                                                  u"Ωega"_s.toUtf8() + '\0' + "Three"));
    EXPECT_TRUE(found.frames.at(1).bytes.endsWith(QByteArray("\0A; B", 5)));
}

TEST_P(EachVersion, WithARatingOfAnotherProgramOursSaysWhetherThereIsOne)
{
    Id3v2Writer writer(GetParam());
    writer.rating("Windows Media Player 9 Series", 196);
    const QByteArray before = writer.tag(100);
    ASSERT_EQ(readBack(before).Note, u"4"_s);
    EXPECT_EQ(spliced(before, {.Note = u"4"_s}), QByteArray());

    const QByteArray none = spliced(before, {.Note = QString()});
    EXPECT_EQ(readBack(none).Note, QString());
    EXPECT_EQ(rawTag(none).frames.back(), rawTag(before).frames.back());
    EXPECT_EQ(spliced(none, {.Note = QString()}), QByteArray());
    EXPECT_EQ(readBack(spliced(none, {.Note = u"2"_s})).Note, u"2"_s);
}

TEST(TagSpliceTest, ATextThatIsUtf8ByChanceIsStoredSoThatItIsReadAsWritten)
{
    for (const int version : {2, 3, 4}) {
        const QByteArray tag = Id3v2Writer(version).text("TALB", u"A"_s).tag();
        const QByteArray after = spliced(tag, {.Titel = u"Ã¼ Â°"_s});
        EXPECT_EQ(readBack(after).id3v2.Titel, u"Ã¼ Â°"_s) << version;
    }
}

TEST_P(EachVersion, TheTotalBehindATrackNumberStays)
{
    Id3v2Writer writer(GetParam());
    writer.text("TRCK", u"3/12"_s);
    EXPECT_EQ(readBack(spliced(writer.tag(), {.Track = u"5"_s})).id3v2.Track, u"5/12"_s);
    EXPECT_EQ(readBack(spliced(writer.tag(), {.Track = u"5/9"_s})).id3v2.Track, u"5/9"_s);
}

TEST_P(EachVersion, OurRatingChangesAndCountersAndOtherProgramsRatingsStay)
{
    const QByteArray address(kRatingAddress, sizeof kRatingAddress);
    for (const QByteArray& counter :
         {QByteArray(), QByteArray("\5"), QByteArray("\1\2\3\4\5\6\7\0", 8)}) {
        Id3v2Writer writer(GetParam());
        writer.frame(name("POP", "POPM"), QByteArray("other@program\0\xFF\0\0\0\7", 19));
        writer.frame(name("POP", "POPM"), address + char(64) + counter);
        const QByteArray before = writer.tag(10);
        const RawTag found = rawTag(spliced(before, {.Note = u"5"_s}));
        ASSERT_EQ(found.frames.size(), 2U);
        EXPECT_EQ(found.frames[0], rawTag(before).frames[0]);
        EXPECT_TRUE(found.frames[1].bytes.endsWith(address + '\xFF' + counter));

        const RawTag kept = rawTag(spliced(before, {.Note = u""_s}));
        ASSERT_EQ(kept.frames.size(), 2U) << "or the rating of the other program would count";
        EXPECT_TRUE(kept.frames[1].bytes.endsWith(address + '\0' + counter));

        QByteArray unrated = before;
        unrated.replace(QByteArray("program\0\xFF", 9), QByteArray("program\0\0", 9));
        const RawTag cleared = rawTag(spliced(unrated, {.Note = u""_s}));
        EXPECT_EQ(cleared.frames.size(), counter.isEmpty() ? 1U : 2U);
        EXPECT_TRUE(counter.isEmpty() ||
                    cleared.frames[1].bytes.endsWith(address + '\0' + counter));
    }
}

TEST_P(EachVersion, AUserTextKeepsItsSpellingAndItsTwins)
{
    Id3v2Writer writer(GetParam(), TextEncoding::Latin1);
    writer.userText(u"USER1"_s, u"first"_s).userText(u"User1"_s, u"second"_s);
    const QByteArray before = writer.tag(10);
    const QByteArray after = spliced(before, {.User1 = u"new"_s});
    const RawTag found = rawTag(after);
    ASSERT_EQ(found.frames.size(), 2U);
    EXPECT_TRUE(found.frames[0].bytes.contains("USER1"));
    EXPECT_EQ(found.frames[1], rawTag(before).frames[1]);
    EXPECT_EQ(readBack(after).User1, u"new"_s);
}

TEST_P(EachVersion, ACommentKeepsItsLanguageAndOnlyTheOneWithoutDescriptionChanges)
{
    Id3v2Writer writer(GetParam());
    writer.comment(u"other"_s, u"stays"_s);
    writer.frame(name("COM", "COMM"), QByteArray("\0deu\0alt", 8));
    const QByteArray before = writer.tag(10);
    const RawTag found = rawTag(spliced(before, {.Kommentar = u"neu Ω"_s}));
    ASSERT_EQ(found.frames.size(), 2U);
    EXPECT_EQ(found.frames[0], rawTag(before).frames[0]);
    EXPECT_EQ(found.frames[1].bytes.mid(isOld() ? 7 : 11, 3), "deu"_ba);
}

TEST_P(EachVersion, OnlyTheFrontCoverWithoutADescriptionIsReplaced)
{
    const QByteArray kind = isOld() ? "JPG"_ba : QByteArray("image/jpeg\0", 11);
    const QByteArray id = name("PIC", "APIC");
    Id3v2Writer writer(GetParam());
    writer.frame(id, '\0' + kind + QByteArray("\0\0back", 6));
    writer.frame(id, '\0' + kind + QByteArray("\3named\0one", 10));
    writer.frame(id, '\0' + kind + QByteArray("\3\0old", 5));
    const QByteArray before = writer.tag(10);

    TagChanges changes;
    changes.cover = CoverPicture{"\x89PNG\0bytes"_ba, u"image/png"_s};
    const QByteArray after = spliced(before, changes);
    const RawTag found = rawTag(after);
    ASSERT_EQ(found.frames.size(), 3U);
    EXPECT_EQ(found.frames[0], rawTag(before).frames[0]);
    EXPECT_EQ(found.frames[1], rawTag(before).frames[1]);
    const QByteArray png = isOld() ? "PNG"_ba : QByteArray("image/png\0", 10);
    EXPECT_TRUE(
        found.frames[2].bytes.endsWith('\0' + png + QByteArray("\3\0", 2) + changes.cover->bytes));
    EXPECT_EQ(spliced(after, changes), QByteArray()) << "written twice";

    changes.cover = CoverPicture{};
    const RawTag without = rawTag(spliced(after, changes));
    ASSERT_EQ(without.frames.size(), 1U);
    EXPECT_EQ(without.frames[0], found.frames[0]);
}

/// Front covers with and without a description, between pictures of other kinds.
class FrontCoversTakenOff : public EachVersion
{
protected:
    FrontCoversTakenOff()
    {
        const QByteArray kind = isOld() ? "JPG"_ba : QByteArray("image/jpeg\0", 11);
        const QByteArray id = name("PIC", "APIC");
        Id3v2Writer writer(GetParam());
        writer.text("TIT2", u"T"_s);
        writer.frame(id, '\0' + kind + QByteArray("\0\0no kind", 9));
        writer.frame(id, '\0' + kind + QByteArray("\x8\0artist", 8));
        writer.frame(id, '\0' + kind + QByteArray("\3Cover\0one", 10));
        writer.frame(id, '\0' + kind + QByteArray("\3\0two", 5));
        writer.frame(id, '\0' + kind + QByteArray("\3Front\0three", 12));
        writer.frame(id, '\0' + kind + QByteArray("\3\0four", 6));
        before = writer.tag(10);
        TagChanges off;
        off.cover = CoverPicture{};
        after = spliced(before, off);
    }

    QByteArray before;
    QByteArray after;
};

TEST_P(FrontCoversTakenOff, GoAllAndPicturesOfOtherKindsStay)
{
    const RawTag was = rawTag(before);
    const RawTag is = rawTag(after);
    ASSERT_EQ(is.frames.size(), 3U);
    EXPECT_TRUE(std::equal(is.frames.begin(), is.frames.end(), was.frames.begin()));
}

TEST_P(FrontCoversTakenOff, ComeBackByteForByte)
{
    const TagChanges back{.formerCover = frontCover(before)};
    EXPECT_EQ(rawTag(spliced(after, back)).frames, rawTag(before).frames);
    EXPECT_EQ(spliced(before, back), QByteArray()) << "they stand there already";
}

TEST_P(FrontCoversTakenOff, DoNotComeBackBesideThoseThatAnotherProgramHasPutThere)
{
    Id3v2Writer writer(GetParam());
    const QByteArray kind = isOld() ? "JPG"_ba : QByteArray("image/jpeg\0", 11);
    writer.frame(name("PIC", "APIC"), '\0' + kind + QByteArray("\3new\0other", 10));
    const RawTag found = rawTag(spliced(writer.tag(500), {.formerCover = frontCover(before)}));
    ASSERT_EQ(found.frames.size(), 2U);
    EXPECT_TRUE(found.frames[0].bytes.endsWith("other"));
    EXPECT_TRUE(found.frames[1].bytes.endsWith("two"));
}

INSTANTIATE_TEST_SUITE_P(Id3v2, FrontCoversTakenOff, testing::Values(2, 3, 4));

TEST_P(EachVersion, AFormerCoverComesBackByteForByte)
{
    const QByteArray kind = isOld() ? "JPG"_ba : QByteArray("image/jpg\0", 10);
    const QByteArray wide("\3\xFF\xFE\0\0", 5);
    Id3v2Writer writer(GetParam());
    writer.text("TIT2", u"T"_s).frame(name("PIC", "APIC"), '\1' + kind + wide + "foreign");
    const QByteArray before = writer.tag(10);
    const QByteArray kept = frontCover(before);
    EXPECT_EQ(rawTag(kept).frames.at(0), rawTag(before).frames.at(1));

    TagChanges changes;
    changes.cover = CoverPicture{"new", u"image/jpeg"_s};
    const QByteArray after = spliced(before, changes);
    ASSERT_NE(rawTag(after).frames, rawTag(before).frames);
    EXPECT_EQ(rawTag(spliced(after, {.formerCover = kept})).frames, rawTag(before).frames);
    EXPECT_EQ(spliced(before, {.formerCover = kept}), QByteArray()) << "it stands there already";
}

TEST_P(EachVersion, ACoverThatHadNoneBeforeItIsTakenOutAgain)
{
    Id3v2Writer writer(GetParam());
    const QByteArray kind = isOld() ? "JPG"_ba : QByteArray("image/jpeg\0", 11);
    writer.frame(name("PIC", "APIC"), '\0' + kind + QByteArray("\0\0no kind", 9));
    const QByteArray before = writer.tag(10);
    const QByteArray kept = frontCover(before);
    EXPECT_TRUE(kept.startsWith("ID3"));
    EXPECT_TRUE(rawTag(kept).frames.empty());

    TagChanges changes;
    changes.cover = CoverPicture{"new", u"image/jpeg"_s};
    const QByteArray after = spliced(before, changes);
    EXPECT_EQ(rawTag(spliced(after, {.formerCover = kept})).frames, rawTag(before).frames);
}

TEST_P(EachVersion, AFormerCoverOfAnotherVersionComesBackAsAPicture)
{
    const bool wasOld = !isOld();
    const QByteArray kind = wasOld ? "PNG"_ba : QByteArray("image/png\0", 10);
    Id3v2Writer writer(wasOld ? 2 : 3);
    writer.frame(wasOld ? "PIC" : "APIC", '\0' + kind + QByteArray("\3\0foreign", 9));
    const QByteArray kept = frontCover(writer.tag(10));
    const QByteArray tag = Id3v2Writer(GetParam()).text("TIT2", u"T"_s).tag();
    const RawTag found = rawTag(spliced(tag, {.formerCover = kept}));
    const QByteArray now = isOld() ? "PNG"_ba : QByteArray("image/png\0", 10);
    EXPECT_TRUE(found.frames.at(1).bytes.endsWith('\0' + now + QByteArray("\3\0foreign", 9)));
}

TEST(TagSpliceTest, AFormerCoverThatIsNoneChangesNothing)
{
    const QByteArray tag = Id3v2Writer(3).text("TIT2", u"T"_s).tag();
    EXPECT_EQ(spliced(tag, {.formerCover = "rubbish"_ba}), QByteArray());
    EXPECT_EQ(spliced(tag, {.formerCover = QByteArray()}), QByteArray());
    EXPECT_EQ(spliced(tag, {.formerCover = frontCover({})}), QByteArray());
}

TEST_P(EachVersion, ANewCoverStandsBehindAllFrames)
{
    TagChanges changes;
    changes.cover = CoverPicture{QByteArray(300'000, 'p'), u"image/jpeg"_s};
    const QByteArray after = spliced(Id3v2Writer(GetParam()).text("TIT2", u"T"_s).tag(), changes);
    EXPECT_EQ(namesOf(rawTag(after)), (std::vector{name("TT2", "TIT2"), name("PIC", "APIC")}));
    EXPECT_EQ(spliced(after, changes), QByteArray());
}

TEST_P(EachVersion, AFrameWithoutContentStaysAndOurFieldsStandInFrontOfIt)
{
    Id3v2Writer writer(GetParam(), TextEncoding::Latin1);
    writer.text("TALB", u"A"_s).frame(name("TOA", "TOPE"), {});
    writer.text("TIT2", u"Old"_s).text("TPE1", u"P"_s);
    const QByteArray before = writer.tag(20);
    const QByteArray after = spliced(before, {.Titel = u"New"_s, .BPM = u"90"_s});
    EXPECT_EQ(namesOf(rawTag(after)),
              (std::vector{name("TT2", "TIT2"), name("TBP", "TBPM"), name("TAL", "TALB"),
                           name("TOA", "TOPE"), name("TP1", "TPE1")}));
    EXPECT_EQ(readBack(after).id3v2.Titel, u"New"_s);
    EXPECT_EQ(readBack(after).id3v2.Interpret, u"P"_s);
}

TEST_P(EachVersion, WhatIsNoFrameStaysBehindTheFramesAsItStands)
{
    Id3v2Writer writer(GetParam(), TextEncoding::Latin1);
    writer.text("TIT2", u"Old"_s);
    const QByteArray lowerCase =
        isOld() ? QByteArray("ncn\0\0\4ab\0\0", 10) : QByteArray("ncon\0\0\0\4\0\0ab\0\0", 14);
    const QByteArray tooLarge =
        isOld() ? QByteArray("XYZ\x7F\0\0abc", 9) : QByteArray("WXYZ\0\1\0\0\0\0abc", 13);
    for (const QByteArray& strange : {lowerCase, lowerCase + lowerCase, tooLarge}) {
        Id3v2Writer broken = writer;
        QByteArray before = broken.tag();
        before += strange + QByteArray(30, '\0');
        before.replace(6, 4, QByteArray("\0\0\0", 3) + char(before.size() - 10));
        const QByteArray after = spliced(before, {.Titel = u"A new title"_s, .Album = u"B"_s}, 60);
        EXPECT_EQ(rawTag(after).rest, strange + QByteArray(60, '\0'));
        EXPECT_EQ(readBack(after).id3v2.Titel, u"A new title"_s);
        EXPECT_EQ(readBack(after).id3v2.Album, u"B"_s);
    }
}

TEST_P(EachVersion, ASecondTagStaysAndItsRoomIsTheFirstTagsToo)
{
    Id3v2Writer one(GetParam());
    one.text("TIT2", u"first"_s);
    Id3v2Writer two(GetParam() == 4 ? 3 : 4, TextEncoding::Latin1);
    two.text("TIT2", u"second"_s).text("TALB", u"Album"_s).frame("PRIV", "x"_ba);
    const QByteArray before = one.tag() + two.tag(500);
    const QByteArray kept = two.tag();

    const TagSplice changed(viewOf(before), {.Titel = u"t"_s, .Album = u"Album"_s});
    const QByteArray after = changed.front(before.size());
    EXPECT_EQ(after.size(), before.size());
    EXPECT_TRUE(after.endsWith(kept.mid(kept.indexOf("TALB"))));
    EXPECT_FALSE(after.contains("second")) << "readers do not agree on which tag counts";
    EXPECT_EQ(readBack(after).id3v2.Titel, u"t"_s);
    EXPECT_EQ(readBack(after).id3v2.Album, u"Album"_s);

    const QByteArray cleared = spliced(before, {.Titel = u""_s, .Album = u""_s});
    EXPECT_EQ(readBack(cleared).id3v2.Titel, QString());
    EXPECT_EQ(readBack(cleared).id3v2.Album, QString());
    EXPECT_TRUE(cleared.endsWith(rawTag(kept).frames[2].bytes));
}

TEST(TagSpliceTest, AFileWithoutATagGetsOneOfVersion3)
{
    const QByteArray tag = spliced({}, {.Titel = u"T"_s, .Jahr = u"2001"_s, .User2 = u"x"_s});
    EXPECT_EQ(rawTag(tag).version, 3);
    EXPECT_EQ(namesOf(rawTag(tag)), (std::vector{"TIT2"_ba, "TYER"_ba, "TXXX"_ba}));
    EXPECT_EQ(spliced({}, {.Titel = u""_s, .cover = CoverPicture{}}), QByteArray());
}

TEST(TagSpliceTest, LettersAreStoredAsNarrowAsTheyFit)
{
    const auto bodyOf = [](int version, const QString& title) {
        const QByteArray tag = spliced(Id3v2Writer(version).tag(), titleChange(title));
        return rawTag(tag).frames.at(0).bytes.mid(10);
    };
    EXPECT_EQ(bodyOf(3, u"äÿ"_s), "\0\xE4\xFF"_ba);
    EXPECT_EQ(bodyOf(4, u"äÿ"_s), "\0\xE4\xFF"_ba);
    EXPECT_EQ(bodyOf(3, u"Ω"_s), "\1\xFF\xFE\xA9\x03"_ba);
    EXPECT_EQ(bodyOf(4, u"Ω"_s), "\3\xCE\xA9"_ba);
    // Single bytes from 0x80 to 0x9F are read as other letters.
    EXPECT_EQ(bodyOf(4, u"\u0085"_s), "\3\xC2\x85"_ba);
}

TEST(TagSpliceTest, WhatNoTagCanHoldIsLeftOutOfAText)
{
    const QString title = u"a"_s + QChar(0xD800) + u"b"_s + QChar(u'\0') + u"c"_s;
    const QByteArray after = spliced(Id3v2Writer(3).tag(), titleChange(title));
    EXPECT_EQ(readBack(after).id3v2.Titel, u"a?b"_s);
    EXPECT_EQ(spliced(after, titleChange(title)), QByteArray());
}

TEST(TagSpliceTest, TheYearIsSetWhereverTheTagShowsIt)
{
    const auto yearAfter = [](const QByteArray& tag) {
        const QByteArray after = spliced(tag, {.Jahr = u"2005"_s});
        EXPECT_EQ(readBack(after).id3v2.Jahr, u"2005"_s);
        return namesOf(rawTag(after));
    };
    using Names = std::vector<QByteArray>;
    Id3v2Writer both(4, TextEncoding::Latin1);
    both.text("TDRC", u"1999-05-06"_s).text("TYER", u"1998"_s);
    EXPECT_EQ(yearAfter(both.tag()), (Names{"TDRC", "TYER"}));
    EXPECT_EQ(yearAfter(Id3v2Writer(4).tag()), (Names{"TDRC"}));
    EXPECT_EQ(yearAfter(Id3v2Writer(3).text("TDRC", u"1999"_s).tag()), (Names{"TDRC"}));
    // Other readers of version 2.4 do not know the frame of the older versions.
    EXPECT_EQ(yearAfter(Id3v2Writer(4).text("TYER", u"1999"_s).tag()), (Names{"TDRC", "TYER"}));
    // The year of a second tag wins over a time of the first.
    const QByteArray two =
        Id3v2Writer(4).text("TDRC", u"1999"_s).tag() + Id3v2Writer(3).text("TYER", u"1998"_s).tag();
    EXPECT_EQ(yearAfter(two), (Names{"TDRC"}));

    Id3v2Writer full(4, TextEncoding::Latin1);
    full.text("TDRC", u"2005-05-06"_s);
    EXPECT_EQ(spliced(full.tag(), {.Jahr = u"2005"_s}), QByteArray());
}

TEST(TagSpliceTest, GroupsEncryptionAndCompressionOfOtherFramesStay)
{
    for (const int version : {3, 4}) {
        Id3v2Writer writer(version, TextEncoding::Latin1);
        const quint16 group = version == 3 ? 0x20 : 0x40;
        const quint16 encryption = version == 3 ? 0x40 : 0x04;
        const quint16 compression = version == 3 ? 0x80 : 0x09;
        writer.frame("PRIV", "g-priv"_ba, group).frame("TIT3", "\7secret"_ba, encryption);
        writer.frame("TIT2", "\7secret title"_ba, encryption);
        writer.frame("TEXT", QByteArray("\0\0\0\4junk", 8), compression);
        const QByteArray before = writer.tag(10);
        const QByteArray after = spliced(before, titleChange(u"readable"_s));
        RawTag found = rawTag(after);
        EXPECT_EQ(readBack(after).id3v2.Titel, u"readable"_s);
        found.frames.erase(found.frames.begin());
        EXPECT_EQ(found.frames, rawTag(before).frames);
    }
}

TEST(TagSpliceTest, AFrameOfOursKeepsItsGroupAndItsStatus)
{
    Id3v2Writer v3(3, TextEncoding::Latin1);
    v3.frame("TIT2", QByteArray("G\0Old", 5), 0x4020);
    EXPECT_EQ(rawTag(spliced(v3.tag(), titleChange(u"New!"_s))).frames.at(0).bytes,
              QByteArray("TIT2\0\0\0\6\x40\x20G\0New!", 16));
    Id3v2Writer v4(4, TextEncoding::Latin1);
    v4.frame("TIT2", QByteArray("G\0\0\0\4\0Old", 9), 0x2041);
    EXPECT_EQ(rawTag(spliced(v4.tag(), titleChange(u"New!"_s))).frames.at(0).bytes,
              QByteArray("TIT2\0\0\0\6\x20\x40G\0New!", 16));
}

TEST(TagSpliceTest, AnUnsynchronisedTagOfVersion3IsWrittenPlain)
{
    Id3v2Writer writer(3, TextEncoding::Utf16);
    writer.text("TIT2", u"Old"_s).frame("PRIV", QByteArray("x\0\xFF\0\xFF\xE0", 6));
    const QByteArray after = spliced(writer.unsynchronised(), titleChange(u"New"_s));
    EXPECT_EQ(quint8(after[5]), 0);
    EXPECT_EQ(rawTag(after).frames.at(1), rawTag(writer.tag()).frames.at(1));
    EXPECT_EQ(readBack(after).id3v2.Titel, u"New"_s);
}

TEST(TagSpliceTest, AnUnsynchronisedTagOfVersion4KeepsItsFramesAndOursAreWrittenLikeThem)
{
    Id3v2Writer writer(4, TextEncoding::Utf8);
    writer.text("TIT2", u"Old"_s).frame("PRIV", QByteArray("x\0\xFF\0\0\1", 6));
    QByteArray before = writer.tag(20);
    before[5] = '\x80';
    // Single bytes 0xFF at the end and in front of a zero: the value of a rating and a cover.
    TagChanges changes{.Titel = u"ÿ"_s, .Note = u"5"_s};
    changes.cover = CoverPicture{QByteArray("\xFF\xD8\xFF\xE0\0\xFF\0", 7), u"image/jpeg"_s};
    const QByteArray after = spliced(before, changes);
    EXPECT_EQ(quint8(after[5]), 0x80);
    EXPECT_EQ(rawTag(after).frames.at(2), rawTag(before).frames.at(1));
    EXPECT_EQ(readBack(after).id3v2.Titel, u"ÿ"_s);
    EXPECT_EQ(readBack(after).Note, u"5"_s);
    EXPECT_EQ(spliced(after, changes), QByteArray()) << "written twice";
}

TEST(TagSpliceTest, AnExtendedHeaderStaysWithoutItsChecksum)
{
    const auto withExtended = [](int version, const QByteArray& extended) {
        QByteArray tag = Id3v2Writer(version).text("TIT2", u"Old"_s).tag(30);
        tag.insert(10, extended);
        tag[5] = 0x40;
        tag[9] = char(tag[9] + extended.size());
        return tag;
    };
    const QByteArray v3 = withExtended(3, QByteArray("\0\0\0\12\x80\0\0\0\0\36CRC!", 14));
    QByteArray after = spliced(v3, titleChange(u"New"_s), 100);
    EXPECT_EQ(after.mid(10, 10), QByteArray("\0\0\0\6\0\0\0\0\0\x64", 10));
    EXPECT_EQ(rawTag(after, 10).frames.size(), 1U);
    EXPECT_EQ(readBack(after).id3v2.Titel, u"New"_s);

    const QByteArray v4 = withExtended(4, QByteArray("\0\0\0\17\1\x70\0\5\1\2\3\4\5\1\x2A", 15));
    after = spliced(v4, titleChange(u"New"_s), 100);
    EXPECT_EQ(after.mid(10, 9), QByteArray("\0\0\0\11\1\x50\0\1\x2A", 9));
    EXPECT_EQ(rawTag(after, 9).frames.size(), 1U);
    EXPECT_EQ(readBack(after).id3v2.Titel, u"New"_s);
}

TEST(TagSpliceTest, AFooterBecomesPadding)
{
    QByteArray tag = Id3v2Writer(4).text("TIT2", u"Old"_s).tag();
    tag[5] = 0x10;
    const QByteArray footer = "3DI" + tag.mid(3, 7);
    const QByteArray after = spliced(tag + footer, titleChange(u"New"_s), 40);
    EXPECT_EQ(quint8(after[5]), 0);
    EXPECT_EQ(rawTag(after).rest, QByteArray(40, '\0'));
}

TEST(TagSpliceTest, PlainSizesInVersion4AreUnderstoodAndStay)
{
    Id3v2Writer writer(4, TextEncoding::Latin1);
    writer.frame("PRIV", QByteArray(200, 'p')).lieAboutLastSize(200);
    writer.text("TIT2", u"Old"_s);
    const QByteArray before = writer.tag(20);
    const QByteArray after = spliced(before, titleChange(u"New"_s));
    EXPECT_EQ(after.mid(10, 210), before.mid(10, 210));
    EXPECT_EQ(readBack(after).id3v2.Titel, u"New"_s);
}

TEST(TagSpliceTest, InATagOfPlainSizesOursArePlainUnlessThatWouldBeMistaken)
{
    Id3v2Writer writer(4, TextEncoding::Latin1);
    writer.frame("PRIV", QByteArray(200, '\xFE')).lieAboutLastSize(200).text("TIT2", u"Old"_s);
    const auto sizeAfter = [&](const QString& title) {
        const QByteArray after = spliced(writer.tag(20), titleChange(title));
        EXPECT_EQ(readBack(after).id3v2.Titel, title);
        return after.mid(after.indexOf("TIT2") + 4, 4).toHex();
    };
    EXPECT_EQ(sizeAfter(QString(199, u't')), "000000c8"_ba);
    EXPECT_EQ(sizeAfter(QString(199, u'T')), "00000148"_ba);
}

TEST(TagSpliceTest, ALongFrameEndsInFrontOfANameInSmallLetters)
{
    const QByteArray strange("ncon\0\0\0\2\0\0ab", 12);
    QByteArray before = Id3v2Writer(4).comment(u""_s, QString(140, u'c')).tag();
    before += strange + QByteArray(400, '\0');
    const qsizetype size = before.size() - 10;
    before.replace(8, 2, QByteArray(1, char(size >> 7)) + char(size & 0x7F));
    const QByteArray after = spliced(before, {.Kommentar = u"short"_s});
    EXPECT_TRUE(after.contains(strange));
}

TEST(TagSpliceTest, ATagThatNobodyCanWalkIsLeftAlone)
{
    QByteArray compressed = Id3v2Writer(2).text("TIT2", u"Old"_s).tag();
    compressed[5] = 0x40;
    QByteArray newer = Id3v2Writer(4).text("TIT2", u"Old"_s).tag();
    newer[3] = 5;
    QByteArray nowhere = Id3v2Writer(3).text("TIT2", u"Old"_s).tag();
    nowhere[5] = 0x40;
    const QByteArray cut = Id3v2Writer(3).text("TIT2", u"Old"_s).tag().chopped(3);
    for (const QByteArray& tag : {compressed, newer, nowhere, cut}) {
        EXPECT_FALSE(TagSplice(viewOf(tag), titleChange(u"New"_s)).isPossible());
    }
    // Behind one that we know it is carried along.
    const QByteArray first = Id3v2Writer(3).text("TIT2", u"Old"_s).tag(50);
    EXPECT_TRUE(spliced(first + newer, titleChange(u"New"_s)).endsWith(newer));
}

TEST(Id3v1SpliceTest, ChangedFieldsAreCutToTheirPlacesAndOthersStay)
{
    const QByteArray before =
        id3v1Tag({"Title", "Artist", "Album", "1999", "A comment of thirty letters !!", 0, 17});
    TagChanges changes{.Titel = u"Ωλ Ж and a title that is much too long"_s,
                       .Genre = u"Own"_s,
                       .Jahr = u"20045"_s,
                       .Track = u"12/13"_s};
    const QByteArray after = changedId3v1(before, changes).value_or(QByteArray());
    ASSERT_EQ(after.size(), 128);
    EXPECT_EQ(after.mid(3, 30), "?? ? and a title that is much"_ba + ' ');
    EXPECT_EQ(after.mid(33, 60), before.mid(33, 60));
    EXPECT_EQ(after.mid(93, 4), "2004"_ba);
    EXPECT_EQ(after.mid(97, 28), before.mid(97, 28));
    EXPECT_EQ(after.mid(125), QByteArray("\0\14\xFF", 3));
    EXPECT_EQ(changedId3v1(after, changes), std::nullopt);
}

TEST(Id3v1SpliceTest, ATrackThatDoesNotFitIsClearedAndNoneLeavesTheComment)
{
    const QByteArray before = id3v1Tag({"T", "A", "B", "1999", "comment", 7, 17});
    const QByteArray after = changedId3v1(before, {.Track = u"300"_s}).value_or(QByteArray());
    EXPECT_EQ(after.mid(125, 2), QByteArray("\0\0", 2));
    const QByteArray whole =
        id3v1Tag({"T", "A", "B", "1999", "A comment of thirty letters !!", 0, 17});
    EXPECT_EQ(changedId3v1(whole, {.Track = u""_s}), std::nullopt);
}

TEST(Id3v1SpliceTest, ACommentLeavesThePlaceOfATrackNumberFree)
{
    const QByteArray before =
        id3v1Tag({"T", "A", "B", "1999", "A comment of thirty letters !!", 0, 17});
    const QByteArray after =
        changedId3v1(before, {.Kommentar = QString(40, u'k')}).value_or(QByteArray());
    EXPECT_EQ(after.mid(97, 30), QByteArray(28, 'k') + QByteArray(2, '\0'));
    EXPECT_EQ(changedId3v1(before, {.Kommentar = u"A comment of thirty letters !! and more"_s}),
              std::nullopt);
}

TEST(Id3v1SpliceTest, WhatReadsTheSameIsNotTouchedWhateverItIsPaddedWith)
{
    QByteArray blanks = id3v1Tag({"Title", "A", "B", "1999", "comment", 7, 17});
    blanks.replace(8, 25, QByteArray(25, ' '));
    TagChanges changes{.Titel = u"Title"_s, .Genre = u"Rock"_s, .genreNumber = 17, .Track = u"7"_s};
    EXPECT_EQ(changedId3v1(blanks, changes), std::nullopt);
}

} // namespace
