#include "platform/db/db_error.h"
#include "platform/sqlite/dialect/dialect_library.h"

#include <gtest/gtest.h>

namespace melovane::sqlite {

using namespace Qt::Literals::StringLiterals;

namespace {

class DialectQueries : public testing::Test
{
protected:
    [[nodiscard]] std::string rows(const QString& statement)
    {
        const Translation translation = translate(statement, m_library);
        const QString direct = m_library.raw(translation.sql);
        if (translation.keyed) {
            EXPECT_EQ(m_library.runByKeys(translation).toStdString(), direct.toStdString());
        }
        return direct.toStdString();
    }

    [[nodiscard]] Translation translated(const QString& statement) const
    {
        return translate(statement, m_library);
    }

    [[nodiscard]] std::string names(const QString& statement) const
    {
        QStringList list;
        for (const ResultColumn& column : translated(statement).columns) {
            list.append(column.field.Name);
        }
        return list.join(u',').toStdString();
    }

    DialectLibrary m_library;
};

TEST_F(DialectQueries, AWovenQueryReachesItsTables)
{
    const Translation translation = translated(u"select * from VPL_ALL where pnid=5"_s);
    ASSERT_TRUE(translation.keyed);
    ASSERT_EQ(translation.tables.size(), 2u);
    EXPECT_EQ(translation.tables[0].name.toStdString(), "PL_ALL");
    EXPECT_EQ(translation.tables[1].table.toStdString(), "db_all");
    EXPECT_EQ(translation.columns[0].table, -1); // the constant Nr
    EXPECT_EQ(translation.columns[4].field.Name.toStdString(), "Start");
    EXPECT_EQ(translation.columns[4].column.toStdString(), "FrameStart");
    EXPECT_EQ(translation.columns[4].table, 0);
    EXPECT_EQ(translation.columns.back().column.toStdString(), "DEL");
    EXPECT_EQ(translation.columns.back().table, 1);
}

TEST_F(DialectQueries, TheOrderOfAQueryHoldsUntilTheStatementHasItsOwn)
{
    EXPECT_EQ(rows(u"select plid from vpl_all where pnid=5"_s), "2\n1");
    EXPECT_EQ(rows(u"select plid from vpl_all where pnid=5 order by plid"_s), "1\n2");
}

TEST_F(DialectQueries, ARowThatIsGoneReadsAsNull)
{
    const Translation translation = translated(u"select fid, titel from db_all"_s);
    EXPECT_EQ(m_library.raw(translation.rowSql, {u"99"_s}).toStdString(), "");
}

TEST_F(DialectQueries, QueriesOverQueriesAreWovenToo)
{
    m_library.addQuery(u"inner_q"_s, u"select fid as f, dlen/1000 as kb from db_all where del=0"_s);
    m_library.addQuery(u"outer_q"_s, u"select f, kb*2 as twice from inner_q where kb>1"_s);
    EXPECT_EQ(rows(u"select * from outer_q"_s), "AAAAAAAAAAA2|4.0");
    EXPECT_TRUE(translated(u"select * from outer_q"_s).keyed);
}

TEST_F(DialectQueries, AGroupedQueryIsASourceOfItsOwn)
{
    m_library.addQuery(u"counted"_s, u"select pnid, count(*) as anz from pl_all group by pnid"_s);
    EXPECT_EQ(rows(u"select name, anz from pl_name left join counted on nid=pnid order by nid"_s),
              "Party|2\nAbend|2\nJingles|-");
    EXPECT_FALSE(translated(u"select * from counted"_s).keyed);
    EXPECT_EQ(rows(u"select count(*) as anz from counted"_s), "2");
}

TEST_F(DialectQueries, TextsOfASourceStillCompareWithoutRegardToCase)
{
    EXPECT_EQ(
        rows(
            u"select f from (select first(interpret) as f from db_all group by fid) as q where f='ÄRZTE'"_s),
        "Ärzte");
    EXPECT_EQ(
        rows(u"select distinct left(genre,4) from db_all where genre is not null order by 1"_s),
        "Pop\nRock");
    EXPECT_EQ(
        rows(
            u"select left(genre,4), count(*) from db_all where genre<>'' group by left(genre,4)"_s),
        "Pop|1\nRock|2");
    EXPECT_EQ(
        rows(
            u"select count(*) from (select left(genre,4) from db_all where note='5' union select 'ROCK' from config) as q"_s),
        "1");
}

TEST_F(DialectQueries, OrderByNameAliasPlaceAndExpression)
{
    EXPECT_EQ(rows(u"select titel as t from db_all order by t"_s), "4 Ecken\nBlue\nblues\nÉmile");
    EXPECT_EQ(rows(u"select fid, titel from db_all order by 2 desc, 1"_s).substr(0, 12),
              "AAAAAAAAAAA3");
    EXPECT_EQ(rows(u"select fid from db_all order by len(titel), titel desc"_s),
              "AAAAAAAAAAA1\nAAAAAAAAAAA3\nAAAAAAAAAAA2\nAAAAAAAAAAA4");
    EXPECT_EQ(rows(u"select 1 as n, fid from db_all order by n, fid desc"_s).substr(0, 14),
              "1|AAAAAAAAAAA4");
    EXPECT_EQ(rows(u"select playcountday from db_all order by playcountday, fid"_s), "-\n-\n-\n2");
    EXPECT_EQ(
        rows(u"select genre, count(*) from db_all group by genre order by count(*) desc, genre"_s),
        "Rock|2\n-|1\nPop|1");
}

TEST_F(DialectQueries, TheOrderOfAGroupedQueryHolds)
{
    m_library.addQuery(
        u"v_state"_s,
        u"select genre, count(*) as n from db_all where genre is not null group by genre order by genre desc"_s);
    m_library.addQuery(
        u"v_lists"_s,
        u"select distinct pl_name.name, pl_name.sid from pl_name order by pl_name.sid desc, pl_name.name"_s);
    EXPECT_EQ(rows(u"select * from v_state"_s), "Rock|2\nPop|1");
    EXPECT_EQ(rows(u"select n from v_state where n>0"_s), "2\n1");
    EXPECT_EQ(rows(u"select name from v_lists"_s), "Abend\nJingles\nParty");
    EXPECT_EQ(rows(u"select name from v_lists where sid=1 order by name desc"_s), "Party\nJingles");
    static_cast<void>(m_library.run(u"insert into tree_genre (name) select genre from v_state"_s));
    EXPECT_EQ(rows(u"select id, name from tree_genre order by id"_s), "1|Rock\n2|Pop");
}

TEST_F(DialectQueries, Top)
{
    EXPECT_EQ(rows(u"select top 2 fid from db_all order by fid desc"_s),
              "AAAAAAAAAAA4\nAAAAAAAAAAA3");
    EXPECT_EQ(rows(u"select top 50 percent fid from db_all order by fid"_s),
              "AAAAAAAAAAA1\nAAAAAAAAAAA2");
    EXPECT_EQ(
        rows(u"select distinct top 1 genre from db_all where genre is not null order by genre"_s),
        "Pop");
    EXPECT_EQ(
        rows(
            u"select top 1 nid from pl_name union select top 1 grid+100 from pl_group order by 1"_s),
        "5\n101");
}

TEST_F(DialectQueries, JoinsInBracketsAndToEitherSide)
{
    EXPECT_EQ(
        rows(
            u"select p.plid, d.titel from pl_all as p left join db_all d on p.fid = d.fid order by p.plid"_s),
        "1|Blue\n2|blues\n3|Émile\n4|-");
    EXPECT_EQ(
        rows(
            u"select p.plid, d.titel from db_all d right outer join pl_all p on p.fid = d.fid where d.fid is null"_s),
        "4|-");
    EXPECT_EQ(
        rows(
            u"select plid, pl_name.name, pl_group.name from ((pl_all inner join pl_name on pl_all.pnid=pl_name.nid) inner join pl_group on pl_name.grid=pl_group.grid) left join db_all on pl_all.fid=db_all.fid where db_all.fid is null"_s),
        "4|Abend|Gruppe");
    EXPECT_EQ(
        rows(
            u"select g.grid, plid from pl_group g left join (pl_name n inner join pl_all p on n.nid=p.pnid) on g.grid=n.grid order by g.grid, plid"_s),
        "1|1\n1|2\n1|3\n1|4\n2|-");
    EXPECT_EQ(
        rows(
            u"select p.plid, v.nr from pl_all p left join vpl_all v on (p.plid=v.plid and v.pitch<>2) order by p.plid"_s),
        "1|1\n2|-\n3|1\n4|-");
}

TEST_F(DialectQueries, OptionalTablesAreMarked)
{
    const Translation translation =
        translated(u"select p.plid, d.titel from pl_all as p left join db_all d on p.fid=d.fid"_s);
    ASSERT_EQ(translation.tables.size(), 2u);
    EXPECT_FALSE(translation.tables[0].optional);
    EXPECT_TRUE(translation.tables[1].optional);
}

TEST_F(DialectQueries, OnlyRowsOfTablesAreKeyed)
{
    EXPECT_TRUE(translated(u"select fid from db_all"_s).keyed);
    EXPECT_TRUE(translated(u"select a.fid from db_all a, pl_all b"_s).keyed);
    EXPECT_TRUE(translated(u"select top 5 fid from db_all"_s).keyed);
    EXPECT_FALSE(translated(u"select distinct fid from db_all"_s).keyed);
    EXPECT_TRUE(translated(u"select distinctrow fid from db_all"_s).keyed);
    EXPECT_TRUE(
        translated(u"select distinctrow a.fid, plid from db_all a, pl_all b where a.fid=b.fid"_s)
            .keyed);
    EXPECT_FALSE(
        translated(u"select distinctrow a.fid from db_all a, pl_all b where a.fid=b.fid"_s).keyed);
    EXPECT_FALSE(translated(u"select count(*) from db_all"_s).keyed);
    EXPECT_FALSE(translated(u"select fid from db_all group by fid"_s).keyed);
    EXPECT_FALSE(translated(u"select fid from db_all union select fid from pl_all"_s).keyed);
    EXPECT_FALSE(translated(u"select * from (select fid from db_all) as q"_s).keyed);
    EXPECT_FALSE(translated(u"select 1"_s).keyed);
}

TEST_F(DialectQueries, NamesOfColumns)
{
    EXPECT_EQ(names(u"select fid, TITEL as t, 1+1, dlen/2 as x, 'a' from db_all"_s),
              "FID,t,Expr1000,x,Expr1001");
    EXPECT_EQ(names(u"select a.fid, b.fid, plid from db_all a, pl_all b"_s), "a.FID,b.FID,PLID");
    EXPECT_EQ(names(u"select a.* from pl_group as a"_s), "GRID,Name,SID,Activ");
    EXPECT_EQ(names(u"select [fid] [Der Name] from db_all"_s), "Der Name");
}

TEST_F(DialectQueries, FieldsOfColumns)
{
    const Translation translation =
        translated(u"select fid as x, dlen, titel & 'a', play from db_all"_s);
    EXPECT_EQ(translation.columns[0].field.Size, 12);
    EXPECT_EQ(translation.columns[0].field.Name.toStdString(), "x");
    EXPECT_EQ(translation.columns[1].field.Type, FieldType::Long);
    EXPECT_EQ(translation.columns[2].field.Type, FieldType::Text);
    EXPECT_EQ(translation.columns[2].table, -1);
    EXPECT_EQ(translation.columns[3].field.Type, FieldType::Date);
}

TEST_F(DialectQueries, AliasesOfEarlierColumnsMayBeNamed)
{
    EXPECT_EQ(rows(u"select dlen/1000 as kb, kb*2 as twice from db_all where fid='AAAAAAAAAAA1'"_s),
              "1.0|2.0");
}

TEST_F(DialectQueries, NumbersAndTextsMeetByTheirValue)
{
    EXPECT_EQ(rows(u"select fid from db_all where bpm = 98"_s), "AAAAAAAAAAA1");
    EXPECT_EQ(rows(u"select fid from db_all where bpm >= 98 order by fid"_s),
              "AAAAAAAAAAA1\nAAAAAAAAAAA2");
    EXPECT_EQ(rows(u"select fid from db_all where dlen = '1000'"_s), "AAAAAAAAAAA1");
    EXPECT_EQ(rows(u"select fid from db_all where note in (4, 5) order by fid"_s),
              "AAAAAAAAAAA1\nAAAAAAAAAAA2");
    EXPECT_EQ(rows(u"select fid from db_all where dtsimport = '15.03.2023'"_s), "AAAAAAAAAAA1");
    EXPECT_EQ(
        rows(
            u"select fid from db_all where dtsimport between #03/15/2023# and #16.03.2023# order by fid"_s),
        "AAAAAAAAAAA1\nAAAAAAAAAAA2\nAAAAAAAAAAA3");
    EXPECT_EQ(rows(u"select nid from pl_name where activ = -1 order by nid"_s), "5\n7");
    EXPECT_EQ(rows(u"select nid from pl_name where activ order by nid"_s), "5\n7");
    EXPECT_EQ(rows(u"select nid from pl_name where not activ"_s), "6");
}

TEST_F(DialectQueries, CorrelatedSubqueries)
{
    EXPECT_EQ(
        rows(
            u"select nid, (select count(*) from pl_all where pnid=nid) as n from pl_name order by nid"_s),
        "5|2\n6|2\n7|0");
    EXPECT_EQ(
        rows(
            u"select fid from db_all d where exists (select * from pl_all p where p.fid=d.fid and p.pitch>1) order by fid"_s),
        "AAAAAAAAAAA2\nAAAAAAAAAAA3");
    EXPECT_EQ(
        rows(u"select a.nid from pl_name a where a.nid = (select max(a.nid) from pl_name a)"_s),
        "7");
}

TEST_F(DialectQueries, HavingFiltersGroups)
{
    EXPECT_EQ(rows(u"select genre, count(*) as n from db_all group by genre having count(*) > 1"_s),
              "Rock|2");
    EXPECT_EQ(
        rows(
            u"select genre, count(*) as n from db_all group by genre having n = 1 order by genre"_s),
        "-|1\nPop|1");
}

TEST_F(DialectQueries, DeclaredParameters)
{
    const Translation translation = translated(
        u"parameters [sPath] Text(255), n Long; select fid from db_all where path like [sPath] and del = n"_s);
    ASSERT_EQ(translation.parameters.size(), 2u);
    EXPECT_EQ(translation.parameters[0].Name.toStdString(), "sPath");
    EXPECT_EQ(translation.parameters[1].Type, FieldType::Long);
    EXPECT_EQ(m_library.raw(translation.sql, {u"c:*"_s, u"0"_s}).toStdString(),
              "AAAAAAAAAAA1\nAAAAAAAAAAA2");
    EXPECT_EQ(m_library.runByKeys(translation, {u"d:*"_s, u"-1"_s}).toStdString(), "AAAAAAAAAAA3");
}

TEST_F(DialectQueries, UnknownNamesAreParametersOnlyWhenAllowed)
{
    const QString statement =
        u"insert into todo (id, fid) select [p], fid from db_all where dlen = [q] or dlen = [P]"_s;
    const Translation translation = translate(statement, m_library, true);
    ASSERT_EQ(translation.parameters.size(), 2u);
    EXPECT_EQ(translation.parameters[1].Name.toStdString(), "q");
    static_cast<void>(m_library.raw(translation.sql, {u"77"_s, u"1000"_s}));
    EXPECT_EQ(rows(u"select * from todo"_s), "77|AAAAAAAAAAA1");
    EXPECT_THROW(static_cast<void>(translated(statement)), DbError);
}

TEST_F(DialectQueries, ParametersOfAWovenQueryReachTheStatement)
{
    m_library.addQuery(u"by_list"_s,
                       u"parameters [list] Long; select plid from pl_all where pnid=[list]"_s);
    const Translation translation = translated(u"select count(*) from by_list"_s);
    ASSERT_EQ(translation.parameters.size(), 1u);
    EXPECT_EQ(m_library.raw(translation.sql, {u"6"_s}).toStdString(), "2");
}

TEST_F(DialectQueries, HostileTextsFindExactlyTheirRow)
{
    const QStringList hostile{u"it's"_s,
                              u"''"_s,
                              u"\"quoted\""_s,
                              u"[a-z]"_s,
                              u"*?#"_s,
                              u"line\nfeed\r\n"_s,
                              u"'; drop table db_all; --"_s,
                              u"a;b"_s,
                              u"Ü😀"_s,
                              QString(10'000, u'x')};
    for (const QString& value : hostile) {
        QString doubled = value;
        doubled.replace(u"'"_s, u"''"_s);
        static_cast<void>(m_library.run(u"delete from config"_s));
        static_cast<void>(m_library.raw(u"insert into config (Lang, Name) values (1, 'other')"_s));
        static_cast<void>(
            m_library.raw(u"insert into config (Lang, Name) values (2, '%1')"_s.arg(doubled)));
        EXPECT_EQ(rows(u"select lang from config where name='%1'"_s.arg(doubled)), "2")
            << value.left(40).toStdString();
        QString other = value;
        other.replace(u"\""_s, u"\"\""_s);
        EXPECT_EQ(rows(u"select lang from config where name=\"%1\""_s.arg(other)), "2")
            << value.left(40).toStdString();
    }
}

TEST_F(DialectQueries, UpdateThroughAJoinWritesOneTable)
{
    const Translation translation = translated(
        u"update pl_all inner join db_all on pl_all.fid=db_all.fid set pl_all.mixin = db_all.titel, pl_all.volume = 55.5 where db_all.del=0"_s);
    ASSERT_EQ(translation.written.size(), 1u);
    EXPECT_EQ(translation.written[0].name.toStdString(), "PL_ALL");
    static_cast<void>(m_library.raw(translation.sql));
    EXPECT_EQ(rows(u"select plid, mixin, volume from pl_all order by plid"_s),
              "1|Blue|56\n2|blues|56\n3|in3|70\n4|-|60");
    static_cast<void>(m_library.run(
        u"update pl_all as p left join db_all as d on p.fid=d.fid set p.eq='weg' where d.fid is null"_s));
    EXPECT_EQ(rows(u"select plid from pl_all where eq='WEG'"_s), "4");
}

TEST_F(DialectQueries, DeleteFromAJoinTakesTheNamedTable)
{
    static_cast<void>(m_library.run(
        u"delete p.* from pl_all as p left join db_all as d on p.fid=d.fid where d.fid is null"_s));
    EXPECT_EQ(rows(u"select plid from pl_all order by plid"_s), "1\n2\n3");
    static_cast<void>(m_library.run(u"delete distinctrow pl_all.* from pl_all where pitch=3"_s));
    EXPECT_EQ(rows(u"select count(*) from pl_all"_s), "2");
}

TEST_F(DialectQueries, InsertWithoutColumnsGoesByName)
{
    static_cast<void>(
        m_library.run(u"insert into todo select fid, 9 as id from db_all where fid like '*1'"_s));
    EXPECT_EQ(rows(u"select id, fid from todo"_s), "9|AAAAAAAAAAA1");
    static_cast<void>(m_library.run(u"insert into todo values (8, 'b')"_s));
    EXPECT_EQ(rows(u"select fid from todo where id=8"_s), "b");
}

struct Assigned
{
    const char* statement;
    const char* value; ///< or the error it fails with
};

TEST_F(DialectQueries, AssignedValuesTakeTheTypeOfTheirColumn)
{
    const Assigned kCases[] = {
        {"dlen=2.5", "2"},
        {"dlen=3.5", "4"},
        {"dlen='17 Lieder'", "17"},
        {"dlen=null", "-"},
        {"dlen=true", "-1"},
        {"dlen=4e9", "MLV:3464:"},
        {"note=3", "3"},
        {"note='12'", "MLV:3163:"},
        {"note=12", "MLV:3163:"},
        {"note='Ä'", "Ä"},
        {"play='31.12.2024'", "45657.0"},
        {"play=''", "-"},
        {"play='unlesbar'", "MLV:3464:"},
        {"play=now-1", "45457.5208333333"},
        {"gain='2.5'", "2.5"},
        {"gain=3", "3.0"},
        {"titel=dlen", "1000"},
        {"titel=#31.12.2024#", "31.12.2024"},
    };
    for (const Assigned& test : kCases) {
        const QString set = QString::fromUtf8(test.statement);
        DialectLibrary library;
        std::string result;
        try {
            static_cast<void>(
                library.run(u"update db_all set %1 where fid='AAAAAAAAAAA1'"_s.arg(set)));
            result = library
                         .run(u"select %1 from db_all where fid='AAAAAAAAAAA1'"_s.arg(
                             set.left(set.indexOf(u'='))))
                         .toStdString();
        } catch (const std::runtime_error& error) {
            result = std::string(error.what()).substr(0, 9);
        }
        EXPECT_EQ(result, test.value) << test.statement;
    }
}

TEST_F(DialectQueries, KindsOfStatements)
{
    EXPECT_EQ(translated(u"select 1"_s).queryType, QueryType::Select);
    EXPECT_EQ(translated(u"select 1 union select 2"_s).queryType, QueryType::SetOperation);
    EXPECT_EQ(translated(u"delete from todo"_s).queryType, QueryType::Delete);
    EXPECT_EQ(translated(u"update todo set id=1"_s).queryType, QueryType::Update);
    EXPECT_EQ(translated(u"insert into todo (id) values (1)"_s).queryType, QueryType::Append);
    EXPECT_EQ(translated(u"drop table todo"_s).queryType, QueryType::Ddl);
}

TEST_F(DialectQueries, CreateTable)
{
    const Translation translation = translated(
        u"create table [my t] (id counter constraint pk primary key, name text(50) not null, n long, d datetime, y yesno, m memo, x double, b byte, "
        u"k text, unique (name, n), constraint second unique (k))"_s);
    EXPECT_EQ(translation.kind, StatementKind::Ddl);
    ASSERT_TRUE(translation.ddl.has_value());
    const TableDef& table = translation.ddl->table;
    EXPECT_EQ(translation.ddl->kind, DdlAction::Kind::CreateTable);
    EXPECT_EQ(table.Name.toStdString(), "my t");
    ASSERT_EQ(table.Fields.size(), 9u);
    EXPECT_EQ(table.Fields[0].Attributes, kFieldAutoNumber);
    EXPECT_EQ(table.Fields[1].Size, 50);
    EXPECT_TRUE(table.Fields[1].Required);
    EXPECT_EQ(table.Fields[3].Type, FieldType::Date);
    EXPECT_EQ(table.Fields[4].Type, FieldType::Boolean);
    EXPECT_EQ(table.Fields[5].Type, FieldType::Memo);
    EXPECT_EQ(table.Fields[6].Type, FieldType::Double);
    EXPECT_EQ(table.Fields[7].Type, FieldType::Long);
    EXPECT_EQ(table.Fields[8].Size, 255);
    ASSERT_EQ(table.Indexes.size(), 3u);
    EXPECT_EQ(table.Indexes[0].Name.toStdString(), "pk");
    EXPECT_TRUE(table.Indexes[0].Primary);
    EXPECT_EQ(table.Indexes[1].Fields.join(u',').toStdString(), "name,n");
    EXPECT_EQ(table.Indexes[2].Name.toStdString(), "second");
}

TEST_F(DialectQueries, OtherChangesOfTheCatalogue)
{
    const auto action = [&](const QString& statement) { return *translated(statement).ddl; };
    DdlAction alter = action(u"alter table db_version alter COLUMN id text(50)"_s);
    EXPECT_EQ(alter.kind, DdlAction::Kind::AlterColumn);
    EXPECT_EQ(alter.table.Name.toStdString(), "db_version");
    EXPECT_EQ(alter.field.Name.toStdString(), "id");
    EXPECT_EQ(alter.field.Size, 50);
    DdlAction add = action(u"alter table t add column c long"_s);
    EXPECT_EQ(add.kind, DdlAction::Kind::AddColumn);
    EXPECT_EQ(add.field.Type, FieldType::Long);
    EXPECT_EQ(action(u"alter table t drop column c"_s).kind, DdlAction::Kind::DropColumn);
    EXPECT_EQ(action(u"drop table t"_s).table.Name.toStdString(), "t");
    DdlAction index = action(u"create unique index i on t (a, b desc) with primary"_s);
    EXPECT_EQ(index.kind, DdlAction::Kind::CreateIndex);
    EXPECT_TRUE(index.index.Primary && index.index.Unique);
    EXPECT_EQ(index.index.Fields.join(u',').toStdString(), "a,b");
    DdlAction drop = action(u"drop index i on t"_s);
    EXPECT_EQ(drop.kind, DdlAction::Kind::DropIndex);
    EXPECT_EQ(drop.index.Name.toStdString(), "i");
}

} // namespace

} // namespace melovane::sqlite
