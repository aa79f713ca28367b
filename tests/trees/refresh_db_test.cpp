#include "platform/db/sql_text.h"
#include "refresh_fixture.h"

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

TEST_F(RefreshDbTest, AlbumsAreRefilledByTheGivenStatements)
{
    suite.library.add({.Album = u"B"_s});
    const QStringList statements =
        statementsOf([this] { trees.TreeAlbum(); }, {{u"tree_album"_s, u"name='B'"_s}});
    EXPECT_EQ(
        statements,
        (QStringList{u"select * from tree_album where favorit=true"_s, u"delete from tree_album"_s,
                     u"select Album from db_all where DEL = False"_s,
                     u"update tree_album set tstamp=#2026-03-01 20:15:30# , favorit=true "
                     u"where name='B' "_s}));
    EXPECT_EQ(failures, QStringList());
}

TEST_F(RefreshDbTest, ArtistsAreRefilledByTheGivenStatements)
{
    trees.TreeInterpret();
    EXPECT_EQ(engine.statements.take(),
              (QStringList{u"select * from tree_interpret where favorit=true"_s,
                           u"delete from tree_interpret"_s,
                           u"select Interpret from db_all where DEL = False"_s}));
}

TEST_F(RefreshDbTest, GenresAndTheirArtistsAreRefilledByTheGivenStatements)
{
    suite.library.add({.Interpret = u"Anna"_s, .Genre = u"Pop"_s});
    const QStringList statements = statementsOf(
        [this] { trees.TreeGenre(); },
        {{u"tree_genre"_s, u"name='Pop'"_s}, {u"tree_genre_interpret"_s, u"name='Anna'"_s}});
    EXPECT_EQ(
        statements,
        (QStringList{u"select * from tree_genre where favorit=true"_s, u"delete from tree_genre"_s,
                     u"select Genre from db_all where DEL = False"_s,
                     u"update tree_genre set tstamp=#2026-03-01 20:15:30# , favorit=true "
                     u"where name='Pop' "_s,
                     u"select * from tree_genre_interpret where favorit=true"_s,
                     u"delete from tree_genre_interpret"_s,
                     u"select Genre,Interpret from db_all where DEL = False"_s,
                     u"update tree_genre_interpret set tstamp=#2026-03-01 20:15:30# , "
                     u"favorit=true where name='Anna'  and genre='Pop' "_s}));
}

TEST_F(RefreshDbTest, ATableOfAColumnIsRefilledByTheGivenStatements)
{
    suite.library.add({.Stimmung = u"warm"_s});
    const QStringList statements = statementsOf([this] { trees.TreeTable(u"stimmung"_s); },
                                                {{u"tree_stimmung"_s, u"name='warm'"_s}});
    EXPECT_EQ(
        statements,
        (QStringList{u"select * from tree_stimmung where favorit=true"_s,
                     u"delete from tree_stimmung"_s,
                     u"select stimmung from db_all where DEL = False"_s,
                     u"update tree_stimmung set tstamp=#2026-03-01 20:15:30# , favorit=true where "
                     u"name='warm' "_s}));
}

TEST_F(RefreshDbTest, ImportDaysAreRefilledByTheGivenStatements)
{
    trees.TreeTableImportDate();
    EXPECT_EQ(engine.statements.take(),
              (QStringList{u"delete from tree_importdate"_s,
                           u"select DTSImport from db_all where DEL = False"_s}));
}

TEST_F(RefreshDbTest, FoldersAreReadFromTheViewAndTheirMarksPutBack)
{
    suite.library.add({.Path = u"C:\\a\\"_s});
    const QStringList statements =
        statementsOf([this] { trees.TreeDir(); }, {{u"tree_dir"_s, u"rLevel=1"_s}});
    EXPECT_EQ(
        statements,
        (QStringList{u"select * from tree_dir where favorit=true"_s, u"delete from tree_dir"_s,
                     u"select Path,DriveTyp,DriveName from db_all where DEL = False"_s,
                     u"update tree_dir set tstamp=#2026-03-01 20:15:30# , favorit=true "
                     u"where path='C:\\a\\' "_s}));
}

