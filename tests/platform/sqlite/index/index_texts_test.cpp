#include "platform/sqlite/index/index_texts_builder.h"

#include <gtest/gtest.h>

#include <random>

/// What is found in the packed texts of a column, however many letters are compared at once.
namespace melovane::test {
namespace {

using namespace Qt::Literals::StringLiterals;
using namespace sqlite;

/// Letters of one to four bytes that share bytes with each other, signs of patterns among them, and
/// some that are no text at all.
const QStringList kLetters = {u"a"_s,  u"b"_s,      u"e"_s,  u"ä"_s,          u"ö"_s,
                              u"ã"_s,  u"京"_s,     u"亮"_s, u"\U0001F600"_s, u"\U0001F604"_s,
                              u" "_s,  u"1"_s,      u"ß"_s,  u"x"_s,          QString(QChar(0)),
                              u"\n"_s, u"\uFFFD"_s, u"["_s,  u"*"_s};

/// Comparisons of a text with a piece or a pattern in a run: some ten thousand, or what
/// tools/prove_search.sh asks for.
qint64 comparisons()
{
    return std::max<qint64>(qEnvironmentVariableIntValue("MLV_SEARCH_COMPARISONS"), 60'000);
}

IndexTexts sorted(IndexTextsBuilder& builder)
{
    SlicedWork work;
    builder.sort(work);
    while (work.step()) {
    }
    return builder.take();
}

class IndexTextsProof : public ::testing::Test
{
protected:
    [[nodiscard]] int below(int limit) { return int(m_random() % unsigned(limit)); }

    /// \param letters how many different ones: few make many hits
    [[nodiscard]] QString anyText(int length, int letters)
    {
        QString text;
        for (int i = 0; i < length; ++i) {
            text += kLetters[below(letters)];
        }
        return text;
    }

    /// Most are short, as titles are, some as long as several blocks of letters.
    [[nodiscard]] int anyLength() { return below(10) == 0 ? below(300) : below(24); }

    [[nodiscard]] std::vector<QByteArray> anyTexts(int letters)
    {
        std::vector<QByteArray> texts;
        for (int n = below(80); n >= 0; --n) {
            texts.push_back(anyText(anyLength(), letters).toUtf8());
        }
        return texts;
    }

    /// Often one that is met: cut out of a text, perhaps with another letter at its end.
    [[nodiscard]] QByteArray anyPiece(const std::vector<QByteArray>& texts, int letters)
    {
        const QString text = QString::fromUtf8(texts[std::size_t(below(int(texts.size())))]);
        QString piece = anyText(1 + below(5), letters);
        if (!text.isEmpty() && below(3) != 0) {
            piece = text.mid(below(int(text.size())), 1 + below(below(4) == 0 ? 120 : 6));
            piece += below(4) == 0 ? anyText(1, letters) : QString();
        }
        // Half a letter at its ends would not be what is looked for.
        return piece.isValidUtf16() ? piece.toUtf8() : QByteArray("a");
    }

    [[nodiscard]] QString anyPattern(const QStringList& texts, int letters)
    {
        const QString kSteps[] = {u"*"_s, u"?"_s, u"#"_s, u"[a-e]"_s, u"[!b]"_s, u"[ä]"_s};
        QString pattern = below(2) == 0 ? QString() : u"*"_s;
        for (int n = 1 + below(4); n > 0; --n) {
            const QString& text = texts[below(int(texts.size()))];
            switch (below(3)) {
            case 0:
                pattern += kSteps[below(6)];
                break;
            case 1:
                pattern += anyText(1 + below(2), letters);
                break;
            default:
                pattern += text.isEmpty() ? text : text.mid(below(int(text.size())), 1 + below(4));
            }
        }
        pattern += below(3) == 0 ? QString() : u"*"_s;
        return QString::fromUtf8(pattern.toUtf8()); // no half letters
    }

    std::mt19937 m_random{20261122};
};

IndexBits expectedHits(const std::vector<QByteArray>& texts, const QByteArray& piece, qint64 first)
{
    IndexBits expected(first + qint64(texts.size()));
    for (std::size_t i = 0; i < texts.size(); ++i) {
        if (texts[i].contains(piece)) {
            expected.set(first + qint64(i));
        }
    }
    return expected;
}

std::string packed(const std::vector<QByteArray>& texts)
{
    std::string letters;
    for (const QByteArray& text : texts) {
        letters.append(text.constData(), std::size_t(text.size()));
        letters.push_back(kTextEnd);
    }
    return letters;
}

TEST_F(IndexTextsProof, EveryWidthFindsAPieceInTheTextsThatHoldItAndInNoOthers)
{
    const std::vector<VectorWidth> widths = vectorWidths();
    qint64 hits = 0;
    for (qint64 done = 0; done < comparisons();) {
        const int letters = 1 + below(int(kLetters.size()));
        const std::vector<QByteArray> texts = anyTexts(letters);
        const std::string bytes = packed(texts);
        const PackedTexts packedTexts(bytes);
        ASSERT_EQ(packedTexts.count(), texts.size());
        for (int n = 0; n < 8; ++n) {
            const QByteArray piece = anyPiece(texts, letters);
            const qint64 first = below(130);
            const IndexBits expected = expectedHits(texts, piece, first);
            hits += expected.count();
            const ScanPiece wanted({piece.constData(), std::size_t(piece.size())},
                                   packedTexts.letterCounts());
            for (const VectorWidth width : widths) {
                IndexBits found(expected.size());
                addHolding(packedTexts, wanted, first, found, width);
                ASSERT_EQ(found.words(), expected.words())
                    << "width " << int(width) << ", piece " << piece.toHex().constData();
                done += qint64(texts.size());
            }
        }
    }
    EXPECT_GT(hits, comparisons() / 20);
}

TEST_F(IndexTextsProof, APieceThatCrossesTheEndOfATextIsInNeither)
{
    const std::string letters = packed({"nac", "ht", "nacht", "n", "acht", ""});
    const PackedTexts texts(letters);
    for (const VectorWidth width : vectorWidths()) {
        IndexBits found(6);
        addHolding(texts, ScanPiece("nacht", texts.letterCounts()), 0, found, width);
        EXPECT_EQ(found.words(), std::vector<quint64>{4}) << int(width);
    }
}

TEST_F(IndexTextsProof, AColumnMatchesAPatternWhereverTheTextsThemselvesDo)
{
    qint64 hits = 0;
    for (qint64 done = 0; done < comparisons();) {
        const int letters = 2 + below(int(kLetters.size()) - 1);
        IndexTextsBuilder builder;
        QStringList texts;
        for (const QByteArray& text : anyTexts(letters)) {
            texts.append(QString::fromUtf8(text));
            builder.add({text.constData(), std::size_t(text.size())});
        }
        const IndexTexts column = sorted(builder);
        ASSERT_TRUE(column.isWhole());
        for (int n = 0; n < 12; ++n) {
            const QString text = anyPattern(texts, letters);
            const textcompare::LikePattern pattern(text);
            IndexBits found(column.count() + 1);
            column.addMatching(pattern, text, found);
            for (quint32 number = 0; number < column.count(); ++number) {
                const bool matches = pattern.matches(column.decoded(number));
                hits += matches ? 1 : 0;
                ASSERT_EQ(found.test(number + 1), matches)
                    << text.toStdString() << " in " << column.decoded(number).toStdString();
            }
            ASSERT_FALSE(found.test(0)) << "null matches nothing";
            done += column.count();
        }
    }
    EXPECT_GT(hits, comparisons() / 20);
}

TEST_F(IndexTextsProof, ATextThatBeginsWithAZeroOrAMarkIsFoundByItsBeginning)
{
    const QString zero(QChar(0));
    const QString mark(QChar(0x301));
    IndexTextsBuilder builder;
    for (const QString& text : {QString(), zero, zero + u'a', u"a"_s, mark + u'a', u"\u0001"_s}) {
        builder.add(text.toStdString());
    }
    const IndexTexts column = sorted(builder);
    for (const QString& beginning : {zero, mark}) {
        IndexBits found(column.count() + 1);
        const QString text = beginning + u'*';
        column.addMatching(textcompare::LikePattern(text), text, found);
        for (quint32 number = 0; number < column.count(); ++number) {
            EXPECT_EQ(found.test(number + 1), column.decoded(number).startsWith(beginning))
                << column.decoded(number).toStdString();
        }
        EXPECT_GT(found.count(), 0);
    }
}

TEST_F(IndexTextsProof, LettersAndEndsThatDoNotBelongTogetherAreSeen)
{
    const auto isWhole = [](std::string_view letters, std::vector<quint32> ends) {
        return IndexTexts(IndexArray(std::vector<char>(letters.begin(), letters.end())),
                          IndexArray(std::move(ends)))
            .isWhole();
    };
    EXPECT_TRUE(isWhole("ab\xFF\x63\xFF", {2, 4}));
    EXPECT_TRUE(isWhole("", {}));
    EXPECT_FALSE(isWhole("ab\xFF\x63\xFF", {2, 3})) << "an end that is none";
    EXPECT_FALSE(isWhole("ab\xFF\x63\xFF", {2})) << "a text too few";
    EXPECT_FALSE(isWhole("ab\xFF\x63\xFF", {2, 2})) << "one end twice";
    EXPECT_FALSE(isWhole("ab\xFF\x63\xFF", {4, 2})) << "in another order";
    EXPECT_FALSE(isWhole("ab\xFF\x63", {2, 4})) << "behind the letters";
    EXPECT_FALSE(isWhole("ab\xFF\x63", {2})) << "letters that belong to no text";
}

TEST_F(IndexTextsProof, PlacesOfChosenNumbersAreTheSameOneByOneAndAllAtOnce)
{
    for (int round = 0; round < 200; ++round) {
        const int size = below(400);
        const int numbers = 1 + below(300);
        IndexBits chosen(numbers);
        for (int n = below(numbers + 1); n > 0; --n) {
            chosen.set(below(numbers));
        }
        std::vector<quint32> at(std::size_t(size), 0);
        IndexBits expected(size);
        for (int i = 0; i < size; ++i) {
            at[std::size_t(i)] = quint32(below(numbers));
            if (chosen.test(at[std::size_t(i)])) {
                expected.set(i);
            }
        }
        IndexBits found(size);
        found.addPlacesOf(at, chosen);
        ASSERT_EQ(found.words(), expected.words()) << size;
    }
}

} // namespace
} // namespace melovane::test
