#include "platform/db/sql_text.h"
#include "support/suite_fixture.h"

using namespace Qt::Literals::StringLiterals;
using namespace melovane;

namespace {

/// A library of four tracks, two groups with playlists, a jingle list and some playbacks.
class StoredQueries : public test::SuiteFixture
{
protected:
    StoredQueries()
    {
        m_a = suite.library.add({.Titel = u"Alpha"_s,
                                 .Interpret = u"Ann"_s,
                                 .Genre = u"Rock"_s,
                                 .Path = u"/music/a/"_s,
                                 .DLen = 1000});
        m_b = suite.library.add({.Titel = u"Beta"_s,
                                 .Interpret = u"Bob"_s,
                                 .Genre = u"Pop"_s,
                                 .Path = u"/music/a/b/"_s,
                                 .DLen = 200});
        m_c = suite.library.add({.Titel = u"Gamma"_s,
                                 .Interpret = u"Ann"_s,
                                 .Genre = u"Rock"_s,
                                 .Path = u"E:\\m\\"_s,
                                 .DriveTyp = 4,
                                 .DriveName = u"Disc1"_s});
        m_deleted = suite.library.add({.Titel = u"Delta"_s, .Path = u"/music/a/"_s, .DEL = -1});
        m_late = suite.library.addGroup(u"Late"_s, 20);
        m_early = suite.library.addGroup(u"Early"_s, 10);
        m_empty = suite.library.addGroup(u"Empty"_s, 1000000);
        m_list = suite.library.addPlaylist({.Name = u"Second"_s,
                                            .GRID = m_early,
                                            .tracks = {m_b, m_a, m_b},
                                            .Sicherung = true,
                                            .SID = 2});
        m_first = suite.library.addPlaylist(
            {.Name = u"First"_s, .GRID = m_early, .tracks = {m_c}, .SID = 1});
        m_lateList = suite.library.addPlaylist({.Name = u"Third"_s, .GRID = m_late});
        m_jingles = suite.library.addPlaylist(
            {.Name = u"Jingles"_s, .GRID = -1, .tracks = {m_a}, .Sicherung = true});
        suite.library.addPlayback(m_a, QDateTime(QDate(2025, 12, 31), QTime(23, 0)));
        suite.library.addPlayback(m_a, QDateTime(QDate(2026, 3, 1), QTime(10, 0)));
        suite.library.addPlayback(m_b, QDateTime(QDate(2026, 3, 1), QTime(9, 0)));
        suite.library.addPlayback(m_a, QDateTime(QDate(2026, 3, 1), QTime(20, 0)));
    }

    /// All cells of a set, one row a line, cells parted by "|".
    [[nodiscard]] QStringList rows(const QString& source) const
    {
        const auto database = suite.open();
        QStringList result;
        for (const auto set = database->OpenRecordset(source); !set->Eof(); set->MoveNext()) {
            QStringList cells;
            for (int i = 0; i < set->fieldCount(); ++i) {
                cells.append(set->value(i).toText());
            }
            result.append(cells.join(u'|'));
        }
        return result;
    }

    void expectColumns(const QString& query, const QString& names) const
    {
        const auto database = suite.open();
        const auto set = database->OpenRecordset(query);
        for (const QString& name : names.split(u' ')) {
            EXPECT_GE(set->fieldIndex(name), 0)
                << query.toStdString() << ": " << name.toStdString();
        }
    }

    QString m_a, m_b, m_c, m_deleted;
    int m_late = 0, m_early = 0, m_empty = 0;
    int m_list = 0, m_first = 0, m_lateList = 0, m_jingles = 0;
};

QString allColumns()
{
    return u"FID Titel Interpret Album Genre Jahr Track Kommentar Note BPM Path DName DLen DTime "
           "DTimeMsec DKhz DBit DTSDatei DTSImport DriveTyp DriveName DEL FrameStart FrameStop "
           "Normalize Pitch Volume MixIn MixOut eq MixTime Play PlayCountDay PlayCountAll favorit "
           "Image Kategorie Situation Stimmung Tempo User1 User2 User3 User4 User5"_s;
}

} // namespace