TEST_F(RefreshDbTest, RowsStandInTheOrderOfTheirNamesWithTheirCountsAndImages)
{
    suite.library.add({.Interpret = u"Zoe"_s, .Album = u"b"_s, .Genre = u"Rock"_s});
    suite.library.add({.Interpret = u"Änne"_s, .Album = u"a"_s, .Genre = u"Pop"_s});
    suite.library.add({.Interpret = u"änne"_s, .Album = {}, .Genre = u"Pop"_s});
    suite.library.add({.Interpret = u"Weg"_s, .Album = u"Weg"_s, .Genre = u"Weg"_s, .DEL = -1});
    trees.TreeInterpret();
    trees.TreeAlbum();
    trees.TreeGenre();
    EXPECT_EQ(rows(u"select Name, anzahl, imgkey from tree_interpret order by id"_s),
              (QStringList{u"Änne|2|interpret"_s, u"Zoe|1|interpret"_s}));
    EXPECT_EQ(rows(u"select Name, anzahl, imgkey from tree_album order by id"_s),
              (QStringList{u"a|1|album"_s, u"b|1|album"_s}));
    EXPECT_EQ(rows(u"select Name, anzahl, imgkey from tree_genre order by id"_s),
              (QStringList{u"Pop|2|genre"_s, u"Rock|1|genre"_s}));
    EXPECT_EQ(rows(u"select Genre, Name, anzahl, imgkey from tree_genre_interpret order by id"_s),
              (QStringList{u"Pop|Änne|2|interpret"_s, u"Rock|Zoe|1|interpret"_s}));
}

TEST_F(RefreshDbTest, ImportDaysStandInTheOrderOfTimeUnderTheirGermanDate)
{
    for (const QDate day : {QDate(2026, 2, 1), QDate(2025, 12, 24), QDate(2026, 2, 1)}) {
        suite.library.add({.DTSImport = QDateTime(day, QTime(10, 0))});
    }
    trees.TreeTableImportDate();
    EXPECT_EQ(rows(u"select name, anzahl, imgkey from tree_importdate order by id"_s),
              (QStringList{u"24.12.2025|1|Tree.Imprtdate"_s, u"01.02.2026|2|Tree.Imprtdate"_s}));
}

TEST_F(RefreshDbTest, EveryColumnWithATreeHasItsTable)
{
    suite.library.add({.Kategorie = u"k"_s,
                       .Situation = u"s"_s,
                       .Stimmung = u"m"_s,
                       .Tempo = u"t"_s,
                       .User1 = u"u"_s});
    for (const auto& column :
         {u"Situation"_s, u"Stimmung"_s, u"Tempo"_s, u"Kategorie"_s, u"User1"_s}) {
        trees.TreeTable(column);
        EXPECT_EQ(rows(u"select anzahl, imgkey from tree_"_s + column),
                  QStringList{u"1|Tree."_s + column});
    }
    for (const auto& column : {u"User2"_s, u"User3"_s, u"User4"_s, u"User5"_s}) {
        EXPECT_NO_THROW(trees.TreeTable(column));
    }
}

TEST_F(RefreshDbTest, AFavouriteKeepsItsMarkAndItsMoment)
{
    suite.library.add({.Album = u"Gut"_s});
    suite.library.add({.Album = u"Naja"_s});
    trees.TreeAlbum();
    favour(u"tree_album"_s, u"name='Gut'"_s);
    trees.TreeAlbum();
    EXPECT_EQ(rows(u"select Name, favorit, tstamp from tree_album order by id"_s),
              (QStringList{u"Gut|-1|01.03.2026 20:15:30"_s, u"Naja|0|-"_s}));
}

TEST_F(RefreshDbTest, AFavouriteWithoutAMomentStaysOne)
{
    suite.library.add({.Album = u"Gut"_s});
    trees.TreeAlbum();
    suite.execute(u"update tree_album set favorit=true"_s);
    trees.TreeAlbum();
    EXPECT_EQ(rows(u"select favorit, tstamp from tree_album"_s), QStringList{u"-1|-"_s});
}

