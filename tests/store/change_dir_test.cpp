#include "store/change_dir.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace melovane;
using changedir::mapped;
using changedir::parse;
using changedir::Record;

namespace {

Record mapping(const QString& from, const QString& to)
{
    return {u"Dir"_s, from, to};
}

} // namespace

TEST(ChangeDir, ALineMapsAnOldToANewFolderWithFreeBlanks)
{
    const auto records = parse(u"  C:\\Music\\  ??   /home/u/Music/  \r\n"_s);
    ASSERT_EQ(records.size(), 1U);
    EXPECT_EQ(records[0], mapping(u"C:\\Music\\"_s, u"/home/u/Music/"_s));
}

TEST(ChangeDir, ALineWithThreePiecesIsIgnored)
{
    EXPECT_TRUE(parse(u"C:\\a?? /b?? /c"_s).empty());
}

TEST(ChangeDir, ALineWithoutTheMarkIsIgnored)
{
    EXPECT_TRUE(parse(u"C:\\music to /music\n\n# nothing"_s).empty());
}

TEST(ChangeDir, ALineOfFiveLettersIsTooShortAndOneOfSixIsRead)
{
    EXPECT_TRUE(parse(u"a??bc"_s).empty());
    EXPECT_EQ(parse(u"ab??cd"_s).size(), 1U);
}

TEST(ChangeDir, AnEmptyOldFolderWouldMatchEverythingAndIsIgnored)
{
    EXPECT_TRUE(parse(u"  ?? /home/u/Music"_s).empty());
}

TEST(ChangeDir, MappingsKeepTheOrderOfTheFile)
{
    const auto records = parse(u"C:\\b?? /x\nC:\\a?? /y\n"_s);
    ASSERT_EQ(records.size(), 2U);
    EXPECT_EQ(records[0].oldFolder, u"C:\\b"_s);
}

TEST(ChangeDir, NewMappingsStandBehindWhatIsThereAndEveryLineOfItStays)
{
    const QString before = u"# by hand\r\nC:\\Music ?? /m\r\nno mapping ?? a ?? b"_s;
    const auto added = mapping(u"/alt/Pop/"_s, u"/neu/Pop/"_s);
    const QString after = changedir::withMappings(before, {added, added});
    EXPECT_EQ(after, before + u"\n/alt/Pop/ ?? /neu/Pop/\n"_s);
    EXPECT_EQ(changedir::withMappings(after, {added}), after);
    EXPECT_EQ(parse(after).back(), added);
    EXPECT_EQ(changedir::withMappings({}, {added}), u"/alt/Pop/ ?? /neu/Pop/\n"_s);
}

TEST(ChangeDir, AMappingThatNoLineCanHoldIsLeftOut)
{
    for (const QString& folder : {u"/a??b/"_s, u"/a\nb/"_s, u" /ab/"_s, u""_s}) {
        EXPECT_EQ(changedir::withMappings(u"x"_s, {mapping(folder, u"/neu/"_s)}), u"x"_s);
        EXPECT_EQ(changedir::withMappings(u"x"_s, {mapping(u"/alt/"_s, folder)}), u"x"_s);
    }
}

TEST(ChangeDir, AFolderBelowIsMappedWithTheSeparatorsOfTheNewFolder)
{
    EXPECT_EQ(mapped(mapping(u"C:\\Music\\"_s, u"/m"_s), u"C:\\Music\\Rock\\80s\\"),
              u"/m/Rock/80s/"_s);
}

TEST(ChangeDir, TheOldFolderMapsWithOrWithoutItsClosingSeparator)
{
    for (const QString& old : {u"C:\\Music"_s, u"C:\\Music\\"_s}) {
        for (const QString& fresh : {u"/m"_s, u"/m/"_s}) {
            EXPECT_EQ(mapped(mapping(old, fresh), u"C:\\Music\\Rock\\"), u"/m/Rock/"_s);
            EXPECT_EQ(mapped(mapping(old, fresh), u"C:\\Music\\"), u"/m/"_s);
        }
    }
}

TEST(ChangeDir, AFolderThatOnlyBeginsWithTheSameLettersIsNotMapped)
{
    EXPECT_EQ(mapped(mapping(u"C:\\Music"_s, u"/m"_s), u"C:\\Musical\\"), std::nullopt);
    EXPECT_EQ(mapped(mapping(u"C:\\Music\\Rock"_s, u"/m"_s), u"C:\\Music\\"), std::nullopt);
    EXPECT_EQ(mapped(mapping(u"C:\\Music"_s, u"/m"_s), u""), std::nullopt);
}

TEST(ChangeDir, LetterCaseSeparatorsAndUnicodeFormOfTheOldFolderDoNotMatter)
{
    EXPECT_EQ(mapped(mapping(u"c:/MÜSIK"_s, u"/m"_s), u"C:\\Mu\u0308sik\\A\\"), u"/m/A/"_s);
}

TEST(ChangeDir, AServerAndTheWholeDiskCanBeMapped)
{
    EXPECT_EQ(mapped(mapping(u"\\\\srv\\music\\"_s, u"/m"_s), u"\\\\SRV\\Music\\A\\"), u"/m/A/"_s);
    EXPECT_EQ(mapped(mapping(u"D:\\"_s, u"/m"_s), u"D:\\A\\"), u"/m/A/"_s);
    EXPECT_EQ(mapped(mapping(u"/"_s, u"/mnt/old"_s), u"/A/"), u"/mnt/old/A/"_s);
}
