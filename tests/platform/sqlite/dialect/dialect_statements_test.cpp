#include "platform/db/db_error.h"
#include "platform/sqlite/dialect/dialect_library.h"

#include <gtest/gtest.h>

namespace melovane::sqlite {

using namespace Qt::Literals::StringLiterals;

namespace {

struct SelectCase
{
    const char* name;
    const char* statement;
    const char* rows;
};

void PrintTo(const SelectCase& value, std::ostream* stream)
{
    *stream << value.statement;
}

class DialectSelect : public testing::TestWithParam<SelectCase>
{
protected:
    DialectLibrary m_library;
};

TEST_P(DialectSelect, GivesTheseRows)
{
    const QString statement = QString::fromUtf8(GetParam().statement);
    const std::string expected = GetParam().rows;
    const Translation translation = translate(statement, m_library);
    EXPECT_EQ(m_library.raw(translation.sql).toStdString(), expected)
        << translation.sql.toStdString();
    if (translation.keyed) {
        EXPECT_EQ(m_library.runByKeys(translation).toStdString(), expected)
            << translation.keySql.toStdString() << "\n"
            << translation.rowSql.toStdString();
    }
}

constexpr SelectCase kSearch[] = {
    {"Prefix",
     "select  [FID] , [TITEL]  from db_all\n where ( [TITEL] like 'blue*'  )  and del in (0,-1) \norder by [TITEL] ASC",
     "AAAAAAAAAAA1|Blue\nAAAAAAAAAAA2|blues"},
    {"ManyColumns",
     "select  [FID]  from db_all\n where ( [TITEL] like 'ä*' or  [INTERPRET] like 'ä*' )  and del in (0,-1) \norder by [TITEL] DESC",
     "AAAAAAAAAAA1"},
    {"Anywhere", "select fid from db_all where titel like '*LUE*' order by fid",
     "AAAAAAAAAAA1\nAAAAAAAAAAA2"},
    {"Star", "select  *  from pl_group\norder by [NAME] ASC  , [SID] DESC ",
     "1|Gruppe|1|-1\n2|Leer|2|0"},
    {"Exact", "select [FID] from db_all\n where ( [Note] = '5' )  and del in (0,-1) \n",
     "AAAAAAAAAAA1"},
    {"Number", "select fid from db_all where ( [DLEN] = 2000 )", "AAAAAAAAAAA2"},
    {"NumberGreater",
     "select fid from db_all where ( [DLEN] >=2000 ) and del in (0,-1) order by dlen desc",
     "AAAAAAAAAAA3\nAAAAAAAAAAA2"},
    {"TextGreater", "select fid from db_all where ( [BPM] >='130' )", "AAAAAAAAAAA1\nAAAAAAAAAAA2"},
    {"Date", "select fid from db_all where (  format([DTSImport],'DD.MM.YYYY') = '15.03.2023'  )",
     "AAAAAAAAAAA1\nAAAAAAAAAAA2"},
    {"Count",
     "select count(*) as anz from db_all\n where ( [TITEL] like 'blue*' or [INTERPRET] like 'blue*') ",
     "2"},
    {"TopCount", "select top 1 count(*) as anz from db_all", "4"},
    {"Disc", "select  [FID]  from db_all\n where path like 'd:\\' and del=false ", ""},
    {"Max", "select max(sid) as msid from pl_all where pnid=5", "20"},
    {"Sum", "select count(*) as anz,sum(framestop-framestart) as frtime from pl_all where pnid=5",
     "2|270"},
    {"MinMaxJoin",
     "select min(a.play) as mintime,max(a.play) as maxtime from db_all a,pl_all b where a.fid=b.fid",
     "45456.25|45456.25"},
    {"TwoTables",
     "select count(*) as anz from pl_group,pl_name where pl_group.grid=pl_name.grid  and pl_group.grid=1",
     "2"},
    {"Subquery",
     "select name from pl_name where grid=( select grid from pl_name where nid=6) order by name",
     "Abend\nParty"},
    {"In",
     "select plid from pl_all where fid in (select fid from db_all where del=false) order by plid",
     "1\n2"},
    {"NotIn", "select grid from pl_group where grid not in (select grid from pl_name)", "2"},
    {"Truth", "select nid from pl_name where isplay=true and grid>0", "6"},
    {"Union", "select name from pl_name Union select name from pl_group",
     "Abend\nGruppe\nJingles\nLeer\nParty"},
    {"Buckets", "select fid from db_all where interpret like '[A-Z]*' order by interpret",
     "AAAAAAAAAAA2\nAAAAAAAAAAA1\nAAAAAAAAAAA3"},
    {"OtherBucket", "select fid from db_all where titel like '[0-9]*'", "AAAAAAAAAAA4"},
    {"NotLike", "select fid from db_all where titel not like '[0-9A-Z]*'", ""},
    {"Playlist", "select * from vpl_all where pnid=5",
     "1|3|200|20|20|200|AAAAAAAAAAA2|2|5|q|out2|-|2|80|10|Abba|52245|blues|0\n"
     "1|0|100|10|10|100|AAAAAAAAAAA1|1|5|-|out1|in1|1|90|20|Ärzte|261224|Blue|0"},
    {"Group", "select fid from pl_all group by fid",
     "AAAAAAAAAAA1\nAAAAAAAAAAA2\nAAAAAAAAAAA3\nGONE"},
    {"GroupFolds",
     "SELECT db_all.genre AS name, Count(*) AS anzahl, 'Tree.table' AS imgkey From db_all Where db_all.genre <> '' GROUP BY db_all.genre ORDER BY db_all.genre ",
     "Pop|1|Tree.table\nRock|2|Tree.table"},
    {"GroupByDate",
     "SELECT format(db_all.DTSImport,'dd.mm.yyyy') AS name, Count(*) AS anzahl From db_all Where db_all.DTSImport is not null "
     "GROUP BY format(db_all.DTSImport,'yyyymmdd'),format(db_all.DTSImport,'dd.mm.yyyy')  ORDER BY format(db_all.DTSImport,'yyyymmdd')  ",
     "15.03.2023|2\n16.03.2023|1"},
    {"Value", "select [Value], beschreibung from config where name='genre' order by value",
     "1|Rock\nUser|Pop"},
    {"Constant", "select 1 as ID , FID from db_all where del=-1", "1|AAAAAAAAAAA3"},
};

INSTANTIATE_TEST_SUITE_P(OfTheSearch,
                         DialectSelect,
                         testing::ValuesIn(kSearch),
                         [](const auto& test) { return std::string(test.param.name); });

struct ActionCase
{
    const char* name;
    const char* statement;
    const char* check;
    const char* rows;
};

void PrintTo(const ActionCase& value, std::ostream* stream)
{
    *stream << value.statement;
}

class DialectAction : public testing::TestWithParam<ActionCase>
{
protected:
    DialectLibrary m_library;
};

TEST_P(DialectAction, LeavesTheseRows)
{
    const Translation translation = translate(QString::fromUtf8(GetParam().statement), m_library);
    ASSERT_EQ(translation.written.size(), 1u);
    EXPECT_EQ(m_library.raw(translation.sql).toStdString(), "") << translation.sql.toStdString();
    EXPECT_EQ(m_library.run(QString::fromUtf8(GetParam().check)).toStdString(), GetParam().rows)
        << translation.sql.toStdString();
}

constexpr ActionCase kActions[] = {
    {"PlayCount",
     "update db_all set play=cdate(format(now,'dd.mm.yyyy hh:mm:ss')), PlayCountDay=iif(isnull(PlayCountDay),1,PlayCountDay+1) where fid='AAAAAAAAAAA1' ",
     "select format(play,'dd.mm.yyyy hh:nn:ss'), playcountday from db_all where fid='AAAAAAAAAAA1'",
     "15.06.2024 12:30:00|1"},
    {"DailyReset",
     "update db_all set PlayCountDay=null where PlayCountDay is not null and (play < cdate(now-0.5) or play is null)",
     "select count(*) from db_all where playcountday is not null", "0"},
    {"InsertValues", "insert into todo(id,fid)values(7,'AAAAAAAAAAA9')", "select * from todo",
     "7|AAAAAAAAAAA9"},
    {"InsertSelect", "insert into todo ( ID , FID ) select 1 as ID , FID from db_all where del=-1",
     "select * from todo", "1|AAAAAAAAAAA3"},
    {"InsertGrouped",
     "insert into config (Lang,Name,[Value],Beschreibung) select -1 , 'Album', 'User', Album from db_all where Album is not null and Album <>'' group by Album",
     "select lang, [value], beschreibung from config where name='album' order by beschreibung",
     "-1|User|Erstes\n-1|User|Zweites"},
    {"InsertTree",
     "INSERT INTO tree_genre ( name, anzahl, imgkey ) SELECT db_all.genre AS name, Count(*) AS anzahl, 'Tree.genre' AS imgkey From db_all Where db_all.genre <> '' And del = False GROUP BY db_all.genre ORDER BY db_all.genre ",
     "select * from tree_genre order by id", "1|Pop|1|Tree.genre|-|-\n2|Rock|1|Tree.genre|-|-"},
    {"UpdateJoin",
     " UPDATE VPL_ALL as pl_all SET PL_ALL.FrameStart = 0, PL_ALL.FrameStop = (pl_ALL.DTIMEMSEC/26.12245), PL_ALL.Pitch = 0 where pl_all.pnid=5",
     "select plid, framestart, framestop, pitch from pl_all order by plid",
     "1|0|10000|0\n2|0|2000|0\n3|30|300|3\n4|40|400|4"},
    {"UpdateSubquery",
     "update pl_all set mixout = (select max(mixout) from pl_all where plid=1) , mixin=(select max(mixin) from pl_all where plid=3) where pnid=5",
     "select mixout, mixin from pl_all where pnid=5", "out1|in3\nout1|in3"},
    {"Concatenation", "update db_all set titel=fid + '.jpg' where titel='BLUE'",
     "select titel from db_all where fid='AAAAAAAAAAA1'", "AAAAAAAAAAA1.jpg"},
    {"Now", "update pl_name set activ=false, UpdateTime=now where nid=5",
     "select activ, format(updatetime,'yyyymmddhhnnss') from pl_name where nid=5",
     "0|20240615123000"},
    {"Delete", "delete from pl_all where plid=1", "select count(*) from pl_all", "3"},
    {"DeleteStar", "delete * from pl_all", "select count(*) from pl_all", "0"},
    {"DeleteIn", "delete from pl_all where fid in (select fid from db_all where del=-1)",
     "select count(*) from pl_all", "3"},
    {"DeleteFlags", "delete from pl_name where anzahl=0 and activ=true and isplay=false",
     "select nid from pl_name order by nid", "5\n6"},
    {"DeleteConfig",
     "delete from config where lang=-1 and Name='genre' and beschreibung in (select beschreibung from config where lang<>49)",
     "select lang from config", "49"},
    {"Rounding", "update pl_all set framestop=pitch+0.5",
     "select framestop from pl_all order by plid", "2\n2\n4\n4"},
};

INSTANTIATE_TEST_SUITE_P(OfTheSuite,
                         DialectAction,
                         testing::ValuesIn(kActions),
                         [](const auto& test) { return std::string(test.param.name); });

} // namespace

} // namespace melovane::sqlite