TEST_F(RefreshDbTest, ATableWithoutFavouritesStillMakesAndDeletesAnEmptyParkedFile)
{
    QByteArray parked = "never made";
    engine.statements.before = [&](const QString& statement) {
        if (statement == u"delete from tree_album"_s) {
            parked = suite.read(u"~tree.tmp"_s);
        }
    };
    trees.TreeAlbum();
    EXPECT_EQ(parked, QByteArray());
    EXPECT_FALSE(isParkedFileThere());
}

TEST_F(RefreshDbTest, ParkedFavouritesStandInQuotesWithTheirMomentALineEach)
{
    suite.library.add({.Interpret = u"Anna"_s, .Genre = u"R&B \"soft\""_s});
    trees.TreeGenre();
    favour(u"tree_genre_interpret"_s, u"name='Anna'"_s);
    QByteArray parked;
    engine.statements.before = [&](const QString& statement) {
        if (statement == u"delete from tree_genre_interpret"_s) {
            parked = suite.read(u"~tree.tmp"_s);
        }
    };
    trees.TreeGenre();
    EXPECT_EQ(parked, "\"R&B \"\"soft\"\"\",\"Anna\",#2026-03-01 20:15:30#\n");
}

TEST_F(RefreshDbTest, AnArtistFavouriteWithAnApostropheCeasesToBeOneByARebuild)
{
    suite.library.add({.Interpret = u"Sinead O'Connor"_s});
    trees.TreeInterpret();
    favour(u"tree_interpret"_s, u"name like 'Sinead*'"_s);
    trees.TreeInterpret();
    EXPECT_EQ(rows(u"select Name, favorit from tree_interpret"_s),
              QStringList{u"Sinead O'Connor|0"_s});
    EXPECT_EQ(failures, QStringList());
}

TEST_F(RefreshDbTest, AFavouriteWhoseValueNoTrackHasAnyMoreVanishes)
{
    const QString fid = suite.library.add({.Album = u"Alt"_s});
    suite.library.add({.Album = u"Neu"_s});
    trees.TreeAlbum();
    favour(u"tree_album"_s, u"name='Alt'"_s);
    suite.execute(u"delete from db_all where fid='%1'"_s.arg(fid));
    trees.TreeAlbum();
    EXPECT_EQ(rows(u"select Name, favorit from tree_album"_s), QStringList{u"Neu|0"_s});
    EXPECT_EQ(failures, QStringList());
}

TEST_F(RefreshDbTest, AFavouriteWithTheWordTableInItsNameCeasesToBeOneInATableOfAColumn)
{
    for (const auto& mood : {u"portable"_s, u"Table"_s}) {
        suite.library.add({.Stimmung = mood});
    }
    trees.TreeTable(u"Stimmung"_s);
    favour(u"tree_stimmung"_s, u"true"_s);
    trees.TreeTable(u"Stimmung"_s);
    EXPECT_EQ(rows(u"select name, favorit from tree_stimmung order by id"_s),
              (QStringList{u"portable|0"_s, u"Table|-1"_s}));
}

class HardNames : public RefreshDbTest, public testing::WithParamInterface<QString>
{};

TEST_P(HardNames, AFavouriteOfThatNameStaysOneInEveryTree)
{
    const QString name = GetParam();
    suite.library.add({.Interpret = name, .Album = name, .Genre = name, .User1 = name});
    const auto rebuild = [&] {
        trees.TreeGenre();
        trees.TreeAlbum();
        trees.TreeInterpret();
        trees.TreeTable(u"User1"_s);
    };
    rebuild();
    const QStringList tables{u"tree_genre"_s, u"tree_genre_interpret"_s, u"tree_album"_s,
                             u"tree_interpret"_s, u"tree_user1"_s};
    for (const QString& table : tables) {
        favour(table, u"true"_s);
    }
    rebuild();
    for (const QString& table : tables) {
        EXPECT_EQ(rows(u"select Name, favorit, tstamp from "_s + table),
                  QStringList{name + u"|-1|01.03.2026 20:15:30"_s})
            << table.toStdString();
    }
    EXPECT_EQ(failures, QStringList());
}

