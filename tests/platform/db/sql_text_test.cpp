#include "platform/db/sql_text.h"

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

TEST(SqlText, DoublesEveryQuote)
{
    EXPECT_EQ(sql::text(u"O'Neil's"), u"'O''Neil''s'"_s);
    EXPECT_EQ(sql::quoted(u"''"), u"''''"_s);
    EXPECT_EQ(sql::text({}), u"''"_s);
}

TEST(SqlText, LeavesEverythingElseAsItIs)
{
    const QString hostile = u"[a]*?\"%_\n\r\t;--/*"_s + QString(10'000, u'x');
    EXPECT_EQ(sql::text(hostile), u'\'' + hostile + u'\'');
}

TEST(SqlText, DropsZeroCharacters)
{
    EXPECT_EQ(sql::text(u"a"_s + QChar(0) + u'b'), u"'ab'"_s);
}

TEST(SqlText, NumbersArePlainDecimal)
{
    EXPECT_EQ(sql::number(qint64{-222}), u"-222"_s);
    EXPECT_EQ(sql::number(26.12245), u"26.12245"_s);
    EXPECT_EQ(sql::number(1e6), u"1000000"_s);
}

} // namespace
} // namespace melovane
