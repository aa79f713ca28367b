#include "platform/db/sql_text.h"
#include "platform/sqlite/engine/engine_fixture.h"

#include <functional>

namespace melovane::test {
namespace {

/// One way on which a value enters a column of the table `t`, whose only row has id 1. The column
/// `src` of the table `s` holds the value for the roads that fetch it from another table.
struct Road
{
    const char* name;
    std::function<void(Database&, const QString& column, const QString& literal, const Value&)>
        take;
};

void insertFresh(Database& db, const QString& column, const QString& values)
{
    db.Execute(u"delete from t"_s);
    db.Execute(u"insert into t (id, %1) %2"_s.arg(column, values));
}

const Road kRoads[] = {
    {"Insert",
     [](Database& db, const QString& column, const QString& literal, const Value&) {
         insertFresh(db, column, u"values (1, %1)"_s.arg(literal));
     }},
    {"InsertOfAnExpression",
     [](Database& db, const QString& column, const QString& literal, const Value&) {
         insertFresh(db, column, u"values (1, (%1))"_s.arg(literal));
     }},
    {"InsertSelect",
     [](Database& db, const QString& column, const QString& literal, const Value&) {
         insertFresh(db, column, u"select 1 as id, %1 as %2"_s.arg(literal, column));
     }},
    {"Update",
     [](Database& db, const QString& column, const QString& literal, const Value&) {
         db.Execute(u"update t set %1=%2"_s.arg(column, literal));
     }},
    {"UpdateThroughAJoin",
     [](Database& db, const QString& column, const QString& literal, const Value&) {
         db.Execute(u"update t_s as j set j.%1=%2 where j.id=1"_s.arg(column, literal));
     }},
    {"Parameter",
     [](Database& db, const QString& column, const QString&, const Value& value) {
         const auto query = db.CreateQueryDef({}, u"update t set %1=[v]"_s.arg(column));
         query->SetParameter(u"v"_s, value);
         query->Execute();
     }},
    {"DeclaredParameter",
     [](Database& db, const QString& column, const QString&, const Value& value) {
         const FieldType type = db.OpenRecordset(u"t"_s)->Fields(column).Type();
         const char16_t* word = type == FieldType::Long      ? u"long"
                                : type == FieldType::Boolean ? u"yesno"
                                : type == FieldType::Date    ? u"datetime"
                                : type == FieldType::Double  ? u"double"
                                                             : u"text";
         const auto query = db.CreateQueryDef(
             {}, u"parameters [v] %1; update t set %2=[v]"_s.arg(QString::fromUtf16(word), column));
         query->SetParameter(u"v"_s, value);
         query->Execute();
     }},
    {"EditOfASet",
     [](Database& db, const QString& column, const QString&, const Value& value) {
         const auto set = db.OpenRecordset(u"t"_s);
         set->Edit();
         set->setValue(column, value);
         set->Update();
     }},
    {"NewRowOfASet",
     [](Database& db, const QString& column, const QString&, const Value& value) {
         const auto set = db.OpenRecordset(u"t"_s);
         db.Execute(u"delete from t"_s);
         set->AddNew();
         set->setValue(u"id", 1);
         set->setValue(column, value);
         set->Update();
     }},
    {"EditOfAJoin",
     [](Database& db, const QString& column, const QString&, const Value& value) {
         const auto set = db.OpenRecordset(u"t_s"_s);
         set->Edit();
         set->setValue(column, value);
         set->Update();
     }},
};

class EngineTypes : public EngineTest, public testing::WithParamInterface<Road>
{
protected:
    EngineTypes()
    {
        db().tableDefs().Append(keyedTable(
            u"t"_s, {field(u"id"_s, FieldType::Long), field(u"num"_s, FieldType::Long),
                     field(u"yes"_s, FieldType::Boolean), field(u"day"_s, FieldType::Date),
                     textField(u"txt"_s, 5), field(u"real"_s, FieldType::Double)}));
        db().tableDefs().Append(table(u"s"_s, {field(u"sid"_s, FieldType::Long)}));
        db().Execute(u"insert into s values (1)"_s);
        db().Execute(u"insert into t (id) values (1)"_s);
        db().CreateQueryDef(u"t_s"_s, u"select t.*, s.sid from t inner join s on t.id = s.sid"_s);
    }