INSTANTIATE_TEST_SUITE_P(Names,
                         HardNames,
                         testing::Values(u"two \"words\""_s,
                                         u"\""_s,
                                         u"a,b"_s,
                                         u"[brackets] ] ["_s,
                                         u"* star ? mark #"_s,
                                         u"line\nfeed"_s,
                                         u"line\r\nend\r"_s,
                                         u"#2026-03-01 20:15:30#"_s,
                                         u" blanks around "_s,
                                         u"שלום עולם"_s,
                                         u"\\ back %1 %X%"_s,
                                         QString(255, u'ß')));

TEST_F(RefreshDbTest, AParkedFileOfADeadRebuildDoesNoHarm)
{
    suite.library.add({.Album = u"Gut"_s});
    suite.write(u"~tree.tmp"_s, "\"Gut\",#2026-03-01 20:15:30#\n");
    trees.TreeAlbum();
    EXPECT_EQ(rows(u"select Name, favorit from tree_album"_s), QStringList{u"Gut|0"_s});
    EXPECT_FALSE(isParkedFileThere());
}

TEST_F(RefreshDbTest, TheImportDaysDeleteAParkedFileThatLiesAbout)
{
    suite.write(u"~tree.tmp"_s, "");
    trees.TreeTableImportDate();
    EXPECT_FALSE(isParkedFileThere());
}

TEST_F(RefreshDbTest, ARebuildYieldsOnceToTheWindowBeforeItChangesAnything)
{
    int yields = 0;
    QStringList before{u"never"_s};
    RefreshDB yielding({.engine = engine,
                        .files = suite.files,
                        .clock = suite.clock,
                        .dataFolder = suite.dataFolder(),
                        .yield = [&] {
                            ++yields;
                            before = engine.statements.texts;
                        }});
    yielding.SetDbName(suite.dbName());
    for (const auto operation : {&RefreshDB::TreeGenre, &RefreshDB::TreeAlbum,
                                 &RefreshDB::TreeInterpret, &RefreshDB::TreeDir}) {
        yields = 0;
        engine.statements.take();
        (yielding.*operation)();
        EXPECT_EQ(yields, 1);
        EXPECT_EQ(before, QStringList());
    }
}

TEST_F(RefreshDbTest, AListWithAWrongCountGetsItAndTheMoment)
{
    const int wrong = suite.library.addPlaylist(
        {.Name = u"falsch"_s, .tracks = {suite.library.add(), suite.library.add()}});
    const int right = suite.library.addPlaylist({.Name = u"richtig"_s});
    suite.execute(u"update pl_name set anzahl=7, UpdateTime=null where NID=%1"_s.arg(wrong));
    suite.execute(
        u"update pl_name set anzahl=0, UpdateTime=#2020-01-01# where NID=%1"_s.arg(right));
    trees.PlnameCount();
    EXPECT_EQ(rows(u"select anzahl, UpdateTime from pl_name order by NID"_s),
              (QStringList{u"2|"_s + Value(suite.clock.now()).toText(), u"0|01.01.2020"_s}));
}

TEST_F(RefreshDbTest, ListsAreCountedByTheGivenStatements)
{
    const int list = suite.library.addPlaylist();
    trees.PlnameCount();
    EXPECT_EQ(engine.statements.take(),
              (QStringList{u"select * from pl_name"_s,
                           u"select count(*) as anz from pl_all where pnid=%1"_s.arg(list)}));
}

TEST_F(RefreshDbTest, WhatWasCountedBeforeAnErrorStaysCounted)
{
    for (int i = 0; i < 2; ++i) {
        suite.library.addPlaylist();
    }
    suite.execute(u"update pl_name set anzahl=7"_s);
    int counts = 0;
    engine.statements.before = [&](const QString& statement) {
        if (statement.startsWith(u"select count"_s) && ++counts == 2) {
            throw DbError(dberror::kDiskError, u"broken"_s);
        }
    };
    EXPECT_NO_THROW(trees.PlnameCount());
    EXPECT_EQ(rows(u"select anzahl from pl_name order by NID"_s), (QStringList{u"0"_s, u"7"_s}));
}

