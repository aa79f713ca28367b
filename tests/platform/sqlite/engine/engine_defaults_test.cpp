#include "platform/sqlite/engine/engine_fixture.h"

#include <sqlite3.h>

namespace melovane::test {
namespace {

/// Columns with computed defaults: the clock of these tests stands on 14.03.2026 15:09:26.
class EngineDefaults : public EngineTest
{
protected:
    EngineDefaults()
    {
        TableDef made = table(u"t"_s, {autoNumber(u"id"_s), textField(u"a"_s, 10)});
        const auto add = [&](FieldDef each, const QString& defaultValue) {
            each.DefaultValue = defaultValue;
            made.Fields.push_back(each);
        };
        add(field(u"at"_s, FieldType::Date), u"now()"_s);
        add(field(u"today"_s, FieldType::Date), u"=Date()"_s);
        add(field(u"clock"_s, FieldType::Date), u"Time()"_s);
        add(field(u"due"_s, FieldType::Date), u"Date()+7"_s);
        add(field(u"yr"_s, FieldType::Long), u"Year(Date())"_s);
        add(textField(u"label"_s, 20), u"\"Tag \" & Format(Now(),'yyyymmdd')"_s);
        add(field(u"half"_s, FieldType::Long), u"5/2"_s);
        add(field(u"fix"_s, FieldType::Long), u"7"_s);
        db().tableDefs().Append(made);
    }

    static QString wanted()
    {
        return u"14.03.2026 15:09:26|14.03.2026|15:09:26|21.03.2026|2026|Tag 20260314|2|7"_s;
    }

