#include "care/library_check.h"
#include "platform/sqlite/engine/database_care.h"
#include "playlists/history_file.h"
#include "support/suite_fixture.h"

#include <QFile>

using namespace Qt::Literals::StringLiterals;
using namespace melovane;
using Depth = DatabaseCare::Depth;

namespace {

class Checked : public test::SuiteFixture
{
protected:
    Checked()
    {
        for (int i = 0; i < 40; ++i) {
            tracks.append(suite.library.add({.Titel = u"Titel %1"_s.arg(i)}));
        }
        group = suite.value(u"select max(GRID) from pl_group"_s).toLong();
        list = suite.library.addPlaylist({.Name = u"Abend"_s, .tracks = tracks});
        suite.execute(u"update pl_name set anzahl=40"_s);
    }

    [[nodiscard]] LibraryCheck check(const QHash<Pnid, QString>& files = {})
    {
        return LibraryCheck({*suite.engine, *care, suite.files, suite.clock},
                            {.library = suite.dbName(),
                             .dataFolder = suite.dataFolder(),
                             .listFiles = files,
                             .restName = u"Wiedergefunden"_s});
    }

    [[nodiscard]] std::vector<Finding> found(const QHash<Pnid, QString>& files = {})
    {
        return check(files).run(Depth::Indexes, [](qint64, qint64) { return true; }).value();
    }

    /// Mends, and says what is found then.
    [[nodiscard]] std::vector<Finding> mended(const QHash<Pnid, QString>& files = {})
    {
        treesAreNew = check(files).repair(found(files));
        return found(files);
    }

    void damage(const QString& name, qint64 at, const QByteArray& bytes) const
    {
        suite.engine->Release(suite.dbName());
        suite.engine->Release(name);
        QFile file(name);
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        file.seek(at);
        file.write(bytes);
    }

    std::unique_ptr<DatabaseCare> care = sqlite::makeDatabaseCare(suite.clock);
    QStringList tracks;
    int group = 0;
    int list = 0;
    bool treesAreNew = false;
};

using Findings = std::vector<Finding>;

} // namespace

TEST_F(Checked, AWholeLibraryHasNoFindings)
{
    EXPECT_EQ(found(), Findings());
}

TEST_F(Checked, ATableThatHasLostItsRowsIsTold)
{
    suite.execute(u"delete from genre"_s);
    EXPECT_EQ(found(), (Findings{{Flaw::TableLost, u"genre"_s}}));
}

TEST_F(Checked, ATemplateThatHasRowsIsToldAndEmptied)
{
    suite.execute(u"insert into X_TEMP_PLImportM3U (FID) values ('800000000001')"_s);
    EXPECT_EQ(found(), (Findings{{Flaw::TemplateFilled, u"X_TEMP_PLImportM3U"_s}}));
    EXPECT_EQ(mended(), Findings());
    EXPECT_EQ(suite.value(u"select count(*) from X_TEMP_PLImportM3U"_s).toLong(), 0);
}

TEST_F(Checked, ACountThatIsWrongIsNamedAndMended)
{
    suite.execute(u"update pl_name set anzahl=7"_s);
    EXPECT_EQ(found(), (Findings{{Flaw::CountWrong, u"Abend"_s}}));
    EXPECT_EQ(mended(), Findings());
    EXPECT_EQ(suite.value(u"select anzahl from pl_name"_s).toLong(), 40);
}

TEST_F(Checked, AListThatSaysItHasNoneIsMendedToo)
{
    suite.execute(u"delete from pl_all"_s);
    EXPECT_EQ(found(), (Findings{{Flaw::CountWrong, u"Abend"_s}}));
    EXPECT_EQ(mended(), Findings());
    EXPECT_EQ(suite.value(u"select anzahl from pl_name"_s).toLong(), 0);
}

TEST_F(Checked, EntriesAndPlaysOfTracksThatAreGoneAreCountedAndLeft)
{
    suite.execute(u"insert into pl_stat (FID) values ('"_s + tracks.at(3) + u"')"_s);
    suite.execute(u"delete from db_all where FID='"_s + tracks.at(3) + u"'"_s);
    const Findings expected{{Flaw::EntryWithoutTrack, u"1"_s}, {Flaw::PlayWithoutTrack, u"1"_s}};
    EXPECT_EQ(found(), expected);
    EXPECT_EQ(mended(), expected) << "the cleaning takes them away, when the user wants it";
    EXPECT_EQ(suite.value(u"select count(*) from pl_all"_s).toLong(), 40);
}

TEST_F(Checked, EntriesOfAListThatIsGoneComeBackInAListOfTheirOwn)
{
    suite.execute(u"delete from pl_name"_s);
    EXPECT_EQ(found(), (Findings{{Flaw::EntryWithoutList, u"40"_s}}));
    EXPECT_EQ(mended(), Findings());
    EXPECT_EQ(suite.value(u"select Name from pl_name"_s).toText(),
              u"Wiedergefunden %1"_s.arg(list));
    EXPECT_EQ(suite
                  .value(u"select pl_group.Name from pl_group, pl_name "
                         "where pl_group.GRID=pl_name.GRID"_s)
                  .toText(),
              u"Wiedergefunden"_s);
}

