#include "refresh_fixture.h"
#include "trees/rebuild_trees.h"

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;
using Scope = RebuildTrees::Scope;

class RebuildTreesTest : public RefreshDbTest
{
protected:
    RebuildTreesTest()
    {
        suite.library.add({.Interpret = u"Anna"_s,
                           .Album = u"Eins"_s,
                           .Genre = u"Pop"_s,
                           .Path = u"/m/"_s,
                           .Stimmung = u"ganz eigen"_s});
    }

    void note(const QString& tree) const
    {
        suite.execute(u"insert into ChangeTree ( TreeName ) values ( '%1' )"_s.arg(tree));
    }

    [[nodiscard]] QStringList notes() const
    {
        return suite.column(u"select TreeName from ChangeTree order by TreeName"_s);
    }

    RebuildTrees job{{.engine = engine,
                      .files = suite.files,
                      .clock = suite.clock,
                      .dataFolder = suite.dataFolder()},
                     suite.dbName()};
};

TEST_F(RebuildTreesTest, AllRebuildsEveryTreeThenTheCountsAndTheTypedValues)
{
    note(u"Album"_s);
    const RebuildTrees::Result result = job.run(Scope::All);
    EXPECT_EQ(result.failures, QStringList());
    EXPECT_EQ(result.rebuilt.join(u' '),
              u"Dir Genre Album Interpret Situation Stimmung Tempo Kategorie User1 User2 User3 "
              u"User4 User5 ImportDate PlnameCount MusicMatch"_s);
    for (const auto& table :
         {u"tree_dir"_s, u"tree_genre"_s, u"tree_genre_interpret"_s, u"tree_album"_s,
          u"tree_interpret"_s, u"tree_stimmung"_s, u"tree_importdate"_s}) {
        EXPECT_FALSE(rows(u"select id from "_s + table).isEmpty()) << table.toStdString();
    }
    EXPECT_EQ(suite.column(u"select Beschreibung from config where [Value]='User'"_s),
              QStringList{u"ganz eigen"_s});
    EXPECT_EQ(notes(), QStringList());
}

TEST_F(RebuildTreesTest, ChangedRebuildsTheNotedTreesAloneAndClearsTheirNotes)
{
    note(u"Album"_s);
    note(u"Dir"_s);
    note(u"Something else"_s);
    EXPECT_EQ(job.run(Scope::Changed).rebuilt, (QStringList{u"Dir"_s, u"Album"_s}));
    EXPECT_EQ(notes(), QStringList{u"Something else"_s});
    EXPECT_EQ(rows(u"select Name from tree_album"_s), QStringList{u"Eins"_s});
    EXPECT_EQ(rows(u"select Name from tree_genre"_s), QStringList());
}

TEST_F(RebuildTreesTest, NothingIsDoneWhenNothingIsOutOfDate)
{
    EXPECT_EQ(job.run(Scope::Changed).rebuilt, QStringList());
    EXPECT_EQ(rows(u"select Name from tree_album"_s), QStringList());
}

TEST_F(RebuildTreesTest, OneTreeIsRebuiltWithoutANote)
{
    note(u"Genre"_s);
    EXPECT_EQ(job.runOne(u"genre"_s).rebuilt, QStringList{u"Genre"_s});
    EXPECT_EQ(notes(), QStringList());
    EXPECT_EQ(job.runOne(u"Titel"_s).rebuilt, QStringList());
}

TEST_F(RebuildTreesTest, AnEditWhileATreeIsCountedKeepsItsNote)
{
    note(u"Album"_s);
    const auto console = suite.open();
    engine.statements.before = [&](const QString& statement) {
        if (statement.startsWith(u"delete from tree_album"_s)) {
            console->Execute(u"update db_all set Album='Zwei'"_s);
        }
    };
    EXPECT_EQ(job.run(Scope::Changed).rebuilt, QStringList{u"Album"_s});
    EXPECT_EQ(notes(), QStringList{u"Album"_s});
    engine.statements.before = {};
    EXPECT_EQ(job.run(Scope::Changed).rebuilt, QStringList{u"Album"_s});
    EXPECT_EQ(rows(u"select Name from tree_album"_s), QStringList{u"Zwei"_s});
    EXPECT_EQ(notes(), QStringList());
}

