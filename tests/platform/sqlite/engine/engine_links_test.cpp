#include "platform/db/sql_text.h"
#include "platform/sqlite/engine/engine_fixture.h"
#include "support/open_files.h"

#include <QFile>

namespace melovane::test {
namespace {

/// A main file and a side file, linked as the bootstrap does it.
class EngineLinks : public EngineTest
{
protected:
    EngineLinks() { makeSuite(); }

    [[nodiscard]] QString sidePath() const { return path(u"side ä%20#?.mdb"_s); }

    void makeSide(const QString& file, const QString& row = {})
    {
        const auto side = m_siblingEngine->Workspaces(0).CreateDatabase(file, {});
        side->tableDefs().Append(
            table(u"TEMP_MP3Edit"_s, {textField(u"FID"_s, 12), field(u"PLID"_s, FieldType::Long)}));
        side->tableDefs().Append(
            keyedTable(u"TREE_DIR"_s, {autoNumber(u"id"_s), textField(u"Name"_s, 255),
                                       field(u"favorit"_s, FieldType::Boolean)}));
        if (!row.isEmpty()) {
            side->Execute(u"insert into TEMP_MP3Edit (FID) values (%1)"_s.arg(sql::text(row)));
        }
    }

    void linkBoth(const QString& file)
    {
        for (const auto& name : {u"TEMP_MP3Edit"_s, u"TREE_DIR"_s}) {
            if (db().tableDefs().Contains(name)) {
                db().tableDefs().Delete(name);
            }
            db().tableDefs().Append(link(name, file));
        }
    }

