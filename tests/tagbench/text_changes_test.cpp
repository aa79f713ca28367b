#include "tagbench/text_changes.h"

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

TEST(TextReplacement, EveryOccurrenceIsReplaced)
{
    const TextReplacement plain({.find = u"Orginal"_s, .replacement = u"Original"_s});
    EXPECT_EQ(plain.applied(u"Orginal und Orginalaufnahme"_s), u"Original und Originalaufnahme"_s);
    EXPECT_EQ(plain.applied(u"orginal"_s), u"orginal"_s);
    const TextReplacement any(
        {.find = u"orginal"_s, .replacement = u"Original"_s, .matchCase = false});
    EXPECT_EQ(any.applied(u"ORGINAL"_s), u"Original"_s);
}

TEST(TextReplacement, WholeWordsLeaveLongerOnesAlone)
{
    const TextReplacement words({.find = u"Mix"_s, .replacement = u"mix"_s, .wholeWords = true});
    EXPECT_EQ(words.applied(u"Mix Mixe (Mix)"_s), u"mix Mixe (mix)"_s);
}

TEST(TextReplacement, PlainTextIsNoPattern)
{
    const TextReplacement plain({.find = u"a.(b"_s, .replacement = u"\\1\\\\"_s});
    EXPECT_TRUE(plain.isUsable());
    EXPECT_EQ(plain.applied(u"a.(b axb"_s), u"\\1\\\\ axb"_s);
}

TEST(TextReplacement, APatternHasGroups)
{
    const TextReplacement swap(
        {.find = u"(.*), (.*)"_s, .replacement = u"\\2 \\1"_s, .isPattern = true});
    EXPECT_EQ(swap.applied(u"Wer, Der"_s), u"Der Wer"_s);
}

TEST(TextReplacement, APatternThatCannotBeReadChangesNothingAndSaysWhy)
{
    const TextReplacement broken({.find = u"("_s, .isPattern = true});
    EXPECT_FALSE(broken.isUsable());
    EXPECT_FALSE(broken.fault().isEmpty());
    EXPECT_EQ(broken.applied(u"("_s), u"("_s);
    EXPECT_FALSE(TextReplacement({}).isUsable());
}

TEST(TextReplacement, APatternWithoutEndGivesUp)
{
    const TextReplacement endless({.find = u"(a+)+$"_s, .replacement = u"x"_s, .isPattern = true});
    const QString text = QString(60, u'a') + u'!';
    EXPECT_EQ(endless.applied(text), text);
}

TEST(LetterCase, EachWayOfSpelling)
{
    EXPECT_EQ(spelt(u"don't STOP (me) now"_s, LetterCase::EachWord), u"Don't Stop (Me) Now"_s);
    EXPECT_EQ(spelt(u"don't STOP me"_s, LetterCase::Sentence), u"Don't stop me"_s);
    EXPECT_EQ(spelt(u"straße"_s, LetterCase::Upper), u"STRAßE"_s);
    EXPECT_EQ(spelt(u"ÄRGER"_s, LetterCase::Lower), u"ärger"_s);
    EXPECT_EQ(spelt(QString(), LetterCase::Sentence), QString());
}

TEST(TrackNumbers, RunFromTheFirst)
{
    EXPECT_EQ(trackNumbers({.first = 9, .digits = 2}, 2), (std::vector<QString>{u"09"_s, u"10"_s}));
    EXPECT_EQ(trackNumbers({.withTotal = true}, 2), (std::vector<QString>{u"1/2"_s, u"2/2"_s}));
    EXPECT_TRUE(trackNumbers({}, 0).empty());
}

} // namespace
} // namespace melovane
