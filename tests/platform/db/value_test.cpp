#include "platform/db/value.h"

#include <gtest/gtest.h>

#include <limits>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

TEST(Value, NullReadsAsNothingOfEveryKind)
{
    const Value null;
    EXPECT_TRUE(null.isNull());
    EXPECT_EQ(null.toText(), QString());
    EXPECT_EQ(null.toLong(), 0);
    EXPECT_FALSE(null.toBool());
    EXPECT_FALSE(null.toDateTime().isValid());
}

TEST(Value, TrueIsMinusOne)
{
    EXPECT_EQ(Value(true).toLong(), -1);
    EXPECT_EQ(Value(true).toText(), u"-1"_s);
    EXPECT_TRUE(Value(2).toBool());
}

TEST(Value, DayZeroIsThe30thOfDecember1899)
{
    EXPECT_DOUBLE_EQ(dayNumber(QDateTime(QDate(2000, 1, 1), QTime(0, 0))), 36526.0);
    EXPECT_DOUBLE_EQ(dayNumber(QDateTime(QDate(2001, 1, 1), QTime(12, 0))), 36892.5);
}

TEST(Value, ADateKeepsItsMillisecond)
{
    const QDateTime moment(QDate(2026, 11, 21), QTime(23, 59, 59, 999));
    EXPECT_EQ(Value(moment).toDateTime(), moment);
}

TEST(Value, DatesReadAsTextInTheGermanForm)
{
    EXPECT_EQ(Value(QDateTime(QDate(2026, 3, 1), QTime(4, 5, 6))).toText(),
              u"01.03.2026 04:05:06"_s);
    EXPECT_EQ(Value(QDateTime(QDate(2026, 3, 1), QTime(0, 0))).toText(), u"01.03.2026"_s);
    EXPECT_EQ(Value(u"01.03.2026 04:05:06"_s).toDateTime(),
              QDateTime(QDate(2026, 3, 1), QTime(4, 5, 6)));
}

TEST(Value, DamagedDayNumbersAreNoDates)
{
    EXPECT_FALSE(fromDayNumber(1e300).isValid());
    EXPECT_FALSE(fromDayNumber(std::numeric_limits<double>::quiet_NaN()).isValid());
}

TEST(Value, NumbersReadAsPlainDecimal)
{
    EXPECT_EQ(Value(qint64{5042}).toText(), u"5042"_s);
    EXPECT_EQ(Value(3828.0).toText(), u"3828"_s);
    EXPECT_EQ(Value(0.5).toText(), u"0.5"_s);
    EXPECT_EQ(Value(2.5).toLong(), 2);
}

} // namespace
} // namespace melovane