    void take(const QString& column, const QString& literal, const Value& value)
    {
        GetParam().take(db(), column, literal, value);
    }

    /// The cell as another program finds it.
    Value cell(const QString& column)
    {
        return cellOf(*sibling(), u"select %1 from t"_s.arg(column));
    }
};

TEST_P(EngineTypes, ARealNumberInALongColumnIsRoundedHalfToEven)
{
    for (const auto& [number, rounded] : {std::pair{0.5, 0},
                                          {1.5, 2},
                                          {2.5, 2},
                                          {-0.5, 0},
                                          {-1.5, -2},
                                          {2.4999, 2},
                                          {3828.12, 3828}}) {
        take(u"num"_s, sql::number(number), Value(number));
        EXPECT_EQ(cell(u"num"_s), Value(rounded)) << number;
    }
}

TEST_P(EngineTypes, ANumberBeyond32BitsIsRefusedAndTheRowStays)
{
    take(u"num"_s, u"7"_s, Value(7));
    EXPECT_EQ(errorOf([&] { take(u"num"_s, u"3000000000.5"_s, Value(3000000000.5)); }),
              dberror::kTypeMismatch);
    EXPECT_LE(cellOf(db(), u"select count(*) as n from t where num<>7"_s).toLong(), 0);
}

TEST_P(EngineTypes, TrueIsMinusOneInYesNoAndLong)
{
    take(u"yes"_s, u"true"_s, Value(true));
    EXPECT_EQ(cell(u"yes"_s), Value(true));
    EXPECT_EQ(cellOf(db(), u"select count(*) as n from t where yes=true and yes=-1"_s).toLong(), 1);
    take(u"yes"_s, u"5"_s, Value(5));
    EXPECT_EQ(cell(u"yes"_s).toLong(), -1) << "any number but 0 is true";
    take(u"num"_s, u"true"_s, Value(true));
    EXPECT_EQ(cell(u"num"_s), Value(-1));
    take(u"yes"_s, u"null"_s, Value());
    EXPECT_FALSE(cell(u"yes"_s).toBool());
}

TEST_P(EngineTypes, ADateKeepsItsTimeAndCountsInDays)
{
    const QDateTime moment(QDate(2026, 3, 14), QTime(15, 30));
    take(u"day"_s, u"#03/14/2026 15:30:00#"_s, Value(moment));
    EXPECT_EQ(cell(u"day"_s).toDateTime(), moment);
    EXPECT_EQ(cell(u"day"_s).toText(), u"14.03.2026 15:30:00"_s);
    EXPECT_EQ(cell(u"day+0.5"_s).toDateTime(), QDateTime(QDate(2026, 3, 15), QTime(3, 30)));
    EXPECT_EQ(cell(u"format(day,'yyyymmdd hh:nn')"_s).toText(), u"20260314 15:30"_s);
    EXPECT_EQ(cell(u"int(day)"_s).toLong(), 46095);
}

TEST_P(EngineTypes, ADateOfAParameterIsComparedAsADate)
{
    const QDateTime moment(QDate(2026, 3, 14), QTime(15, 30));
    take(u"day"_s, u"#03/14/2026 15:30:00#"_s, Value(moment));
    const auto query =
        db().CreateQueryDef({}, u"select count(*) as n from t where day > [since]"_s);
    query->SetParameter(u"since"_s, Value(moment.addSecs(-1)));
    EXPECT_EQ(query->OpenRecordset()->value(0).toLong(), 1);
    query->SetParameter(u"since"_s, Value(moment));
    EXPECT_EQ(query->OpenRecordset()->value(0).toLong(), 0);
}

TEST_P(EngineTypes, ADateWithoutTimeIsAWholeDay)
{
    take(u"day"_s, u"#03/14/2026#"_s, Value(QDateTime(QDate(2026, 3, 14), QTime(0, 0))));
    EXPECT_EQ(cell(u"day"_s).toText(), u"14.03.2026"_s);
    EXPECT_EQ(cell(u"day & ''"_s).toText(), u"14.03.2026"_s);
    EXPECT_EQ(cell(u"day - #03/01/2026#"_s).toDouble(), 13);
}

TEST_P(EngineTypes, ATextThatTellsADateBecomesOne)
{
    take(u"day"_s, u"'14.03.2026 15:30:00'"_s, Value(u"14.03.2026 15:30:00"_s));
    EXPECT_EQ(cell(u"day"_s).toDateTime(), QDateTime(QDate(2026, 3, 14), QTime(15, 30)));
    EXPECT_EQ(errorOf([&] { take(u"day"_s, u"'no date'"_s, Value(u"no date"_s)); }),
              dberror::kTypeMismatch);
}

TEST_P(EngineTypes, NullAndEmptyTextAreTwoThings)
{
    take(u"txt"_s, u"''"_s, Value(u""_s));
    EXPECT_FALSE(cell(u"txt"_s).isNull());
    EXPECT_EQ(cellOf(db(), u"select count(*) as n from t where txt=''"_s).toLong(), 1);
    take(u"txt"_s, u"null"_s, Value());
    EXPECT_TRUE(cell(u"txt"_s).isNull());
    EXPECT_EQ(cellOf(db(), u"select count(*) as n from t where txt=''"_s).toLong(), 0);
    EXPECT_EQ(cellOf(db(), u"select count(*) as n from t where txt is null"_s).toLong(), 1);
}

TEST_P(EngineTypes, ATextFillsItsColumnAndNoMore)
{
    take(u"txt"_s, u"'fünf5'"_s, Value(u"fünf5"_s));
    EXPECT_EQ(cell(u"txt"_s).toText(), u"fünf5"_s);
    EXPECT_EQ(errorOf([&] { take(u"txt"_s, u"'sechs6'"_s, Value(u"sechs6"_s)); }),
              dberror::kFieldTooSmall);
    // A letter outside the first plane counts twice, by every road alike.
    const QString wide = QString::fromUcs4(U"\U0001F3B5\U0001F3B5\U0001F3B5");
    EXPECT_EQ(errorOf([&] { take(u"txt"_s, sql::text(wide), Value(wide)); }),
              dberror::kFieldTooSmall);
}

TEST_P(EngineTypes, ANumberInATextColumnIsItsDecimalText)
{
    take(u"txt"_s, u"17"_s, Value(17));
    EXPECT_EQ(cell(u"txt"_s), Value(u"17"_s));
    take(u"txt"_s, u"1.5"_s, Value(1.5));
    EXPECT_EQ(cell(u"txt"_s), Value(u"1.5"_s));
    take(u"txt"_s, u"-0.25"_s, Value(-0.25));
    EXPECT_EQ(cell(u"txt"_s), Value(u"-0.25"_s));
}

TEST_P(EngineTypes, ATextWithANumberFillsNumberColumns)
{
    take(u"num"_s, u"'12'"_s, Value(u"12"_s));
    EXPECT_EQ(cell(u"num"_s), Value(12));
    take(u"real"_s, u"'1.25'"_s, Value(u"1.25"_s));
    EXPECT_EQ(cell(u"real"_s), Value(1.25));
    take(u"real"_s, u"3"_s, Value(3));
    EXPECT_EQ(cell(u"real"_s), Value(3.0));
}

INSTANTIATE_TEST_SUITE_P(ByEveryRoad,
                         EngineTypes,
                         testing::ValuesIn(kRoads),
                         [](const testing::TestParamInfo<Road>& test) { return test.param.name; });

/// Inserts with pasted values share one translation; what enters must not differ from the same
/// statement with its values in brackets, which is translated by itself.
class EnginePasted : public EngineTest
{
protected:
    EnginePasted()
    {
        db().tableDefs().Append(table(
            u"p"_s, {field(u"num"_s, FieldType::Long), field(u"yes"_s, FieldType::Boolean),
                     field(u"day"_s, FieldType::Date), textField(u"txt"_s, 20),
                     field(u"memo"_s, FieldType::Memo), field(u"real"_s, FieldType::Double)}));
    }

