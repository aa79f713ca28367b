#include "intake/genre_list.h"
#include "intake/import_errors.h"
#include "intake/tag_choice.h"

#include <gtest/gtest.h>

namespace {

using namespace melovane;
using namespace Qt::Literals::StringLiterals;

TEST(TagChoice, Setting1TakesTheOldTagUnlessItIsEmpty)
{
    EXPECT_EQ(tagchoice::choose(u" old "_s, u"new tag"_s, 1), u"old"_s);
    EXPECT_EQ(tagchoice::choose(u"  "_s, u" new tag "_s, 1), u"new tag"_s);
}

TEST(TagChoice, Setting2TakesTheNewTagUnlessItIsEmpty)
{
    EXPECT_EQ(tagchoice::choose(u"old"_s, u"new tag"_s, 2), u"new tag"_s);
    EXPECT_EQ(tagchoice::choose(u"old"_s, u" "_s, 2), u"old"_s);
}

TEST(TagChoice, Settings3And4TakeOneTagEvenIfItIsEmpty)
{
    EXPECT_EQ(tagchoice::choose(QString(), u"new tag"_s, 3), QString());
    EXPECT_EQ(tagchoice::choose(u"old"_s, QString(), 4), QString());
}

TEST(TagChoice, OtherSettingsTakeTheLongerTextAndOfEqualLengthTheOldOne)
{
    for (const int setting : {0, 5, -1, 99}) {
        EXPECT_EQ(tagchoice::choose(u"old"_s, u"newer"_s, setting), u"newer"_s);
        EXPECT_EQ(tagchoice::choose(u"older"_s, u"new"_s, setting), u"older"_s);
        EXPECT_EQ(tagchoice::choose(u"abc"_s, u"xyz"_s, setting), u"abc"_s);
        // Blanks do not make a text longer.
        EXPECT_EQ(tagchoice::choose(u"abc"_s, u"xyz   "_s, setting), u"abc"_s);
    }
}

TEST(TagChoice, NumbersGoToNumberAndBackToText)
{
    EXPECT_EQ(tagchoice::numeric(u"3/12"_s), u"3"_s);
    EXPECT_EQ(tagchoice::numeric(u" 007 "_s), u"7"_s);
    EXPECT_EQ(tagchoice::numeric(u"abc"_s), u"0"_s);
    EXPECT_EQ(tagchoice::numeric(u"99999999999"_s), u"2147483647"_s);
    EXPECT_EQ(tagchoice::numeric(u"  "_s), QString());
}

TEST(TagChoice, ATextIsCutToItsWidthWithoutTearingALetter)
{
    EXPECT_EQ(tagchoice::cut(u"abcdef"_s, 3), u"abc"_s);
    EXPECT_EQ(tagchoice::cut(u"abc"_s, 3), u"abc"_s);
    EXPECT_EQ(tagchoice::cut(u"abc"_s, 0), u"abc"_s);
    EXPECT_EQ(tagchoice::cut(u"ab\U0001F3B5"_s, 3), u"ab"_s);
}

struct NamedFile
{
    const char* test;
    const char16_t* name;
    const char16_t* artist;
    const char16_t* title;
};

class FileNames : public testing::TestWithParam<NamedFile>
{};

TEST_P(FileNames, GiveArtistAndTitle)
{
    const auto result = tagchoice::fromFileName(QString::fromUtf16(GetParam().name));
    EXPECT_EQ(result.Interpret, QString::fromUtf16(GetParam().artist));
    EXPECT_EQ(result.Titel, QString::fromUtf16(GetParam().title));
}

INSTANTIATE_TEST_SUITE_P(
    All,
    FileNames,
    testing::Values(NamedFile{"blanks", u"die_ärzte - zu SPÄT.mp3", u"Die Ärzte", u"Zu Spät"},
                    NamedFile{"oneword", u"intro.MP3", u"", u"Intro"},
                    NamedFile{"threeparts", u"a-b-c.mp3", u"A", u"b"},
                    NamedFile{"mixedextension", u"x - y.Mp3", u"X", u"Y"},
                    NamedFile{"quotes", u"o'neil \"x\".mp3", u"", u"O'neil \"x\""},
                    NamedFile{"onlydash", u"-.mp3", u"", u""},
                    NamedFile{"sharps", u"straße.mp3", u"", u"Straße"}),
    [](const auto& row) { return row.param.test; });

class Genres : public testing::Test
{
protected:
    void SetUp() override
    {
        m_list.add(8, u"Jazz"_s);
        m_list.add(17, u"Rock"_s);
        m_list.add(18, u"Techno"_s);
        m_list.add(99, u"rock"_s);
    }

