#include "config/retold_texts.h"
#include "support/text_catalogue.h"

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

struct RetoldTextsTest : testing::Test
{
    RetoldTextsTest()
    {
        const auto add = [this](const QString& name, const QString& text, const QString& second) {
            catalogue.texts.NewItem(name, {}, text, second);
        };
        add(u"a"_s, u"Schließen"_s, {});
        add(u"b"_s, u"$1 Titel in $2"_s, u"Zweiter Text"_s);
        add(u"c"_s, u"$1 von $2"_s, {});
        add(u"d"_s, u"Noch $1 Titel in $2 übrig"_s, {});
        add(u"e"_s, u"Zeile\\nzwei"_s, {});
        add(u"f"_s, u"Schließen"_s, {});
        texts = std::make_unique<RetoldTexts>(catalogue.texts);
        say(u"a"_s, u"Close"_s);
        say(u"b"_s, u"In $2: $1 tracks"_s);
        catalogue.texts.FindObject(u"b")->DescriptionEx = u"Second text"_s;
        say(u"c"_s, u"$1 of $2"_s);
        say(u"d"_s, u"$1 tracks of $2 left"_s);
        say(u"e"_s, u"Line\\ntwo"_s);
        say(u"f"_s, u"Shut"_s);
        texts->become(catalogue.texts);
    }

    void say(const QString& name, const QString& text)
    {
        catalogue.texts.FindObject(name)->Description = text;
    }

    test::TextCatalogue catalogue;
    std::unique_ptr<RetoldTexts> texts;
};

TEST_F(RetoldTextsTest, AWholeTextIsFoundAndOfTwoAlikeTheFirstOneCounts)
{
    EXPECT_EQ(texts->retold(u"Schließen"_s), u"Close"_s);
    EXPECT_EQ(texts->retold(u"Zweiter Text"_s), u"Second text"_s);
    EXPECT_EQ(texts->retold(u"Zeile\nzwei"_s), u"Line\ntwo"_s);
}

TEST_F(RetoldTextsTest, ValuesKeepWhatTheyAreInTheirNewPlaces)
{
    EXPECT_EQ(texts->retold(u"12 Titel in $1.mdb"_s), u"In $1.mdb: 12 tracks"_s);
    EXPECT_EQ(texts->retold(u"Noch 3 Titel in zwei\nZeilen übrig"_s),
              u"3 tracks of zwei\nZeilen left"_s);
}

TEST_F(RetoldTextsTest, WhatIsOfTheUserOrHasHardlyAnyWordsStays)
{
    EXPECT_EQ(texts->retold(u"Schließen bitte"_s), u"Schließen bitte"_s);
    EXPECT_EQ(texts->retold(u"3 von 4"_s), u"3 von 4"_s);
    EXPECT_EQ(texts->retold({}), QString());
}

} // namespace
} // namespace melovane
