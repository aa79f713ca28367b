#include "platform/system/readable_name.h"

#include <gtest/gtest.h>

namespace {

using namespace melovane;
using namespace Qt::Literals::StringLiterals;

TEST(ReadableName, LettersThatStandForBytesAreReadAsTheyWereMeant)
{
    EXPECT_EQ(readableName(u"J\uEFF6rg \uEF80"_s), u"Jörg €"_s);
    EXPECT_EQ(readableName(u"Größe - 東京"_s), u"Größe - 東京"_s);
    EXPECT_EQ(readableName(QString()), QString());
}

TEST(ReadableName, NoByteAtAllGivesALetterOfThePrivateRangeOrNone)
{
    for (char16_t byte = 0x80; byte <= 0xFF; ++byte) {
        const QString read = readableName(QString(QChar(char16_t(kByteLetters + byte))));
        ASSERT_EQ(read.size(), 1);
        EXPECT_TRUE(read[0].isPrint()) << std::hex << int(byte);
        EXPECT_NE(read[0].category(), QChar::Other_PrivateUse) << std::hex << int(byte);
    }
}

TEST(ShortenedText, KeepsBothEndsAndNeverExceedsItsLength)
{
    EXPECT_EQ(shortened(u"/music/a.mp3"_s, 30), u"/music/a.mp3"_s);
    const QString cut = shortened(u"/music/"_s + QString(1'000'000, u'x') + u"/a.mp3"_s, 31);
    EXPECT_EQ(cut, u"/music/xxxxxx ... xxxxxxx/a.mp3"_s);
}

TEST(ShortenedText, TearsNoLetterOfTwoUnits)
{
    QString notes;
    for (int i = 0; i < 100; ++i) {
        notes += u"\U0001F3B5"_s;
    }
    for (qsizetype max = 21; max < 40; ++max) {
        EXPECT_TRUE(shortened(notes, max).isValidUtf16()) << max;
    }
}

} // namespace