    int openError(const QString& name)
    {
        return errorOf([&] { (void)db().OpenRecordset(name); });
    }
};

TEST_F(EngineLinks, ALinkReadsAndWritesTheTableOfTheOtherFile)
{
    makeSide(sidePath());
    linkBoth(sidePath());
    db().Execute(u"insert into temp_mp3edit (fid, plid) values ('x', 3)"_s);
    const auto set = db().OpenRecordset(u"TEMP_MP3EDIT"_s);
    set->Edit();
    set->setValue(u"PLID", 4);
    set->Update();
    set->AddNew();
    set->setValue(u"FID", u"y"_s);
    set->Update();
    const auto side = m_siblingEngine->OpenDatabase(sidePath());
    EXPECT_EQ(rowsOf(*side, u"select * from TEMP_MP3Edit order by fid"_s),
              (QStringList{u"x|4"_s, u"y|null"_s}));
}

TEST_F(EngineLinks, AnAutoNumberOfALinkIsReadBack)
{
    makeSide(sidePath());
    linkBoth(sidePath());
    const auto set = db().OpenRecordset(u"tree_dir"_s);
    set->AddNew();
    set->setValue(u"Name", u"root"_s);
    set->Update();
    set->SetBookmark(set->LastModified());
    EXPECT_EQ(set->value(u"id").toLong(), 1);
    EXPECT_FALSE(set->value(u"favorit").toBool());
}

TEST_F(EngineLinks, ALinkIsDescribedByTheCatalogue)
{
    makeSide(sidePath());
    linkBoth(sidePath());
    const TableDef found = sibling()->tableDefs().Item(u"tree_dir"_s);
    EXPECT_EQ(found.Name, u"TREE_DIR"_s);
    EXPECT_EQ(found.Attributes, kTableLinked);
    EXPECT_EQ(found.SourceTableName, u"TREE_DIR"_s);
    EXPECT_EQ(found.Connect.toUpper(), (u";DATABASE="_s + sidePath()).toUpper());
    EXPECT_EQ(found.Fields.size(), 3U);
}

TEST_F(EngineLinks, ALinkIsToldWithoutOpeningItsFile)
{
    makeSide(sidePath());
    linkBoth(sidePath());
    m_siblingEngine->Release(sidePath());
    OpenWatch watch(m_folder.path());
    const auto database = sibling();
    EXPECT_EQ(database->tableDefs().connectOf(u"tree_dir"_s).toUpper(),
              (u";DATABASE="_s + sidePath()).toUpper());
    EXPECT_EQ(database->tableDefs().connectOf(u"genre"_s), QString());
    EXPECT_EQ(errorOf([&] { (void)database->tableDefs().connectOf(u"nothing"_s); }), 3265);
    EXPECT_EQ(database->tableDefs().ownNames().size(), 9);
    EXPECT_EQ(watch.opened().find("side"), std::string::npos);
}

TEST_F(EngineLinks, AFileThatNoLinkLeadsToAnyMoreIsLetGo)
{
    makeSide(sidePath(), u"old"_s);
    makeSide(path(u"other.mdb"_s), u"new"_s);
    linkBoth(sidePath());
    const QString statement = u"select fid from temp_mp3edit"_s;
    EXPECT_EQ(rowsOf(db(), statement), QStringList{u"old"_s});
    m_siblingEngine->Release(sidePath());
    m_siblingEngine->Release(path(u"other.mdb"_s));
    ASSERT_NE(openDatabasesIn(m_folder.path()).find("side"), std::string::npos);
    linkBoth(path(u"other.mdb"_s));
    EXPECT_EQ(rowsOf(db(), statement), QStringList{u"new"_s});
    EXPECT_EQ(openDatabasesIn(m_folder.path()).find("side"), std::string::npos);
}

TEST_F(EngineLinks, ALinkNeedsNoFileUntilItIsUsed)
{
    linkBoth(sidePath());
    EXPECT_EQ(openError(u"TREE_DIR"_s), 3024);
    EXPECT_FALSE(QFile::exists(sidePath())) << "a missing file is never created";
    EXPECT_EQ(db().tableDefs().Item(u"TREE_DIR"_s).Attributes, kTableLinked);
    EXPECT_EQ(db().tableDefs().All().size(), 11U);
    EXPECT_EQ(errorOf([&] { db().Execute(u"delete from tree_dir"_s); }), 3024);
    db().Execute(u"insert into genre values (1,'x')"_s);
}

TEST_F(EngineLinks, AMissingTableInTheLinkedFileIs3078)
{
    (void)m_siblingEngine->Workspaces(0).CreateDatabase(sidePath(), {});
    linkBoth(sidePath());
    EXPECT_EQ(openError(u"TREE_DIR"_s), 3078);
}

TEST_F(EngineLinks, ASideFileThatIsNoDatabaseIsTold)
{
    m_folder.write(u"side ä%20#?.mdb"_s, QByteArray(5000, 'x'));
    linkBoth(sidePath());
    EXPECT_EQ(openError(u"TREE_DIR"_s), dberror::kUnrecognisedFormat);
}

TEST_F(EngineLinks, ADeletedSideFileIsNoticedWhileItIsOpen)
{
    makeSide(sidePath(), u"old"_s);
    linkBoth(sidePath());
    EXPECT_EQ(rowsOf(db(), u"select fid from temp_mp3edit"_s), QStringList{u"old"_s});
    m_siblingEngine->Release(sidePath());
    ASSERT_TRUE(QFile::remove(sidePath()));
    EXPECT_EQ(openError(u"TEMP_MP3Edit"_s), 3024);
    EXPECT_EQ(errorOf([&] { db().Execute(u"insert into temp_mp3edit (fid) values ('1')"_s); }),
              3024);
}

TEST_F(EngineLinks, ARebuiltSideFileIsUsedAtTheNextStatement)
{
    makeSide(sidePath(), u"old"_s);
    linkBoth(sidePath());
    const QString statement = u"select fid from temp_mp3edit"_s;
    EXPECT_EQ(rowsOf(db(), statement), QStringList{u"old"_s});
    for (const auto& row : {u"new"_s, u"newer"_s}) {
        m_siblingEngine->Release(sidePath());
        ASSERT_TRUE(QFile::remove(sidePath()));
        makeSide(sidePath(), row);
        EXPECT_EQ(rowsOf(db(), statement), QStringList{row});
    }
    db().Execute(u"insert into temp_mp3edit (fid) values ('mine')"_s);
    EXPECT_EQ(cellOf(*m_siblingEngine->OpenDatabase(sidePath()),
                     u"select count(*) as n from temp_mp3edit where fid='mine'"_s)
                  .toLong(),
              1);
}

TEST_F(EngineLinks, ALinkThatWasMovedByAnotherConnectionIsFollowed)
{
    makeSide(path(u"one.mdb"_s), u"one"_s);
    makeSide(path(u"two.mdb"_s), u"two"_s);
    linkBoth(path(u"one.mdb"_s));
    const auto other = m_engine->OpenDatabase(path());
    EXPECT_EQ(rowsOf(*other, u"select fid from temp_mp3edit"_s), QStringList{u"one"_s});
    linkBoth(path(u"two.mdb"_s));
    EXPECT_EQ(rowsOf(*other, u"select fid from temp_mp3edit"_s), QStringList{u"two"_s});
    EXPECT_EQ(rowsOf(db(), u"select fid from temp_mp3edit"_s), QStringList{u"two"_s});
}

TEST_F(EngineLinks, DeletingALinkLeavesItsFile)
{
    makeSide(sidePath(), u"kept"_s);
    linkBoth(sidePath());
    EXPECT_EQ(rowsOf(db(), u"select fid from temp_mp3edit"_s), QStringList{u"kept"_s});
    db().tableDefs().Delete(u"TEMP_MP3Edit"_s);
    EXPECT_EQ(openError(u"TEMP_MP3Edit"_s), dberror::kObjectNotFound);
    const auto side = m_siblingEngine->OpenDatabase(sidePath());
    EXPECT_EQ(rowsOf(*side, u"select fid from temp_mp3edit"_s), QStringList{u"kept"_s});
}

TEST_F(EngineLinks, ATableOfALinkCannotBeAlteredHere)
{
    makeSide(sidePath());
    linkBoth(sidePath());
    EXPECT_EQ(errorOf([&] { db().Execute(u"alter table tree_dir add column x long"_s); }),
              dberror::kReadOnly);
}

TEST_F(EngineLinks, ALinkWithoutAPathIsRefused)
{
    TableDef bad = link(u"bad"_s, {});
    bad.Connect = u"ODBC;x"_s;
    EXPECT_EQ(errorOf([&] { db().tableDefs().Append(bad); }), dberror::kSyntax);
}

TEST_F(EngineLinks, StatementsJoinMainAndSideFiles)
{
    makeSide(sidePath(), u"000"_s);
    linkBoth(sidePath());
    addTrack(u"000"_s, u"Title"_s);
    addTrack(u"001"_s, u"Other"_s);
    EXPECT_EQ(
        rowsOf(db(), u"select d.titel from db_all as d, temp_mp3edit as t where d.fid=t.fid"_s),
        QStringList{u"Title"_s});
    db().Execute(u"insert into temp_mp3edit (fid, plid) select fid, -1 from db_all"_s);
    EXPECT_EQ(db().RecordsAffected(), 2);
    EXPECT_EQ(rowsOf(db(), u"select name from genre union select name from tree_dir"_s),
              QStringList());
}

TEST_F(EngineLinks, AnActionQueryFillsALinkedScratchTable)
{
    makeSide(sidePath());
    linkBoth(sidePath());
    db().CreateQueryDef(
        u"QU_IntersTempMp3Edit"_s,
        u"PARAMETERS INFID Text, INPLID Long; INSERT INTO TEMP_MP3Edit ( FID, PLID ) SELECT [INFID] AS a, [INPLID] AS b"_s);
    const auto query = db().queryDefs().Item(u"QU_IntersTempMp3Edit"_s);
    EXPECT_EQ(query->Type(), QueryType::Append);
    Transaction transaction(db());
    for (int i = 0; i < 3; ++i) {
        query->SetParameter(u"INFID"_s, QString::number(i));
        query->SetParameter(u"INPLID"_s, -1);
        query->Execute();
    }
    transaction.commit();
    EXPECT_EQ(rowsOf(db(), u"select * from temp_mp3edit order by fid"_s),
              (QStringList{u"0|-1"_s, u"1|-1"_s, u"2|-1"_s}));
}

TEST_F(EngineLinks, MoreSideFilesThanSQLiteHoldsAtOnceStillWork)
{
    for (int i = 0; i < 14; ++i) {
        const QString file = path(u"side%1.mdb"_s.arg(i));
        const auto side = m_siblingEngine->Workspaces(0).CreateDatabase(file, {});
        side->tableDefs().Append(table(u"t%1"_s.arg(i), {textField(u"a"_s, 5)}));
        side->Execute(u"insert into t%1 values ('%1')"_s.arg(i));
        db().tableDefs().Append(link(u"t%1"_s.arg(i), file));
    }
    for (int round = 0; round < 2; ++round) {
        for (int i = 0; i < 14; ++i) {
            EXPECT_EQ(rowsOf(db(), u"t%1"_s.arg(i)), QStringList{QString::number(i)});
        }
    }
}

TEST_F(EngineLinks, ALinkToTheOwnFileIsTheTableItself)
{
    db().tableDefs().Append([&] {
        TableDef own = link(u"own_genre"_s, path());
        own.SourceTableName = u"genre"_s;
        return own;
    }());
    db().Execute(u"insert into own_genre values (1, 'x')"_s);
    EXPECT_EQ(rowsOf(db(), u"genre"_s), QStringList{u"1|x"_s});
}

TEST_F(EngineLinks, DataVersionSeesChangesOfSideFiles)
{
    makeSide(sidePath(), u"x"_s);
    linkBoth(sidePath());
    EXPECT_EQ(rowsOf(db(), u"select fid from temp_mp3edit"_s).size(), 1);
    const qint64 before = db().DataVersion();
    m_siblingEngine->OpenDatabase(sidePath())->Execute(u"delete from TEMP_MP3Edit"_s);
    EXPECT_GT(db().DataVersion(), before);
}

TEST_F(EngineLinks, FileVersionSeesForeignChangesOfTheFileItselfAlone)
{
    makeSide(sidePath(), u"x"_s);
    linkBoth(sidePath());
    EXPECT_EQ(rowsOf(db(), u"select fid from temp_mp3edit"_s).size(), 1);
    const qint64 before = db().fileVersion();
    m_siblingEngine->OpenDatabase(sidePath())->Execute(u"delete from TEMP_MP3Edit"_s);
    db().Execute(u"insert into genre values (1, 'own')"_s);
    EXPECT_EQ(db().fileVersion(), before);
    sibling()->Execute(u"insert into genre values (2, 'foreign')"_s);
    EXPECT_NE(db().fileVersion(), before);
}

} // namespace
} // namespace melovane::test
