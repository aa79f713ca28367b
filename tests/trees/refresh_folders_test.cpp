#include "refresh_fixture.h"
#include "trees/folder_rows.h"

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

class RefreshFolders : public RefreshDbTest
{
protected:
    [[nodiscard]] QStringList folders(const QString& columns) const
    {
        return rows(u"select %1 from tree_dir order by id"_s.arg(columns));
    }
};

TEST_F(RefreshFolders, AFolderAndTheOneBelowItGiveOneRowForTheUpperWithItsOwnCount)
{
    suite.library.add({.Path = u"C:\\a\\b\\"_s});
    for (int i = 0; i < 2; ++i) {
        suite.library.add({.Path = u"C:\\a\\"_s});
    }
    trees.TreeDir();
    EXPECT_EQ(folders(u"rLevel, bname, Path, anzahl, BAnzahl, imgkey"_s),
              (QStringList{u"0|C:|C:\\|0|3|DRIVE_2"_s, u"1|a|C:\\a\\|2|3|Audio"_s,
                           u"2|b|C:\\a\\b\\|1|1|Audio"_s}));
    EXPECT_EQ(failures, QStringList());
}

TEST_F(RefreshFolders, AFolderWithoutTracksOfItsOwnIsAPlainFolder)
{
    suite.library.add({.Path = u"C:\\a\\b\\"_s});
    trees.TreeDir();
    EXPECT_EQ(folders(u"bname, imgkey, anzahl"_s),
              (QStringList{u"C:|DRIVE_2|0"_s, u"a|DIR|0"_s, u"b|Audio|1"_s}));
}

TEST_F(RefreshFolders, ANetworkPathBeginsWithItsServer)
{
    suite.library.add({.Path = u"\\\\srv\\share\\x\\"_s, .DriveTyp = 3});
    trees.TreeDir();
    EXPECT_EQ(folders(u"rLevel, bname, Path, imgkey"_s),
              (QStringList{u"0|\\\\srv|\\\\srv\\|DRIVE_3"_s, u"1|share|\\\\srv\\share\\|DIR"_s,
                           u"2|x|\\\\srv\\share\\x\\|Audio"_s}));
}

TEST_F(RefreshFolders, AFolderOfThisSystemBeginsWithTheRoot)
{
    suite.library.add({.Path = u"/home/What?/"_s});
    suite.library.add({.Path = u"/"_s});
    trees.TreeDir();
    EXPECT_EQ(folders(u"rLevel, Name, bname, Path, anzahl, BAnzahl, imgkey"_s),
              (QStringList{u"0|/|/|/|1|2|DRIVE_2"_s, u"1|home|home|/home/|0|1|DIR"_s,
                           u"2|What?|What?|/home/What?/|1|1|Audio"_s}));
}

TEST_F(RefreshFolders, APathOfNothingButSeparatorsIsARow)
{
    suite.library.add({.Path = u"\\\\"_s});
    suite.library.add({.Path = u"\\"_s});
    trees.TreeDir();
    EXPECT_EQ(folders(u"rLevel, Path, anzahl"_s), (QStringList{u"0|\\|1"_s, u"0|\\\\|1"_s}));
    EXPECT_EQ(failures, QStringList());
}

TEST_F(RefreshFolders, DiscsWithTheSameFolderAreToldApartByTheirLabel)
{
    suite.library.add({.Path = u"D:\\cd\\"_s, .DriveTyp = 4, .DriveName = u"HITS"_s});
    for (int i = 0; i < 2; ++i) {
        suite.library.add({.Path = u"D:\\cd\\"_s, .DriveTyp = 4, .DriveName = u"LIVE"_s});
    }
    trees.TreeDir();
    EXPECT_EQ(folders(u"Name, bname, vName, Drive, anzahl, BAnzahl, imgkey"_s),
              (QStringList{u"D: HITS|D:|HITS|4|0|1|DRIVE_4"_s, u"cd HITS|cd|HITS|4|1|-|Audio"_s,
                           u"D: LIVE|D:|LIVE|4|0|2|DRIVE_4"_s, u"cd LIVE|cd|LIVE|4|2|-|Audio"_s}));
}

TEST_F(RefreshFolders, AFolderNameIsMatchedAsItStands)
{
    suite.library.add({.Path = u"C:\\[a]*?#\\x\\"_s});
    suite.library.add({.Path = u"C:\\a#\\"_s});
    suite.library.add({.Path = u"C:\\[A]*?#\\"_s});
    trees.TreeDir();
    EXPECT_EQ(rows(u"select BAnzahl from tree_dir where bname='[a]*?#'"_s), QStringList{u"2"_s});
}

TEST_F(RefreshFolders, FoldersThatDifferOnlyInLetterCaseAreOne)
{
    suite.library.add({.Path = u"C:\\Musik\\ä\\"_s});
    suite.library.add({.Path = u"c:\\musik\\Ä\\"_s});
    suite.library.add({.Path = u"c:\\MUSIK\\b\\"_s});
    trees.TreeDir();
    EXPECT_EQ(folders(u"rLevel, anzahl, BAnzahl"_s),
              (QStringList{u"0|0|3"_s, u"1|0|3"_s, u"2|2|2"_s, u"2|1|1"_s}));
    EXPECT_EQ(failures, QStringList());
}