TEST_F(StoredQueries, EveryRowSourceOpensAndEveryActionQueryIsUnderstood)
{
    const auto database = suite.open();
    const QStringList names = database->queryDefs().Names();
    EXPECT_EQ(names.size(), 25);
    for (const QString& name : names) {
        const auto query = database->queryDefs().Item(name);
        const bool isSource = query->Type() == QueryType::Select;
        EXPECT_EQ(query->Fields().empty(), !isSource) << name.toStdString();
        if (isSource && query->Parameters().empty()) {
            EXPECT_NO_THROW((void)database->OpenRecordset(name)) << name.toStdString();
        }
    }
}

TEST_F(StoredQueries, VplAllJoinsEntriesWithTracksInTheOrderOfSid)
{
    EXPECT_EQ(
        suite.column(u"select Titel from VPL_ALL where pnid="_s + sql::number(qint64(m_list))),
        QStringList({u"Beta"_s, u"Alpha"_s, u"Beta"_s}));
    expectColumns(u"VPL_ALL"_s,
                  u"Nr Start Stop PLID PNID SID DTimeMsec Command DriveName Normalize"_s);
    EXPECT_EQ(suite.value(u"select Nr from VPL_ALL"_s).toLong(), 1);
}

TEST_F(StoredQueries, VplAllWritesThroughToTheEntry)
{
    {
        const auto database = suite.open();
        const auto set = database->OpenRecordset(u"select * from VPL_ALL where pnid="_s +
                                                 sql::number(qint64(m_first)));
        set->Edit();
        set->setValue(u"Volume", 4711);
        set->Update();
    }
    EXPECT_EQ(suite.column(u"select FID from pl_all where Volume=4711"_s), QStringList{m_c});
}

TEST_F(StoredQueries, VplAllResetsAPlaylistInOneUpdateThroughTheJoin)
{
    suite.execute(u"update pl_all set FrameStart=5, FrameStop=7, Volume=9, MixIn='1,2,3,4,5'"_s);
    suite.execute(QString(u" UPDATE VPL_ALL as pl_all"
                          " SET PL_ALL.FrameStart = 0, PL_ALL.FrameStop = "
                          "(pl_ALL.DTIMEMSEC/26.12245), PL_ALL.Pitch = 0, "
                          " PL_ALL.MixIn = Null, PL_ALL.MixOut = Null, PL_ALL.EQ = Null, "
                          "PL_ALL.Command = Null, "
                          " PL_ALL.Volume = 0"
                          " WHERE (((PL_ALL.PNID)=%pnid%)) "_s)
                      .replace(u"%pnid%"_s, QString::number(m_list)));
    const QString reset = u"select PLID from pl_all where FrameStart=0 and FrameStop=8269 and "
                          "Volume=0 and MixIn is null and pnid="_s;
    EXPECT_EQ(suite.column(reset + QString::number(m_list)).size(), 3);
    EXPECT_EQ(suite.column(u"select PLID from pl_all where Volume=9"_s).size(), 2);
}

TEST_F(StoredQueries, VdbAllIsTheWholeLibrary)
{
    expectColumns(u"VDB_ALL"_s, allColumns());
    EXPECT_EQ(rows(u"VDB_ALL"_s).size(), 4);
}

TEST_F(StoredQueries, VdbGenreIsSortedByName)
{
    const QStringList names = suite.column(u"VDB_GENRE"_s);
    EXPECT_EQ(names.size(), 193);
    EXPECT_EQ(names.at(0), QString());
    EXPECT_EQ(names.at(1), u"A Cappella"_s);
    expectColumns(u"VDB_GENRE"_s, u"Name Genre_ID"_s);
}

TEST_F(StoredQueries, VplFillTellsEntriesWithTheirDriveType)
{
    expectColumns(u"VPL_FILL"_s, u"pnid PLID SID FID DriveTyp"_s);
    const QString fill =
        u"select FID, DriveTyp, SID from VPL_FILL where pnid=%1 order by sid asc"_s;
    EXPECT_EQ(rows(fill.arg(m_list)),
              QStringList({m_b + u"|2|1"_s, m_a + u"|2|2"_s, m_b + u"|2|3"_s}));
    EXPECT_EQ(rows(fill.arg(m_first)), QStringList{m_c + u"|4|1"_s});
}

TEST_F(StoredQueries, VplFillLeavesOutAnEntryWhoseTrackIsGone)
{
    suite.execute(u"delete from db_all where fid="_s + sql::text(m_a));
    EXPECT_EQ(suite.column(u"select FID from VPL_FILL where pnid="_s + QString::number(m_list)),
              QStringList({m_b, m_b}));
}

