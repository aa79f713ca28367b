#include "platform/db/sql_text.h"
#include "support/suite_fixture.h"

using namespace Qt::Literals::StringLiterals;
using namespace melovane;

namespace {

struct Node
{
    int id = 0;
    QString name;
    QString field;
    QString sql;
};

/// The rows that ship for the extended tree, over a library in which each of them finds something.
class ExtendedTree : public test::SuiteFixture
{
protected:
    ExtendedTree()
    {
        const QDateTime march(QDate(2026, 3, 2), QTime(8, 0));
        suite.library.add({.Titel = u"Hit"_s,
                           .Jahr = u"1984"_s,
                           .Note = u"5"_s,
                           .BPM = u"128"_s,
                           .DTSImport = march,
                           .Kategorie = u"Klassiker"_s,
                           .Tempo = u"schnell"_s,
                           .PlayCountAll = 12,
                           .Play = march});
        suite.library.add({.Titel = u"It's"_s,
                           .Jahr = u"1987"_s,
                           .Note = u"3"_s,
                           .BPM = u"121.5"_s,
                           .DTSImport = march.addDays(3),
                           .Situation = u"Essen"_s,
                           .Stimmung = u"festlich"_s,
                           .User1 = u"mein"_s});
        suite.library.add({.Titel = u"New"_s,
                           .Jahr = u"2024"_s,
                           .BPM = u"98"_s,
                           .DTSImport = march.addMonths(-5),
                           .Kategorie = u"Klassiker"_s,
                           .PlayCountAll = 3,
                           .Play = march});
        suite.library.add({.Titel = u"Gone"_s,
                           .Jahr = u"1984"_s,
                           .Note = u"5"_s,
                           .BPM = u"128"_s,
                           .DTSImport = march,
                           .DEL = -1,
                           .Kategorie = u"Weg"_s});
    }

    [[nodiscard]] std::vector<Node> dataNodes() const
    {
        std::vector<Node> nodes;
        const auto database = suite.open();
        const auto set = database->OpenRecordset(
            u"select * from TreeErweitertConfig where ItemTyp='data' order by id"_s);
        for (; !set->Eof(); set->MoveNext()) {
            nodes.push_back({set->value(u"id").toLong(), set->value(u"ItemName").toText(),
                             set->value(u"ItemField").toText(), set->value(u"itemsql").toText()});
        }
        return nodes;
    }

    /// "name (count)" of each line that a node lists.
    [[nodiscard]] QStringList lines(int id) const
    {
        QStringList result;
        for (const Node& node : dataNodes()) {
            const auto database = suite.open();
            const auto set = database->OpenRecordset(node.sql);
            for (; node.id == id && !set->Eof(); set->MoveNext()) {
                result.append(
                    u"%1 (%2)"_s.arg(set->value(u"Name").toText(), set->value(u"anzahl").toText()));
            }
        }
        return result;
    }

    /// The condition that a click on a line gives, in the words of the library's search.
    [[nodiscard]] static QString condition(const Node& node, const QString& name)
    {
        if (node.field.endsWith(u":where"_s)) {
            return name;
        }
        QString pattern = name;
        for (const QChar sign : {u'\'', u'[', u']'}) {
            pattern.replace(sign, u'*');
        }
        const QString comparison = pattern.contains(u'*') ? u"like"_s : u"="_s;
        return u"[%1] %2 '%3'"_s.arg(node.field, comparison, pattern);
    }
};

} // namespace

TEST_F(ExtendedTree, EveryStatementRunsAndGivesNameCountAndPicture)
{
    const auto nodes = dataNodes();
    EXPECT_GE(nodes.size(), 15U);
    const auto database = suite.open();
    for (const Node& node : nodes) {
        const auto set = database->OpenRecordset(node.sql);
        for (const QStringView column : {u"Name", u"anzahl", u"imgkey"}) {
            EXPECT_GE(set->fieldIndex(column), 0) << node.name.toStdString();
        }
    }
}

