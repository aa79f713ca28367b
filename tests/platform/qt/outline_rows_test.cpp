#include "platform/qt/outline_keys.h"
#include "platform/qt/outline_rows.h"
#include "platform/qt/outline_texts.h"

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

TreeRow row(const QString& key, int level)
{
    TreeRow result;
    result.key = key;
    result.text = key;
    result.level = level;
    return result;
}

/// "a a1 a2 b": each row's level is the number of digits in its key.
std::vector<TreeRow> rowsOf(const QString& keys)
{
    std::vector<TreeRow> rows;
    for (const QString& key : keys.split(u' ')) {
        rows.push_back(row(key, int(key.size()) - 1));
    }
    return rows;
}

QString linesOf(const OutlineRows& rows)
{
    QStringList keys;
    for (int line = 0; line < rows.lineCount(); ++line) {
        keys.append(rows.row(rows.rowOfLine(line)).key);
    }
    return keys.join(u' ');
}

TEST(OutlineRowsTest, ALineIsFoundByItsRowAndARowThatIsFoldedAwayHasNone)
{
    OutlineRows rows;
    rows.setAll(rowsOf(u"a a1 a2 b b1 b11 c"_s));
    rows.setOpen(0, false);
    rows.hide(rows.linesBelow(0));
    EXPECT_EQ(linesOf(rows), u"a b b1 b11 c"_s);
    EXPECT_EQ(rows.lineOf(5), 3);
    EXPECT_EQ(rows.lineOf(2), -1);
    EXPECT_EQ(rows.nearestLine(2), 0);
    EXPECT_EQ(rows.parent(5), 4);
    EXPECT_EQ(rows.end(3), 6);
}

TEST(OutlineRowsTest, WhatWasFoldedBelowARowIsStillFoldedWhenItOpens)
{
    OutlineRows rows;
    rows.setAll(rowsOf(u"a a1 a11 a2 b"_s));
    rows.setOpen(1, false);
    rows.hide(rows.linesBelow(1));
    rows.setOpen(0, false);
    rows.hide(rows.linesBelow(0));
    EXPECT_EQ(linesOf(rows), u"a b"_s);
    rows.setOpen(0, true);
    rows.show(rows.linesToOpen(0));
    EXPECT_EQ(linesOf(rows), u"a a1 a2 b"_s);
}

TEST(OutlineRowsTest, RowsWithHolesInTheirLevelsStandBelowTheNearestOneOfLess)
{
    OutlineRows rows;
    rows.setAll({row(u"a"_s, 2), row(u"b"_s, 0), row(u"c"_s, 5), row(u"d"_s, 3), row(u"e"_s, 1)});
    EXPECT_EQ(rows.parent(0), -1);
    EXPECT_EQ(rows.parent(2), 1);
    EXPECT_EQ(rows.parent(3), 1);
    EXPECT_EQ(rows.parent(4), 1);
    EXPECT_EQ(rows.end(1), 5);
}

TEST(OutlineRowsTest, AFilterKeepsTheRowsAboveAHitAndItsEndBringsTheFoldingBack)
{
    OutlineRows rows;
    rows.setAll(rowsOf(u"a a1 a11 a2 b b1 c"_s));
    rows.setOpen(0, false);
    rows.hide(rows.linesBelow(0));
    rows.filter({2, 6});
    rows.collect();
    EXPECT_EQ(linesOf(rows), u"a a1 a11 c"_s);
    EXPECT_FALSE(rows.isParent(4)) << "nothing below it is let through";
    EXPECT_EQ(rows.folded(), std::vector<int>{0});
    rows.endFilter();
    rows.collect();
    EXPECT_EQ(linesOf(rows), u"a b b1 c"_s);
}

TEST(OutlineKeysTest, KeysAreFoundWhileRowsComeAndGo)
{
    std::vector<TreeRow> rows = rowsOf(u"a b c d"_s);
    OutlineKeys keys;
    EXPECT_EQ(keys.find(rows, u"d"_s), 3);
    rows.insert(rows.begin() + 1, {row(u"x"_s, 0), row(u"y"_s, 0)});
    keys.inserted(rows, 1, 2);
    EXPECT_EQ(keys.find(rows, u"y"_s), 2);
    EXPECT_EQ(keys.find(rows, u"d"_s), 5);
    rows.erase(rows.begin() + 1, rows.begin() + 4);
    keys.removed(1, 3);
    EXPECT_EQ(keys.find(rows, u"x"_s), -1);
    EXPECT_EQ(keys.find(rows, u"b"_s), -1);
    EXPECT_EQ(keys.find(rows, u"d"_s), 2);
}