TEST_F(StoredQueries, VplGroupnameIsOrderedByGroupAndPosition)
{
    expectColumns(u"VPL_GROUPNAME"_s, u"NID GRID plname grname Activ IsPlay Lock"_s);
    EXPECT_EQ(rows(u"select grname, plname from VPL_GROUPNAME"_s),
              QStringList({u"Early|First"_s, u"Early|Second"_s, u"Late|Third"_s, u"Empty|"_s}));
    EXPECT_EQ(
        suite.column(u"select plname from VPL_GROUPNAME where nid="_s + QString::number(m_list)),
        QStringList{u"Second"_s});
    EXPECT_EQ(
        suite.value(u"select grname from VPL_GROUPNAME where grid="_s + QString::number(m_late))
            .toText(),
        u"Late"_s);
}

TEST_F(StoredQueries, VplGroupnameShowsAGroupWithoutPlaylistsSoThatItCanBeFilled)
{
    EXPECT_EQ(
        rows(u"select NID, grname from VPL_GROUPNAME where grid="_s + QString::number(m_empty)),
        QStringList{u"|Empty"_s});
}

TEST_F(StoredQueries, AJingleListNeverAppearsAmongOrdinaryPlaylists)
{
    EXPECT_TRUE(rows(u"select * from VPL_GROUPNAME where plname='Jingles' or grid=-1"_s).isEmpty());
    EXPECT_TRUE(rows(u"select * from VPLGROUP_SAVE where plname='Jingles'"_s).isEmpty());
    EXPECT_TRUE(rows(u"select * from vpl_getinfo where pName='Jingles'"_s).isEmpty());
}

TEST_F(StoredQueries, VplgroupSaveCountsThePlaylistsThatWaitForTheirFile)
{
    EXPECT_EQ(suite.value(u"select count(*) as anz from VPLGROUP_SAVE"_s).toLong(), 1);
    suite.execute(u"update pl_name set sicherung=true"_s);
    EXPECT_EQ(suite.value(u"select count(*) as anz from VPLGROUP_SAVE"_s).toLong(), 3);
}

TEST_F(StoredQueries, VplSaveGivesAPlaylistWithItsTracksInTheOrderOfSid)
{
    expectColumns(u"vpl_save"_s,
                  u"nid plname GroupName FID Titel Interpret Genre Album Track Volume Pitch BPM "
                  "DTimeMsec FrameStart FrameStop MixTime MixIn MixOut eq DName Path"_s);
    suite.execute(u"update pl_all set SID=9 where SID=1 and pnid="_s + QString::number(m_list));
    const auto database = suite.open();
    QStringList titles;
    const auto set =
        database->OpenRecordset(u"select * from vpl_save where nid="_s + QString::number(m_list));
    EXPECT_EQ(set->value(u"GroupName").toText(), u"Early"_s);
    for (; !set->Eof(); set->MoveNext()) {
        titles.append(set->value(u"Titel").toText());
    }
    EXPECT_EQ(titles, QStringList({u"Alpha"_s, u"Beta"_s, u"Beta"_s}));
}

TEST_F(StoredQueries, VplSaveTakesSettingsFromTheEntryNotFromTheTrack)
{
    suite.execute(u"update db_all set Volume=1, MixIn='1,1,1,1,1'"_s);
    suite.execute(u"update pl_all set Volume=2, MixIn=null"_s);
    EXPECT_EQ(rows(u"select Volume, MixIn from vpl_save where nid="_s + QString::number(m_first)),
              QStringList{u"2|"_s});
}

TEST_F(StoredQueries, VplSaveGivesAJingleListTooWithoutAGroup)
{
    EXPECT_EQ(
        rows(u"select Titel, GroupName from vpl_save where nid="_s + QString::number(m_jingles)),
        QStringList{u"Alpha|"_s});
}

TEST_F(StoredQueries, VplRealmp3spaceCountsAFileOfAPlaylistOnce)
{
    EXPECT_EQ(
        suite.value(u"select sdlen from VPL_REALMP3SPACE where pnid="_s + QString::number(m_list))
            .toLong(),
        1200);
}

