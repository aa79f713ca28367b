#include "platform/db/text_compare.h"
#include "trees/text_ranks.h"

#include <gtest/gtest.h>

#include <random>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

/// Short texts of few letters, so that many are equal, begin with one another or differ late.
std::vector<QString> anyTexts(unsigned seed, std::size_t count)
{
    const std::vector<QString> pieces{u"a"_s,  u"A"_s,    u"ä"_s,
                                      u"b"_s,  u"ß"_s,    u"ss"_s,
                                      u" "_s,  u"/"_s,    u"a\u0308"_s,
                                      u"é"_s,  u"Ω"_s,    QString(QChar(1)),
                                      u"zz"_s, u"aaaa"_s, QString(QChar(0xD83C))};
    std::mt19937 random(seed);
    const auto below = [&](std::size_t limit) {
        return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random);
    };
    std::vector<QString> texts;
    for (std::size_t i = 0; i < count; ++i) {
        QString text;
        for (std::size_t n = below(7); n > 0; --n) {
            text += pieces[below(pieces.size())];
        }
        texts.push_back(text);
    }
    return texts;
}

int signOf(std::int64_t number)
{
    return number < 0 ? -1 : number > 0 ? 1 : 0;
}

TEST(TextRanks, TextsAreRankedAsTheyCompareAndEqualOnesShareTheirRank)
{
    for (unsigned seed = 0; seed < 20; ++seed) {
        const std::vector<QString> texts = anyTexts(seed, 150);
        const std::vector<std::uint32_t> ranks = textRanks(texts);
        ASSERT_EQ(ranks.size(), texts.size());
        for (std::size_t i = 0; i < texts.size(); ++i) {
            for (std::size_t k = 0; k < i; ++k) {
                ASSERT_EQ(signOf(std::int64_t(ranks[i]) - ranks[k]),
                          signOf(textcompare::compare(texts[i], texts[k])))
                    << qPrintable(texts[i]) << " beside " << qPrintable(texts[k]);
            }
        }
    }
}

TEST(TextRanks, RanksHaveNoGaps)
{
    const std::vector<QString> texts{u"b"_s, u"a"_s, u"B"_s, QString(), u"c"_s};

    EXPECT_EQ(textRanks(texts), (std::vector<std::uint32_t>{2, 1, 2, 0, 3}));
}

} // namespace
} // namespace melovane
