#include "platform/system/ini_text.h"

#include <QRandomGenerator>

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

QString valueIn(const QString& text, const QString& section, const QString& key)
{
    return IniText(text).value(section, key).value_or(u"(none)"_s);
}

QString
afterSet(const QString& text, const QString& section, const QString& key, const QString& value)
{
    IniText ini(text);
    EXPECT_TRUE(ini.set(section, key, value));
    return ini.toText();
}

TEST(IniTextRead, SectionsAndKeysHaveNoRegardToCase)
{
    const QString text = u"[Global]\nDBName=x\n[ÄPFEL]\nÖl=y\n"_s;
    EXPECT_EQ(valueIn(text, u"gLOBAL"_s, u"dbname"_s), u"x"_s);
    EXPECT_EQ(valueIn(text, u"äpfel"_s, u"öL"_s), u"y"_s);
}

TEST(IniTextRead, TheFirstOfEqualKeysWins)
{
    EXPECT_EQ(valueIn(u"[A]\nk=1\nK=2\n"_s, u"A"_s, u"k"_s), u"1"_s);
    EXPECT_EQ(valueIn(u"[A]\nk=1\n[B]\nk=3\n[a]\nk=2\nl=4\n"_s, u"A"_s, u"k"_s), u"1"_s);
    EXPECT_EQ(valueIn(u"[A]\nk=1\n[B]\nk=3\n[a]\nk=2\nl=4\n"_s, u"A"_s, u"l"_s), u"4"_s);
}

TEST(IniTextRead, BlanksAroundSectionKeyAndValueAreCut)
{
    EXPECT_EQ(valueIn(u"  [ A ]  \n  k  =  a b  \n"_s, u"A"_s, u"k"_s), u"a b"_s);
    EXPECT_EQ(valueIn(u"[A]\nk=1\n"_s, u" A "_s, u" k "_s), u"1"_s);
}

TEST(IniTextRead, OnePairOfQuotesAroundAValueIsDropped)
{
    EXPECT_EQ(valueIn(u"[A]\nk=\"x\"\n"_s, u"A"_s, u"k"_s), u"x"_s);
    EXPECT_EQ(valueIn(u"[A]\nk=\" x \"\n"_s, u"A"_s, u"k"_s), u" x "_s);
    EXPECT_EQ(valueIn(u"[A]\nk=\"\"x\"\"\n"_s, u"A"_s, u"k"_s), u"\"x\""_s);
    EXPECT_EQ(valueIn(u"[A]\nk='x'\n"_s, u"A"_s, u"k"_s), u"x"_s);
    EXPECT_EQ(valueIn(u"[A]\nk=\"\n"_s, u"A"_s, u"k"_s), u"\""_s);
    EXPECT_EQ(valueIn(u"[A]\nk=\"x'\n"_s, u"A"_s, u"k"_s), u"\"x'"_s);
}

TEST(IniTextRead, ASemicolonBeginsACommentAtTheBeginningOfALineAlone)
{
    EXPECT_EQ(valueIn(u"[A]\n;k=1\n ; k=2\nk=3;4\n"_s, u"A"_s, u"k"_s), u"3;4"_s);
    EXPECT_EQ(valueIn(u";[A]\nk=1\n"_s, u"A"_s, u"k"_s), u"(none)"_s);
}

TEST(IniTextRead, AValueReadsUpToTheEndOfItsLine)
{
    EXPECT_EQ(valueIn(u"[A]\nk=a=b [c] = \r\n"_s, u"A"_s, u"k"_s), u"a=b [c] ="_s);
    EXPECT_EQ(valueIn(u"[A]\rk=1\rl=2"_s, u"A"_s, u"l"_s), u"2"_s);
}

TEST(IniTextRead, WhatIsAbsentGivesNothingAndAnEmptyValueIsPresent)
{
    EXPECT_EQ(IniText(u"[A]\nk=\n"_s).value(u"A"_s, u"k"_s), QString());
    EXPECT_FALSE(IniText(u"[A]\nk\n=1\n"_s).value(u"A"_s, u"k"_s));
    EXPECT_FALSE(IniText(u"[A]\nk\n=1\n"_s).value(u"A"_s, QString()));
    EXPECT_FALSE(IniText(QString()).value(u"A"_s, u"k"_s));
}

TEST(IniTextRead, ASectionListsItsKeyLinesInOrder)
{
    const IniText ini(u"[A]\nb = 2\n; c\nunknown\na=\"1\"\n\n[B]\nx=1\n[a]\nB=3\n"_s);
    EXPECT_EQ(ini.section(u"a"_s), (QStringList{u"b=2"_s, u"a=1"_s, u"B=3"_s}));
    EXPECT_EQ(ini.section(u"C"_s), QStringList());
}

TEST(IniTextRead, TheEmptySectionIsWhatStandsInFrontOfTheFirst)
{
    EXPECT_EQ(valueIn(u"AppPathConfig=local\n[A]\nk=1\n"_s, QString(), u"apppathconfig"_s),
              u"local"_s);
}

TEST(IniTextWrite, AKeyIsChangedInItsPlaceAndAllElseStays)
{
    const QString text =
        u"; head\r\nfree\r\n[Global]\r\n  Key = old\r\nforeign=\"q\"\r\n\r\n[Other]\r\nx=1"_s;
    EXPECT_EQ(
        afterSet(text, u"global"_s, u"KEY"_s, u"new"_s),
        u"; head\r\nfree\r\n[Global]\r\n  Key = new\r\nforeign=\"q\"\r\n\r\n[Other]\r\nx=1"_s);
}