TEST_F(Checked, AListWhoseGroupIsGoneIsShownAgain)
{
    suite.execute(u"delete from pl_group"_s);
    EXPECT_EQ(found(), (Findings{{Flaw::ListWithoutGroup, u"Abend"_s}}));
    EXPECT_EQ(mended(), Findings());
    EXPECT_EQ(suite.value(u"select count(*) from pl_all"_s).toLong(), 40);
}

TEST_F(Checked, JinglesNeedNoGroup)
{
    suite.execute(u"update pl_name set GRID=-1"_s);
    EXPECT_EQ(found(), Findings());
}

TEST_F(Checked, ATrackWithoutAnIdentifierIsTold)
{
    suite.execute(u"insert into db_all (FID,Titel) values ('abc','kurz')"_s);
    EXPECT_EQ(found(), (Findings{{Flaw::TrackWithoutId, u"1"_s}}));
}

TEST_F(Checked, AMissingSideFileIsMadeAgain)
{
    suite.engine->Release(suite.dbName());
    const QString file = suite.file(kTreeFile.toString());
    ASSERT_TRUE(suite.files.remove(file));
    EXPECT_EQ(found(), (Findings{{Flaw::SideFileMissing, file}}));
    EXPECT_EQ(mended(), Findings());
    EXPECT_TRUE(treesAreNew);
}

TEST_F(Checked, ADamagedSideFileIsKeptAndMadeAgain)
{
    const QString file = suite.file(kTempFile.toString());
    damage(file, 0, QByteArray(4096, 'x'));
    EXPECT_EQ(found(), (Findings{{Flaw::SideFileDamaged, file}}));
    EXPECT_EQ(mended(), Findings());
    EXPECT_TRUE(suite.files.fileExists(file + u".damaged"_s));
    EXPECT_FALSE(treesAreNew);
}

TEST_F(Checked, ADamagedHistoryIsTold)
{
    const QString file = historyFileOf(suite.dbName());
    suite.files.writeWhole(file, QByteArray(4096, 'x'));
    EXPECT_EQ(found(), (Findings{{Flaw::HistoryDamaged, file}}));
}

TEST_F(Checked, ALibraryThatIsNoneIsUnreadable)
{
    damage(suite.dbName(), 0, QByteArray(100, 'x'));
    const Findings findings = found();
    ASSERT_FALSE(findings.empty());
    EXPECT_EQ(findings.front().flaw, Flaw::Unreadable);
    EXPECT_FALSE(findings.front().what.isEmpty());
}

TEST_F(Checked, NothingIsWrittenIntoALibraryWhosePagesAreDamaged)
{
    suite.execute(u"update pl_name set anzahl=7"_s);
    EXPECT_FALSE(check().repair({{Flaw::PageDamaged, u"page 7"_s}, {Flaw::CountWrong, {}}}));
    EXPECT_EQ(suite.value(u"select anzahl from pl_name"_s).toLong(), 7);
}

TEST_F(Checked, TheFileOfAListThatIsGoneIsWrittenAgain)
{
    suite.execute(u"update pl_name set sicherung=false"_s);
    const QHash<Pnid, QString> files{{Pnid(list), suite.file(u"Abend.m3u"_s)}};
    EXPECT_EQ(found(files), (Findings{{Flaw::ListFileMissing, suite.file(u"Abend.m3u"_s)}}));
    EXPECT_EQ(mended(files), Findings());
    EXPECT_TRUE(suite.value(u"select sicherung from pl_name"_s).toBool());
}

TEST_F(Checked, NotesThatNoJobCanFollowAreToldAndRemovedAndTheOthersStay)
{
    for (const QString& job :
         {u"db_edit (FID) values ('%1')"_s.arg(tracks.first()),
          u"db_edit (FID) values ('000000000000')"_s, u"db_edit (FID) values (null)"_s,
          u"ChangeTree (TreeName) values ('Album')"_s, u"ChangeTree (TreeName) values ('User5')"_s,
          u"ChangeTree (TreeName) values ('Alcum')"_s, u"todo (ID, FID) values (101, 'a text')"_s,
          u"todo (ID, FID) values (null, 'nobody')"_s}) {
        suite.execute(u"insert into "_s + job);
    }
    EXPECT_EQ(found(), (Findings{{Flaw::JobUnknown, u"5"_s}}));
    EXPECT_EQ(mended(), Findings());
    EXPECT_EQ(suite.column(u"select FID from db_edit"_s), QStringList{tracks.first()});
    EXPECT_EQ(suite.column(u"select TreeName from ChangeTree"_s), QStringList{u"Album"_s});
    EXPECT_EQ(suite.column(u"select FID from todo"_s), QStringList{u"a text"_s});
}

TEST_F(Checked, AListWhoseFileStandsIsNotWrittenAgain)
{
    suite.execute(u"update pl_name set sicherung=false, anzahl=3"_s);
    const QHash<Pnid, QString> files{{Pnid(list), suite.write(u"Abend.m3u"_s, "#EXTM3U\n")}};
    EXPECT_EQ(mended(files), Findings());
    EXPECT_FALSE(suite.value(u"select sicherung from pl_name"_s).toBool());
}

TEST_F(Checked, ACheckThatIsGivenUpFindsNothing)
{
    EXPECT_EQ(check().run(Depth::Pages, [](qint64, qint64) { return false; }), std::nullopt);
}
