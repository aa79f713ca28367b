#include "help/help_text.h"

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

TEST(HelpText, EachPlaceIsFilledAndAValueIsNotFilledAgain)
{
    const QString page = helptext::filled(u"a {{x}} b {{y}}{{x}}"_s, [](const QString& name) {
        return name == "x"_L1 ? u"{{y}}"_s : u"Y"_s;
    });
    EXPECT_EQ(page, u"a {{y}} b Y{{y}}"_s);
    EXPECT_EQ(helptext::filled(u"{{"_s, [](const QString&) { return u"never"_s; }), u"{{"_s);
}

TEST(HelpText, ACaptionLosesItsMarkAndTheDotsOfItsDialog)
{
    EXPECT_EQ(helptext::caption(u"&Start"_s), u"Start"_s);
    EXPECT_EQ(helptext::caption(u"S&chließen"_s), u"Schließen"_s);
    EXPECT_EQ(helptext::caption(u"Rock && Pop"_s), u"Rock & Pop"_s);
    EXPECT_EQ(helptext::caption(u"Schrift ..."_s), u"Schrift"_s);
}

TEST(HelpText, APageIsReadWithoutItsTags)
{
    const QString page = u"<html><head><title>T</title></head><body><h1>A &amp; B</h1>\n"
                         "<p>one<br>two &lt;3</p></body></html>"_s;
    EXPECT_EQ(helptext::plain(page), u"A & B one two <3"_s);
    EXPECT_EQ(helptext::inside(page, u"h1"), u"A &amp; B"_s);
    EXPECT_EQ(helptext::inside(page, u"h2"), QString());
}

TEST(HelpText, AnExcerptHasTheWordAndMarksWhereItIsCut)
{
    const QString before = u"Anfang "_s.repeated(30);
    const QString text = before + u"Mitte "_s + u"Ende "_s.repeated(60);
    const QString excerpt = helptext::excerpt(text, u"mitte"_s);
    EXPECT_TRUE(excerpt.contains(u"Mitte"_s));
    EXPECT_TRUE(excerpt.startsWith(u"… "_s));
    EXPECT_TRUE(excerpt.endsWith(u" …"_s));
    EXPECT_LT(excerpt.size(), 260);
    EXPECT_EQ(helptext::excerpt(u"kurz"_s, u"fehlt"_s), u"kurz"_s);
}

} // namespace
} // namespace melovane