TEST(IniTextWrite, ANewKeyStandsBehindTheLastLineOfItsSection)
{
    EXPECT_EQ(afterSet(u"[A]\nk=1\n; end\n\n[B]\nx=1\n"_s, u"A"_s, u"n"_s, u"2"_s),
              u"[A]\nk=1\n; end\nn=2\n\n[B]\nx=1\n"_s);
    EXPECT_EQ(afterSet(u"[A]\r\n[B]\r\n"_s, u"A"_s, u"n"_s, u"2"_s), u"[A]\r\nn=2\r\n[B]\r\n"_s);
    EXPECT_EQ(afterSet(u"[A]\nk=1"_s, u"A"_s, u"n"_s, u"2"_s), u"[A]\nk=1\nn=2\n"_s);
}

TEST(IniTextWrite, AMissingSectionIsAppended)
{
    EXPECT_EQ(afterSet(QString(), u"A"_s, u"k"_s, u"1"_s), u"[A]\nk=1\n"_s);
    EXPECT_EQ(afterSet(u"[B]\r\nx=1"_s, u"A"_s, u"k"_s, u"1"_s),
              u"[B]\r\nx=1\r\n\r\n[A]\r\nk=1\r\n"_s);
    EXPECT_EQ(afterSet(u"[B]\n"_s, QString(), u"k"_s, u"1"_s), u"k=1\n[B]\n"_s);
}

TEST(IniTextWrite, RemovingTakesEveryLineOfTheKey)
{
    IniText ini(u"[A]\nk=1\nl=2\nK=3\n;k=4\n[B]\nk=5\n"_s);
    EXPECT_TRUE(ini.remove(u"A"_s, u"k"_s));
    EXPECT_EQ(ini.toText(), u"[A]\nl=2\n;k=4\n[B]\nk=5\n"_s);
    EXPECT_FALSE(ini.value(u"A"_s, u"k"_s));
    EXPECT_TRUE(ini.remove(u"A"_s, u"missing"_s));
}

class IniTextValue : public testing::TestWithParam<QString>
{};

TEST_P(IniTextValue, ComesBackAsItWentInAndStaysOneLine)
{
    IniText ini(u"[A]\nbefore=1\nk=old\nafter=2\n"_s);
    EXPECT_TRUE(ini.set(u"A"_s, u"k"_s, GetParam()));
    EXPECT_TRUE(ini.set(u"A"_s, u"new"_s, GetParam()));
    const IniText again(ini.toText());
    EXPECT_EQ(again.value(u"A"_s, u"k"_s), GetParam());
    EXPECT_EQ(again.value(u"A"_s, u"new"_s), GetParam());
    EXPECT_EQ(again.section(u"A"_s).size(), 4);
    EXPECT_EQ(again.value(u"A"_s, u"after"_s), u"2"_s);
    EXPECT_FALSE(again.value(u"Evil"_s, u"x"_s));
}

INSTANTIATE_TEST_SUITE_P(Hostile,
                         IniTextValue,
                         testing::Values(u""_s,
                                         u" "_s,
                                         u"a=b;c"_s,
                                         u"\"quoted\""_s,
                                         u"'quoted'"_s,
                                         u"\""_s,
                                         u"\"\""_s,
                                         u"don't \"x\""_s,
                                         u" blanks "_s,
                                         u"[Evil]"_s,
                                         u"; comment"_s,
                                         u"a\n[Evil]\nx=1"_s,
                                         u"a\r\n[Evil]\r\nx=1"_s,
                                         u"a\r[Evil]\rx=1"_s,
                                         u"C:\\new\\red"_s,
                                         u"\u241B\u241Bn\u241B"_s,
                                         u"\u241B"_s,
                                         u"\u2028\u0085\t"_s,
                                         u"\U0001F3B5 ä"_s,
                                         QString(QChar(u'\0')) + u"x"_s,
                                         QString(10000, u'"'),
                                         QString(10000, u'x')));

TEST(IniTextWrite, NamesThatCannotStandInAFileAreRefused)
{
    IniText ini(u"[A]\nk=1\n"_s);
    for (const QString& key : {u""_s, u" "_s, u"a=b"_s, u";k"_s, u"[k"_s, u"a\nb"_s, u"a\rb"_s}) {
        EXPECT_FALSE(ini.set(u"A"_s, key, u"x"_s)) << key.toStdString();
        EXPECT_FALSE(ini.remove(u"A"_s, key));
    }
    EXPECT_FALSE(ini.set(u"A]\n[B"_s, u"k"_s, u"x"_s));
    EXPECT_FALSE(ini.set(u"A]"_s, u"k"_s, u"x"_s));
    EXPECT_EQ(ini.toText(), u"[A]\nk=1\n"_s);
}

TEST(IniTextWrite, AnyTextKeepsEveryOtherLine)
{
    const QString letters = u"[]=;\"'\r\n ak\u241Bn"_s;
    QRandomGenerator random(42);
    for (int round = 0; round < 2000; ++round) {
        QString text;
        for (int i = 0; i < 60; ++i) {
            text += letters[random.bounded(letters.size())];
        }
        EXPECT_EQ(IniText(text).toText(), text);
        IniText ini(text);
        ASSERT_TRUE(ini.set(u"a"_s, u"k"_s, u"value"_s));
        EXPECT_EQ(IniText(ini.toText()).value(u"a"_s, u"k"_s), u"value"_s) << text.toStdString();
        ASSERT_TRUE(ini.remove(u"a"_s, u"k"_s));
        EXPECT_FALSE(IniText(ini.toText()).value(u"a"_s, u"k"_s)) << text.toStdString();
    }
}

} // namespace
} // namespace melovane
