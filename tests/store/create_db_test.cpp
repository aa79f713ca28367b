#include "store/create_db.h"
#include "support/suite_fixture.h"

using namespace Qt::Literals::StringLiterals;
using namespace melovane;

namespace {

class CreateDb : public test::SuiteFixture
{
protected:
    CreateDb()
    {
        m_creator.targetFile = target();
        m_creator.sourceFile = suite.dbName();
    }

    [[nodiscard]] QString target() const { return suite.file(u"copy.mdb"_s); }

    [[nodiscard]] std::unique_ptr<Database> openTarget() const
    {
        return suite.engine->OpenDatabase(target());
    }

    MLVCreateDB m_creator{*suite.engine, suite.files};
};

} // namespace

TEST_F(CreateDb, CreateDBReplacesAnExistingFileByAnEmptyDatabase)
{
    suite.write(u"copy.mdb"_s, "rubbish");
    suite.write(u"copy.mdb-wal"_s, "rubbish");
    m_creator.CreateDB();
    EXPECT_TRUE(openTarget()->tableDefs().All().empty());
}

TEST_F(CreateDb, CreateDBWhereNoFileCanBeSaysSo)
{
    m_creator.targetFile = suite.file(u"missing/folder/x.mdb"_s);
    EXPECT_THROW(m_creator.CreateDB(), DbError);
}

TEST_F(CreateDb, ClonTableStruktCopiesColumnsDefaultsAndIndexesButNoRows)
{
    suite.library.add();
    m_creator.CreateDB();
    m_creator.ClonTableStrukt(u"db_all"_s, u"Kopie"_s);
    const auto database = openTarget();
    const TableDef copy = database->tableDefs().Item(u"Kopie"_s);
    const TableDef original = suite.open()->tableDefs().Item(u"db_all"_s);
    ASSERT_EQ(copy.Fields.size(), original.Fields.size());
    for (size_t i = 0; i < copy.Fields.size(); ++i) {
        EXPECT_EQ(copy.Fields[i].Name, original.Fields[i].Name);
        EXPECT_EQ(copy.Fields[i].Type, original.Fields[i].Type);
        EXPECT_EQ(copy.Fields[i].Size, original.Fields[i].Size);
        EXPECT_EQ(copy.Fields[i].Attributes, original.Fields[i].Attributes);
        EXPECT_EQ(copy.Fields[i].DefaultValue, original.Fields[i].DefaultValue);
        if (copy.Fields[i].Type == FieldType::Text) {
            EXPECT_TRUE(copy.Fields[i].AllowZeroLength);
        }
    }
    ASSERT_EQ(copy.Indexes.size(), original.Indexes.size());
    for (size_t i = 0; i < copy.Indexes.size(); ++i) {
        EXPECT_EQ(copy.Indexes[i].Name, original.Indexes[i].Name);
        EXPECT_EQ(copy.Indexes[i].Fields, original.Indexes[i].Fields);
        EXPECT_EQ(copy.Indexes[i].Primary, original.Indexes[i].Primary);
        EXPECT_EQ(copy.Indexes[i].Unique, original.Indexes[i].Unique);
    }
    EXPECT_TRUE(database->OpenRecordset(u"Kopie"_s)->Eof());
}

TEST_F(CreateDb, ClonTableStruktWithoutANewNameKeepsTheName)
{
    m_creator.CreateDB();
    m_creator.ClonTableStrukt(u"X_TEMP_PL_UNDO"_s);
    EXPECT_TRUE(openTarget()->tableDefs().Contains(u"x_temp_pl_undo"_s));
}

TEST_F(CreateDb, ALinkIsNotCloned)
{
    m_creator.CreateDB();
    m_creator.ClonTableStrukt(u"TREE_DIR"_s);
    EXPECT_FALSE(openTarget()->tableDefs().Contains(u"TREE_DIR"_s));
}

TEST_F(CreateDb, ClonTableStruktOfAMissingTemplateThrows)
{
    m_creator.CreateDB();
    EXPECT_THROW(m_creator.ClonTableStrukt(u"X_NOTHING"_s, u"a"_s), DbError);
}

TEST_F(CreateDb, ClonDBStrukturCopiesPlainTablesAndAllQueriesButUpdates)
{
    suite.open()->CreateQueryDef(u"QU_Update"_s, u"update pl_name set anzahl=0"_s)->Close();
    m_creator.CreateDB();
    m_creator.ClonDBStruktur();
    const auto source = suite.open();
    const auto copy = openTarget();
    for (const TableDef& table : source->tableDefs().All()) {
        EXPECT_EQ(copy->tableDefs().Contains(table.Name), table.Attributes == 0)
            << table.Name.toStdString();
    }
    for (const QString& name : source->queryDefs().Names()) {
        EXPECT_EQ(copy->queryDefs().Contains(name), name != u"QU_Update"_s) << name.toStdString();
    }
    EXPECT_EQ(copy->queryDefs().Item(u"VPL_ALL"_s)->SQL(),
              source->queryDefs().Item(u"VPL_ALL"_s)->SQL());
    EXPECT_TRUE(copy->OpenRecordset(u"genre"_s)->Eof());
}

TEST_F(CreateDb, ClonQuerydefCopiesOneQuery)
{
    m_creator.CreateDB();
    m_creator.ClonTableStrukt(u"genre"_s);
    m_creator.ClonQuerydef(u"vdb_genre"_s);
    EXPECT_EQ(openTarget()->queryDefs().Names().size(), 1);
}

TEST_F(CreateDb, CreateQuerydefReplacesAQueryOfThatName)
{
    m_creator.targetFile = suite.dbName();
    m_creator.CreateQuerydef(u"vdb_genre"_s, u"SELECT Name FROM genre WHERE Genre_ID=17"_s);
    EXPECT_EQ(suite.column(u"VDB_GENRE"_s), QStringList{u"Rock"_s});
}

TEST_F(CreateDb, LinkTableReachesTheTableOfTheSource)
{
    suite.library.add({.Titel = u"Durch den Link"_s});
    m_creator.CreateDB();
    m_creator.LinkTable(u"db_all"_s);
    const auto database = openTarget();
    const TableDef link = database->tableDefs().Item(u"db_all"_s);
    EXPECT_EQ(link.Connect.toUpper(), u";DATABASE="_s + suite.dbName().toUpper());
    EXPECT_EQ(link.SourceTableName, u"db_all"_s);
    EXPECT_NE(link.Attributes, 0);
    EXPECT_EQ(database->OpenRecordset(u"select Titel from db_all"_s)->value(0).toText(),
              u"Durch den Link"_s);
}

TEST_F(CreateDb, LinkTableReplacesATableOfThatName)
{
    m_creator.CreateDB();
    m_creator.ClonTableStrukt(u"genre"_s);
    m_creator.LinkTable(u"genre"_s, u"no effect"_s);
    EXPECT_TRUE(openTarget()->tableDefs().Item(u"genre"_s).isLink());
}
