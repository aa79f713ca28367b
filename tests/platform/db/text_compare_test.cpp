#include "platform/db/text_compare.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace melovane::textcompare {

using namespace Qt::Literals::StringLiterals;

namespace {

int signOf(int order)
{
    return order < 0 ? -1 : (order > 0 ? 1 : 0);
}

TEST(TextCompare, CaseDoesNotMatterButMarksDo)
{
    EXPECT_TRUE(equal(u"Blue", u"bLUE"));
    EXPECT_TRUE(equal(u"ÄÖÜ", u"äöü"));
    EXPECT_FALSE(equal(u"ä", u"a"));
    EXPECT_FALSE(equal(u"ß", u"ss"));
    EXPECT_TRUE(equal(u"ẞ", u"ß"));
    EXPECT_TRUE(equal(u"ΑΒΓ", u"αβγ"));
    EXPECT_TRUE(equal(u"ЖУК", u"жук"));
    EXPECT_FALSE(equal(u"a", u"a "));
}

TEST(TextCompare, ComposedAndDecomposedLettersAreEqual)
{
    EXPECT_TRUE(equal(u"\u00C4rzte", u"a\u0308rzte"));
    EXPECT_EQ(compare(u"\u00C4rzte", u"a\u0308rzte"), 0);
    EXPECT_EQ(sortKey(u"\u00C4rzte"), sortKey(u"a\u0308rzte"));
}

TEST(TextCompare, OrderGoesByBaseLettersFirst)
{
    QStringList list{u"zebra"_s,  u"Ärzte"_s,   u"arzt"_s,   u"Abba"_s,    u"azur"_s,
                     u"Straße"_s, u"Strasse"_s, u"Strast"_s, u"4 Ecken"_s, u""_s};
    std::sort(list.begin(), list.end(),
              [](const QString& a, const QString& b) { return compare(a, b) < 0; });
    EXPECT_EQ(list.join(u',').toStdString(),
              ",4 Ecken,Abba,arzt,Ärzte,azur,Strasse,Straße,Strast,zebra");
}

TEST(TextCompare, ZeroExactlyWhenEqual)
{
    EXPECT_NE(compare(u"ä", u"a"), 0);
    EXPECT_NE(compare(u"Straße", u"STRASSE"), 0);
    EXPECT_EQ(compare(u"STRAẞE", u"straße"), 0);
}

QString randomText(std::mt19937& random)
{
    static const QString kLetters =
        u"aAbBzZ sS\u00DF\u1E9E\u00E4\u00C4\u0308\u0301eE\u00E9\u0130iI\u0131\u03B1\u0391\u03AC\u212A\u0001\u0000k09[*"_s +
        QChar(0xD83D) + QChar(0xDE00) + QChar(0);
    QString text;
    const auto size = random() % 7;
    for (unsigned i = 0; i < size; ++i) {
        text.append(kLetters[qsizetype(random() % size_t(kLetters.size()))]);
    }
    return text;
}

TEST(TextCompare, KeyBytesAndTextsGiveOneOrder)
{
    std::mt19937 random(3);
    for (int i = 0; i < 40'000; ++i) {
        const QString a = randomText(random);
        const QString b = randomText(random);
        const int order = signOf(compare(a, b));
        const QString keyA = sortKey(a);
        const QString keyB = sortKey(b);
        ASSERT_EQ(order, signOf(QString::compare(keyA, keyB)))
            << a.toStdString() << " / " << b.toStdString();
        ASSERT_EQ(order == 0, equal(a, b)) << a.toStdString() << " / " << b.toStdString();
        ASSERT_EQ(order, -signOf(compare(b, a)));
        const QByteArray bytesA = a.toUtf8();
        const QByteArray bytesB = b.toUtf8();
        // Half a pair of surrogates has no bytes of its own.
        if (QString::fromUtf8(bytesA) == a && QString::fromUtf8(bytesB) == b) {
            ASSERT_EQ(order, signOf(compareUtf8(bytesA.constData(), bytesA.size(),
                                                bytesB.constData(), bytesB.size())))
                << a.toStdString() << " / " << b.toStdString();
        }
    }
}

TEST(TextCompare, OrderIsTransitive)
{
    std::mt19937 random(4);
    for (int i = 0; i < 20'000; ++i) {
        std::array<QString, 3> texts{randomText(random), randomText(random), randomText(random)};
        std::sort(texts.begin(), texts.end(),
                  [](const QString& a, const QString& b) { return compare(a, b) < 0; });
        ASSERT_LE(compare(texts[0], texts[1]), 0);
        ASSERT_LE(compare(texts[1], texts[2]), 0);
        ASSERT_LE(compare(texts[0], texts[2]), 0);
    }
}

TEST(TextCompare, FoldingTwiceChangesNothing)
{
    for (char32_t letter = 1; letter < 0x1'2000; ++letter) {
        if (letter >= 0xD800 && letter <= 0xDFFF) {
            continue;
        }
        const QString once = fold(QString::fromUcs4(&letter, 1));
        ASSERT_EQ(fold(once), once) << std::hex << unsigned(letter);
    }
}

TEST(TextCompare, DamagedBytesCompareWithoutHarm)
{
    const QByteArray broken("a\xC3\xFF\xF0\x9F", 5);
    EXPECT_EQ(compareUtf8(broken.constData(), broken.size(), broken.constData(), broken.size()), 0);
    EXPECT_NE(compareUtf8(broken.constData(), broken.size(), "a", 1), 0);
    EXPECT_EQ(compareUtf8(nullptr, 0, nullptr, 0), 0);
}

struct LikeCase
{
    const char* text;
    const char* pattern;
    bool matches;
};

void PrintTo(const LikeCase& value, std::ostream* stream)
{
    *stream << value.text << " like " << value.pattern;
}

class Like : public testing::TestWithParam<LikeCase>
{};

TEST_P(Like, MatchesAsTold)
{
    const LikePattern pattern(QString::fromUtf8(GetParam().pattern));
    EXPECT_EQ(pattern.matches(QString::fromUtf8(GetParam().text)), GetParam().matches);
}

constexpr LikeCase kLike[] = {
    {"Blue", "blue", true},
    {"Blue", "b*", true},
    {"Blue", "*UE", true},
    {"Blue", "*l*", true},
    {"Blue", "*x*", false},
    {"Blue", "blu", false},
    {"Blue", "lue", false},
    {"", "*", true},
    {"", "", true},
    {"", "?", false},
    {"a", "", false},
    {"Blue", "?lue", true},
    {"Blue", "????", true},
    {"Blue", "?????", false},
    {"Blue", "b**e", true},
    {"a1", "a#", true},
    {"ab", "a#", false},
    {"a٣", "a#", false},
    {"ä", "a", false},
    {"ä", "Ä", true},
    {"ä", "?", true},
    {"😀", "?", true},
    {"😀", "??", false},
    {"x😀y", "*?y", true},
    {"Ärzte", "[A-Z]*", true},
    {"ärzte", "[0-9A-Z]*", true},
    {"ßeta", "[s]*", true},
    {"4 Ecken", "[0-9]*", true},
    {"!x", "[!0-9A-Z]*", true},
    {"Ä", "[!0-9A-Z]*", false},
    {"a", "[ä]", true},
    {"b", "[a-c]", true},
    {"d", "[a-c]", false},
    {"d", "[!a-c]", true},
    {"d", "[c-a]", false},
    {"b", "[abc]", true},
    {"-", "[a-]", true},
    {"-", "[-a]", true},
    {"!", "[!]", true},
    {"*", "[*]", true},
    {"a*b", "a[*]b", true},
    {"axb", "a[*]b", false},
    {"[", "[[]", true},
    {"]", "]", true},
    {"ab", "a[]b", true},
    {"[abc", "[abc", false},
    {"a", "a[", false},
    {"C:\\Musik\\", "c:\\musik\\*", true},
    {"a%b", "a%b", true},
    {"a_b", "a?b", true},
    {"aab", "*ab", true},
    {"abcabd", "*ab?", true},
    {"mississippi", "*iss*ip*i", true},
    {"mississippi", "*iss*ips*", false},
    {"A\xCC\x88rzte", "ä*", true},
};

INSTANTIATE_TEST_SUITE_P(Patterns, Like, testing::ValuesIn(kLike));

/// The plain definition: slow, but there is nothing in it to get wrong.
bool plainMatch(QStringView text, QStringView pattern)
{
    if (pattern.isEmpty()) {
        return text.isEmpty();
    }
    if (pattern.front() == u'*') {
        return plainMatch(text, pattern.sliced(1)) ||
               (!text.isEmpty() && plainMatch(text.sliced(1), pattern));
    }
    if (text.isEmpty()) {
        return false;
    }
    const bool one = pattern.front() == u'?' || pattern.front() == text.front() ||
                     (pattern.front() == u'#' && text.front().isDigit());
    return one && plainMatch(text.sliced(1), pattern.sliced(1));
}

TEST(LikePattern, AgreesWithThePlainDefinition)
{
    std::mt19937 random(5);
    const auto make = [&](QStringView letters, unsigned most) {
        QString text;
        const unsigned size = unsigned(random() % most);
        for (unsigned i = 0; i < size; ++i) {
            text.append(letters[qsizetype(random() % size_t(letters.size()))]);
        }
        return text;
    };
    for (int i = 0; i < 60'000; ++i) {
        const QString text = make(u"ab1", 10);
        const QString pattern = make(u"ab1?*#*", 8);
        ASSERT_EQ(LikePattern(pattern).matches(text), plainMatch(text, pattern))
            << text.toStdString() << " like " << pattern.toStdString();
    }
}

TEST(LikePattern, ManyStarsTakeNoTime)
{
    const QString text(200'000, u'a');
    QString pattern;
    for (int i = 0; i < 2000; ++i) {
        pattern += u"*a"_s;
    }
    EXPECT_FALSE(LikePattern(pattern + u"b"_s).matches(text));
    EXPECT_TRUE(LikePattern(pattern).matches(text));
}

/// Texts in which plain, marked, joining and far letters meet.
QString mixedText(std::mt19937& random)
{
    static const QString letters =
        u"aAbzßsSäÄåéøØñIiİıſµÿŸ ’\u0301\u0308\u030A中’ﬁ"_s + QChar(0) + QChar(1);
    QString text;
    for (unsigned size = unsigned(random() % 7); size > 0; --size) {
        text.append(letters[qsizetype(random() % size_t(letters.size()))]);
    }
    return text;
}

TEST(TextCompare, EveryWayGivesTheOrderOfTheSortKeys)
{
    std::mt19937 random(11);
    for (int i = 0; i < 200'000; ++i) {
        const QString left = mixedText(random);
        const QString right = mixedText(random);
        const QString leftKey = sortKey(left);
        const QString rightKey = sortKey(right);
        const int expected = leftKey == rightKey ? 0 : (leftKey < rightKey ? -1 : 1);
        const QByteArray leftBytes = left.toUtf8();
        const QByteArray rightBytes = right.toUtf8();
        ASSERT_EQ(compare(left, right), expected)
            << leftBytes.toStdString() << " | " << rightBytes.toStdString();
        ASSERT_EQ(
            compareUtf8(leftBytes.data(), leftBytes.size(), rightBytes.data(), rightBytes.size()),
            expected)
            << leftBytes.toStdString() << " | " << rightBytes.toStdString();
    }
}

TEST(LikePattern, BytesMatchAsTheirTextDoes)
{
    std::mt19937 random(12);
    for (int i = 0; i < 100'000; ++i) {
        const QString text = mixedText(random);
        QString start = mixedText(random);
        start.remove(QChar(0));
        const LikePattern pattern(random() % 2 == 0 ? text.left(2) + u'*' : start + u'*');
        const QByteArray bytes = text.toUtf8();
        ASSERT_EQ(pattern.matchesUtf8(bytes.data(), bytes.size()), pattern.matches(text))
            << bytes.toStdString();
    }
}

TEST(LikePattern, FoldedBytesMatchAsTheFoldedTextDoes)
{
    const QString steps[] = {u"*"_s,    u"?"_s,   u"#"_s,         u"[a-s]"_s,
                             u"[!ä]"_s, u"[ß]"_s, u"\U0001F600"_s};
    std::mt19937 random(13);
    int matches = 0;
    for (int i = 0; i < 100'000; ++i) {
        QString pattern;
        for (unsigned count = 1 + unsigned(random() % 5); count > 0; --count) {
            pattern += random() % 2 == 0 ? steps[random() % std::size(steps)] : mixedText(random);
        }
        const QString folded = fold(mixedText(random) + steps[random() % std::size(steps)]);
        const QByteArray bytes = folded.toUtf8();
        const LikePattern like(pattern);
        const bool expected = like.matchesFolded(folded);
        matches += expected ? 1 : 0;
        ASSERT_EQ(like.matchesFoldedUtf8({bytes.constData(), size_t(bytes.size())}), expected)
            << pattern.toStdString() << " on " << bytes.toStdString();
    }
    EXPECT_GT(matches, 1000);
}

TEST(LikePattern, DamagedFoldedBytesMatchWithoutHarm)
{
    for (const std::string& text :
         {std::string("\xF0"), std::string("a\xE4\xBA"), std::string("\x80\x80"),
          std::string("\xFF"), std::string("\xC3")}) {
        // Memory that ends with the text.
        const std::vector<char> bytes(text.begin(), text.end());
        for (const QString& pattern :
             {u"?"_s, u"*?"_s, u"*[ä]*"_s, u"??*"_s, u"[!a]#"_s, u"*ä"_s, u"?*a"_s}) {
            const bool matches =
                LikePattern(pattern).matchesFoldedUtf8({bytes.data(), bytes.size()});
            EXPECT_TRUE(matches || pattern.size() > 1 || text.size() > 1) << pattern.toStdString();
        }
    }
}

TEST(LikePattern, LongTextsMatchAsBytesToo)
{
    const QByteArray text = QByteArray(1000, 'x') + "Ä";
    EXPECT_TRUE(LikePattern(u"*ä").matchesUtf8(text.data(), text.size()));
    EXPECT_TRUE(LikePattern(QString(600, u'X') + u'*').matchesUtf8(text.data(), text.size()));
    EXPECT_FALSE(LikePattern(u"x*y").matchesUtf8(text.data(), text.size()));
}

} // namespace

} // namespace melovane::textcompare
