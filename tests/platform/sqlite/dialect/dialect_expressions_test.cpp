#include "platform/sqlite/dialect/dialect_library.h"

#include <gtest/gtest.h>

namespace melovane::sqlite {

using namespace Qt::Literals::StringLiterals;

namespace {

struct ExpressionCase
{
    const char* expression;
    const char* value;
    FieldType type;
};

void PrintTo(const ExpressionCase& value, std::ostream* stream)
{
    *stream << value.expression;
}

class DialectExpression : public testing::TestWithParam<ExpressionCase>
{};

TEST_P(DialectExpression, HasThisValueAndType)
{
    DialectLibrary library;
    const QString statement = u"select %1"_s.arg(QString::fromUtf8(GetParam().expression));
    const Translation translation = translate(statement, library);
    EXPECT_EQ(library.raw(translation.sql).toStdString(), GetParam().value)
        << translation.sql.toStdString();
    ASSERT_EQ(translation.columns.size(), 1u);
    EXPECT_EQ(translation.columns[0].field.Type, GetParam().type);
    EXPECT_EQ(translation.columns[0].field.Name.toStdString(), "Expr1000");
}

constexpr auto kBool = FieldType::Boolean;
constexpr auto kLong = FieldType::Long;
constexpr auto kDouble = FieldType::Double;
constexpr auto kDate = FieldType::Date;
constexpr auto kText = FieldType::Text;

constexpr ExpressionCase kOperators[] = {
    {"1+2", "3", kLong},
    {"7/2", "3.5", kDouble},
    {"6/2", "3.0", kDouble},
    {"1/0", "-", kDouble},
    {"7\\2", "3", kLong},
    {"-7\\2", "-3", kLong},
    {"7.5\\2", "4", kLong}, // 7.5 is 8
    {"6.5\\2", "3", kLong}, // 6.5 is 6
    {"5\\0", "-", kLong},
    {"7 mod 4", "3", kLong},
    {"-7 mod 4", "-3", kLong},
    {"5 mod 0", "-", kLong},
    {"2^10", "1024", kDouble},
    {"-2^2", "-4", kDouble},
    {"2^-1", "0.5", kDouble},
    {"2^3^2", "64", kDouble},
    {"2+3*4", "14", kLong},
    {"(2+3)*4", "20", kLong},
    {"7 mod 4 * 2", "7", kLong},
    {"10\\3*2", "1", kLong},
    {"1-2-3", "-4", kLong},
    {"1-(2-3)", "2", kLong},
    {"- - 5", "5", kLong},
    {"5 - -1", "6", kLong},
    {"+5", "5", kLong},
    {"1.5+1", "2.5", kDouble},
    {"3000000000", "3000000000.0", kDouble},
    {".5", "0.5", kDouble},
    {"1e3", "1000.0", kDouble},
    {"'a'+'b'", "ab", kText},
    {"'a' & 'b'", "ab", kText},
    {"'a' & null & 'b'", "ab", kText},
    {"'a' + null", "-", kText},
    {"1 & 2", "12", kText},
    {"'x' & 3.0", "x3", kText},
    {"'x' & 3.5", "x3.5", kText},
    {"'x' & true", "x-1", kText},
    {"'x' & #31.12.2024#", "x31.12.2024", kText},
    {"'x' & #31.12.2024 08:05:00#", "x31.12.2024 08:05:00", kText},
    {"'5' + 1", "6.0", kDouble},
    {"'a' + 1", "a1", kText},
    {"'5' * 2", "10", kDouble},
    {"'12 Takte' * 2", "24", kDouble},
    {"'it''s'", "it's", kText},
    {"\"say \"\"hi\"\"\"", "say \"hi\"", kText},
    {"\"it's\"", "it's", kText},
    {"1=1", "-1", kBool},
    {"1=2", "0", kBool},
    {"'a'='A'", "-1", kBool},
    {"'Ä'='ä'", "-1", kBool},
    {"'ä'='a'", "0", kBool},
    {"'ß'='ss'", "0", kBool},
    {"'ä'<'b'", "-1", kBool},
    {"'b'>'Ä'", "-1", kBool},
    {"5='5'", "-1", kBool},
    {"'5'=5", "-1", kBool},
    {"'05'=5", "-1", kBool},
    {"10>'9'", "-1", kBool},
    {"'10'>'9'", "0", kBool},
    {"null=null", "-", kBool},
    {"1<>2", "-1", kBool},
    {"true", "-1", kBool},
    {"false", "0", kBool},
    {"yes", "-1", kBool},
    {"off", "0", kBool},
    {"-1=true", "-1", kBool},
    {"1=true", "0", kBool},
    {"not true", "0", kBool},
    {"not (1=2)", "-1", kBool},
    {"not 1=2", "-1", kBool},
    {"true and false", "0", kBool},
    {"true or false", "-1", kBool},
    {"true xor true", "0", kBool},
    {"true xor false", "-1", kBool},
    {"false eqv false", "-1", kBool},
    {"true imp false", "0", kBool},
    {"false imp false", "-1", kBool},
    {"true or false and false", "-1", kBool},
    {"(1=1) + (2=2)", "-2", kLong},
    {"(1=1)=true", "-1", kBool},
    {"5 between 1 and 9", "-1", kBool},
    {"5 not between 1 and 9", "0", kBool},
    {"'B' between 'a' and 'c'", "-1", kBool},
    {"'5' between 4 and 11", "-1", kBool},
    {"'B' in ('a','b')", "-1", kBool},
    {"3 in (1,2)", "0", kBool},
    {"3 not in (1,2)", "-1", kBool},
    {"'3' in (1,2,3)", "-1", kBool},
    {"3 in ('1','3')", "-1", kBool},
    {"null is null", "-1", kBool},
    {"1 is not null", "-1", kBool},
    {"isnull(null)", "-1", kBool},
    {"isnull(0)", "0", kBool},
    {"'Blue' like 'b*'", "-1", kBool},
    {"'Blue' not like 'b*'", "0", kBool},
    {"'Blue' like 'bl?e'", "-1", kBool},
    {"123 like '1*'", "-1", kBool},
    {"2.0 like '2'", "-1", kBool},
    {"null like '*'", "-", kBool},
    {"'' like '*'", "-1", kBool},
    {"#31.12.2024# like '31.12*'", "-1", kBool},
    {"iif(1=1,'a','b')", "a", kText},
    {"iif(null,'a','b')", "b", kText},
    {"iif(1=2,1)", "-", kLong},
    {"iif(true,1,'b')", "1", kText},
    {"nz(null,5)", "5", kLong},
    {"nz(null)", "", kText},
    {"nz(3,5)", "3", kLong},
    {"choose(2,'a','b','c')", "b", kText},
    {"choose(9,'a','b')", "-", kText},
    {"switch(1=2,'a',2=2,'b')", "b", kText},
    {"#2024-02-01#", "45323.0", kDate},
    {"#02/01/2024#", "45323.0", kDate},
    {"#01.02.2024#", "45323.0", kDate},
    {"#31/12/2024#", "45657.0", kDate},
    {"#01.02.2024 12:00#", "45323.5", kDate},
    {"#12:00:00#", "0.5", kDate},
    {"#6:00 pm#", "0.75", kDate},
    {"#01.02.2024# + 1", "45324.0", kDate},
    {"#01.02.2024# - #31.01.2024#", "1.0", kDouble},
    {"#01.02.2024# = '01.02.2024'", "-1", kBool},
    {"'1.2.2024' < #02.02.2024#", "-1", kBool},
    {"now", "45458.5208333333", kDate},
    {"now()", "45458.5208333333", kDate},
    {"date", "45458", kDate},
    {"date()", "45458", kDate},
    {"format(time,'hh:nn')", "12:30", kText},
    {"now-0.5 < now", "-1", kBool},
    {"(select max(sid) from pl_all)", "20", kLong},
    {"exists (select * from db_all)", "-1", kBool},
    {"not exists (select * from db_all where fid='no')", "-1", kBool},
    {"5 in (select sid from pl_all)", "0", kBool},
    {"'20' in (select sid from pl_all)", "-1", kBool},
    {"'ÄRZTE' in (select interpret from db_all)", "-1", kBool},
    {"'ÄRZTE' = (select max(interpret) from db_all where fid='AAAAAAAAAAA1')", "-1", kBool},
};

INSTANTIATE_TEST_SUITE_P(Operators, DialectExpression, testing::ValuesIn(kOperators));

constexpr ExpressionCase kFunctions[] = {
    {"abs(-3)", "3", kLong},
    {"abs(null)", "-", kDouble},
    {"sgn(-2.5)", "-1", kLong},
    {"int(-2.5)", "-3", kDouble},
    {"fix(-2.5)", "-2", kDouble},
    {"round(2.5)", "2", kDouble},
    {"round(3.5)", "4", kDouble},
    {"round(2.125,2)", "2.12", kDouble},
    {"sqr(16)", "4", kDouble},
    {"sqr(-1)", "-", kDouble},
    {"exp(0)", "1", kDouble},
    {"log(1)", "0", kDouble},
    {"log(0)", "-", kDouble},
    {"sin(0)", "0", kDouble},
    {"cos(0)", "1", kDouble},
    {"tan(0)", "0", kDouble},
    {"atn(0)", "0", kDouble},
    {"rnd() < 1", "-1", kBool},
    {"val('12abc')", "12", kDouble},
    {"val('abc')", "0", kDouble},
    {"val('1e5')", "1", kDouble},
    {"cint('7')", "7", kLong},
    {"clng(2.5)", "2", kLong},
    {"clng(3.5)", "4", kLong},
    {"cdbl('2.5')", "2.5", kDouble},
    {"cstr(5)", "5", kText},
    {"cstr(5.0)", "5", kText},
    {"cstr(#31.12.2024#)", "31.12.2024", kText},
    {"cbool(5)", "-1", kBool},
    {"cbool('true')", "-1", kBool},
    {"cdate('31.12.2024')", "45657.0", kDate},
    {"cdate('31.12.2024 06:00')", "45657.25", kDate},
    {"cdate('31/12/2024')", "45657.0", kDate},
    {"cdate('nothing')", "-", kDate},
    {"cdate(45657)", "45657.0", kDate},
    {"isnumeric('12')", "-1", kBool},
    {"isnumeric('12a')", "0", kBool},
    {"isnumeric(null)", "0", kBool},
    {"isdate('31.12.2024')", "-1", kBool},
    {"isdate('31.13.2024')", "0", kBool},
    {"ucase('äöß')", "ÄÖß", kText},
    {"lcase('ÄB')", "äb", kText},
    {"ucase$('a')", "A", kText},
    {"left('Blue',2)", "Bl", kText},
    {"left('Blue',99)", "Blue", kText},
    {"left('Blue',-1)", "", kText},
    {"right('Blue',2)", "ue", kText},
    {"mid('Blue',2)", "lue", kText},
    {"mid('Blue',2,2)", "lu", kText},
    {"mid('Blue',9)", "", kText},
    {"len('Größe')", "5", kLong},
    {"len(null)", "-", kLong},
    {"instr('Blue','U')", "3", kLong},
    {"instr('Blue','x')", "0", kLong},
    {"instr(2,'abab','a')", "3", kLong},
    {"instr('Ärzte','ä')", "1", kLong},
    {"instrrev('abab','a')", "3", kLong},
    {"trim('  a b ')", "a b", kText},
    {"ltrim('  a ')", "a ", kText},
    {"rtrim('  a ')", "  a", kText},
    {"replace('a.b.c','.','-')", "a-b-c", kText},
    {"replace('aXbx','x','')", "ab", kText},
    {"replace('abc','','x')", "abc", kText},
    {"'[' & space(3) & ']'", "[   ]", kText},
    {"string(3,'ab')", "aaa", kText},
    {"string(2,65)", "AA", kText},
    {"strcomp('a','A')", "0", kLong},
    {"strcomp('a','b')", "-1", kLong},
    {"strcomp('a','A',0)", "1", kLong},
    {"strreverse('abc')", "cba", kText},
    {"strconv('blue moon',3)", "Blue Moon", kText},
    {"str(5)", " 5", kText},
    {"str(-5)", "-5", kText},
    {"chr(65)", "A", kText},
    {"chrw(8364)", "€", kText},
    {"asc('A')", "65", kLong},
    {"ascw('€')", "8364", kLong},
    {"hex(255)", "FF", kText},
    {"oct(8)", "10", kText},
    {"year(#31.12.2024#)", "2024", kLong},
    {"month(#31.12.2024#)", "12", kLong},
    {"day('31.12.2024')", "31", kLong},
    {"weekday(#15.06.2024#)", "7", kLong},
    {"weekday(#15.06.2024#,2)", "6", kLong},
    {"hour(#18:05:09#)", "18", kLong},
    {"minute(#18:05:09#)", "5", kLong},
    {"second(#18:05:09#)", "9", kLong},
    {"year(null)", "-", kLong},
    {"year('abc')", "-", kLong},
    {"dateadd('d',1,#31.12.2024#)", "45658.0", kDate},
    {"dateadd('m',1,#31.01.2024#)", "45351.0", kDate}, // the last of February
    {"dateadd('yyyy',-1,#29.02.2024#)", "44985.0", kDate},
    {"dateadd('ww',1,#01.01.2024#)", "45299.0", kDate},
    {"dateadd('h',12,#01.01.2024#)", "45292.5", kDate},
    {"datediff('d',#01.01.2024#,#31.01.2024#)", "30", kLong},
    {"datediff('m',#31.01.2024#,#01.02.2024#)", "1", kLong},
    {"datediff('yyyy',#31.12.2023#,#01.01.2024#)", "1", kLong},
    {"datediff('h',#10:59:00#,#11:01:00#)", "1", kLong},
    {"datediff('s',#10:00:00#,#10:01:00#)", "60", kLong},
    {"datepart('q',#15.06.2024#)", "2", kLong},
    {"datepart('y',#01.02.2024#)", "32", kLong},
    {"datepart('ww',#01.01.2024#)", "1", kLong},
    {"dateserial(2024,12,31)", "45657.0", kDate},
    {"dateserial(2024,13,1)", "45658.0", kDate},
    {"dateserial(2024,1,0)", "45291.0", kDate},
    {"dateserial(9999999,1,1)", "-", kDate},
    {"timeserial(12,0,0)", "0.5", kDate},
    {"datevalue('31.12.2024 18:00')", "45657.0", kDate},
    {"timevalue('31.12.2024 18:00')", "0.75", kDate},
    {"monthname(3)", "März", kText},
    {"monthname(3,true)", "Mrz", kText},
    {"weekdayname(1)", "Sonntag", kText},
    {"weekdayname(1,true,2)", "Mo", kText},
    {"format(#01.02.2024 08:05:09#,'dd.mm.yyyy hh:mm:ss')", "01.02.2024 08:05:09", kText},
    {"format(#01.02.2024 08:05:09#,'DD.MM.YYYY HH:NN')", "01.02.2024 08:05", kText},
    {"format(#01.02.2024 08:05:09#,'d/m/yy h:n:s')", "1.2.24 8:5:9", kText},
    {"format(#01.02.2024 08:05:09#,'yyyymmdd_HHmmss')", "20240201_080509", kText},
    {"format(#01.03.2024#,'dddd, d. mmmm')", "Freitag, 1. März", kText},
    {"format(#01.03.2024#,'ddd mmm')", "Fr Mrz", kText},
    {"format(#01.03.2024#,'y')", "61", kText},
    {"format('31.12.2024','yyyy')", "2024", kText},
    {"format('kein Datum','yyyy')", "kein Datum", kText},
    {"format(null,'yyyy')", "-", kText},
    {"format(5)", "5", kText},
    {"format(5,'000')", "005", kText},
    {"format(1234.5,'#,##0.00')", "1.234,50", kText},
    {"format(0.5,'0%')", "50%", kText},
    {"format(-2,'0;minus 0')", "minus 2", kText},
    {"format(0.5,'#.##')", ",5", kText},
    {"format(2.5,'fixed')", "2,50", kText},
    {"format(1,'yes/no')", "Ja", kText},
    {"format(#01.02.2024#,'short date')", "01.02.2024", kText},
    {"format('Ab','>')", "AB", kText},
    {"partition(98,1,130,10)", " 91:100", kText},
    {"timer()", "45000.0", kDouble},
};

INSTANTIATE_TEST_SUITE_P(Functions, DialectExpression, testing::ValuesIn(kFunctions));

TEST(DialectFunctions, HugeTextsAreRefusedAndNothingCrashes)
{
    DialectLibrary library;
    for (const QString& expression : {u"space(2000000000)"_s, u"string(2000000000,'a')"_s,
                                      u"replace(space(10000000),' ','abcdefghij')"_s,
                                      u"len(space(16000000) & space(16000000) + space(1))*0"_s}) {
        try {
            static_cast<void>(library.run(u"select "_s + expression));
        } catch (const std::runtime_error& error) {
            EXPECT_EQ(std::string(error.what()).substr(0, 9), "MLV:3163:") << error.what();
        }
    }
    EXPECT_EQ(library.run(u"select len(space(1000000))"_s).toStdString(), "1000000");
    EXPECT_THROW(static_cast<void>(library.run(u"select space(2000000000)"_s)), std::runtime_error);
}

TEST(DialectFunctions, EveryFunctionTakesNullEmptyAndExtremeArguments)
{
    DialectLibrary library;
    const QStringList functions{
        u"abs"_s,         u"asc"_s,       u"chr"_s,       u"cdate"_s,      u"cint"_s,  u"cstr"_s,
        u"day"_s,         u"exp"_s,       u"fix"_s,       u"hex"_s,        u"int"_s,   u"isdate"_s,
        u"len"_s,         u"log"_s,       u"month"_s,     u"monthname"_s,  u"round"_s, u"sgn"_s,
        u"sqr"_s,         u"str"_s,       u"trim"_s,      u"ucase"_s,      u"val"_s,   u"weekday"_s,
        u"weekdayname"_s, u"year"_s,      u"oct"_s,       u"strreverse"_s, u"hour"_s,  u"format"_s,
        u"cbool"_s,       u"datevalue"_s, u"timevalue"_s, u"isnumeric"_s};
    for (const QString& function : functions) {
        for (const QString& argument :
             {u"null"_s, u"''"_s, u"'abc'"_s, u"1e300"_s, u"-1e300"_s, u"1e300*1e300"_s,
              u"-2147483648"_s, u"'999999999999999999999999'"_s, u"'Ä€😀'"_s}) {
            try {
                static_cast<void>(library.run(u"select %1(%2)"_s.arg(function, argument)));
            } catch (const std::runtime_error& error) {
                EXPECT_EQ(std::string(error.what()).substr(0, 4), "MLV:")
                    << function.toStdString() << argument.toStdString() << error.what();
            }
        }
    }
}

TEST(DialectAggregates, FirstLastAndSpread)
{
    DialectLibrary library;
    EXPECT_EQ(library.run(u"select first(fid), last(fid) from pl_all where pnid=5"_s).toStdString(),
              "AAAAAAAAAAA1|AAAAAAAAAAA2");
    EXPECT_EQ(library.run(u"select var(pitch), varp(pitch), stdev(volume) from pl_all"_s)
                  .left(19)
                  .toStdString(),
              "1.66666666666667|1.");
    EXPECT_EQ(library.run(u"select stdev(pitch) from pl_all where plid=1"_s).toStdString(), "-");
    EXPECT_EQ(library.run(u"select first(fid) from pl_all where plid=99"_s).toStdString(), "-");
    EXPECT_EQ(
        library
            .run(u"select avg(pitch), sum(note) from pl_all, db_all where pl_all.fid=db_all.fid"_s)
            .toStdString(),
        "2.0|9");
    EXPECT_EQ(library.run(u"select count(note), count(distinct genre) from db_all"_s).toStdString(),
              "3|2");
    EXPECT_EQ(library.run(u"select min(titel), max(interpret) from db_all"_s).toStdString(),
              "4 Ecken|zebra");
    EXPECT_EQ(library.run(u"select max(titel & 'x') from db_all"_s).toStdString(), "Émilex");
}

} // namespace

} // namespace melovane::sqlite