TEST_F(RefreshDbTest, TypedValuesAreOfferedByTheGivenStatements)
{
    trees.MusicMatch();
    QStringList expected{u"delete from config where value='User'"_s};
    const QStringList fields{u"Kategorie"_s, u"Stimmung"_s, u"Situation"_s, u"Tempo"_s};
    for (const QString& field : fields) {
        expected.append(QString(u"insert into config (Lang,Name,[Value],Beschreibung) select -1 , "
                                u"'%X%', 'User', %X% from db_all where %X% is not null and %X% "
                                u"<>'' group by %X%"_s)
                            .replace(u"%X%"_s, field));
    }
    for (const QString& field : fields) {
        expected.append(QString(u"delete from config where lang=-1 and Name='%X%' and beschreibung "
                                u"in (select beschreibung from config where lang<>-1 and "
                                u"Name='%X%')"_s)
                            .replace(u"%X%"_s, field));
    }
    EXPECT_EQ(engine.statements.take(), expected);
    EXPECT_EQ(failures, QStringList());
}

TEST_F(RefreshDbTest, ATypedValueIsOfferedUnlessTheCatalogueHasItInAnyLanguage)
{
    const QString known =
        suite.column(u"select Beschreibung from config where Name='Stimmung' and Lang=44"_s)
            .first();
    suite.library.add({.Stimmung = known});
    suite.library.add({.Stimmung = u"ganz eigen"_s});
    suite.execute(u"insert into config (Lang, Name, [Value], Beschreibung) values (-1, 'Tempo', "
                  u"'User', 'von gestern')"_s);
    trees.MusicMatch();
    EXPECT_EQ(rows(u"select Lang, Name, Beschreibung from config where [Value]='User'"_s),
              QStringList{u"-1|Stimmung|ganz eigen"_s});
}

TEST_F(RefreshDbTest, AFailingStatementOfTheTypedValuesIsPassedOver)
{
    suite.library.add({.Situation = u"Keller"_s, .Stimmung = u"laut"_s});
    engine.statements.before = [](const QString& statement) {
        if (statement.contains(u"'Stimmung', 'User'"_s)) {
            throw DbError(dberror::kLocked, u"locked"_s);
        }
    };
    EXPECT_NO_THROW(trees.MusicMatch());
    EXPECT_EQ(suite.column(u"select Beschreibung from config where Lang=-1"_s),
              QStringList{u"Keller"_s});
}

class FailingStep : public RefreshDbTest, public testing::WithParamInterface<QString>
{};

TEST_P(FailingStep, LeavesTheRowsAndMarksOfATreeAsTheyWere)
{
    suite.library.add({.Interpret = u"Anna"_s, .Album = u"Gut"_s, .Genre = u"Pop"_s});
    const auto rebuild = [&] {
        trees.TreeAlbum();
        trees.TreeInterpret();
        trees.TreeGenre();
    };
    rebuild();
    const QStringList tables{u"tree_album"_s, u"tree_interpret"_s, u"tree_genre"_s};
    for (const QString& table : tables) {
        favour(table, u"true"_s);
    }
    suite.library.add({.Interpret = u"Neu"_s, .Album = u"Neu"_s, .Genre = u"Neu"_s});
    engine.statements.before = [](const QString& statement) {
        if (statement.contains(GetParam())) {
            throw DbError(dberror::kDiskError, u"broken"_s);
        }
    };
    EXPECT_NO_THROW(rebuild());
    for (const QString& table : tables) {
        EXPECT_EQ(rows(u"select favorit, tstamp from "_s + table),
                  QStringList{u"-1|01.03.2026 20:15:30"_s})
            << table.toStdString();
    }
    EXPECT_EQ(failures.size(), 3);
    EXPECT_FALSE(isParkedFileThere());
}

INSTANTIATE_TEST_SUITE_P(
    Steps,
    FailingStep,
    testing::Values(u"select"_s, u"delete"_s, u"from db_all"_s, u"update tree_"_s));

