#include "views/name_match.h"

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

TEST(NameMatch, ABeginningIsBetterThanTheBeginningOfAWordAndThatBetterThanTheMiddleOfOne)
{
    const NameMatch match(u"SCHRIFT"_s);
    EXPECT_EQ(match.rank(u"Schrift der Tabellen"), NameMatch::kBegins);
    EXPECT_EQ(match.rank(u"Ansicht: Schrift"), NameMatch::kWordBegins);
    EXPECT_EQ(match.rank(u"Beschriftung, Schrift"), NameMatch::kWordBegins);
    EXPECT_EQ(match.rank(u"Beschriftung"), NameMatch::kHolds);
    EXPECT_EQ(match.rank(u"Schrif"), NameMatch::kNone);
}

TEST(NameMatch, EveryWordIsThereInWhateverOrder)
{
    const NameMatch match(u" zwei   eins "_s);
    EXPECT_EQ(match.rank(u"Eins und Zwei"), NameMatch::kWordBegins);
    EXPECT_EQ(match.rank(u"zwei eins"), NameMatch::kBegins);
    EXPECT_EQ(match.rank(u"Keins und Zwei"), NameMatch::kHolds);
    EXPECT_EQ(match.rank(u"Eins und Drei"), NameMatch::kNone);
}

TEST(NameMatch, NothingTypedFitsAllAndMarksAreNoPatterns)
{
    EXPECT_EQ(NameMatch(u"  "_s).rank(u"x"), NameMatch::kBegins);
    EXPECT_EQ(NameMatch(u"*"_s).rank(u"x"), NameMatch::kNone);
    EXPECT_EQ(NameMatch(u"%['"_s).rank(u"a %['b"), NameMatch::kWordBegins);
    EXPECT_EQ(NameMatch(u"x"_s).rank(QStringView()), NameMatch::kNone);
}

} // namespace
} // namespace melovane
