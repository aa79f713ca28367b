#include "platform/sqlite/engine/engine_fixture.h"

namespace melovane::test {
namespace {

/// More rows than one statement takes, and not a whole number of statements.
constexpr int kRows = 700;

class EngineBulkInsert : public EngineTest
{
protected:
    EngineBulkInsert()
    {
        makeSuite();
        FieldDef moment = field(u"made"_s, FieldType::Date);
        moment.DefaultValue = u"now()"_s;
        FieldDef mood = textField(u"mood"_s, 20);
        mood.DefaultValue = u"\"calm\""_s;
        TableDef folders =
            keyedTable(u"folders"_s, {autoNumber(u"id"_s), textField(u"Path"_s, 10),
                                      field(u"anzahl"_s, FieldType::Long), mood, moment});
        folders.Indexes.push_back({.Name = u"Folder"_s, .Fields = {u"Path"_s}, .Unique = true});
        db().tableDefs().Append(folders);
    }

    [[nodiscard]] std::unique_ptr<BulkInsert> insert()
    {
        return db().bulkInsert(u"FOLDERS"_s, {u"path"_s, u"anzahl"_s});
    }

    /// What statement by statement would have written.
    [[nodiscard]] QStringList rowsWithout(const QList<int>& refused)
    {
        QStringList rows;
        for (int i = 0; i < kRows; ++i) {
            if (!refused.contains(i)) {
                rows.append(u"p%1|%1"_s.arg(i));
            }
        }
        return rows;
    }

    [[nodiscard]] QStringList written()
    {
        return rowsOf(db(), u"select Path, anzahl from folders order by id"_s);
    }
};

TEST_F(EngineBulkInsert, RowsEnterInTheirOrderWithTheDefaultsOfTheOtherColumns)
{
    {
        Transaction transaction(db());
        const auto rows = insert();
        for (int i = 0; i < kRows; ++i) {
            rows->add({u"p%1"_s.arg(i), i});
        }
        rows->finish();
        transaction.commit();
    }
    EXPECT_EQ(written(), rowsWithout({}));
    const auto other = rowsOf(db(), u"select distinct mood, made from folders"_s);
    db().Execute(u"delete from folders"_s);
    db().Execute(u"insert into folders (Path) values ('x')"_s);
    EXPECT_EQ(other, rowsOf(db(), u"select mood, made from folders"_s));
}

TEST_F(EngineBulkInsert, ARefusedRowIsToldAndTheRowsAroundItAreWritten)
{
    Transaction transaction(db());
    const auto rows = insert();
    QList<int> numbers;
    rows->whenRefused = [&](const DbError& error) { numbers.append(error.number()); };
    for (int i = 0; i < kRows; ++i) {
        switch (i) {
        case 5:
            rows->add({u"P4"_s, i});
            break;
        case 300:
            rows->add({QString(11, u'x'), i});
            break;
        case kRows - 1:
            rows->add({u"y"_s, u"no number"_s});
            break;
        default:
            rows->add({u"p%1"_s.arg(i), i});
        }
    }
    rows->finish();
    transaction.commit();
    EXPECT_EQ(numbers, (QList<int>{dberror::kDuplicateKey, dberror::kFieldTooSmall,
                                   dberror::kTypeMismatch}));
    EXPECT_EQ(written(), rowsWithout({5, 300, kRows - 1}));
    EXPECT_EQ(rowsOf(db(), u"select count(*) from folders where id<=%1"_s.arg(kRows)),
              QStringList{QString::number(kRows - 3)});
}

TEST_F(EngineBulkInsert, WithoutAListenerARefusedRowThrows)
{
    const auto rows = insert();
    rows->add({u"one"_s, 1});
    rows->add({u"ONE"_s, 2});
    EXPECT_EQ(errorOf([&] { rows->finish(); }), dberror::kDuplicateKey);
    const auto many = insert();
    const auto fill = [&] {
        for (int i = 0; i < kRows; ++i) {
            many->add({u"same"_s, i});
        }
    };
    EXPECT_EQ(errorOf(fill), dberror::kDuplicateKey);
}

TEST_F(EngineBulkInsert, TextsEnterAsTheyAre)
{
    const QStringList hostile{u"it's"_s, u"\"q\" [x]"_s,        u"a\nb"_s,
                              u"*?#"_s,  u"\u05D0\U0001F3B5"_s, QString(9, u'ß')};
    const auto rows = insert();
    rows->add({Value(), Value()});
    for (const QString& text : hostile) {
        rows->add({text, text.size()});
    }
    rows->add({u"ze"_s + QChar(0) + u"ro"_s, 2.5});
    rows->finish();
    QStringList expected{u"null|null"_s};
    for (const QString& text : hostile) {
        expected.append(text + u'|' + QString::number(text.size()));
    }
    expected.append(u"zero|2"_s);
    EXPECT_EQ(written(), expected);
}

TEST_F(EngineBulkInsert, AMissingTableOrColumnIsAnError)
{
    EXPECT_EQ(errorOf([&] { (void)db().bulkInsert(u"nowhere"_s, {u"Path"_s}); }),
              dberror::kObjectNotFound);
    EXPECT_NE(errorOf([&] { (void)db().bulkInsert(u"folders"_s, {u"nothing"_s}); }), 0);
}

TEST_F(EngineBulkInsert, RowsFollowALinkThatLeadsElsewhereMeanwhile)
{
    for (const auto& name : {u"first.mdb"_s, u"second.mdb"_s}) {
        m_siblingEngine->Workspaces(0)
            .CreateDatabase(path(name), {})
            ->tableDefs()
            .Append(keyedTable(u"TREE"_s, {autoNumber(u"id"_s), textField(u"Name"_s, 20)}));
    }
    db().tableDefs().Append(link(u"TREE"_s, path(u"first.mdb"_s)));
    const auto rows = db().bulkInsert(u"tree"_s, {u"Name"_s});
    rows->add({u"a"_s});
    rows->finish();
    db().tableDefs().Delete(u"TREE"_s);
    db().tableDefs().Append(link(u"TREE"_s, path(u"second.mdb"_s)));
    rows->add({u"b"_s});
    rows->finish();
    EXPECT_EQ(rowsOf(db(), u"select Name from TREE"_s), QStringList{u"b"_s});
    EXPECT_EQ(
        rowsOf(*m_siblingEngine->OpenDatabase(path(u"first.mdb"_s)), u"select Name from TREE"_s),
        QStringList{u"a"_s});
}

TEST_F(EngineBulkInsert, RowsOfAClosedDatabaseAreAnError)
{
    const auto rows = insert();
    rows->add({u"a"_s, 1});
    db().Close();
    EXPECT_EQ(errorOf([&] { rows->finish(); }), dberror::kObjectClosed);
}

} // namespace
} // namespace melovane::test
