#include "platform/sqlite/engine/engine_fixture.h"

namespace melovane::test {
namespace {

class EngineCatalogue : public EngineTest
{
protected:
    TableDefs& tables() { return db().tableDefs(); }

    [[nodiscard]] QStringList tableNames(Database& database)
    {
        QStringList names;
        for (const TableDef& table : database.tableDefs().All()) {
            names.append(table.Name);
        }
        return names;
    }
};

TableDef manyKinds()
{
    TableDef result =
        table(u"Kinds"_s,
              {autoNumber(u"id"_s), textField(u"Text"_s, 50), field(u"Memo"_s, FieldType::Memo),
               field(u"Long"_s, FieldType::Long), field(u"YesNo"_s, FieldType::Boolean),
               field(u"Date"_s, FieldType::Date), field(u"Double"_s, FieldType::Double)});
    result.Fields[1].DefaultValue = u"\"it's\""_s;
    result.Fields[1].AllowZeroLength = false;
    result.Fields[3].DefaultValue = u"7"_s;
    result.Fields[3].Required = true;
    result.Fields[5].DefaultValue = u"=Now()"_s;
    result.Indexes = {{u"PrimaryKey"_s, {u"id"_s}, true, true},
                      {u"by text"_s, {u"Text"_s, u"Long"_s}, false, true},
                      {u"date"_s, {u"Date"_s}, false, false}};
    return result;
}

TEST_F(EngineCatalogue, ATableComesBackAsItWasAppended)
{
    const TableDef wanted = manyKinds();
    tables().Append(wanted);
    const TableDef found = sibling()->tableDefs().Item(u"KINDS"_s);
    EXPECT_EQ(found.Name, u"Kinds"_s);
    EXPECT_EQ(found.Attributes, 0);
    EXPECT_FALSE(found.isLink());
    ASSERT_EQ(found.Fields.size(), wanted.Fields.size());
    const std::vector<int> sizes{4, 50, 0, 4, 1, 8, 8};
    for (std::size_t i = 0; i < wanted.Fields.size(); ++i) {
        const std::string name = wanted.Fields[i].Name.toStdString();
        EXPECT_EQ(found.Fields[i].Name, wanted.Fields[i].Name) << name;
        EXPECT_EQ(found.Fields[i].Type, wanted.Fields[i].Type) << name;
        EXPECT_EQ(found.Fields[i].Size, sizes[i]) << name;
        EXPECT_EQ(found.Fields[i].DefaultValue, wanted.Fields[i].DefaultValue) << name;
        EXPECT_EQ(found.Fields[i].AllowZeroLength, wanted.Fields[i].AllowZeroLength) << name;
        EXPECT_EQ(found.Fields[i].Required, wanted.Fields[i].Required) << name;
    }
    EXPECT_EQ(found.Fields[0].Attributes, kFieldAutoNumber | kFieldFixed);
    EXPECT_EQ(found.Fields[1].Attributes, kFieldVariable);
    ASSERT_EQ(found.Indexes.size(), 3U);
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(found.Indexes[i].Name, wanted.Indexes[i].Name);
        EXPECT_EQ(found.Indexes[i].Fields, wanted.Indexes[i].Fields);
        EXPECT_EQ(found.Indexes[i].Primary, wanted.Indexes[i].Primary);
        EXPECT_EQ(found.Indexes[i].Unique, wanted.Indexes[i].Unique);
    }
}

TEST_F(EngineCatalogue, ACloneOfATableIsTheSameTable)
{
    tables().Append(manyKinds());
    TableDef clone = tables().Item(u"Kinds"_s);
    clone.Name = u"Clone"_s;
    tables().Append(clone);
    const TableDef found = tables().Item(u"Clone"_s);
    EXPECT_EQ(found.Fields[1].DefaultValue, u"\"it's\""_s);
    EXPECT_EQ(found.Fields[0].Attributes, clone.Fields[0].Attributes);
    EXPECT_EQ(found.Indexes.size(), 3U);
}

TEST_F(EngineCatalogue, DefaultsReachNewRowsAndInserts)
{
    tables().Append(manyKinds());
    const auto set = db().OpenRecordset(u"Kinds"_s);
    set->AddNew();
    EXPECT_EQ(set->value(u"Text").toText(), u"it's"_s);
    EXPECT_EQ(set->value(u"Long").toLong(), 7);
    EXPECT_EQ(set->value(u"Date").toDateTime(), m_clock.now());
    EXPECT_EQ(set->value(u"YesNo"), Value(false));
    EXPECT_TRUE(set->value(u"id").isNull());
    EXPECT_EQ(errorOf([&] { set->setValue(u"Text", QString()); }), dberror::kZeroLength);
    set->Update();
    db().Execute(u"insert into Kinds ([Long]) values (8)"_s);
    EXPECT_EQ(rowsOf(db(), u"select [Text], [Long], YesNo from Kinds order by id"_s),
              (QStringList{u"it's|7|0"_s, u"it's|8|0"_s}));
    EXPECT_EQ(cellOf(db(), u"select count(*) as n from Kinds where [Date] is null"_s).toLong(), 0);
}

TEST_F(EngineCatalogue, ADefaultThatIsNoConstantIsRefused)
{
    TableDef bad = table(u"t"_s, {textField(u"a"_s, 5)});
    bad.Fields[0].DefaultValue = u"1); drop table x; --"_s;
    EXPECT_EQ(errorOf([&] { tables().Append(bad); }), dberror::kSyntax);
    EXPECT_FALSE(tables().Contains(u"t"_s));
}

TEST_F(EngineCatalogue, TablesAndLinksStandInTheOrderOfTheirCreation)
{
    tables().Append(table(u"zebra"_s, {textField(u"a"_s, 5)}));
    tables().Append(link(u"middle"_s, path(u"absent.mdb"_s)));
    tables().Append(table(u"ant"_s, {textField(u"a"_s, 5)}));
    db().CreateQueryDef(u"query"_s, u"select * from ant"_s);
    db().Execute(u"alter table zebra add column b text(5)"_s);
    EXPECT_EQ(tableNames(db()), (QStringList{u"zebra"_s, u"middle"_s, u"ant"_s}));
    EXPECT_EQ(tableNames(*sibling()), (QStringList{u"zebra"_s, u"middle"_s, u"ant"_s}));
}

TEST_F(EngineCatalogue, ChangesAreSeenByOtherConnectionsAtTheirNextStatement)
{
    const auto other = sibling();
    EXPECT_FALSE(other->tableDefs().Contains(u"t"_s));
    tables().Append(table(u"t"_s, {textField(u"a"_s, 5)}));
    other->Execute(u"insert into t values ('x')"_s);
    const auto set = other->OpenRecordset(u"t"_s);
    EXPECT_EQ(set->fieldCount(), 1);
    db().Execute(u"alter table t add column b long"_s);
    EXPECT_EQ(other->OpenRecordset(u"t"_s)->fieldCount(), 2);
    tables().Delete(u"t"_s);
    EXPECT_EQ(errorOf([&] { (void)other->OpenRecordset(u"t"_s); }), dberror::kObjectNotFound);
}

TEST_F(EngineCatalogue, ANameIsTakenByTablesLinksAndQueriesAlike)
{
    tables().Append(table(u"Name"_s, {textField(u"a"_s, 5)}));
    db().CreateQueryDef(u"Query"_s, u"select * from Name"_s);
    EXPECT_EQ(errorOf([&] { tables().Append(table(u"NAME"_s, {textField(u"a"_s, 5)})); }),
              dberror::kObjectExists);
    EXPECT_EQ(errorOf([&] { tables().Append(table(u"query"_s, {textField(u"a"_s, 5)})); }),
              dberror::kObjectExists);
    EXPECT_EQ(errorOf([&] { tables().Append(link(u"name"_s, path())); }), dberror::kObjectExists);
    EXPECT_EQ(errorOf([&] { db().CreateQueryDef(u"name"_s, u"select 1 as a from Name"_s); }),
              dberror::kObjectExists);
}

TEST_F(EngineCatalogue, DefinitionsThatMakeNoTableAreRefused)
{
    EXPECT_EQ(errorOf([&] { tables().Append(table(u"t"_s, {})); }), dberror::kNoFields);
    EXPECT_EQ(errorOf([&] { tables().Append(table(QString(), {textField(u"a"_s, 5)})); }),
              dberror::kSyntax);
    EXPECT_EQ(errorOf([&] { tables().Append(table(u"mlv_object"_s, {textField(u"a"_s, 5)})); }),
              dberror::kSyntax);
    EXPECT_EQ(errorOf([&] {
                  tables().Append(table(u"t"_s, {textField(u"a"_s, 5), textField(u"A"_s, 5)}));
              }),
              dberror::kFieldTwice);
    TableDef badIndex = table(u"t"_s, {textField(u"a"_s, 5)});
    badIndex.Indexes.push_back({u"i"_s, {u"nosuch"_s}, false, false});
    EXPECT_EQ(errorOf([&] { tables().Append(badIndex); }), dberror::kItemNotFound);
    EXPECT_TRUE(tables().All().empty());
}

TEST_F(EngineCatalogue, MissingItemsAreItemNotFound)
{
    EXPECT_EQ(errorOf([&] { (void)tables().Item(u"x"_s); }), dberror::kItemNotFound);
    EXPECT_EQ(errorOf([&] { tables().Delete(u"x"_s); }), dberror::kItemNotFound);
    EXPECT_EQ(errorOf([&] { (void)db().queryDefs().Item(u"x"_s); }), dberror::kItemNotFound);
    EXPECT_EQ(errorOf([&] { db().queryDefs().Delete(u"x"_s); }), dberror::kItemNotFound);
    tables().Append(table(u"t"_s, {textField(u"a"_s, 5)}));
    EXPECT_EQ(errorOf([&] { db().queryDefs().Delete(u"t"_s); }), dberror::kItemNotFound);
}

TEST_F(EngineCatalogue, AlterColumnTurnsANumericKeyIntoTextAndKeepsTheRows)
{
    tables().Append(keyedTable(u"db_version"_s,
                               {field(u"id"_s, FieldType::Long), textField(u"Version"_s, 50)}));
    db().Execute(u"insert into db_version values (1, '3.4')"_s);
    db().Execute(u"alter table db_version alter COLUMN id text(50)"_s);
    db().Execute(u"update db_version set id='DB.Version' where id='1'"_s);
    db().Execute(u"insert into db_version (id,version) values ('DB.SubVersion' , '0')"_s);
    const TableDef found = tables().Item(u"db_version"_s);
    EXPECT_EQ(found.Fields[0].Type, FieldType::Text);
    EXPECT_EQ(found.Fields[0].Size, 50);
    ASSERT_EQ(found.Indexes.size(), 1U);
    EXPECT_TRUE(found.Indexes[0].Primary);
    EXPECT_EQ(rowsOf(db(), u"select * from db_version order by id desc"_s),
              (QStringList{u"DB.Version|3.4"_s, u"DB.SubVersion|0"_s}));
    EXPECT_EQ(errorOf([&] { db().Execute(u"insert into db_version values ('db.version','x')"_s); }),
              dberror::kDuplicateKey);
}

TEST_F(EngineCatalogue, AlterColumnThatDoesNotFitChangesNothing)
{
    tables().Append(table(u"t"_s, {textField(u"a"_s, 50)}));
    db().Execute(u"insert into t values ('no number')"_s);
    EXPECT_EQ(errorOf([&] { db().Execute(u"alter table t alter column a long"_s); }),
              dberror::kTypeMismatch);
    EXPECT_EQ(errorOf([&] { db().Execute(u"alter table t alter column a text(3)"_s); }),
              dberror::kFieldTooSmall);
    EXPECT_EQ(tables().Item(u"t"_s).Fields[0].Size, 50);
    EXPECT_EQ(rowsOf(db(), u"t"_s), QStringList{u"no number"_s});
}

TEST_F(EngineCatalogue, AlterKeepsAutoNumbersAndWhatTheyAlreadyGave)
{
    tables().Append(keyedTable(u"t"_s, {autoNumber(u"id"_s), textField(u"a"_s, 5)}));
    for (int i = 0; i < 3; ++i) {
        db().Execute(u"insert into t (a) values ('x')"_s);
    }
    db().Execute(u"delete from t where id<>2"_s);
    db().Execute(u"alter table t add column b yesno"_s);
    db().Execute(u"insert into t (a) values ('new')"_s);
    EXPECT_EQ(rowsOf(db(), u"select id, a, b from t order by id"_s),
              (QStringList{u"2|x|0"_s, u"4|new|0"_s}));
}

TEST_F(EngineCatalogue, OpenSetsSurviveAnAlter)
{
    tables().Append(table(u"t"_s, {textField(u"a"_s, 50)}));
    db().Execute(u"insert into t values ('row')"_s);
    const auto set = db().OpenRecordset(u"t"_s);
    db().Execute(u"alter table t alter column a text(60)"_s);
    set->Edit();
    set->setValue(u"a", u"same row"_s);
    set->Update();
    EXPECT_EQ(rowsOf(db(), u"t"_s), QStringList{u"same row"_s});
}

TEST_F(EngineCatalogue, ColumnsAndIndexesCanBeAddedAndDropped)
{
    db().Execute(u"create table t (a text(10), b long)"_s);
    db().Execute(u"create unique index only on t (a)"_s);
    EXPECT_EQ(tables().Item(u"t"_s).Indexes.size(), 1U);
    db().Execute(u"insert into t values ('x', 1)"_s);
    EXPECT_EQ(errorOf([&] { db().Execute(u"insert into t values ('X', 2)"_s); }),
              dberror::kDuplicateKey);
    EXPECT_NE(errorOf([&] { db().Execute(u"alter table t drop column a"_s); }), 0);
    db().Execute(u"drop index only on t"_s);
    db().Execute(u"insert into t values ('X', 2)"_s);
    db().Execute(u"alter table t drop column a"_s);
    EXPECT_EQ(rowsOf(db(), u"select * from t order by b"_s), (QStringList{u"1"_s, u"2"_s}));
    EXPECT_EQ(errorOf([&] { db().Execute(u"alter table t drop column a"_s); }),
              dberror::kItemNotFound);
    db().Execute(u"drop table t"_s);
    EXPECT_FALSE(tables().Contains(u"t"_s));
}

TEST_F(EngineCatalogue, SystemTablesAreHidden)
{
    EXPECT_TRUE(tables().All().empty());
    EXPECT_EQ(errorOf([&] { (void)db().OpenRecordset(u"mlv_object"_s); }),
              dberror::kObjectNotFound);
    EXPECT_EQ(errorOf([&] { db().Execute(u"delete from sqlite_sequence"_s); }),
              dberror::kObjectNotFound);
}

class EngineQueries : public EngineTest
{
protected:
    EngineQueries() { makeSuite(); }
};

TEST_F(EngineQueries, QueriesKeepTheirNameTextAndKind)
{
    db().CreateQueryDef(u"del"_s, u"delete from todo where id=1"_s);
    db().CreateQueryDef(u"ins"_s, u"insert into todo (id) values (1)"_s);
    db().CreateQueryDef(u"upd"_s, u"update todo set id=2"_s);
    db().CreateQueryDef(u"later"_s, u"insert into not_yet (id) values (1)"_s);
    db().CreateQueryDef(u"made"_s, u"select * into copy from not_yet"_s);
    db().CreateQueryDef(u"both"_s, u"select id from not_yet union select id from todo"_s);
    const auto other = sibling();
    EXPECT_EQ(other->queryDefs().Names(),
              (QStringList{u"VPL_ALL"_s, u"VDB_ALL"_s, u"QU_FindFile"_s, u"del"_s, u"ins"_s,
                           u"upd"_s, u"later"_s, u"made"_s, u"both"_s}));
    EXPECT_EQ(other->queryDefs().Item(u"vpl_all"_s)->SQL(), vplAllText());
    EXPECT_EQ(other->queryDefs().Item(u"vpl_all"_s)->Name(), u"VPL_ALL"_s);
    EXPECT_EQ(other->queryDefs().Item(u"vpl_all"_s)->Type(), QueryType::Select);
    EXPECT_EQ(other->queryDefs().Item(u"del"_s)->Type(), QueryType::Delete);
    EXPECT_EQ(other->queryDefs().Item(u"ins"_s)->Type(), QueryType::Append);
    EXPECT_EQ(other->queryDefs().Item(u"upd"_s)->Type(), QueryType::Update);
    EXPECT_EQ(other->queryDefs().Item(u"later"_s)->Type(), QueryType::Append);
    EXPECT_EQ(other->queryDefs().Item(u"made"_s)->Type(), QueryType::MakeTable);
    EXPECT_EQ(other->queryDefs().Item(u"both"_s)->Type(), QueryType::SetOperation);
}

TEST_F(EngineQueries, ParametersAreSetByNameAndKept)
{
    db().Execute(
        u"insert into db_all (FID, Path, DName, Titel) values ('1','/m/','it''s.mp3','T')"_s);
    const auto query = db().queryDefs().Item(u"qu_findfile"_s);
    ASSERT_EQ(query->Parameters().size(), 2U);
    EXPECT_EQ(query->Parameters()[0].Name, u"sPath"_s);
    EXPECT_EQ(errorOf([&] { (void)query->OpenRecordset(); }), dberror::kTooFewParameters);
    query->SetParameter(u"SPATH"_s, u"/m/"_s);
    query->SetParameter(u"sDName"_s, u"it's.mp3"_s);
    EXPECT_EQ(rowsOf(*query->OpenRecordset()), QStringList{u"1|null|T"_s});
    query->SetParameter(u"sDName"_s, u"other"_s);
    EXPECT_TRUE(query->OpenRecordset()->Eof());
    EXPECT_EQ(errorOf([&] { query->SetParameter(u"nosuch"_s, 1); }), dberror::kItemNotFound);
    EXPECT_EQ(query->Fields().size(), 3U);
    EXPECT_EQ(query->Fields()[2].Name, u"Titel"_s);
}

TEST_F(EngineQueries, ASetOfAParameterQueryCanBeRequeriedAndEdited)
{
    db().Execute(u"insert into db_all (FID, Path, DName) values ('1','p','d')"_s);
    const auto query = db().queryDefs().Item(u"QU_FindFile"_s);
    query->SetParameter(u"sPath"_s, u"P"_s);
    query->SetParameter(u"sDName"_s, u"D"_s);
    const auto set = query->OpenRecordset();
    set->Edit();
    set->setValue(u"Titel", u"edited"_s);
    set->Update();
    set->Requery();
    EXPECT_EQ(set->value(u"Titel").toText(), u"edited"_s);
}

TEST_F(EngineQueries, AnActionQueryRunsByNameAndByItself)
{
    db().CreateQueryDef(u"fill"_s, u"insert into todo (id, fid) values (5, 'x')"_s);
    db().Execute(u"FILL"_s);
    EXPECT_EQ(db().RecordsAffected(), 1);
    const auto query = db().queryDefs().Item(u"fill"_s);
    query->Execute();
    EXPECT_EQ(query->RecordsAffected(), 1);
    EXPECT_EQ(rowsOf(db(), u"select * from todo"_s), (QStringList{u"5|x"_s, u"5|x"_s}));
    query->Close();
    EXPECT_EQ(errorOf([&] { query->Execute(); }), dberror::kObjectClosed);
}

TEST_F(EngineQueries, AQueryWithoutANameIsNotStored)
{
    const auto query =
        db().CreateQueryDef({}, u"select count(*) as n from todo where id=[which]"_s);
    query->SetParameter(u"which"_s, 5);
    EXPECT_EQ(rowsOf(*query->OpenRecordset()), QStringList{u"0"_s});
    EXPECT_EQ(db().queryDefs().Names().size(), 3);
}

TEST_F(EngineQueries, AChangedQueryIsSeenInTheNextStatement)
{
    db().CreateQueryDef(u"q"_s, u"select id from todo"_s);
    const auto other = sibling();
    EXPECT_EQ(other->OpenRecordset(u"q"_s)->fieldCount(), 1);
    db().queryDefs().Delete(u"q"_s);
    db().CreateQueryDef(u"q"_s, u"select id, fid from todo"_s);
    EXPECT_EQ(other->OpenRecordset(u"q"_s)->fieldCount(), 2);
}

TEST_F(EngineQueries, AQueryThatIsNoStatementIsRefused)
{
    EXPECT_EQ(errorOf([&] { db().CreateQueryDef(u"q"_s, u"selekt x"_s); }), dberror::kSyntax);
    EXPECT_FALSE(db().queryDefs().Contains(u"q"_s));
}

} // namespace
} // namespace melovane::test
