#include "store/schema_source.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace melovane;
using schema::parseRows;
using schema::parseTables;

namespace {

const QString kGenre = u"table genre  # list\n"
                       "    Genre_ID long key\n"
                       "    Name     text 50\n"
                       "    Common   yesno\n"_s;

} // namespace

TEST(SchemaTables, ColumnsHaveTypeWidthAndOptions)
{
    const auto read = parseTables(u"table t\n  a text 12 key\n  n long default 0\n"
                                  "  id long auto\n  d date default now()\n"_s);
    EXPECT_TRUE(read.faults.isEmpty());
    ASSERT_EQ(read.tables.size(), 1U);
    const auto& fields = read.tables[0].Fields;
    ASSERT_EQ(fields.size(), 4U);
    EXPECT_EQ(fields[0].Type, FieldType::Text);
    EXPECT_EQ(fields[0].Size, 12);
    EXPECT_EQ(fields[1].DefaultValue, u"0"_s);
    EXPECT_EQ(fields[2].Attributes, kFieldAutoNumber);
    EXPECT_EQ(fields[3].DefaultValue, u"now()"_s);
    ASSERT_EQ(read.tables[0].Indexes.size(), 1U);
    EXPECT_TRUE(read.tables[0].Indexes[0].Primary);
}

TEST(SchemaTables, IndexesNameTheirColumns)
{
    const auto read = parseTables(u"table t\n a long\n b long\n index I (a, b)\n unique U (b)\n"_s);
    EXPECT_TRUE(read.faults.isEmpty());
    const auto& indexes = read.tables[0].Indexes;
    ASSERT_EQ(indexes.size(), 2U);
    EXPECT_EQ(indexes[0].Fields, QStringList({u"a"_s, u"b"_s}));
    EXPECT_FALSE(indexes[0].Unique);
    EXPECT_TRUE(indexes[1].Unique);
}

TEST(SchemaTables, LikeTakesOverColumnsAndIndexes)
{
    const auto read = parseTables(kGenre + u"table copy like genre\n"_s);
    EXPECT_TRUE(read.faults.isEmpty());
    ASSERT_EQ(read.tables.size(), 2U);
    EXPECT_EQ(read.tables[1].Name, u"copy"_s);
    EXPECT_EQ(read.tables[1].Fields.size(), 3U);
    EXPECT_EQ(read.tables[1].Indexes.size(), 1U);
}

TEST(SchemaTables, EachLineThatIsNotUnderstoodIsListedWithItsNumber)
{
    const auto read = parseTables(u"a long\n"
                                  "table t\n  b lnog\n  c text\n  d long odd\n  index I a\n"
                                  "table u like nothing\ntable\n"_s);
    EXPECT_EQ(
        read.faults,
        QStringList({u"line 1: a column before the first table"_s, u"line 3: unknown type of 'b'"_s,
                     u"line 4: 'c' needs a width"_s, u"line 5: unknown option 'odd'"_s,
                     u"line 6: an index needs a name and columns in brackets"_s,
                     u"line 7: unknown table 'nothing'"_s, u"line 8: a table needs a name"_s}));
}

TEST(SchemaRows, CellsTakeTheTypeOfTheirColumn)
{
    const auto table = parseTables(kGenre).tables.at(0);
    const auto read =
        parseRows(u"# list\nGenre_ID | Name | Common\n7 | Hip-Hop # 1 | true\n"_s, table);
    EXPECT_TRUE(read.faults.isEmpty());
    ASSERT_EQ(read.rows.size(), 1U);
    EXPECT_EQ(read.rows[0][0], Value(7));
    EXPECT_EQ(read.rows[0][1], Value(u"Hip-Hop # 1"_s));
    EXPECT_EQ(read.rows[0][2], Value(true));
}

TEST(SchemaRows, AnEmptyCellIsNullAndTwoQuotesAreTheEmptyText)
{
    const auto table = parseTables(kGenre).tables.at(0);
    const auto read = parseRows(u"Name | Common\n| false\n\"\" | false\n"_s, table);
    ASSERT_EQ(read.rows.size(), 2U);
    EXPECT_TRUE(read.rows[0][0].isNull());
    EXPECT_EQ(read.rows[1][0], Value(QString(u""_s)));
}

TEST(SchemaRows, AnIndentedLineGoesOnWithTheRowAbove)
{
    const auto table = parseTables(kGenre).tables.at(0);
    const auto read =
        parseRows(u"Genre_ID | Name\n1 |\n    select a\n    from b\n2 | c\n"_s, table);
    ASSERT_EQ(read.rows.size(), 2U);
    EXPECT_EQ(read.rows[0][1], Value(u"select a\nfrom b"_s));
}

TEST(SchemaRows, WrongCellsAndColumnsAreListed)
{
    const auto table = parseTables(kGenre).tables.at(0);
    EXPECT_EQ(parseRows(u"Genre_ID | Name\n1\n"_s, table).faults,
              QStringList{u"line 2: wrong number of cells"_s});
    EXPECT_EQ(parseRows(u"Nmae\n1\n"_s, table).faults, QStringList{u"line 1: no column 'Nmae'"_s});
}

TEST(SchemaQuery, CommentLinesAndClosingLineEndsAreLeftOut)
{
    EXPECT_EQ(schema::queryStatement(u"-- why\nSELECT 1\n  FROM a\n\n"_s), u"SELECT 1\n  FROM a"_s);
    EXPECT_EQ(schema::queryStatement(u" SELECT 1 "_s), u" SELECT 1 "_s);
}