    QStringList rows(const QString& from = u"t"_s)
    {
        return rowsOf(
            *sibling(),
            u"select at, today, clock, due, yr, label, half, fix from %1 order by id"_s.arg(from));
    }
};

TEST_F(EngineDefaults, AnInsertThatLeavesThemOutFollowsTheInjectedClock)
{
    db().Execute(u"insert into t (a) values ('x')"_s);
    EXPECT_EQ(rows(), QStringList{wanted()});
}

TEST_F(EngineDefaults, AnInsertFromASelectFollowsTheInjectedClock)
{
    db().Execute(u"insert into t (a) select 'x' as a"_s);
    EXPECT_EQ(rows(), QStringList{wanted()});
}

TEST_F(EngineDefaults, AnInsertByParametersFollowsTheInjectedClock)
{
    const auto query = db().CreateQueryDef({}, u"insert into t (a) values ([p])"_s);
    query->SetParameter(u"p"_s, u"x"_s);
    query->Execute();
    EXPECT_EQ(rows(), QStringList{wanted()});
}

TEST_F(EngineDefaults, ANewRowShowsAndStoresTheMomentOfAddNew)
{
    const auto set = db().OpenRecordset(u"t"_s);
    set->AddNew();
    EXPECT_EQ(set->value(u"due").toText(), u"21.03.2026"_s);
    EXPECT_EQ(set->value(u"label").toText(), u"Tag 20260314"_s);
    EXPECT_EQ(set->value(u"half").toLong(), 2);
    m_clock.addSeconds(86'400);
    EXPECT_EQ(set->value(u"at").toText(), u"14.03.2026 15:09:26"_s);
    set->Update();
    EXPECT_EQ(rows(), QStringList{wanted()});
    set->AddNew();
    set->Update();
    EXPECT_EQ(rows().last().section(u'|', 0, 1), u"15.03.2026 15:09:26|15.03.2026"_s);
}

TEST_F(EngineDefaults, ANewRowOfASetWithoutTheirColumnsHasThemToo)
{
    const auto set = db().OpenRecordset(u"select id, a from t"_s);
    set->AddNew();
    set->setValue(u"a", u"x"_s);
    set->Update();
    EXPECT_EQ(rows(), QStringList{wanted()});
}

TEST_F(EngineDefaults, AGivenValueAlsoNullGoesBeforeTheDefault)
{
    db().Execute(u"insert into t (a, at, due, yr) values ('x', null, #01/02/2020#, 5)"_s);
    const auto set = db().OpenRecordset(u"t"_s);
    set->AddNew();
    set->setValue(u"at", Value());
    set->setValue(u"label", u"mine"_s);
    set->Update();
    EXPECT_EQ(rows(), (QStringList{u"null|14.03.2026|15:09:26|02.01.2020|5|Tag 20260314|2|7"_s,
                                   u"null|14.03.2026|15:09:26|21.03.2026|2026|mine|2|7"_s}));
}

TEST_F(EngineDefaults, ATableOfASideFileHasThemThroughItsLink)
{
    const auto side = m_engine->Workspaces(0).CreateDatabase(path(u"side.mdb"_s), QString());
    side->tableDefs().Append(db().tableDefs().Item(u"t"_s));
    db().tableDefs().Delete(u"t"_s);
    db().tableDefs().Append(link(u"t"_s, path(u"side.mdb"_s)));
    db().Execute(u"insert into t (a) values ('x')"_s);
    const auto set = db().OpenRecordset(u"t"_s);
    set->AddNew();
    set->Update();
    EXPECT_EQ(rows(), (QStringList{wanted(), wanted()}));
}

TEST_F(EngineDefaults, AnAlterKeepsThem)
{
    db().Execute(u"alter table t alter column a text(40)"_s);
    db().Execute(u"insert into t (a) values ('x')"_s);
    EXPECT_EQ(rows(), QStringList{wanted()});
    EXPECT_EQ(sibling()->tableDefs().Item(u"t"_s).Fields[5].DefaultValue, u"Date()+7"_s);
}

TEST_F(EngineDefaults, AnotherProgramsPlainInsertIsStampedByItsOwnClock)
{
    sqlite3* raw = nullptr;
    ASSERT_EQ(sqlite3_open(path().toUtf8().constData(), &raw), SQLITE_OK);
    sqlite3_create_collation(raw, "MLV", SQLITE_UTF8, nullptr,
                             [](void*, int, const void*, int, const void*) { return 0; });
    EXPECT_EQ(sqlite3_exec(raw, "insert into t (a) values ('x')", nullptr, nullptr, nullptr),
              SQLITE_OK);
    sqlite3_close(raw);
    EXPECT_GT(cellOf(db(), u"select at from t"_s).toDouble(), 45'000);
}

TEST_F(EngineDefaults, AnExpressionThatCannotBeComputedIsRefused)
{
    for (const auto& expression : {u"[other]+1"_s, u"(select max(id) from t)"_s, u"nosuch()"_s,
                                   u"1, 2"_s, u"1+"_s, u"1) from t where (1"_s, u"'a' 'b'"_s}) {
        TableDef bad = table(u"bad"_s, {field(u"n"_s, FieldType::Long)});
        bad.Fields[0].DefaultValue = expression;
        EXPECT_EQ(errorOf([&] { db().tableDefs().Append(bad); }), dberror::kSyntax)
            << expression.toStdString();
    }
    TableDef bad = table(u"bad"_s, {field(u"n"_s, FieldType::Long)});
    bad.Fields[0].DefaultValue = u"'no number'"_s;
    EXPECT_EQ(errorOf([&] { db().tableDefs().Append(bad); }), dberror::kTypeMismatch);
    EXPECT_FALSE(db().tableDefs().Contains(u"bad"_s));
}

TEST_F(EngineDefaults, ColumnsOfASetTellWhatTheCatalogueTells)
{
    TableDef strict = keyedTable(u"strict"_s, {textField(u"code"_s, 12), textField(u"must"_s, 7)});
    strict.Fields[1].AllowZeroLength = false;
    strict.Fields[1].DefaultValue = u"\"x\""_s;
    db().tableDefs().Append(strict);
    db().CreateQueryDef(u"v"_s, u"select must, code, must & code as both from strict"_s);
    const auto set = db().OpenRecordset(u"v"_s);
    const Field must = set->Fields(u"must");
    EXPECT_EQ(must.Size(), 7);
    EXPECT_EQ(must.DefaultValue(), u"\"x\""_s);
    EXPECT_FALSE(must.AllowZeroLength());
    EXPECT_EQ(must.Attributes(), kFieldVariable);
    EXPECT_EQ(set->Fields(u"both").DefaultValue(), QString());
    EXPECT_EQ(db().OpenRecordset(u"t"_s)->Fields(u"id").Attributes(),
              kFieldAutoNumber | kFieldFixed);
    EXPECT_TRUE(db().tableDefs().Item(u"strict"_s).Fields[0].Required) << "a key takes no null";
    db().Execute(u"drop index PrimaryKey on strict"_s);
    EXPECT_FALSE(db().tableDefs().Item(u"strict"_s).Fields[0].Required);
}

} // namespace
} // namespace melovane::test