TEST_F(RefreshFolders, ANeighbourWhoseNameBeginsLikeAFolderIsNoPartOfIt)
{
    suite.library.add({.Path = u"/m/a/"_s});
    suite.library.add({.Path = u"/m/a b/"_s});
    suite.library.add({.Path = u"/m/a/x/"_s});
    suite.library.add({.Path = u"/m/a-x/"_s});
    trees.TreeDir();
    EXPECT_EQ(rows(u"select Path, BAnzahl from tree_dir where rLevel<3 order by Path"_s).size(), 5);
    EXPECT_EQ(rows(u"select BAnzahl from tree_dir where Path='/m/a/'"_s), QStringList{u"2"_s});
    EXPECT_EQ(rows(u"select BAnzahl from tree_dir where Path='/m/'"_s), QStringList{u"4"_s});
}

/// The given way: a statement per row.
QStringList totalsByStatements(Database& database)
{
    QStringList totals;
    const auto query = database.queryDefs().Item(u"QU_UpadateTreeDirAnzahl"_s);
    const auto rows = database.OpenRecordset(u"select * from tree_dir order by id"_s);
    for (; !rows->Eof(); rows->MoveNext()) {
        const QString path = rows->value(u"Path").toText();
        if (rows->value(u"Drive").toLong() != 4) {
            query->SetParameter(u"sPath"_s, path + u'*');
            totals.append(query->OpenRecordset()->value(u"anz").toText());
        } else if (rows->value(u"anzahl").toLong() == 0) {
            totals.append(
                database
                    .OpenRecordset(u"select sum(anzahl) as anz from tree_dir where path like '%1*' "
                                   u"and vname='%2'"_s.arg(path, rows->value(u"vName").toText()))
                    ->value(u"anz")
                    .toText());
        } else {
            totals.append(QString());
        }
    }
    return totals;
}

TEST_F(RefreshFolders, TotalsAreThoseThatAStatementPerRowGives)
{
    const QStringList names{u"a"_s, u"A b"_s, u"a-b"_s, u"ä"_s, u"z"_s, u"a.b"_s};
    quint32 random = 7;
    const auto below = [&](quint32 limit) {
        random = random * 1664525 + 1013904223;
        return (random >> 16) % limit;
    };
    for (int i = 0; i < 300; ++i) {
        const bool isDisc = below(4) == 0;
        QString path = isDisc ? u"D:\\"_s : below(2) == 0 ? u"C:\\"_s : u"D:\\"_s;
        for (quint32 depth = below(4); depth > 0; --depth) {
            path += names[below(quint32(names.size()))] + u'\\';
        }
        suite.library.add({.Path = path,
                           .DriveTyp = isDisc ? 4 : 2,
                           .DriveName = isDisc ? (below(2) == 0 ? u"ONE"_s : u"Two"_s) : QString(),
                           .DEL = below(10) == 0 ? -1 : 0});
    }
    trees.TreeDir();
    EXPECT_EQ(failures, QStringList());
    EXPECT_GT(folders(u"id"_s).size(), 100);
    EXPECT_EQ(suite.column(u"select BAnzahl from tree_dir order by id"_s),
              totalsByStatements(*suite.open()));
}

TEST_F(RefreshFolders, AFolderKeepsItsMarkUnlessItHoldsAnApostrophe)
{
    suite.library.add({.Path = u"/m/Don't/"_s});
    suite.library.add({.Path = u"/m/\"Q\"\n[x]*/"_s});
    trees.TreeDir();
    favour(u"tree_dir"_s, u"rLevel=2"_s);
    trees.TreeDir();
    EXPECT_EQ(rows(u"select Path, favorit from tree_dir where rLevel=2"_s),
              (QStringList{u"/m/\"Q\"\n[x]*/|-1"_s, u"/m/Don't/|0"_s}));
}

TEST_F(RefreshFolders, AnErrorBeforeTheRowsAreWrittenLeavesTheFolders)
{
    suite.library.add({.Path = u"/alt/"_s});
    trees.TreeDir();
    suite.execute(u"update db_all set Path='/neu/'"_s);
    for (const auto& step : {u"select * from tree_dir"_s, u"select Path,DriveTyp"_s, u"delete"_s}) {
        engine.statements.before = [&](const QString& statement) {
            if (statement.startsWith(step)) {
                throw DbError(dberror::kDiskError, u"broken"_s);
            }
        };
        EXPECT_NO_THROW(trees.TreeDir());
        EXPECT_EQ(suite.column(u"select bname from tree_dir where rLevel=1"_s),
                  QStringList{u"alt"_s});
        EXPECT_FALSE(isParkedFileThere());
    }
}

TEST_F(RefreshFolders, ARowThatCannotBeWrittenIsLeftOutAndTheOthersStand)
{
    // Longer than the column of one component takes.
    suite.library.add({.Path = u"/a/%1/"_s.arg(QString(300, u'x'))});
    suite.library.add({.Path = u"/b/"_s});
    trees.TreeDir();
    EXPECT_EQ(suite.column(u"select Path from tree_dir order by id"_s),
              (QStringList{u"/"_s, u"/a/"_s, u"/b/"_s}));
    EXPECT_EQ(failures.size(), 1);
}

TEST_F(RefreshFolders, AMarkThatCannotBePutBackIsLeftOutAndTheOthersStand)
{
    suite.library.add({.Path = u"/a/"_s});
    suite.library.add({.Path = u"/b/"_s});
    trees.TreeDir();
    favour(u"tree_dir"_s, u"rLevel=1"_s);
    engine.statements.before = [](const QString& statement) {
        if (statement.contains(u"path='/a/'"_s)) {
            throw DbError(dberror::kDiskError, u"broken"_s);
        }
    };
    trees.TreeDir();
    EXPECT_EQ(rows(u"select Path, favorit from tree_dir where rLevel=1 order by id"_s),
              (QStringList{u"/a/|0"_s, u"/b/|-1"_s}));
}

} // namespace
} // namespace melovane