TEST_F(StoredQueries, VplGetstatGivesEachDayOfATrackOnce)
{
    EXPECT_EQ(rows(u"select tday, datum from vpl_getstat where fid="_s + sql::text(m_a) +
                   u" order by tday"_s),
              QStringList({u"20251231|31.12.2025"_s, u"20260301|01.03.2026"_s}));
}

TEST_F(StoredQueries, VplGetinfoNamesEachPlaylistOfATrackOnceWithItsGroup)
{
    EXPECT_EQ(rows(u"select PNID, gName, pName from vpl_getinfo where fid="_s + sql::text(m_b)),
              QStringList{QString::number(m_list) + u"|Early|Second"_s});
}

TEST_F(StoredQueries, VStateGroupsDaysByMonthAndYearNewestFirst)
{
    expectColumns(u"v_state"_s, u"tyear tmon monat tday datum"_s);
    EXPECT_EQ(rows(u"select tyear, tmon, tday, datum from v_state"_s),
              QStringList({u"2026|3|20260301|01.03.2026"_s, u"2025|12|20251231|31.12.2025"_s}));
    EXPECT_FALSE(suite.value(u"select monat from v_state"_s).toText().isEmpty());
}

TEST_F(StoredQueries, VTreeDirDeliversAFolderBeforeThoseBelowIt)
{
    expectColumns(u"v_tree_dir"_s, u"Path DriveName DriveTyp anzahl"_s);
    EXPECT_EQ(rows(u"select Path, DriveName, DriveTyp, anzahl from v_tree_dir"_s),
              QStringList({u"/music/a/||2|1"_s, u"/music/a/b/||2|1"_s, u"E:\\m\\|Disc1|4|1"_s}));
}

TEST_F(StoredQueries, VTreeDirTellsDiscsApartByTheirLabelAndMergesFixedVolumes)
{
    suite.library.add({.Path = u"E:\\m\\"_s, .DriveTyp = 4, .DriveName = u"Disc2"_s});
    suite.library.add({.Path = u"/music/a/"_s, .DriveTyp = 2, .DriveName = u"relabelled"_s});
    EXPECT_EQ(rows(u"select Path, DriveName, anzahl from v_tree_dir where Path like 'E*'"_s),
              QStringList({u"E:\\m\\|Disc1|1"_s, u"E:\\m\\|Disc2|1"_s}));
    EXPECT_EQ(rows(u"select anzahl from v_tree_dir where Path='/music/a/'"_s), QStringList{u"2"_s});
}

TEST_F(StoredQueries, VdbplAllShowsLibraryColumnsOfAPlaylist)
{
    expectColumns(u"vdbpl_all"_s, allColumns() + u" PNID SID"_s);
    EXPECT_EQ(suite.column(u"select [TITEL] from vdbpl_all where ( [PNID] = "_s +
                           QString::number(m_list) + u" ) order by [SID] ASC"_s),
              QStringList({u"Beta"_s, u"Alpha"_s, u"Beta"_s}));
}

TEST_F(StoredQueries, VdbStatAllHasARowPerPlaybackWithItsTime)
{
    expectColumns(u"vdb_stat_all"_s, allColumns() + u" tday"_s);
    EXPECT_EQ(rows(u"select [TITEL], [PLAY] from vdb_stat_all where ( [tday] = 20260301 ) "
                   "order by [Play] ASC"_s),
              QStringList({u"Beta|01.03.2026 09:00:00"_s, u"Alpha|01.03.2026 10:00:00"_s,
                           u"Alpha|01.03.2026 20:00:00"_s}));
}

TEST_F(StoredQueries, VdbAllDelShowsRowsMarkedAsDeletedWithAndWithoutTheirFile)
{
    suite.library.add({.Titel = u"Both"_s, .DEL = 3});
    suite.library.add({.Titel = u"Missing"_s, .DEL = 2});
    EXPECT_EQ(suite.column(u"select Titel from vdb_all_del order by Titel"_s),
              QStringList({u"Both"_s, u"Delta"_s}));
    EXPECT_EQ(suite.column(u"select Titel from vdb_all_nofile order by Titel"_s),
              QStringList({u"Both"_s, u"Missing"_s}));
}

