#include "refresh_fixture.h"
#include "trees/track_counts.h"

#include <random>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

/// A library of few values in many spellings, gaps and deleted tracks.
class TrackCountsTest : public RefreshDbTest
{
protected:
    /// \return the stored query's rows; the table is empty before
    QStringList rowsOfStatement(const QString& statement, const QString& rowsOf) const
    {
        const auto database = suite.open();
        database->Execute(statement);
        return rows(rowsOf);
    }

    void fill(unsigned seed)
    {
        random.seed(seed);
        const auto database = suite.open();
        Transaction transaction(*database);
        const auto tracks = database->OpenRecordset(u"select * from db_all"_s);
        for (int i = 0; i < kTracks; ++i) {
            addTrack(*tracks, i);
        }
        transaction.commit();
    }

    void addTrack(Recordset& tracks, int number)
    {
        tracks.AddNew();
        tracks.setValue(u"FID", QString::number(100'000'000'000 + number));
        for (const auto& column : {u"Genre"_s, u"Interpret"_s, u"Album"_s, u"User5"_s}) {
            tracks.setValue(column, any(names));
        }
        tracks.setValue(u"Path", any(paths));
        tracks.setValue(u"DriveName", any(names));
        tracks.setValue(u"DriveTyp", below(3) == 0 ? Value(4) : Value(below(5)));
        tracks.setValue(u"DEL", below(6) == 0 ? Value(-1) : Value(0));
        tracks.setValue(u"DTSImport", below(9) == 0 ? Value() : Value(Value::Day{day()}));
        tracks.Update();
    }

    /// Often close to midnight, where rounding decides on the day.
    double day()
    {
        const double whole = 45000 + below(20);
        const double close = 1 - below(1200) / 86'400'000.0;
        return below(2) == 0 ? whole + close : whole + below(1000) / 1000.0;
    }

    int below(int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(random); }

    Value any(const std::vector<Value>& values)
    {
        return values[size_t(below(int(values.size())))];
    }

    static constexpr int kTracks = 600;
    std::mt19937 random;
    const std::vector<Value> names{Value(),
                                   Value(u""_s),
                                   Value(u"Anna"_s),
                                   Value(u"ANNA"_s),
                                   Value(u"anna"_s),
                                   Value(u"Ärzte"_s),
                                   Value(u"ärzte"_s),
                                   Value(u"A\u0308rzte"_s),
                                   Value(u"Arzte"_s),
                                   Value(u"Straße"_s),
                                   Value(u"Strasse"_s),
                                   Value(u" Anna"_s),
                                   Value(u"Zoë"_s),
                                   Value(u"10"_s),
                                   Value(u"9"_s),
                                   Value(u"it's \"so\""_s),
                                   Value(u"[x]*"_s),
                                   Value(u"a\nb"_s),
                                   Value(u"\u05D0\u05D1"_s),
                                   Value(QString(255, u'y'))};
    const std::vector<Value> paths{Value(),
                                   Value(u""_s),
                                   Value(u"C:\\Music\\"_s),
                                   Value(u"c:\\music\\"_s),
                                   Value(u"C:\\Music\\Änne\\"_s),
                                   Value(u"C:\\Music\\änne\\"_s),
                                   Value(u"/"_s),
                                   Value(u"/music/a/"_s),
                                   Value(u"/music/A/"_s),
                                   Value(u"\\\\server\\x\\"_s)};
};

TEST_F(TrackCountsTest, EveryTableIsFilledAsTheStoredQueryFillsIt)
{
    struct Table
    {
        QString name;
        QString statement;
        QString columns;
        std::function<void()> refill;
    };

    const std::vector<Table> tables{
        {u"tree_album"_s, u"UPDATE_TREE_ALBUM"_s, u"Name"_s, [&] { trees.TreeAlbum(); }},
        {u"tree_genre"_s, u"UPDATE_TREE_GENRE"_s, u"Name"_s, [&] { trees.TreeGenre(); }},
        {u"tree_genre_interpret"_s, u"UPDATE_TREE_GENRE_interpret"_s, u"Genre, Name"_s,
         [&] { trees.TreeGenre(); }},
        {u"tree_interpret"_s, u"UPDATE_TREE_interpret"_s, u"Name"_s,
         [&] { trees.TreeInterpret(); }},
        {u"tree_user5"_s,
         u"INSERT INTO tree_user5 ( name, anzahl, imgkey ) SELECT db_all.user5 AS name, Count(*) "
         u"AS anzahl, 'Tree.user5' AS imgkey From db_all Where db_all.user5 <> '' And del = False "
         u"GROUP BY db_all.user5 ORDER BY db_all.user5"_s,
         u"Name"_s, [&] { trees.TreeTable(u"user5"_s); }},
        {u"tree_importdate"_s,
         u"INSERT INTO tree_importdate (name, anzahl, imgkey ) SELECT "
         u"format(db_all.DTSImport,'dd.mm.yyyy') AS name, Count(*) AS anzahl, 'Tree.Imprtdate' AS "
         u"imgkey From db_all Where del = False and db_all.DTSImport is not null GROUP BY "
         u"format(db_all.DTSImport,'yyyymmdd'),format(db_all.DTSImport,'dd.mm.yyyy') ORDER BY "
         u"format(db_all.DTSImport,'yyyymmdd')"_s,
         u"Name"_s, [&] { trees.TreeTableImportDate(); }}};
    for (const unsigned seed : {1U, 2U, 3U}) {
        suite.execute(u"delete from db_all"_s);
        fill(seed);
        for (const Table& table : tables) {
            const QString shown = u"select %1, anzahl, imgkey, favorit, tstamp from %2 order by "
                                  u"id"_s.arg(table.columns, table.name);
            table.refill();
            const QStringList counted = rows(shown);
            EXPECT_GT(counted.size(), 5) << table.name.toStdString();
            suite.execute(u"delete from "_s + table.name);
            EXPECT_EQ(counted, rowsOfStatement(table.statement, shown))
                << table.name.toStdString() << " of seed " << seed;
        }
    }
    EXPECT_EQ(failures, QStringList());
}

TEST_F(TrackCountsTest, FoldersAreCountedAsTheViewGroupsThem)
{
    for (const unsigned seed : {4U, 5U, 6U}) {
        suite.execute(u"delete from db_all"_s);
        fill(seed);
        FolderCounter counter;
        countTracks(*suite.open(), {&counter});
        QStringList counted;
        for (const TrackFolder& folder : counter.folders()) {
            counted.append(u"%1|%2|%3|%4"_s.arg(folder.Path, folder.DriveName)
                               .arg(folder.DriveTyp)
                               .arg(folder.anzahl));
        }
        const QStringList grouped =
            rows(u"select Path, DriveName, DriveTyp, anzahl from v_tree_dir"_s);
        EXPECT_GT(grouped.size(), 20);
        EXPECT_EQ(counted.join(u'\n').toStdString(), grouped.join(u'\n').toStdString())
            << "seed " << seed;
    }
}

TEST_F(TrackCountsTest, AStoredQueryThatSaysSomethingElseIsRun)
{
    suite.library.add({.Album = u"Eins"_s});
    const auto database = suite.open();
    database->queryDefs().Delete(u"UPDATE_TREE_ALBUM"_s);
    static_cast<void>(database->CreateQueryDef(
        u"UPDATE_TREE_ALBUM"_s,
        u"INSERT INTO tree_album (Name, anzahl, imgkey) SELECT Album, 77, 'other' FROM db_all"_s));
    trees.TreeAlbum();
    EXPECT_EQ(rows(u"select Name, anzahl, imgkey from tree_album"_s),
              QStringList{u"Eins|77|other"_s});
}

TEST_F(TrackCountsTest, CountsOfOneWalkServeAllTablesUntilTheLibraryIsWritten)
{
    suite.library.add({.Interpret = u"A"_s, .Album = u"Eins"_s, .Path = u"/a/"_s});
    const auto library = suite.open();
    trees.countOnce(*library);
    engine.statements.take();
    trees.TreeInterpret();
    trees.TreeDir();
    EXPECT_EQ(engine.statements.take().filter(u"from db_all"_s), QStringList());
    EXPECT_EQ(rows(u"select Name, anzahl from tree_interpret"_s), QStringList{u"A|1"_s});
    EXPECT_EQ(rows(u"select Path, anzahl from tree_dir order by id"_s),
              (QStringList{u"/|0"_s, u"/a/|1"_s}));
    suite.library.add({.Album = u"Zwei"_s});
    trees.TreeAlbum();
    EXPECT_EQ(rows(u"select Name from tree_album order by id"_s),
              (QStringList{u"Eins"_s, u"Zwei"_s}));
    EXPECT_EQ(failures, QStringList());
}

TEST_F(TrackCountsTest, AFilledTableIsNoWriteIntoTheLibrary)
{
    suite.library.add({.Interpret = u"A"_s, .Album = u"Eins"_s, .Path = u"/a/"_s});
    const auto library = suite.open();
    // From now on this connection has the side file of the trees open, too.
    EXPECT_TRUE(library->OpenRecordset(u"select Name from tree_album"_s)->Eof());
    trees.countOnce(*library);
    engine.statements.take();
    trees.TreeInterpret();
    trees.TreeAlbum();
    trees.TreeDir();
    EXPECT_EQ(engine.statements.take().filter(u"from db_all"_s), QStringList());
    EXPECT_EQ(rows(u"select Name from tree_album"_s), QStringList{u"Eins"_s});
}

TEST_F(TrackCountsTest, TypedValuesOfOneWalkAreThoseOfTheStatements)
{
    fill(7);
    const QString shown =
        u"select Lang, Name, [Value], Beschreibung from config where [Value]='User'"_s;
    suite.execute(u"update db_all set Kategorie=User5, Situation=Genre, Stimmung=Interpret, "
                  u"Tempo=Album"_s);
    // The first spelling in the library may stand in a deleted track.
    suite.execute(u"update db_all set Tempo='aNNa', DEL=-1 where FID='100000000000'"_s);
    suite.execute(u"update db_all set Tempo='only deleted', DEL=-1 where FID='100000000001'"_s);
    trees.MusicMatch();
    const QStringList stated = rows(shown);
    EXPECT_GT(stated.size(), 30);
    EXPECT_TRUE(stated.contains(u"-1|Tempo|User|only deleted"_s));
    suite.execute(u"delete from config where [Value]='User'"_s);
    const auto library = suite.open();
    trees.countOnce(*library);
    engine.statements.take();
    trees.MusicMatch();
    EXPECT_EQ(engine.statements.take().filter(u"from db_all"_s), QStringList());
    EXPECT_EQ(rows(shown), stated);
    EXPECT_EQ(failures, QStringList());
}

TEST_F(TrackCountsTest, AWalkShowsEachRowOnceInItsOrderWithItsKinds)
{
    suite.library.add({.FID = u"000000000002"_s, .Interpret = u"Zoë"_s});
    suite.library.add({.FID = u"000000000001"_s, .Interpret = {}});
    suite.execute(u"update db_all set Interpret=null where FID='000000000001'"_s);
    QStringList seen;
    suite.open()->walkRows(u"select FID, Interpret, DEL, DTSImport from db_all order by FID"_s,
                           [&](const WalkedRow& row) {
                               EXPECT_EQ(row.isNull(1), row.bytes(1).empty());
                               EXPECT_FALSE(row.isNumber(0));
                               EXPECT_TRUE(row.isNumber(2));
                               EXPECT_EQ(row.number(2), 0);
                               EXPECT_GT(row.real(3), 40000.0);
                               seen.append(row.text(0) + u'|' + row.text(1));
                           });
    EXPECT_EQ(seen, (QStringList{u"000000000001|"_s, u"000000000002|Zoë"_s}));
    EXPECT_THROW(suite.open()->walkRows(u"select nothing from nowhere"_s, [](const auto&) {}),
                 DbError);
}

} // namespace
} // namespace melovane
