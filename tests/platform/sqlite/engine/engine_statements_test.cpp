#include "platform/db/sql_text.h"
#include "platform/sqlite/engine/engine_fixture.h"

namespace melovane::test {
namespace {

/// A small library: five tracks, two lists and a jingle list.
class EngineStatements : public EngineTest
{
protected:
    EngineStatements()
    {
        makeSuite();
        Transaction transaction(db());
        for (
            const QString& values :
            {u"'100','Yellow Sea','The Boats','5','98','/m/a/','a.mp3',0,2,600000,'MP3ERROR',#01/02/2020#"_s,
             u"'101','Ärger','Zoë','1','130','/m/a/','b.mp3',0,2,26122,'3:00',#01/02/2020 10:00:00#"_s,
             u"'102','like water','the boats','','','/m/b/','c.mp3',-1,4,1000,'0:01',null"_s,
             u"'103','It''s a [title]*','1200 Volts','3','120','/m/b/','d.mp3',2,2,null,null,null"_s,
             u"'104','Äther','Ärzte','3','7','C:\\Music\\','e.mp3',3,2,5,'x',null"_s}) {
            db().Execute(
                u"insert into db_all (FID,Titel,Interpret,[Note],BPM,Path,DName,DEL,DriveTyp,DTimeMsec,DTime,DTSImport) values (%1)"_s
                    .arg(values));
        }
        for (const QString& values :
             {u"1,1,'Party',10,true"_s, u"2,1,'Slow',20,false"_s, u"3,-1,'Jingles',5,true"_s}) {
            db().Execute(
                u"insert into pl_name (NID,GRID,Name,SID,Activ) values (%1)"_s.arg(values));
        }
        for (const QString& values : {u"1,4,'101'"_s, u"1,2,'100'"_s, u"2,2,'102'"_s}) {
            db().Execute(u"insert into pl_all (PNID,SID,FID) values (%1)"_s.arg(values));
        }
        db().Execute(u"insert into genre (Genre_ID,Name) values (255,'none')"_s);
        db().Execute(u"insert into genre (Genre_ID,Name) values (1,'Blues')"_s);
        db().Execute(u"insert into db_version values ('DB.Version','3.4')"_s);
        db().Execute(u"insert into config values (-1,'Tempo','User','fast')"_s);
        db().Execute(u"insert into config values (1,'Tempo','02','slow')"_s);
        transaction.commit();
    }
};

struct Question
{
    const char* name;
    QString statement;
    QStringList rows;
};

class EngineQuestion : public EngineStatements, public testing::WithParamInterface<Question>
{};

TEST_P(EngineQuestion, GivesItsRows)
{
    EXPECT_EQ(rowsOf(db(), GetParam().statement).join(u'\n').toStdString(),
              GetParam().rows.join(u'\n').toStdString());
}

INSTANTIATE_TEST_SUITE_P(
    All,
    EngineQuestion,
    testing::Values(
        Question{"Count", u"select count(*) as anz from db_all"_s, {u"5"_s}},
        Question{"TopOneCount", u"select top 1 count(*) as anz from db_all"_s, {u"5"_s}},
        Question{"HighestSid", u"select max(sid) as msid from pl_all where pnid=1"_s, {u"4"_s}},
        Question{"HighestOfNothing",
                 u"select max(sid) as msid from pl_all where pnid=9"_s,
                 {u"null"_s}},
        Question{"HighestPlid", u"select max(plid) as mplid from pl_all"_s, {u"3"_s}},
        Question{"TrackByFid", u"select Titel from db_all where fid='100'"_s, {u"Yellow Sea"_s}},
        Question{"GenresForTags",
                 u"select * from genre where genre_id<> 255 order by genre_id"_s,
                 {u"1|Blues"_s}},
        Question{"ConfigValues",
                 u"select Beschreibung from config where name='Tempo' order by value"_s,
                 {u"slow"_s, u"fast"_s}},
        Question{"BracketedReservedName",
                 u"select [Value] from config where Lang=-1"_s,
                 {u"User"_s}},
        Question{"VersionByText",
                 u"select Version from db_version where id='DB.Version'"_s,
                 {u"3.4"_s}},
        Question{"ChangeTreeCount",
                 u"select count(*) as anz from ChangeTree where TreeName='TREE_DIR'"_s,
                 {u"0"_s}},
        Question{"Mp3ErrorRowsStayVisible",
                 u"select FID from db_all where fid='100' and del in (0,-1) "_s,
                 {u"100"_s}},
        Question{"LibraryShowsPresentAndMarkedRows",
                 u"select FID from db_all where del in (0,-1) order by fid"_s,
                 {u"100"_s, u"101"_s, u"102"_s}},
        Question{"DelAsTruth",
                 u"select FID from db_all where del = False order by fid"_s,
                 {u"100"_s, u"101"_s}},
        Question{
            "PrefixSearchWithoutCase",
            u"select  [FID] , [TITEL]  from db_all\n where ( [Titel] like 'är*' or  [Interpret] like 'THE b*'  )  and del in (0,-1) \norder by [FID] ASC"_s,
            {u"100|Yellow Sea"_s, u"101|Ärger"_s, u"102|like water"_s}},
        Question{"ExactSearchEndsInEquals",
                 u"select  * , 1 as one from genre\n where ( [Name] = 'BLUES' ) \n"_s,
                 {u"1|Blues|1"_s}},
        Question{"NumberSearch",
                 u"select [FID] from pl_all where ( [PNID] =1 ) order by [SID] DESC"_s,
                 {u"101"_s, u"100"_s}},
        Question{
            "DateSearch",
            u"select [FID] from db_all where ( format([DTSImport],'DD.MM.YYYY') = '02.01.2020'  ) order by fid"_s,
            {u"100"_s, u"101"_s}},
        Question{"BpmIsComparedAsText",
                 u"select [BPM] from db_all where ( [BPM] >='130' ) order by [BPM]"_s,
                 {u"130"_s, u"7"_s, u"98"_s}},
        Question{"RatingFive", u"select FID from db_all where [Note] like '5'"_s, {u"100"_s}},
        Question{
            "CountOfASearch",
            u"select count(*) as anz from db_all\n where ( Titel like 'Y*' or Interpret like 'Y*' )  and del in (0,-1) "_s,
            {u"1"_s}},
        Question{"FolderOnADisc",
                 u"select FID from db_all where path like '/m/b/' and drivetyp=4"_s,
                 {u"102"_s}},
        Question{"DigitsOfTheArtistTree",
                 u"select Interpret from db_all where Interpret like '[0-9]*'"_s,
                 {u"1200 Volts"_s}},
        Question{"NeitherDigitNorLetter",
                 u"select Interpret from db_all where Interpret not like '[0-9A-Z]*'"_s,
                 {}},
        Question{"ForeignFoldersKeepTheirSeparator",
                 u"select Path from db_all where Path like 'c:\\*'"_s,
                 {u"C:\\Music\\"_s}},
        Question{"AQuoteInAValue",
                 u"select FID from db_all where Titel=%1"_s.arg(sql::text(u"it's a [title]*")),
                 {u"103"_s}},
        Question{"Union",
                 u"select name from genre Union select name from pl_name"_s,
                 {u"Blues"_s, u"Jingles"_s, u"none"_s, u"Party"_s, u"Slow"_s}},
        Question{"JingleListsAreNoPlaylists",
                 u"select name from pl_name where grid>0 order by sid"_s,
                 {u"Party"_s, u"Slow"_s}},
        Question{"PlaylistViewInItsOrder",
                 u"select SID, Titel, Nr from VPL_ALL where pnid=1"_s,
                 {u"2|Yellow Sea|1"_s, u"4|Ärger|1"_s}},
        Question{"FramesOfATrack",
                 u"select (DTimeMsec/26.12245) as f from db_all where fid='104'"_s,
                 {u"0.191406242523194"_s}},
        Question{
            "InSubquery",
            u"select fid from db_all where fid in (select fid from pl_all) and fid not in (select fid from pl_all where pnid=2) order by fid"_s,
            {u"100"_s, u"101"_s}}),
    [](const testing::TestParamInfo<Question>& test) { return test.param.name; });

struct Change
{
    const char* name;
    QStringList statements;
    int affected; ///< by the last one
    QString question;
    QStringList rows;
};

class EngineChange : public EngineStatements, public testing::WithParamInterface<Change>
{};

TEST_P(EngineChange, LeavesItsRows)
{
    for (const QString& statement : GetParam().statements) {
        db().Execute(statement);
    }
    EXPECT_EQ(db().RecordsAffected(), GetParam().affected);
    EXPECT_EQ(rowsOf(*sibling(), GetParam().question).join(u'\n').toStdString(),
              GetParam().rows.join(u'\n').toStdString());
}

const QString kPlayback =
    u"update db_all set play=cdate(format(now,'dd.mm.yyyy hh:mm:ss')), PlayCountDay=iif(isnull(PlayCountDay),1,PlayCountDay+1),PlayCountAll=iif(isnull(PlayCountAll),1,PlayCountAll+1) where fid='100' "_s;

INSTANTIATE_TEST_SUITE_P(
    All,
    EngineChange,
    testing::Values(
        Change{"TheFirstPlaybackWritesOne",
               {kPlayback},
               1,
               u"select PlayCountDay, PlayCountAll, Play from db_all where fid='100'"_s,
               {u"1|1|14.03.2026 15:09:26"_s}},
        Change{"TheSecondPlaybackWritesTwo",
               {kPlayback, kPlayback},
               1,
               u"select PlayCountDay, PlayCountAll from db_all where fid='100'"_s,
               {u"2|2"_s}},
        Change{
            "TheDailyResetSparesTheLastHalfDay",
            {kPlayback,
             u"update db_all set PlayCountDay=null where PlayCountDay is not null and play < cdate(now-0.5)"_s},
            0,
            u"select PlayCountDay from db_all where fid='100'"_s,
            {u"1"_s}},
        Change{"TheResetOfTheMenuSparesNothing",
               {kPlayback, u"update db_all set PlayCountDay=null where PlayCountDay is not null"_s},
               1,
               u"select PlayCountDay, PlayCountAll from db_all where fid='100'"_s,
               {u"null|1"_s}},
        Change{"CleaningListsMarkedRows",
               {u"insert into todo ( ID , FID ) select 1 as ID , FID from db_all where del=-1"_s},
               1,
               u"select * from todo"_s,
               {u"1|102"_s}},
        Change{"CleaningDropsEntriesWithoutTrack",
               {u"delete * from db_all where del in (-1,2)"_s,
                u"delete from pl_all where fid not in (select fid from db_all)"_s},
               1,
               u"select fid from pl_all order by fid"_s,
               {u"100"_s, u"101"_s}},
        Change{"ImagesAreNamedAfterTheirTrack",
               {u"update db_all set Image=fid + '.jpg' where fid='100'"_s},
               1,
               u"select Image from db_all where fid='100'"_s,
               {u"100.jpg"_s}},
        Change{
            "APlaylistIsResetThroughItsView",
            {u" UPDATE VPL_ALL as pl_all SET PL_ALL.FrameStart = 0, PL_ALL.FrameStop = (pl_ALL.DTIMEMSEC/26.12245), PL_ALL.Pitch = 0 where pl_all.pnid=1"_s},
            2,
            u"select FID, FrameStart, FrameStop, Pitch from pl_all order by fid"_s,
            {u"100|0|22969|0"_s, u"101|0|1000|0"_s, u"102|null|null|null"_s}},
        Change{
            "MixStylesComeFromANeighbour",
            {u"update pl_all set mixout='o' where plid=1"_s,
             u"update pl_all set mixout = (select max(mixout) from pl_all where plid=1) , mixin=(select max(mixin) from pl_all where plid=2) where pnid=2"_s},
            1,
            u"select mixout, mixin from pl_all where pnid=2"_s,
            {u"o|null"_s}},
        Change{"TimesAreStampedWithNow",
               {u"update pl_name set UpdateTime=now, Lock=true where activ=false"_s},
               1,
               u"select NID, UpdateTime, Lock from pl_name where UpdateTime is not null"_s,
               {u"2|14.03.2026 15:09:26|-1"_s}},
        Change{"ARealNumberInALongColumnIsRoundedHalfToEven",
               {u"update pl_all set FrameStart=2.5, FrameStop=3.5"_s},
               3,
               u"select distinct FrameStart, FrameStop from pl_all"_s,
               {u"2|4"_s}},
        Change{"TheUpgradeWritesItsLevel",
               {u"alter table db_version alter COLUMN id text(50)"_s,
                u"insert into db_version (id,version) values ('DB.SubVersion' , '0')"_s,
                u"update db_version set version='34150' where id='DB.SubVersion'"_s},
               1,
               u"select * from db_version order by id"_s,
               {u"DB.SubVersion|34150"_s, u"DB.Version|3.4"_s}},
        Change{"AQuotedTitleGoesInUnharmed",
               {u"update db_all set Titel=%1 where fid='100'"_s.arg(
                   sql::text(u"a'b\"c]d[e*f?g#h\nj;--"))},
               1,
               u"select Titel from db_all where fid='100'"_s,
               {u"a'b\"c]d[e*f?g#h\nj;--"_s}}),
    [](const testing::TestParamInfo<Change>& test) { return test.param.name; });

TEST_F(EngineStatements, TwoStatementsInOneTextAreRefused)
{
    EXPECT_NE(errorOf([&] { db().Execute(u"delete from genre; delete from db_all"_s); }), 0);
    EXPECT_EQ(cellOf(db(), u"select count(*) as n from genre"_s).toLong(), 2);
}

TEST_F(EngineStatements, AnUnknownColumnIsNamed)
{
    try {
        (void)db().OpenRecordset(u"select nosuch from db_all"_s);
        FAIL();
    } catch (const DbError& error) {
        EXPECT_EQ(error.number(), dberror::kTooFewParameters);
        EXPECT_TRUE(error.text().contains(u"nosuch"_s));
    }
}

TEST_F(EngineStatements, AnActionTooWideForItsColumnChangesNothing)
{
    EXPECT_EQ(
        errorOf([&] { db().Execute(u"update db_all set FID='1234567890123' where fid='100'"_s); }),
        dberror::kFieldTooSmall);
    EXPECT_EQ(cellOf(db(), u"select count(*) as n from db_all where fid='100'"_s).toLong(), 1);
}

TEST_F(EngineStatements, ANullInAnyColumnReadsAsNothing)
{
    const auto set = db().OpenRecordset(u"select * from db_all where fid='103'"_s);
    for (int i = 0; i < set->fieldCount(); ++i) {
        (void)set->value(i).toText();
        (void)set->value(i).toLong();
    }
    EXPECT_EQ(set->value(u"PlayCountAll").toLong(), 0);
    EXPECT_EQ(set->value(u"MixIn").toText(), QString());
}

} // namespace
} // namespace melovane::test