TEST_F(RebuildTreesTest, ATreeThatFailsKeepsItsNoteAndTheOthersGoOn)
{
    note(u"Album"_s);
    note(u"Interpret"_s);
    engine.statements.before = [](const QString& statement) {
        if (statement == u"select Album from db_all where DEL = False"_s) {
            throw DbError(dberror::kDiskError, u"broken"_s);
        }
    };
    const RebuildTrees::Result result = job.run(Scope::Changed);
    EXPECT_EQ(result.rebuilt, QStringList{u"Interpret"_s});
    EXPECT_EQ(result.failures, QStringList{u"broken"_s});
    EXPECT_EQ(notes(), QStringList{u"Album"_s});
}

TEST_F(RebuildTreesTest, AMissingSideFileIsMadeAnewAndEverythingFilled)
{
    suite.engine->Release(suite.dbName());
    suite.files.remove(suite.file(u"melovane.tree.mdb"_s));
    const RebuildTrees::Result result = job.run(Scope::Changed);
    EXPECT_EQ(result.failures, QStringList());
    EXPECT_EQ(result.rebuilt.size(), 16);
    EXPECT_EQ(rows(u"select Name from tree_album"_s), QStringList{u"Eins"_s});
}

TEST_F(RebuildTreesTest, ADamagedSideFileIsKeptAsideMadeAnewAndFilled)
{
    suite.engine->Release(suite.dbName());
    for (const auto& journal : {u"melovane.tree.mdb-wal"_s, u"melovane.tree.mdb-shm"_s}) {
        suite.files.remove(suite.file(journal));
    }
    suite.write(u"melovane.tree.mdb"_s, QByteArray(8192, 'x'));
    EXPECT_EQ(job.run(Scope::Changed).failures, QStringList());
    EXPECT_EQ(rows(u"select Name from tree_album"_s), QStringList{u"Eins"_s});
}

TEST_F(RebuildTreesTest, AMissingTableIsMadeAnewAndTheFavouritesOfTheOthersStay)
{
    EXPECT_EQ(job.run(Scope::All).failures, QStringList());
    favour(u"tree_interpret"_s, u"name='Anna'"_s);
    suite.engine->Release(suite.dbName());
    suite.engine->OpenDatabase(suite.file(u"melovane.tree.mdb"_s))
        ->tableDefs()
        .Delete(u"TREE_ALBUM"_s);
    const RebuildTrees::Result result = job.run(Scope::Changed);
    EXPECT_EQ(result.failures, QStringList());
    EXPECT_EQ(rows(u"select Name from tree_album"_s), QStringList{u"Eins"_s});
    EXPECT_EQ(rows(u"select Name, favorit from tree_interpret"_s), QStringList{u"Anna|-1"_s});
}

TEST_F(RebuildTreesTest, AMissingLinkIsMadeAnewAndTheFavouritesBehindItStay)
{
    EXPECT_EQ(job.run(Scope::All).failures, QStringList());
    favour(u"tree_interpret"_s, u"name='Anna'"_s);
    suite.open()->tableDefs().Delete(u"TREE_INTERPRET"_s);
    EXPECT_EQ(job.run(Scope::Changed).failures, QStringList());
    EXPECT_EQ(rows(u"select Name, favorit from tree_interpret"_s), QStringList{u"Anna|-1"_s});
}

TEST_F(RebuildTreesTest, AMissingLibraryIsAFailureAndNothingIsMade)
{
    RebuildTrees lost({.engine = engine,
                       .files = suite.files,
                       .clock = suite.clock,
                       .dataFolder = suite.dataFolder()},
                      suite.file(u"fehlt.mdb"_s));
    const RebuildTrees::Result result = lost.run(Scope::All);
    EXPECT_EQ(result.rebuilt, QStringList());
    EXPECT_EQ(result.failures.size(), 1);
    EXPECT_FALSE(suite.files.fileExists(suite.file(u"fehlt.mdb"_s)));
}

TEST_F(RebuildTreesTest, AReleasedLibraryIsNotTouched)
{
    suite.engine->GiveAway(suite.dbName());
    EXPECT_EQ(job.run(Scope::All).rebuilt, QStringList());
    suite.engine->TakeBack(suite.dbName());
    EXPECT_EQ(rows(u"select Name from tree_album"_s), QStringList());
}

} // namespace
} // namespace melovane