TEST_F(StoredQueries, QuIntersTempMp3EditAppendsOneRow)
{
    const auto database = suite.open();
    const auto query = database->queryDefs().Item(u"QU_IntersTempMp3Edit"_s);
    query->SetParameter(u"INPLID"_s, -1);
    for (const QString& fid : {m_a, u"'; drop --"_s}) {
        query->SetParameter(u"INFID"_s, fid);
        query->Execute();
    }
    EXPECT_EQ(rows(u"select FID, PLID from TEMP_MP3Edit"_s),
              QStringList({m_a + u"|-1"_s, u"'; drop --|-1"_s}));
}

TEST_F(StoredQueries, QuFindFileFindsAFolderAndNameInAnyLetterCase)
{
    const QString hostile = u"O'Neil [live] 100% #1*?.mp3"_s;
    const QString fid = suite.library.add({.Path = u"/it's/"_s, .DName = hostile});
    const auto database = suite.open();
    const auto query = database->queryDefs().Item(u"QU_FindFile"_s);
    query->SetParameter(u"sPath"_s, u"/IT'S/"_s);
    query->SetParameter(u"sDName"_s, hostile.toUpper());
    EXPECT_EQ(query->OpenRecordset()->value(u"FID").toText(), fid);
    query->SetParameter(u"sDName"_s, u"*"_s);
    EXPECT_TRUE(query->OpenRecordset()->Eof());
}

TEST_F(StoredQueries, QuUpadateTreeDirAnzahlCountsTracksBelowAFolderWithoutDeletedOnes)
{
    const auto database = suite.open();
    const auto query = database->queryDefs().Item(u"QU_UpadateTreeDirAnzahl"_s);
    query->SetParameter(u"sPath"_s, u"/music/*"_s);
    EXPECT_EQ(query->OpenRecordset()->value(u"anz").toLong(), 2);
    query->SetParameter(u"sPath"_s, u"/music/a/b/*"_s);
    EXPECT_EQ(query->OpenRecordset()->value(u"anz").toLong(), 1);
}

TEST_F(StoredQueries, InsertTempPlUndoCopiesAPlaylistAsItStands)
{
    suite.execute(u"update pl_all set Volume=7, Command='oak=1&', EQ='0,1,2,3,4'"_s);
    const auto database = suite.open();
    const auto query = database->queryDefs().Item(u"insert_temp_pl_undo"_s);
    query->SetParameter(u"param_PNID"_s, m_list);
    query->SetParameter(u"param_UndoID"_s, 4711);
    query->SetParameter(u"param_UndoPos"_s, u"Playlist.Taste.Del"_s);
    query->Execute();
    EXPECT_EQ(query->RecordsAffected(), 3);
    EXPECT_EQ(rows(u"select UndoID, UndoPos, SID, FID, Volume, Command, EQ from TEMP_PL_UNDO"_s),
              QStringList({u"4711|Playlist.Taste.Del|1|%1|7|oak=1&|0,1,2,3,4"_s.arg(m_b),
                           u"4711|Playlist.Taste.Del|2|%1|7|oak=1&|0,1,2,3,4"_s.arg(m_a),
                           u"4711|Playlist.Taste.Del|3|%1|7|oak=1&|0,1,2,3,4"_s.arg(m_b)}));
}

TEST_F(StoredQueries, TreeQueriesFillTheirTablesInDisplayOrderFromTracksThatAreNotDeleted)
{
    suite.library.add(
        {.Titel = u"Zeta"_s, .Interpret = u"Ärzte"_s, .Album = u"13"_s, .Genre = u"Punk"_s});
    for (const QString& query : {u"UPDATE_TREE_GENRE"_s, u"UPDATE_TREE_ALBUM"_s,
                                 u"UPDATE_TREE_interpret"_s, u"UPDATE_TREE_GENRE_interpret"_s}) {
        suite.execute(query);
    }
    EXPECT_EQ(rows(u"select Name, anzahl, imgkey from tree_genre order by id"_s),
              QStringList({u"Pop|1|genre"_s, u"Punk|1|genre"_s, u"Rock|2|genre"_s}));
    EXPECT_EQ(rows(u"select Name, anzahl, imgkey, favorit from tree_album"_s),
              QStringList{u"13|1|album|0"_s});
    EXPECT_EQ(rows(u"select Name, anzahl, imgkey from tree_interpret order by id"_s),
              QStringList({u"Ann|2|interpret"_s, u"Ärzte|1|interpret"_s, u"Bob|1|interpret"_s}));
    EXPECT_EQ(rows(u"select Genre, Name, anzahl from tree_genre_interpret order by id"_s),
              QStringList({u"Pop|Bob|1"_s, u"Punk|Ärzte|1"_s, u"Rock|Ann|2"_s}));
}

