#include "platform/system/quoted_record.h"

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

TEST(QuotedRecord, AQuoteInsideAValueIsDoubledAndReadBack)
{
    const QString line = recordLine({u"a\"b"_s, qint64{-7}, QString(), u"x,y"_s});
    EXPECT_EQ(line, u"\"a\"\"b\",-7,\"\",\"x,y\""_s);
    EXPECT_EQ(readRecordLine(line), (QStringList{u"a\"b"_s, u"-7"_s, QString(), u"x,y"_s}));
}

TEST(QuotedRecord, ARecordIsAlwaysOneLine)
{
    EXPECT_EQ(recordLine({u"a\r\nb\nc"_s}), u"\"a b c\""_s);
}

TEST(QuotedRecord, BlanksAroundFieldsHaveNoMeaning)
{
    EXPECT_EQ(readRecordLine(u" \"a\" , 5 ,b c "), (QStringList{u"a"_s, u"5"_s, u"b c"_s}));
    EXPECT_EQ(readRecordLine(u""), QStringList{QString()});
    EXPECT_EQ(readRecordLine(u"1,"), (QStringList{u"1"_s, QString()}));
}

TEST(QuotedRecord, AnOpenQuoteOrSomethingBehindOneIsNoRecord)
{
    EXPECT_EQ(readRecordLine(u"\"a"), std::nullopt);
    EXPECT_EQ(readRecordLine(u"\"a\"b,1"), std::nullopt);
    EXPECT_EQ(readRecordLine(u"1,\"a\"\""), std::nullopt);
}

} // namespace
} // namespace melovane