TEST_F(RefreshDbTest, AnErrorOfATableOfAColumnReachesTheCallerAndTheRowsStay)
{
    suite.library.add({.Tempo = u"lento"_s});
    trees.TreeTable(u"Tempo"_s);
    trees.TreeTableImportDate();
    engine.statements.before = [](const QString& statement) {
        if (statement.endsWith(u"from db_all where DEL = False"_s)) {
            throw DbError(dberror::kDiskError, u"broken"_s);
        }
    };
    EXPECT_THROW(trees.TreeTable(u"Tempo"_s), DbError);
    EXPECT_THROW(trees.TreeTableImportDate(), DbError);
    EXPECT_EQ(rows(u"select name from tree_tempo"_s), QStringList{u"lento"_s});
    EXPECT_EQ(rows(u"select name from tree_importdate"_s), QStringList{u"14.03.2026"_s});
}

TEST_F(RefreshDbTest, AMissingLibraryFailsQuietlyOrAtTheCallerAsTold)
{
    trees.SetDbName(suite.file(u"fehlt.mdb"_s));
    EXPECT_NO_THROW(trees.TreeGenre());
    EXPECT_NO_THROW(trees.TreeAlbum());
    EXPECT_NO_THROW(trees.TreeInterpret());
    EXPECT_NO_THROW(trees.TreeDir());
    EXPECT_NO_THROW(trees.PlnameCount());
    EXPECT_NO_THROW(trees.MusicMatch());
    EXPECT_EQ(failures.size(), 6);
    EXPECT_THROW(trees.TreeTable(u"Tempo"_s), DbError);
    EXPECT_THROW(trees.TreeTableImportDate(), DbError);
}

TEST_F(RefreshDbTest, WhileATreeIsRefilledTheLibraryCanBeEditedAndTheOldTreeRead)
{
    const QString fid = suite.library.add({.Album = u"Alt"_s});
    trees.TreeAlbum();
    suite.execute(u"update db_all set Album='Neu' where fid='%1'"_s.arg(fid));
    const auto other = suite.open();
    QString shown;
    engine.statements.before = [&](const QString& statement) {
        if (statement == u"select Album from db_all where DEL = False"_s) {
            other->Execute(u"update db_all set Titel='Edited' where fid='%1'"_s.arg(fid));
            shown = other->OpenRecordset(u"select Name from tree_album"_s)->value(0).toText();
        }
    };
    trees.TreeAlbum();
    EXPECT_EQ(failures, QStringList());
    EXPECT_EQ(shown, u"Alt"_s);
    EXPECT_EQ(rows(u"select Titel, Album from db_all"_s), QStringList{u"Edited|Neu"_s});
    EXPECT_EQ(rows(u"select Name from tree_album"_s), QStringList{u"Neu"_s});
}

TEST_F(RefreshDbTest, SoundexGivesTheLetterAndThreeDigits)
{
    EXPECT_EQ(RefreshDB::Soundex({}), u"0000"_s);
    EXPECT_EQ(RefreshDB::Soundex(u"123 -"_s), u"0000"_s);
    EXPECT_EQ(RefreshDB::Soundex(u"Robert"_s), u"R163"_s);
    EXPECT_EQ(RefreshDB::Soundex(u"rupert"_s), u"R163"_s);
    EXPECT_EQ(RefreshDB::Soundex(u"A"_s), u"A000"_s);
}

TEST_F(RefreshDbTest, SoundexPartsEqualLettersByHAndWButNotByOtherSigns)
{
    EXPECT_EQ(RefreshDB::Soundex(u"Ashcraft"_s), u"A226"_s);
    EXPECT_EQ(RefreshDB::Soundex(u"Bwb"_s), u"B100"_s);
    EXPECT_EQ(RefreshDB::Soundex(u"Al-l"_s), u"A400"_s);
    EXPECT_EQ(RefreshDB::Soundex(u"Bbc"_s), u"B200"_s);
    EXPECT_EQ(RefreshDB::Soundex(u"1Lloyd"_s), u"L300"_s);
}

} // namespace
} // namespace melovane
