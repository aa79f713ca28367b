#include "platform/sqlite/engine/engine_fixture.h"

#include <malloc.h>

namespace melovane::test {
namespace {

/// 2^17 rows of about 300 bytes: enough that keeping them would be noticed.
class EngineLargeSet : public EngineTest
{
protected:
    static constexpr int kDoublings = 17;
    static constexpr qint64 kRows = qint64{1} << kDoublings;

    EngineLargeSet()
    {
        db().tableDefs().Append(
            table(u"t"_s, {autoNumber(u"id"_s), textField(u"a"_s, 255), textField(u"b"_s, 255)}));
        Transaction transaction(db());
        db().Execute(u"insert into t (a, b) values ('%1', '%2')"_s.arg(QString(120, u'x'),
                                                                       QString(120, u'y')));
        for (int i = 0; i < kDoublings; ++i) {
            db().Execute(u"insert into t (a, b) select a, b from t"_s);
        }
        transaction.commit();
    }

    /// Bytes that the program holds, those of SQLite's page cache left out by having it full.
    static qint64 bytes()
    {
        const struct mallinfo2 info = mallinfo2();
        return qint64(info.uordblks) + qint64(info.hblkhd);
    }

    static qint64 walk(Recordset& set)
    {
        qint64 letters = 0;
        for (set.MoveFirst(); !set.Eof(); set.MoveNext()) {
            letters += set.value(1).toText().size();
        }
        return letters;
    }
};

TEST_F(EngineLargeSet, CostsItsKeysHoweverMuchOfItWasLookedAt)
{
    constexpr qint64 kSlack = 1'500'000;
    const auto text = u"select * from t order by id desc"_s;
    (void)walk(*db().OpenRecordset(text));
    const qint64 before = bytes();
    const auto set = db().OpenRecordset(text);
    ASSERT_EQ(set->rowCount(), kRows);
    EXPECT_LE(bytes() - before, kRows * 8 + kSlack);
    EXPECT_EQ(walk(*set), kRows * 120);
    EXPECT_LE(bytes() - before, kRows * 8 + kSlack) << "rows of " << kRows * 300 << " bytes";
    set->SetAbsolutePosition(kRows / 2);
    EXPECT_EQ(set->value(u"id").toLong(), kRows - kRows / 2);
    const auto clone = set->Clone();
    EXPECT_LE(bytes() - before, kRows * 8 + kSlack) << "a clone shares the keys";
}

TEST_F(EngineLargeSet, OneNewRowInAJoinReadsNotAllOfItAnew)
{
    db().tableDefs().Append(keyedTable(u"k"_s, {field(u"n"_s, FieldType::Long)}));
    db().Execute(u"insert into k values (1)"_s);
    const auto set = db().OpenRecordset(u"select t.id, t.a, k.n from t, k"_s);
    ASSERT_EQ(set->rowCount(), kRows);
    const qint64 before = bytes();
    for (int i = 0; i < 20; ++i) {
        set->AddNew();
        set->setValue(u"a", u"new %1"_s.arg(i));
        set->Update();
        set->SetBookmark(set->LastModified());
        ASSERT_EQ(set->value(u"a").toText(), u"new %1"_s.arg(i));
        ASSERT_EQ(set->value(u"n").toLong(), 1);
    }
    EXPECT_LE(bytes() - before, 1'000'000);
}

} // namespace
} // namespace melovane::test
