#include "platform/sqlite/engine/engine_fixture.h"

#include <sqlite3.h>

#include <cmath>

namespace melovane::test {
namespace {

class EngineRecordset : public EngineTest
{
protected:
    EngineRecordset() { makeSuite(); }

    void addTracks(int count)
    {
        Transaction transaction(db());
        for (int i = 0; i < count; ++i) {
            addTrack(u"%1"_s.arg(i, 3, 10, QChar(u'0')), u"T%1"_s.arg(i));
        }
        transaction.commit();
    }

    std::unique_ptr<Recordset> tracks()
    {
        return db().OpenRecordset(u"select * from db_all order by fid"_s);
    }
};

TEST_F(EngineRecordset, ASetOfNoRowsIsAtBothEnds)
{
    const auto set = tracks();
    EXPECT_TRUE(set->Eof());
    EXPECT_TRUE(set->Bof());
    EXPECT_EQ(set->RecordCount(), 0);
    EXPECT_EQ(set->AbsolutePosition(), -1);
    set->MoveNext();
    set->MovePrevious();
    set->MoveFirst();
    set->MoveLast();
    EXPECT_TRUE(set->Eof());
    EXPECT_EQ(errorOf([&] { (void)set->value(0); }), dberror::kNoCurrentRecord);
    EXPECT_EQ(errorOf([&] { set->Edit(); }), dberror::kNoCurrentRecord);
    EXPECT_EQ(errorOf([&] { set->Delete(); }), dberror::kNoCurrentRecord);
    EXPECT_EQ(errorOf([&] { set->SetAbsolutePosition(0); }), dberror::kNoCurrentRecord);
}

TEST_F(EngineRecordset, WalksForwardAndBackAndStopsBeyondTheEnds)
{
    addTracks(3);
    const auto set = tracks();
    EXPECT_EQ(set->value(u"FID").toText(), u"000"_s);
    set->MovePrevious();
    EXPECT_TRUE(set->Bof());
    EXPECT_EQ(errorOf([&] { (void)set->value(0); }), dberror::kNoCurrentRecord);
    set->MoveNext();
    set->MoveNext();
    EXPECT_EQ(set->value(u"FID").toText(), u"001"_s);
    set->MoveLast();
    EXPECT_EQ(set->value(u"FID").toText(), u"002"_s);
    set->MoveNext();
    set->MoveNext();
    EXPECT_TRUE(set->Eof());
    set->MovePrevious();
    EXPECT_EQ(set->value(u"FID").toText(), u"002"_s);
}

TEST_F(EngineRecordset, RecordCountIsTheRowsReachedAndAllAfterMoveLast)
{
    addTracks(5);
    const auto set = tracks();
    EXPECT_EQ(set->RecordCount(), 1);
    set->MoveNext();
    EXPECT_EQ(set->RecordCount(), 2);
    set->MoveFirst();
    EXPECT_EQ(set->RecordCount(), 2);
    EXPECT_EQ(set->rowCount(), 5);
    set->MoveLast();
    set->MoveFirst();
    EXPECT_EQ(set->RecordCount(), 5);
}

TEST_F(EngineRecordset, AbsolutePositionReachesAnyRowOfManyPages)
{
    addTracks(700);
    const auto set = tracks();
    for (const int row : {0, 63, 64, 699, 128, 1, 640, 350}) {
        set->SetAbsolutePosition(row);
        EXPECT_EQ(set->AbsolutePosition(), row);
        EXPECT_EQ(set->value(u"Titel").toText(), u"T%1"_s.arg(row));
    }
    EXPECT_EQ(errorOf([&] { set->SetAbsolutePosition(700); }), dberror::kNoCurrentRecord);
    EXPECT_EQ(errorOf([&] { set->SetAbsolutePosition(-1); }), dberror::kNoCurrentRecord);
    EXPECT_EQ(set->AbsolutePosition(), 350) << "a refused move leaves the place";
}

TEST_F(EngineRecordset, ACloneHasItsOwnPlaceAndSharesBookmarks)
{
    addTracks(4);
    const auto set = tracks();
    set->SetAbsolutePosition(2);
    const Bookmark mark = set->bookmark();
    const auto clone = set->Clone();
    EXPECT_EQ(clone->AbsolutePosition(), 0);
    clone->SetBookmark(mark);
    EXPECT_EQ(clone->value(u"Titel").toText(), u"T2"_s);
    clone->MoveLast();
    EXPECT_EQ(set->AbsolutePosition(), 2);
    EXPECT_EQ(clone->rowOf(mark), 2);
    EXPECT_FALSE(Bookmark().isValid());
    EXPECT_EQ(clone->rowOf({}), -1);
    EXPECT_EQ(errorOf([&] { clone->SetBookmark({99}); }), dberror::kNoCurrentRecord);
}

TEST_F(EngineRecordset, BookmarksSurviveAddNewAndDelete)
{
    addTracks(4);
    const auto set = tracks();
    set->SetAbsolutePosition(3);
    const Bookmark last = set->bookmark();
    set->SetAbsolutePosition(1);
    set->Delete();
    EXPECT_EQ(set->AbsolutePosition(), -1);
    EXPECT_EQ(errorOf([&] { (void)set->value(0); }), dberror::kRecordDeleted);
    EXPECT_EQ(set->rowCount(), 3);
    set->AddNew();
    set->setValue(u"FID", u"new"_s);
    set->Update();
    EXPECT_EQ(set->rowCount(), 4);
    EXPECT_EQ(set->rowOf(last), 2);
    set->SetBookmark(last);
    EXPECT_EQ(set->value(u"Titel").toText(), u"T3"_s);
    set->SetBookmark(set->LastModified());
    EXPECT_EQ(set->value(u"FID").toText(), u"new"_s);
    EXPECT_EQ(set->AbsolutePosition(), 3);
    EXPECT_EQ(rowsOf(db(), u"select fid from db_all order by fid"_s),
              (QStringList{u"000"_s, u"002"_s, u"003"_s, u"new"_s}));
}

TEST_F(EngineRecordset, AWalkAfterDeleteGoesOnWithTheNextRow)
{
    addTracks(6);
    const auto set = tracks();
    int seen = 0;
    for (; !set->Eof(); set->MoveNext()) {
        if (set->value(u"Titel").toText() != u"T3"_s) {
            set->Delete();
        }
        ++seen;
    }
    EXPECT_EQ(seen, 6);
    EXPECT_EQ(set->rowCount(), 1);
    set->MoveFirst();
    EXPECT_EQ(set->value(u"Titel").toText(), u"T3"_s);
    set->MoveLast();
    EXPECT_EQ(set->RecordCount(), 1);
    set->Delete();
    set->MoveFirst();
    EXPECT_TRUE(set->Eof());
}

TEST_F(EngineRecordset, AddNewGivesTheAutoNumberThroughLastModified)
{
    const auto set = db().OpenRecordset(u"pl_name"_s);
    for (int i = 1; i <= 3; ++i) {
        set->AddNew();
        set->setValue(u"Name", u"list %1"_s.arg(i));
        set->Update();
        set->SetBookmark(set->LastModified());
        EXPECT_EQ(set->value(u"NID").toLong(), i);
        EXPECT_EQ(set->value(u"Name").toText(), u"list %1"_s.arg(i));
    }
    EXPECT_TRUE(set->value(u"GRID").isNull());
    EXPECT_FALSE(set->value(u"Lock").toBool());
    EXPECT_FALSE(set->value(u"Lock").isNull()) << "Yes/No knows no null";
}

TEST_F(EngineRecordset, AnAutoNumberIsNeverGivenTwice)
{
    const auto set = db().OpenRecordset(u"pl_name"_s);
    set->AddNew();
    set->Update();
    set->SetBookmark(set->LastModified());
    set->Delete();
    set->AddNew();
    set->Update();
    set->SetBookmark(set->LastModified());
    EXPECT_EQ(set->value(u"NID").toLong(), 2);
}

TEST_F(EngineRecordset, AddNewLeavesTheCurrentRow)
{
    addTracks(2);
    const auto set = tracks();
    set->MoveNext();
    set->AddNew();
    set->setValue(u"FID", u"x"_s);
    EXPECT_EQ(set->value(u"FID").toText(), u"x"_s);
    EXPECT_TRUE(set->value(u"Titel").isNull());
    set->Update();
    EXPECT_EQ(set->value(u"Titel").toText(), u"T1"_s);
    EXPECT_EQ(set->AbsolutePosition(), 1);
}

TEST_F(EngineRecordset, EditWritesOnlyWhatWasSet)
{
    addTracks(1);
    const auto set = tracks();
    EXPECT_EQ(set->value(u"Titel").toText(), u"T0"_s);
    sibling()->Execute(u"update db_all set Album='theirs'"_s);
    set->Edit();
    EXPECT_EQ(set->value(u"Album").toText(), u"theirs"_s) << "Edit reads the row of now";
    sibling()->Execute(u"update db_all set Genre='theirs'"_s);
    set->setValue(u"Titel", u"mine"_s);
    EXPECT_EQ(set->value(u"Titel").toText(), u"mine"_s);
    set->Update();
    EXPECT_EQ(rowsOf(*sibling(), u"select Titel, Album, Genre from db_all"_s),
              QStringList{u"mine|theirs|theirs"_s});
    EXPECT_EQ(set->value(u"Genre").toText(), u"theirs"_s);
    EXPECT_EQ(set->LastModified(), set->bookmark());
}

TEST_F(EngineRecordset, CancelUpdateAndMovingDropWhatWasSet)
{
    addTracks(2);
    const auto set = tracks();
    set->Edit();
    set->setValue(u"Titel", u"dropped"_s);
    set->CancelUpdate();
    EXPECT_EQ(set->value(u"Titel").toText(), u"T0"_s);
    set->Edit();
    set->setValue(u"Titel", u"dropped"_s);
    set->MoveNext();
    EXPECT_EQ(errorOf([&] { set->Update(); }), dberror::kUpdateWithoutEdit);
    EXPECT_EQ(errorOf([&] { set->setValue(0, 1); }), dberror::kUpdateWithoutEdit);
    EXPECT_EQ(cellOf(db(), u"select count(*) as n from db_all where titel='dropped'"_s).toLong(),
              0);
}

TEST_F(EngineRecordset, UnknownColumnsAreItemNotFound)
{
    addTracks(1);
    const auto set = tracks();
    EXPECT_EQ(set->fieldIndex(u"nosuch"), -1);
    EXPECT_EQ(set->fieldIndex(u"fId"), 0);
    EXPECT_EQ(errorOf([&] { (void)set->value(u"nosuch"); }), dberror::kItemNotFound);
    EXPECT_EQ(errorOf([&] { (void)set->value(-1); }), dberror::kItemNotFound);
    EXPECT_EQ(errorOf([&] { (void)set->value(1000); }), dberror::kItemNotFound);
    EXPECT_EQ(set->Fields(u"fid").Name(), u"FID"_s);
    EXPECT_EQ(set->Fields(u"fid").Size(), 12);
    EXPECT_EQ(set->Fields(u"fid").Type(), FieldType::Text);
}

TEST_F(EngineRecordset, ValuesAreTypedByTheirColumn)
{
    const auto set = db().OpenRecordset(u"pl_name"_s);
    const QDateTime moment(QDate(2026, 3, 14), QTime(15, 9, 26, 535));
    set->AddNew();
    set->setValue(u"GRID", 2.5);
    set->setValue(u"SID", u"3.5"_s);
    set->setValue(u"Lock", 1);
    set->setValue(u"Activ", u"0"_s);
    set->setValue(u"UpdateTime", moment);
    set->setValue(u"CreateTime", u"01.02.2003 04:05:06"_s);
    set->setValue(u"Name", 17);
    set->Update();
    set->SetBookmark(set->LastModified());
    EXPECT_EQ(set->value(u"GRID"), Value(2)) << "half to even";
    EXPECT_EQ(set->value(u"SID"), Value(4));
    EXPECT_EQ(set->value(u"Lock"), Value(true));
    EXPECT_EQ(set->value(u"Lock").toLong(), -1);
    EXPECT_EQ(set->value(u"Activ"), Value(false));
    EXPECT_EQ(set->value(u"UpdateTime").toDateTime(), moment);
    EXPECT_EQ(set->value(u"CreateTime").toDateTime(), QDateTime(QDate(2003, 2, 1), QTime(4, 5, 6)));
    EXPECT_EQ(set->value(u"Name"), Value(u"17"_s));
    EXPECT_EQ(cellOf(db(), u"select count(*) as n from pl_name where Lock=true and Activ=false"_s)
                  .toLong(),
              1);
}

TEST_F(EngineRecordset, ValuesThatDoNotFitAreRefusedBeforeTheyAreWritten)
{
    const auto set = db().OpenRecordset(u"pl_name"_s);
    set->AddNew();
    const auto refused = [&](QStringView name, const Value& value) {
        return errorOf([&] { set->setValue(name, value); });
    };
    EXPECT_EQ(refused(u"GRID", u"abc"_s), dberror::kTypeMismatch);
    EXPECT_EQ(refused(u"GRID", 3e9), dberror::kTypeMismatch);
    EXPECT_EQ(refused(u"GRID", std::nan("")), dberror::kTypeMismatch);
    EXPECT_EQ(refused(u"UpdateTime", u"no date"_s), dberror::kTypeMismatch);
    EXPECT_EQ(refused(u"UpdateTime", 1e300), dberror::kTypeMismatch);
    EXPECT_EQ(refused(u"Lock", u"perhaps"_s), dberror::kTypeMismatch);
    EXPECT_EQ(refused(u"Name", QString(256, u'x')), dberror::kFieldTooSmall);
    EXPECT_EQ(refused(u"Name", QString(255, u'x')), 0);
    EXPECT_EQ(refused(u"Info", QString(10000, u'x')), 0);
    set->Update();
    EXPECT_EQ(set->rowCount(), 1);
}

TEST_F(EngineRecordset, AColumnThatHoldsTheWrongKindStillReadsSanely)
{
    db().Execute(u"insert into pl_name (Name) values ('x')"_s);
    addTracks(1);
    const auto set = db().OpenRecordset(u"select GRID, UpdateTime from pl_name"_s);
    EXPECT_TRUE(set->value(0).isNull());
    EXPECT_EQ(set->value(0).toLong(), 0);
    EXPECT_FALSE(set->value(1).toDateTime().isValid());
}

TEST_F(EngineRecordset, ADuplicateKeyIs3022AndNothingIsWritten)
{
    addTracks(2);
    const auto set = tracks();
    set->AddNew();
    set->setValue(u"FID", u"001"_s);
    EXPECT_EQ(errorOf([&] { set->Update(); }), 3022);
    set->setValue(u"FID", u"009"_s);
    set->Update();
    EXPECT_EQ(set->rowCount(), 3);
    set->MoveFirst();
    set->Edit();
    set->setValue(u"FID", u"001"_s);
    EXPECT_EQ(errorOf([&] { set->Update(); }), dberror::kDuplicateKey);
    set->CancelUpdate();
    EXPECT_EQ(set->value(u"FID").toText(), u"000"_s);
}

TEST_F(EngineRecordset, AKeyThatDiffersOnlyInCaseIsADuplicate)
{
    db().Execute(u"insert into db_version values ('Ärger','1')"_s);
    EXPECT_EQ(errorOf([&] { db().Execute(u"insert into db_version values ('äRGER','1')"_s); }),
              dberror::kDuplicateKey);
}

TEST_F(EngineRecordset, ANullKeyIsRefused)
{
    const auto set = tracks();
    set->AddNew();
    set->setValue(u"Titel", u"x"_s);
    EXPECT_EQ(errorOf([&] { set->Update(); }), dberror::kNullInKey);
}

TEST_F(EngineRecordset, AnAutoNumberCanBeGivenButNotChanged)
{
    const auto set = db().OpenRecordset(u"pl_all"_s);
    set->AddNew();
    set->setValue(u"PLID", 100);
    set->Update();
    set->SetBookmark(set->LastModified());
    EXPECT_EQ(set->value(u"PLID").toLong(), 100);
    set->Edit();
    EXPECT_EQ(errorOf([&] { set->setValue(u"PLID", 5); }), dberror::kFieldReadOnly);
    set->AddNew();
    set->setValue(u"PLID", 100);
    EXPECT_EQ(errorOf([&] { set->Update(); }), dberror::kDuplicateKey);
}

TEST_F(EngineRecordset, ARowDeletedElsewhereIsRecordDeleted)
{
    addTracks(3);
    const auto set = tracks();
    EXPECT_EQ(set->value(u"FID").toText(), u"000"_s);
    set->Edit();
    sibling()->Execute(u"delete from db_all where fid='000'"_s);
    set->setValue(u"Titel", u"x"_s);
    EXPECT_EQ(errorOf([&] { set->Update(); }), dberror::kRecordDeleted);
    EXPECT_EQ(errorOf([&] { set->Edit(); }), dberror::kRecordDeleted);
    EXPECT_EQ(errorOf([&] { set->Delete(); }), dberror::kRecordDeleted);
    EXPECT_EQ(set->rowCount(), 3) << "a set keeps its rows and their order";
    set->MoveNext();
    EXPECT_EQ(set->value(u"FID").toText(), u"001"_s);
}

TEST_F(EngineRecordset, ANewRowNeverStandsInForADeletedOne)
{
    addTracks(2);
    const auto set = tracks();
    sibling()->Execute(u"delete from db_all"_s);
    sibling()->Execute(u"insert into db_all (FID) values ('impostor')"_s);
    set->Refresh();
    EXPECT_EQ(errorOf([&] { (void)set->value(0); }), dberror::kRecordDeleted);
}

TEST_F(EngineRecordset, OwnStatementsAreSeenByOpenSetsAtOnce)
{
    addTracks(2);
    const auto set = tracks();
    EXPECT_EQ(set->value(u"Titel").toText(), u"T0"_s);
    db().Execute(u"update db_all set Titel='new'"_s);
    EXPECT_EQ(set->value(u"Titel").toText(), u"new"_s);
}

TEST_F(EngineRecordset, RefreshShowsForeignChangesAndRequeryForeignRows)
{
    addTracks(1);
    const auto set = tracks();
    EXPECT_EQ(set->value(u"Titel").toText(), u"T0"_s);
    sibling()->Execute(u"update db_all set Titel='theirs'"_s);
    sibling()->Execute(u"insert into db_all (FID, Titel) values ('zzz', 'more')"_s);
    set->Refresh();
    EXPECT_EQ(set->value(u"Titel").toText(), u"theirs"_s);
    EXPECT_EQ(set->rowCount(), 1);
    const auto clone = set->Clone();
    set->Requery();
    EXPECT_EQ(set->rowCount(), 2);
    EXPECT_EQ(set->AbsolutePosition(), 0);
    EXPECT_EQ(clone->rowCount(), 1);
}

/// What a sibling does to compact the file.
void compact(const QString& file)
{
    sqlite3* raw = nullptr;
    ASSERT_EQ(sqlite3_open(file.toUtf8().constData(), &raw), SQLITE_OK);
    const auto compare = [](void*, int leftSize, const void* left, int rightSize,
                            const void* right) {
        const QByteArray a(static_cast<const char*>(left), leftSize);
        return int(a.compare(QByteArray(static_cast<const char*>(right), rightSize)));
    };
    sqlite3_create_collation(raw, "MLV", SQLITE_UTF8, nullptr, compare);
    EXPECT_EQ(sqlite3_exec(raw, "VACUUM", nullptr, nullptr, nullptr), SQLITE_OK);
    sqlite3_close(raw);
}

TEST_F(EngineRecordset, RowNumbersSurviveCompaction)
{
    addTracks(4);
    const auto set = tracks();
    set->SetAbsolutePosition(3);
    sibling()->Execute(u"delete from db_all where fid<'002'"_s);
    compact(path());
    set->Edit();
    set->setValue(u"Titel", u"still me"_s);
    set->Update();
    EXPECT_EQ(rowsOf(db(), u"select fid, titel from db_all order by fid"_s),
              (QStringList{u"002|T2"_s, u"003|still me"_s}));
}

TEST_F(EngineRecordset, DistinctUnionAndGroupsAreReadOnly)
{
    addTracks(3);
    for (const auto& text : {u"select distinct Interpret from db_all"_s,
                             u"select name from genre union select fid from db_all"_s,
                             u"select Interpret, count(*) as anz from db_all group by Interpret"_s,
                             u"select count(*) as anz from db_all"_s}) {
        const auto set = db().OpenRecordset(text);
        EXPECT_FALSE(set->Updatable()) << text.toStdString();
        EXPECT_FALSE(set->Eof());
        EXPECT_EQ(errorOf([&] { set->Edit(); }), dberror::kReadOnly);
        EXPECT_EQ(errorOf([&] { set->AddNew(); }), dberror::kReadOnly);
        EXPECT_EQ(errorOf([&] { set->Delete(); }), dberror::kReadOnly);
    }
}

TEST_F(EngineRecordset, TopSetsAreKeyedAndUpdatable)
{
    addTracks(5);
    const auto set = db().OpenRecordset(u"select top 2 * from db_all order by fid desc"_s);
    EXPECT_EQ(set->rowCount(), 2);
    set->Edit();
    set->setValue(u"Titel", u"top"_s);
    set->Update();
    EXPECT_EQ(cellOf(db(), u"select titel from db_all where fid='004'"_s).toText(), u"top"_s);
}

} // namespace
} // namespace melovane::test