TEST_F(StoredQueries, AFileThatCouldNotBeReadStaysVisible)
{
    const QString fid = suite.library.add({.DTime = u"MP3ERROR"_s});
    EXPECT_TRUE(suite.column(u"select FID from VDB_ALL where del in (0,-1)"_s).contains(fid));
}

TEST_F(StoredQueries, TempoComparesAsTextSo98IsGreaterThan130)
{
    suite.library.add({.Titel = u"98"_s, .BPM = u"98"_s});
    suite.library.add({.Titel = u"130"_s, .BPM = u"130"_s});
    suite.library.add({.Titel = u"120"_s, .BPM = u"120"_s});
    EXPECT_EQ(suite.column(u"select Titel from db_all where ( [BPM] >='130') order by Titel"_s),
              QStringList({u"130"_s, u"98"_s}));
}

TEST_F(StoredQueries, ARatingIsATextAndFoundByItsQuotedSign)
{
    suite.library.add({.Titel = u"Best"_s, .Note = u"5"_s});
    suite.library.add({.Titel = u"Worst"_s, .Note = u"1"_s});
    EXPECT_EQ(suite.column(u"select Titel from db_all where ( [Note] = '5' )"_s),
              QStringList{u"Best"_s});
}

namespace {

class PlayCounts : public test::SuiteFixture
{
protected:
    void play(const QString& fid) const
    {
        suite.execute(u"update db_all set play=cdate(format(now,'dd.mm.yyyy hh:mm:ss')), "
                      "PlayCountDay=iif(isnull(PlayCountDay),1,PlayCountDay+1),"
                      "PlayCountAll=iif(isnull(PlayCountAll),1,PlayCountAll+1) where fid='"_s +
                      sql::quoted(fid) + u"' "_s);
    }

    [[nodiscard]] Value cell(const QString& column) const
    {
        return suite.value(u"select "_s + column + u" from db_all"_s);
    }
};

} // namespace

TEST_F(PlayCounts, TheFirstPlaybackTurnsNullIntoOneAndTheNextCountsOn)
{
    const QString fid = suite.library.add();
    EXPECT_TRUE(cell(u"PlayCountDay"_s).isNull());
    play(fid);
    EXPECT_EQ(cell(u"PlayCountDay"_s).toLong(), 1);
    EXPECT_EQ(cell(u"PlayCountAll"_s).toLong(), 1);
    play(fid);
    EXPECT_EQ(cell(u"PlayCountAll"_s).toLong(), 2);
}

TEST_F(PlayCounts, ThePlaybackTimeCarriesNoFractionOfASecond)
{
    suite.clock.set(QDateTime(QDate(2026, 3, 14), QTime(15, 9, 26, 777)));
    play(suite.library.add());
    EXPECT_EQ(cell(u"Play"_s).toDateTime(), QDateTime(QDate(2026, 3, 14), QTime(15, 9, 26)));
}

TEST_F(PlayCounts, TheDailyResetClearsTracksPlayedMoreThanTwelveHoursAgo)
{
    const QString early = suite.library.add({.Titel = u"13 hours"_s});
    const QString late = suite.library.add({.Titel = u"11 hours"_s});
    play(early);
    suite.clock.addSeconds(qint64{2} * 3600);
    play(late);
    suite.clock.addSeconds(qint64{11} * 3600);
    suite.execute(u"update db_all set PlayCountDay=null where PlayCountDay is not null and "
                  "play < cdate(now-0.5)"_s);
    EXPECT_EQ(suite.column(u"select Titel from db_all where PlayCountDay is not null"_s),
              QStringList{u"11 hours"_s});
    suite.execute(u"update db_all set PlayCountDay=null where PlayCountDay is not null"_s);
    EXPECT_TRUE(suite.column(u"select FID from db_all where PlayCountDay is not null"_s).isEmpty());
    EXPECT_EQ(suite.column(u"select FID from db_all where PlayCountAll=1"_s).size(), 2);
}
