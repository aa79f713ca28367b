#include "shell/more_result.h"
#include "shell/node_caption.h"

#include <QStringList>

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

QStringList captions(const QString& artist, const QString& title)
{
    QStringList result;
    for (const MoreResultEntry& entry : moreResultEntries(artist, title, {u"I:"_s, u"V:"_s})) {
        switch (entry.kind) {
        case MoreResultEntry::Kind::Separator:
            result.append(u"-"_s);
            break;
        case MoreResultEntry::Kind::Header:
        case MoreResultEntry::Kind::Search:
            result.append(entry.tag + entry.caption);
            break;
        }
    }
    return result;
}

TEST(MoreResult, AnArtistOfOneWordWithoutATitleIsTheOnlyEntry)
{
    EXPECT_EQ(captions(u"Ostwind"_s, {}), QStringList{u"OSTWIND"_s});
    EXPECT_EQ(captions(u" Ostwind "_s, u" - "_s), QStringList{u"OSTWIND"_s});
}

TEST(MoreResult, ArtistTitleAndTwoListsOfWords)
{
    EXPECT_EQ(captions(u"Mara Voss"_s, u"Hafen"_s),
              (QStringList{u"MARA VOSS"_s, u"HAFEN"_s, u"-"_s, u"I:"_s, u"&HAFEN"_s, u"&MARA"_s,
                           u"&VOSS"_s, u"-"_s, u"V:"_s, u"*&HAFEN"_s, u"*&MARA"_s, u"*&VOSS"_s}));
}

TEST(MoreResult, WordsOfTwoLettersAreLeftOutOfBothLists)
{
    const QStringList found = captions(u"DJ Ärzte"_s, u"Ab zu dir"_s);
    EXPECT_EQ(found.filter(u"&"_s),
              (QStringList{u"&DIR"_s, u"&ÄRZTE"_s, u"*&DIR"_s, u"*&ÄRZTE"_s}));
}

TEST(MoreResult, TheSameWordInArtistAndTitleComesOncePerList)
{
    EXPECT_EQ(captions(u"Nacht Schicht"_s, u"nacht"_s).filter(u"NACHT"_s),
              (QStringList{u"NACHT SCHICHT"_s, u"NACHT"_s, u"&NACHT"_s, u"*&NACHT"_s}));
}

TEST(MoreResult, SignsBetweenWordsBecomeOneBlank)
{
    EXPECT_EQ(captions(u"A\"B&C-D_E(F)G[H]I'J   K"_s, {}).first(), u"A B C D E F G H I J K"_s);
}

TEST(MoreResult, WithoutAnArtistItsEntryIsHidden)
{
    const auto entries = moreResultEntries({}, u"Hafen"_s, {});
    EXPECT_EQ(entries[0].caption, u"NULL"_s);
    EXPECT_FALSE(entries[0].visible);
    EXPECT_EQ(entries[1].caption, u"HAFEN"_s);
    EXPECT_EQ(entries.size(), 2U);
}

TEST(MoreResult, ThePlainEntriesAreSearchedAsTheyAre)
{
    EXPECT_EQ(moreResultSearch({}, u"DIE ÄRZTE 2"_s), u"DIE*ÄRZTE*2"_s);
    EXPECT_EQ(moreResultSearch({}, u"A...B"_s), u"A*B"_s);
    EXPECT_EQ(moreResultSearch({}, u"Größe"_s), u"GRÖ*E"_s);
}

TEST(MoreResult, TheMarkOfTheAcceleratorIsNoPartOfTheSearch)
{
    EXPECT_EQ(moreResultSearch({}, u"&HAFEN"_s), u"HAFEN*"_s);
    EXPECT_EQ(moreResultSearch(u"*"_s, u"&HAFEN"_s), u"*HAFEN*"_s);
}

TEST(NodeCaption, IsTheFieldAndTheValueOrInfo)
{
    EXPECT_EQ(nodeCaption(u"Ostwind"_s, u"Interpret"_s), u"Interpret :: Ostwind"_s);
    EXPECT_EQ(nodeCaption(u"Ostwind"_s, u"Stimmung"_s), u"Info :: Ostwind"_s);
}

TEST(NodeCaption, AValueWithoutALetterOrWithAStarIsNoName)
{
    EXPECT_EQ(nodeCaption(u"1999"_s, u"Titel"_s), QString());
    EXPECT_EQ(nodeCaption(u"Ost*"_s, u"Titel"_s), QString());
    EXPECT_EQ(nodeCaption({}, u"Titel"_s), QString());
}

} // namespace
} // namespace melovane