    GenreList m_list;
};

TEST_F(Genres, ANameIsSpeltAsTheListSpellsItAndTheFirstOfEqualNamesCounts)
{
    EXPECT_EQ(m_list.nameOf(u" rOCK "_s), u"Rock"_s);
}

TEST_F(Genres, NumbersInAllTheirFormsGiveTheName)
{
    EXPECT_EQ(m_list.nameOf(u"17"_s), u"Rock"_s);
    EXPECT_EQ(m_list.nameOf(u"(17)"_s), u"Rock"_s);
    EXPECT_EQ(m_list.nameOf(u"(17)(18)"_s), u"Rock"_s);
    EXPECT_EQ(m_list.nameOf(u"17; (17)rock; Eigenes; 254"_s), u"Rock; Rock; Eigenes"_s)
        << "several values of a tag";
    EXPECT_EQ(m_list.nameOf(u"(17)rock"_s), u"Rock"_s);
    EXPECT_EQ(m_list.nameOf(u"(17)Krautrock"_s), u"Krautrock"_s);
    EXPECT_EQ(m_list.nameOf(u"(RX)"_s), u"Remix"_s);
    EXPECT_EQ(m_list.nameOf(u"(CR)"_s), u"Cover"_s);
}

TEST_F(Genres, AnUnknownNameStaysAsItIs)
{
    EXPECT_EQ(m_list.nameOf(u"Neue Deutsche Welle '82"_s), u"Neue Deutsche Welle '82"_s);
    EXPECT_EQ(m_list.nameOf(u"(live)"_s), u"(live)"_s);
    EXPECT_EQ(m_list.nameOf(u"((17)"_s), u"(17)"_s);
    EXPECT_EQ(m_list.nameOf(u"("_s), u"("_s);
    EXPECT_EQ(m_list.nameOf(u"1984"_s), u"1984"_s);
}

TEST_F(Genres, ANumberThatTheListLacksSaysNothing)
{
    EXPECT_EQ(m_list.nameOf(u"200"_s), QString());
    EXPECT_EQ(m_list.nameOf(u"(255)"_s), QString());
}

TEST(ImportErrors, HaveTheirTexts)
{
    using importerror::GetMessageText;
    EXPECT_EQ(GetMessageText(10001), u"Path nicht gefunden"_s);
    EXPECT_EQ(GetMessageText(10002), u"Datei nicht gefunden"_s);
    EXPECT_EQ(GetMessageText(10003), u"Fehlerhafte MP3"_s);
    EXPECT_EQ(GetMessageText(10004), u"Fehlerhafe MP3"_s);
    EXPECT_EQ(GetMessageText(10005),
              u"Die Datei kann an dieser Stelle nicht von CDROM importiert werden"_s);
    EXPECT_EQ(GetMessageText(20001), u"Datenbank Fehler"_s);
    EXPECT_EQ(GetMessageText(20002), u"Datei Fehler"_s);
    EXPECT_EQ(GetMessageText(40000), u"Unbekannter Fehler"_s);
    EXPECT_EQ(GetMessageText(7), u"MessageText - Undef"_s);
}

} // namespace
