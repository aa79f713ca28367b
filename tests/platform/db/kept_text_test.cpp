#include "platform/db/kept_text.h"

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

struct Kept
{
    const char* name;
    std::string_view bytes;
    QString text;
};

class KeptText : public testing::TestWithParam<Kept>
{};

TEST_P(KeptText, ReadsAsItStands)
{
    EXPECT_EQ(keptText(GetParam().bytes), GetParam().text);
}

TEST_P(KeptText, IsAppendedToWhatThereIs)
{
    QString text = u"ABM?Album??"_s;
    appendKept(text, GetParam().bytes);
    EXPECT_EQ(text, u"ABM?Album??"_s + GetParam().text);
}

TEST(KeptTextOfLatinLetters, IsAppendedIntoTheRoomReservedForIt)
{
    const std::string_view bytes = "Gr\xC3\xB6\xC3\x9F";
    QString text;
    text.reserve(qsizetype(bytes.size()));
    const QChar* const room = text.constData();
    appendKept(text, bytes);
    EXPECT_EQ(text, u"Größ"_s);
    EXPECT_EQ(text.constData(), room);
}

using namespace std::string_view_literals;

INSTANTIATE_TEST_SUITE_P(Texts,
                         KeptText,
                         testing::Values(Kept{"Empty", ""sv, QString()},
                                         Kept{"Plain", "The Wall"sv, u"The Wall"_s},
                                         Kept{"Umlauts",
                                              "Gr\xC3\xB6\xC3\x9F"
                                              "e"sv,
                                              u"Größe"_s},
                                         Kept{"Korean", "\xED\x95\x9C\xEA\xB5\xAD"sv,
                                              u"\uD55C\uAD6D"_s},
                                         Kept{"Pair", "\xF0\x9F\x8E\xB5"sv, u"\U0001F3B5"_s},
                                         Kept{"HalfAPair",
                                              "a\xED\xA0\xBC"
                                              "b"sv,
                                              u"a"_s + QChar(0xD83C) + u'b'},
                                         Kept{"Damaged",
                                              "a\xFF"
                                              "b"sv,
                                              u"a\uFFFDb"_s},
                                         Kept{"CutOff", "a\xC3"sv, u"a\uFFFD"_s},
                                         Kept{"ZeroInside", "a\0b"sv, u"a"_s + QChar(0) + u'b'}),
                         [](const auto& each) { return each.param.name; });

} // namespace
} // namespace melovane