TEST(OutlineKeysTest, OfEqualKeysTheFirstRowIsFoundAlsoWhenItGoes)
{
    std::vector<TreeRow> rows = rowsOf(u"a b a b"_s);
    OutlineKeys keys;
    EXPECT_EQ(keys.find(rows, u"b"_s), 1);
    rows.erase(rows.begin() + 1);
    keys.removed(1, 1);
    EXPECT_EQ(keys.find(rows, u"b"_s), 2);
    rows.insert(rows.begin(), row(u"b"_s, 0));
    keys.inserted(rows, 0, 1);
    EXPECT_EQ(keys.find(rows, u"b"_s), 0);
}

TEST(OutlineKeysTest, ManyInsertionsFindWhatAPlainSearchFinds)
{
    std::vector<TreeRow> rows = rowsOf(u"a"_s);
    OutlineKeys keys;
    for (int step = 0; step < 500; ++step) {
        const int at = step * 7 % (int(rows.size()) + 1);
        rows.insert(rows.begin() + at, row(QString::number(step), 0));
        keys.inserted(rows, at, 1);
        if (step % 3 == 0) {
            const int gone = step * 5 % int(rows.size());
            rows.erase(rows.begin() + gone);
            keys.removed(gone, 1);
        }
        ASSERT_EQ(keys.find(rows, rows.back().key), int(rows.size()) - 1);
    }
    for (int at = 0; at < int(rows.size()); ++at) {
        EXPECT_EQ(keys.find(rows, rows[size_t(at)].key), at);
    }
}

TEST(OutlineTextsTest, LettersOfAllKindsAreFoldedWhereverTheyStandInALongText)
{
    const QString capitals = u"ÄÖÜÞÀ×÷ßµ ŁŻĐ ΣΩ ЖЯ ABZ@[`{ \U00010400 \U0001F600"_s;
    for (int place = 0; place < 40; ++place) {
        const QString text = QString(place, u'x') + capitals + QString(place, u'Y');
        QString wanted;
        for (const char32_t code : text.toUcs4()) {
            const char32_t folded = QChar::toCaseFolded(code);
            wanted += QString::fromUcs4(&folded, 1);
        }
        EXPECT_EQ(QString::fromStdString(OutlineTexts::folded(text)), wanted) << place;
    }
}

TEST(OutlineTextsTest, APieceIsFoundWithoutRegardToCaseAndOnceARow)
{
    std::vector<TreeRow> rows = rowsOf(u"Ärger BÄR anna nichts"_s);
    rows[3].text = u"Zwölf \U0001F3B5 Bärenbären"_s;
    OutlineTexts texts;
    texts.make(rows);
    const auto with = [&](const QString& text) {
        return texts.rowsWith(OutlineTexts::folded(text));
    };
    EXPECT_EQ(with(u"är"_s), (std::vector<std::uint32_t>{0, 1, 3}));
    EXPECT_EQ(with(u"ÄR"_s), (std::vector<std::uint32_t>{0, 1, 3}));
    EXPECT_EQ(with(u"\U0001F3B5"_s), std::vector<std::uint32_t>{3});
    EXPECT_TRUE(with(u"ranna"_s).empty()) << "over the border of two rows";
    EXPECT_TRUE(with({}).empty());
}

TEST(OutlineTextsTest, CountsAreNoPartOfWhatIsFoundAndAZeroIsABlank)
{
    std::vector<TreeRow> rows = rowsOf(u"x y"_s);
    rows[0].text = u"Rock [12]"_s;
    rows[0].countLetters = 4;
    rows[1].text = QString(u"12"_s) + QChar(u'\0') + u"z"_s;
    OutlineTexts texts;
    texts.make(rows);
    EXPECT_EQ(texts.rowsWith("12"), std::vector<std::uint32_t>{1});
    EXPECT_EQ(texts.rowsWith("2 z"), std::vector<std::uint32_t>{1});
    rows[1].countLetters = 99;
    texts.changed(rows, 1);
    EXPECT_TRUE(texts.rowsWith("12").empty());
}

TEST(OutlineTextsTest, RowsThatComeAndGoAreFoundWhereTheyAre)
{
    std::vector<TreeRow> rows = rowsOf(u"one two three"_s);
    OutlineTexts texts;
    texts.make(rows);
    rows.insert(rows.begin() + 1, {row(u"twofold"_s, 0), row(u"x"_s, 0)});
    texts.inserted(rows, 1, 2);
    EXPECT_EQ(texts.rowsWith("two"), (std::vector<std::uint32_t>{1, 3}));
    rows.erase(rows.begin(), rows.begin() + 2);
    texts.removed(0, 2);
    EXPECT_EQ(texts.rowsWith("two"), std::vector<std::uint32_t>{1});
    EXPECT_TRUE(texts.startsWith(2, "thr"));
    EXPECT_FALSE(texts.startsWith(2, "hre"));
    EXPECT_TRUE(texts.contains(2, "hre"));
}

} // namespace
} // namespace melovane
