#include "support/suite_fixture.h"
#include "trees/row_names.h"
#include "trees/tree_key.h"

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;
using Kind = NamedRowPlace::Kind;

struct RowNamesTest : test::SuiteFixture
{
    RowNamesTest()
    {
        suite.execute(
            u"insert into tree_interpret (Name, anzahl) values ('Ara''s \"*\" Chor', 3)"_s);
        suite.execute(u"insert into tree_album (Name, anzahl) values ('Tanz der Ara', 1)"_s);
        suite.execute(u"insert into tree_genre (Name, anzahl) values ('Karaoke', 1)"_s);
        suite.execute(u"insert into tree_dir (Path, Name, vName, Drive, anzahl, rLevel) "
                      "values ('D:\\Musik\\Arabella\\', 'Arabella', 'd', 3, 1, 2)"_s);
        suite.execute(u"insert into tree_dir (Path, Name, vName, Drive, anzahl, rLevel) "
                      "values ('E:\\Ara\\', 'Ara', 'SCHEIBE', 4, 1, 1)"_s);
    }

    void read()
    {
        names.read(*suite.open(), [] { return false; });
    }

    [[nodiscard]] QStringList keysOf(const QString& typed, size_t max = 100) const
    {
        QStringList keys;
        for (const NamedRowPlace& row : names.find(typed, max, [] { return false; })) {
            keys.append(row.rowKey());
        }
        return keys;
    }

    RowNames names;
};

TEST_F(RowNamesTest, RowsOfAllTreesAreFoundByTheirNamesTheBestFitFirst)
{
    read();
    EXPECT_EQ(keysOf(u"ara"_s), (QStringList{treekey::artist(u"Ara's \"*\" Chor"_s),
                                             treekey::album(u"Tanz der Ara"_s),
                                             treekey::directory(u"D:\\Musik\\Arabella\\"_s),
                                             treekey::discDirectory(u"SCHEIBE"_s, u"E:\\Ara\\"_s),
                                             treekey::genre(u"Karaoke"_s)}));
    EXPECT_EQ(keysOf(u"ara"_s, 2).size(), 2);
    EXPECT_TRUE(keysOf(u" "_s).isEmpty());
}

TEST_F(RowNamesTest, ListsAndGroupsAreFoundAlsoThoseThatThePanelDoesNotShow)
{
    suite.execute(u"insert into pl_group (Name, sid, activ) values ('Sommergruppe', 1, true)"_s);
    suite.execute(u"insert into pl_name (Name, GRID, activ) "
                  "select 'Sommerliste', GRID, false from pl_group where Name='Sommergruppe'"_s);
    suite.execute(u"insert into pl_name (Name, GRID, activ) values ('Sommerjingles', -1, true)"_s);
    read();
    QList<Kind> kinds;
    for (const NamedRowPlace& row : names.find(u"sommer"_s, 9, [] { return false; })) {
        kinds.append(row.kind);
        EXPECT_FALSE(row.rowKey().isEmpty());
    }
    EXPECT_EQ(kinds, (QList<Kind>{Kind::JingleList, Kind::Group, Kind::List}));
}

TEST_F(RowNamesTest, AWorkThatIsOverFindsNothing)
{
    names.read(*suite.open(), [] { return true; });
    EXPECT_EQ(names.size(), 0U);
    read();
    EXPECT_TRUE(names.find(u"ara"_s, 9, [] { return true; }).empty());
}

} // namespace
} // namespace melovane
