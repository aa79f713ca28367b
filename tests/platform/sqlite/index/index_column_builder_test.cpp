#include "platform/db/text_compare.h"
#include "platform/sqlite/index/index_column_builder.h"
#include "platform/sqlite/index/index_order_maker.h"

#include <gtest/gtest.h>

#include <random>

/// A column of more rows than are sorted at once.
namespace melovane::test {
namespace {

using namespace Qt::Literals::StringLiterals;
using namespace sqlite;

constexpr std::size_t kRows = 70'000;

class IndexColumnOfManyRows : public ::testing::Test
{
protected:
    [[nodiscard]] std::size_t below(std::size_t limit) { return m_random() % limit; }

    /// Some of them many times, some once, with letters that sort otherwise than their bytes.
    [[nodiscard]] QString anyText()
    {
        const QString kBegin[] = {u"Ärger "_s, u"Zug "_s, u"ß"_s, u"京 "_s, u"a "_s, QString()};
        return kBegin[below(6)] + QString::number(below(below(2) == 0 ? 50 : 40'000));
    }

    /// As a program does it: some rows at a time, and now and then what waits is done before.
    template <typename Add> void addRows(IndexColumnBuilder& builder, const Add& add)
    {
        for (std::size_t row = 0; row < kRows; ++row) {
            if (below(500) == 0) {
                m_settled += builder.settle(2000) ? 1 : 0;
            }
            if (below(20) == 0) {
                builder.addNull();
                add(row, true);
            } else {
                add(row, false);
            }
        }
    }

    std::mt19937 m_random{20261122};
    int m_settled = 0;
};

TEST(IndexLetters, AreGivenBackBlockByBlockFromTheEndAndTheFirstOnesStay)
{
    IndexLetters letters;
    char* const first = letters.take(5);
    std::copy_n("Nacht", 5, first);
    while (letters.blocks() < 4) {
        std::fill_n(letters.take(1000), 1000, 'x');
    }
    letters.giveBack(2);
    EXPECT_EQ(letters.blocks(), 2U);
    EXPECT_EQ(std::string_view(first, 5), "Nacht");
    std::fill_n(letters.take(1000), 1000, 'y');
    EXPECT_EQ(letters.blocks(), 3U) << "what comes now stands in new room";
    EXPECT_EQ(std::string_view(first, 5), "Nacht");
    letters.giveBack(3);
    EXPECT_EQ(letters.blocks(), 0U);
}

TEST_F(IndexColumnOfManyRows, EachRowHasTheValueOfItsTextAndTheTextsStandInTheirOrder)
{
    IndexColumnBuilder builder(true);
    QStringList texts;
    addRows(builder, [&](std::size_t, bool isNull) {
        texts.append(isNull ? QString() : anyText());
        if (!isNull) {
            builder.addText(texts.back().toStdString());
        }
    });
    ASSERT_GT(m_settled, 0);
    const auto column = builder.make();
    const IndexColumnParts parts = column->parts();
    ASSERT_TRUE(IndexColumn::fromParts(parts, kRows)) << "its parts belong together";
    const IndexTexts known(parts.letters, parts.textEnds);
    for (quint32 row = 0; row < kRows; ++row) {
        const quint32 value = column->valueOf(row);
        ASSERT_EQ(value == 0, texts[row].isNull()) << row;
        ASSERT_TRUE(value == 0 || known.decoded(value - 1) == textcompare::fold(texts[row])) << row;
    }
    for (quint32 number = 1; number < known.count(); ++number) {
        ASSERT_LT(textcompare::compare(known.decoded(number - 1), known.decoded(number)), 0);
    }
}

TEST_F(IndexColumnOfManyRows, EachRowHasTheValueOfItsNumberAndTheNumbersStandInTheirOrder)
{
    IndexColumnBuilder builder(false);
    std::vector<std::optional<double>> numbers;
    addRows(builder, [&](std::size_t row, bool isNull) {
        const double number = row % 7 == 0 ? -0.0 : double(below(60'000)) - 30'000.5;
        numbers.push_back(isNull ? std::nullopt : std::optional(number));
        if (!isNull) {
            builder.addNumber(number);
        }
    });
    const auto column = builder.make();
    const IndexColumnParts parts = column->parts();
    ASSERT_TRUE(IndexColumn::fromParts(parts, kRows)) << "its parts belong together";
    for (quint32 row = 0; row < kRows; ++row) {
        const quint32 value = column->valueOf(row);
        ASSERT_EQ(value == 0, !numbers[row]) << row;
        ASSERT_TRUE(value == 0 || parts.numbers[value - 1] == *numbers[row]) << row;
    }
}

TEST_F(IndexColumnOfManyRows, RowsOfOneValueKeepTheirOrderInAnOrder)
{
    IndexColumnBuilder builder(false);
    addRows(builder, [&](std::size_t, bool isNull) {
        if (!isNull) {
            builder.addNumber(double(below(9)));
        }
    });
    const auto column = builder.make();
    IndexOrderMaker maker({{column, true}}, kRows);
    while (maker.step()) {
    }
    const auto order = maker.take();
    for (std::size_t place = 0; place < kRows; ++place) {
        ASSERT_EQ(order->placeOf[order->rowAt[place]], place);
        const auto before = std::pair(place == 0 ? 9 : column->valueOf(order->rowAt[place - 1]),
                                      place == 0 ? 0 : order->rowAt[place - 1]);
        const auto here = std::pair(column->valueOf(order->rowAt[place]), order->rowAt[place]);
        ASSERT_TRUE(place == 0 || before.first > here.first ||
                    (before.first == here.first && before.second < here.second))
            << place;
    }
}

TEST_F(IndexColumnOfManyRows, AColumnIsMadeInManyStepsAndIsTheSame)
{
    const auto filled = [] {
        IndexColumnBuilder builder(true);
        for (std::size_t row = 0; row < kRows; ++row) {
            builder.addText(std::to_string(row * 7919 % kRows));
        }
        return builder;
    };
    IndexColumnMaker maker(filled());
    std::size_t steps = 1;
    while (maker.step()) {
        ++steps;
    }
    // Each row is merged more than once and laid out, some thousand in a step.
    EXPECT_GE(steps, 3 * kRows / 8192);
    const IndexColumnParts parts = maker.take()->parts();
    const IndexColumnParts same = filled().make()->parts();
    EXPECT_TRUE(std::ranges::equal(parts.letters, same.letters));
    EXPECT_TRUE(std::ranges::equal(parts.values, same.values));
    EXPECT_TRUE(std::ranges::equal(parts.rows, same.rows));
}

} // namespace
} // namespace melovane::test