TEST_F(ExtendedTree, EveryStatementRunsOnAnEmptyLibraryAndListsNothing)
{
    suite.execute(u"delete from db_all"_s);
    const auto database = suite.open();
    for (const Node& node : dataNodes()) {
        EXPECT_TRUE(database->OpenRecordset(node.sql)->Eof()) << node.name.toStdString();
    }
}

TEST_F(ExtendedTree, AClickOnALineFindsTheTracksThatItCounted)
{
    const auto database = suite.open();
    int clicks = 0;
    for (const Node& node : dataNodes()) {
        const auto set = database->OpenRecordset(node.sql);
        for (; !set->Eof(); set->MoveNext()) {
            const QString name = set->value(u"Name").toText();
            const QString where = condition(node, name) + u" and del=false"_s;
            const int found =
                suite.value(u"select count(*) as anz from db_all where "_s + where).toLong();
            // The most played ones show how often, not how many.
            const int counted = node.id == 702 ? 1 : set->value(u"anzahl").toLong();
            EXPECT_EQ(found, counted) << where.toStdString();
            ++clicks;
        }
    }
    EXPECT_EQ(clicks, 19);
}

TEST_F(ExtendedTree, SelectionFieldsListTheirValues)
{
    EXPECT_EQ(lines(101), QStringList{u"Klassiker (2)"_s});
    EXPECT_EQ(lines(102), QStringList{u"festlich (1)"_s});
    EXPECT_EQ(lines(103), QStringList{u"Essen (1)"_s});
    EXPECT_EQ(lines(104), QStringList{u"schnell (1)"_s});
    EXPECT_EQ(lines(201), QStringList{u"mein (1)"_s});
}

TEST_F(ExtendedTree, YearsStandInDecadesAndAlone)
{
    EXPECT_EQ(lines(301), QStringList({u"202* (1)"_s, u"198* (2)"_s}));
    EXPECT_EQ(lines(302), QStringList({u"2024 (1)"_s, u"1987 (1)"_s, u"1984 (1)"_s}));
}

TEST_F(ExtendedTree, TemposStandInRangesOfTen)
{
    EXPECT_EQ(lines(400), QStringList({u"9* (1)"_s, u"12* (2)"_s}));
}

TEST_F(ExtendedTree, RatingsAndMonthsOfImportStandInDescendingOrder)
{
    EXPECT_EQ(lines(500), QStringList({u"5 (1)"_s, u"3 (1)"_s}));
    EXPECT_EQ(lines(600), QStringList({u"*.03.2026* (2)"_s, u"*.10.2025* (1)"_s}));
}

TEST_F(ExtendedTree, NeverPlayedIsOneLineAndMostPlayedIsSortedByCount)
{
    EXPECT_EQ(lines(701), QStringList{u"Play is null (1)"_s});
    EXPECT_EQ(lines(702), QStringList({u"Hit (12)"_s, u"New (3)"_s}));
}

TEST_F(ExtendedTree, EveryNodeHasAnActiveHeadingAboveItAndAUniquePlace)
{
    EXPECT_TRUE(suite
                    .column(u"select id from TreeErweitertConfig where parentid<>0 and parentid "
                            "not in (select id from TreeErweitertConfig where ItemTyp='heading' "
                            "and parentid=0 and aktiv=true)"_s)
                    .isEmpty());
    EXPECT_TRUE(suite
                    .column(u"select parentid from TreeErweitertConfig group by parentid, sid "
                            "having count(*)>1"_s)
                    .isEmpty());
    EXPECT_EQ(suite
                  .column(u"select id from TreeErweitertConfig where parentid=0 and aktiv=true "
                          "order by sid"_s)
                  .size(),
              7);
}

TEST_F(ExtendedTree, TheFoldingStateOfANodeCanBeStored)
{
    suite.execute(u"update TreeErweitertConfig set RowExpand=true where id = 700"_s);
    EXPECT_EQ(suite.value(u"select RowExpand from TreeErweitertConfig where id=700"_s).toLong(),
              -1);
}