    /// Result of the insert: the row, or the number of its error.
    QString outcome(const QString& value, const QString& column)
    {
        db().Execute(u"delete from p"_s);
        const int error =
            errorOf([&] { db().Execute(u"insert into p (%1) values (%2)"_s.arg(column, value)); });
        return error != 0 ? QString::number(error) : rowsOf(db(), u"p"_s).join(u'\n');
    }
};

TEST_F(EnginePasted, ValuesEnterAsTheyDoByThemselves)
{
    for (const auto& value : {u"1"_s,
                              u"-1"_s,
                              u"0"_s,
                              u"2.5"_s,
                              u"3.5"_s,
                              u"0.1"_s,
                              u"-0.0"_s,
                              u"007"_s,
                              u"1."_s,
                              u".5"_s,
                              u"1e3"_s,
                              u"3000000000"_s,
                              u"123456789012345678"_s,
                              u"''"_s,
                              u"'x'"_s,
                              u"'12'"_s,
                              u"'1,5'"_s,
                              u"'2.5'"_s,
                              u"'14.03.2026'"_s,
                              u"'it''s'"_s,
                              u"\"double\"\"d\""_s,
                              u"'[a]*?#'"_s,
                              u"null"_s,
                              u"NULL"_s,
                              u"true"_s,
                              u"False"_s,
                              u"#03/14/2026#"_s,
                              u"now"_s,
                              u"'a'+'b'"_s,
                              u"1+1"_s,
                              u"'a' & 1"_s,
                              u"'x"_s,
                              u"--1"_s,
                              u"&H10"_s,
                              u"46095.5"_s,
                              u"'21 letters are too many'"_s}) {
        for (const auto& column : {u"num"_s, u"yes"_s, u"day"_s, u"txt"_s, u"memo"_s, u"real"_s}) {
            EXPECT_EQ(outcome(value, column).toStdString(),
                      outcome(u'(' + value + u')', column).toStdString())
                << value.toStdString() << " into " << column.toStdString();
        }
    }
}

TEST_F(EnginePasted, TheStatementOfAnErrorIsTheCallersOwn)
{
    const QString statement = u"insert into p (day) values ('no date')"_s;
    try {
        db().Execute(statement);
        FAIL();
    } catch (const DbError& error) {
        EXPECT_EQ(error.number(), dberror::kTypeMismatch);
        EXPECT_EQ(error.statement(), statement);
    }
}

TEST_F(EnginePasted, OddFormsMeanWhatTheySay)
{
    db().Execute(u"INSERT INTO [p] ( [txt] , num ) VALUES ( 'a' , 1 ) ; "_s);
    db().Execute(u"insert into p(txt,num)values('b',2)"_s);
    EXPECT_EQ(errorOf([&] { db().Execute(u"insert into p (txt,num) values ('c')"_s); }),
              dberror::kSyntax);
    EXPECT_EQ(errorOf([&] { db().Execute(u"insert into p (txt) values ('c') delete from p"_s); }),
              dberror::kSyntax);
    EXPECT_EQ(errorOf([&] { db().Execute(u"insert into p (txt) values ('c'); delete from p"_s); }),
              dberror::kSyntax);
    EXPECT_EQ(errorOf([&] { db().Execute(u"insert into gone (txt) values ('c')"_s); }),
              dberror::kObjectNotFound);
    EXPECT_EQ(rowsOf(db(), u"select txt, num from p order by num"_s),
              (QStringList{u"a|1"_s, u"b|2"_s}));
    EXPECT_EQ(db().RecordsAffected(), 1);
}

} // namespace
} // namespace melovane::test
