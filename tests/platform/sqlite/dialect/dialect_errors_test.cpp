#include "platform/db/db_error.h"
#include "platform/sqlite/dialect/dialect_library.h"

#include <gtest/gtest.h>

namespace melovane::sqlite {

using namespace Qt::Literals::StringLiterals;

namespace {

struct BadCase
{
    const char* name;
    const char* statement;
    int number;
    const char* named;
};

void PrintTo(const BadCase& value, std::ostream* stream)
{
    *stream << value.statement;
}

class DialectRefuses : public testing::TestWithParam<BadCase>
{};

TEST_P(DialectRefuses, AndNamesWhatIsWrong)
{
    DialectLibrary library;
    library.addQuery(u"ring_a"_s, u"select * from ring_b"_s);
    library.addQuery(u"ring_b"_s, u"select * from ring_a"_s);
    library.addQuery(u"broken"_s, u"select fid frm db_all"_s);
    library.addQuery(u"lost"_s, u"select gone from db_all"_s);
    library.addQuery(u"action"_s, u"delete from pl_all"_s);
    try {
        const Translation translation = translate(QString::fromUtf8(GetParam().statement), library);
        FAIL() << translation.sql.toStdString();
    } catch (const DbError& error) {
        EXPECT_EQ(error.number(), GetParam().number) << error.text().toStdString();
        EXPECT_TRUE(error.text().contains(QString::fromUtf8(GetParam().named)))
            << error.text().toStdString();
        EXPECT_FALSE(error.statement().isEmpty() && GetParam().statement[0] != '\0');
    }
}

constexpr BadCase kBad[] = {
    {"Empty", "", dberror::kSyntax, "am Ende"},
    {"Word", "selekt * from db_all", dberror::kSyntax, "Zeichen 1"},
    {"SecondStatement", "delete from pl_all; delete from db_all", dberror::kSyntax, "Zeichen 21"},
    {"TwoSemicolons", "select 1;;", dberror::kSyntax, "Zeichen 10"},
    {"OpenQuote", "select * from db_all where fid='abc", dberror::kSyntax, "Zeichen 32"},
    {"OpenDoubleQuote", "select \"abc", dberror::kSyntax, "Zeichen 8"},
    {"OpenBracketName", "select [fid from db_all", dberror::kSyntax, "Zeichen 8"},
    {"OpenDate", "select #1.1.2024", dberror::kSyntax, "Zeichen 8"},
    {"BadDate", "select #31.02.2024#", dberror::kSyntax, "31.02.2024"},
    {"BadSign", "select fid from db_all where fid = @x", dberror::kSyntax, "@x"},
    {"BadNumber", "select 12abc", dberror::kSyntax, "12abc"},
    {"MissingFrom", "select fid db_all where fid='a'", dberror::kTooFewParameters, "fid"},
    {"MissingBracket", "select (1 + 2", dberror::kSyntax, "\")\""},
    {"BrokenMode1", "select  *  from db_all\n where ( [TITEL] like '*)", dberror::kSyntax, "Anf"},
    {"NoTable", "select * from nosuch", dberror::kObjectNotFound, "nosuch"},
    {"NoTableInJoin", "select * from db_all inner join missing_one on 1=1",
     dberror::kObjectNotFound, "missing_one"},
    {"NoTableToUpdate", "update nosuch set a=1", dberror::kObjectNotFound, "nosuch"},
    {"NoTableToInsert", "insert into nosuch (a) values (1)", dberror::kObjectNotFound, "nosuch"},
    {"NoTableToDelete", "delete from nosuch", dberror::kObjectNotFound, "nosuch"},
    {"NoColumn", "select fid, wrong from db_all", dberror::kTooFewParameters, "wrong"},
    {"NoColumnInWhere", "select fid from db_all where wrong = 1", dberror::kTooFewParameters,
     "wrong"},
    {"NoColumnOfTable", "select db_all.plid from db_all", dberror::kTooFewParameters,
     "db_all.plid"},
    {"NoColumnOfAlias", "select db_all.fid from db_all as d", dberror::kTooFewParameters,
     "db_all.fid"},
    {"NoColumnToSet", "update db_all set wrong=1", dberror::kTooFewParameters, "wrong"},
    {"NoColumnToInsert", "insert into todo (wrong) values (1)", dberror::kTooFewParameters,
     "wrong"},
    {"NoColumnToOrder", "select fid from db_all order by wrong", dberror::kTooFewParameters,
     "wrong"},
    {"Ambiguous", "select fid from db_all, pl_all", dberror::kSyntax, "fid"},
    {"TwiceTheSameTable", "select 1 from db_all, db_all", dberror::kSyntax, "db_all"},
    {"UnknownFunction", "select blah(1) from db_all", dberror::kSyntax, "blah"},
    {"TooFewArguments", "select left('a')", dberror::kSyntax, "left"},
    {"TooManyArguments", "select ucase('a', 'b')", dberror::kSyntax, "ucase"},
    {"AggregateInWhere", "select fid from db_all where count(*) > 1", dberror::kSyntax, "count"},
    {"AggregateInAggregate", "select max(count(*)) from db_all", dberror::kSyntax, "count"},
    {"HavingAlone", "select fid from db_all having fid='a'", dberror::kSyntax, "having"},
    {"FewerValues", "insert into todo (id, fid) values (1)", dberror::kSyntax, "Werte"},
    {"TwiceTheSameColumn", "insert into todo (id, ID) values (1, 2)", dberror::kSyntax, "ID"},
    {"TwoColumnsInList", "select fid from db_all where fid in (select plid, fid from pl_all)",
     dberror::kSyntax, "eine Spalte"},
    {"UnionOfDifferentWidth", "select fid from db_all union select plid, fid from pl_all",
     dberror::kSyntax, "Spalten"},
    {"TwoTablesWritten", "update vpl_all set framestart=0, titel='x'", dberror::kSyntax, "titel"},
    {"ExpressionWritten", "update vpl_all set nr=2", dberror::kSyntax, "nr"},
    {"DeleteFromNobodyKnows", "delete * from db_all, pl_all where db_all.fid=pl_all.fid",
     dberror::kSyntax, "Tabelle"},
    {"Ring", "select * from ring_a", dberror::kSyntax, "ring_a"},
    {"BrokenQuery", "select * from broken", dberror::kSyntax,
     "In der Abfrage \"broken\": Syntaxfehler: Zeichen hinter dem Ende der Anweisung bei Zeichen 16, "
     "vor \"db_all\""},
    {"QueryWithoutItsColumn", "select * from lost", dberror::kTooFewParameters,
     "In der Abfrage \"lost\": Der Name \"gone\" ist keine Spalte der genannten Tabellen (Zeichen 8)"},
    {"ExecutedQueryWithoutItsColumn", "execute lost", dberror::kTooFewParameters,
     "Der Parameter \"gone\" der Abfrage \"lost\""},
    {"ExecutedQueryThatIsBroken", "execute broken", dberror::kSyntax, "In der Abfrage \"broken\""},
    {"ActionQueryAsSource", "select * from action", dberror::kSyntax, "action"},
    {"WrongType", "create table t (a wrongtype)", dberror::kSyntax, "wrongtype"},
    {"StarOfNothing", "select *", dberror::kSyntax, "*"},
    {"StarOfAnother", "select x.* from db_all", dberror::kSyntax, "x"},
    {"LikeAlone", "select fid from db_all where like 'a*'", dberror::kSyntax, "like"},
};

INSTANTIATE_TEST_SUITE_P(OfEachKind, DialectRefuses, testing::ValuesIn(kBad), [](const auto& test) {
    return std::string(test.param.name);
});

} // namespace

} // namespace melovane::sqlite
