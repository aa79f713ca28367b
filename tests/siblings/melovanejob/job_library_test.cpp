#include "platform/db/db_error.h"
#include "siblings/melovanejob/job_library.h"
#include "support/suite_fixture.h"

namespace melovane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

class JobLibrary : public SuiteFixture
{
protected:
    [[nodiscard]] bool due(JobKind kind) { return hasWork(*suite.engine, suite.dbName(), kind); }

    [[nodiscard]] QString state() { return libraryState(suite.files, suite.dbName()); }
};

TEST_F(JobLibrary, EachJobHasWorkWhenItsOwnNotesStandInTheLibrary)
{
    suite.execute(u"update pl_name set sicherung=false"_s);
    for (const auto& [kind, note] :
         {std::pair(JobKind::Tags, u"insert into db_edit (FID) values ('000000000001')"_s),
          {JobKind::Lists, u"insert into pl_name (nid, grid, name, sicherung) "
                           "values (77, 1, 'Abend', true)"_s},
          {JobKind::Trees, u"insert into ChangeTree ( TreeName ) values ( 'Genre' )"_s}}) {
        EXPECT_FALSE(due(kind));
        suite.execute(note);
        EXPECT_TRUE(due(kind)) << note.toStdString();
    }
}

TEST_F(JobLibrary, ATreeThatNobodyCanRebuildIsNoWork)
{
    suite.execute(u"insert into ChangeTree ( TreeName ) values ( 'Nowhere' )"_s);
    EXPECT_FALSE(due(JobKind::Trees));
}

TEST_F(JobLibrary, ItsStateChangesWithEveryWriteAndWithNoRead)
{
    const auto held = suite.open(); // as the console holds it
    held->Execute(u"insert into db_edit (FID) values ('000000000001')"_s);
    const QString before = state();
    ASSERT_FALSE(before.isEmpty());
    EXPECT_TRUE(due(JobKind::Tags));
    EXPECT_EQ(state(), before);
    suite.execute(u"insert into db_edit (FID) values ('000000000002')"_s);
    EXPECT_NE(state(), before);
}

TEST_F(JobLibrary, AskingALibraryThatNobodyHoldsDoesNotCountAsAChange)
{
    EXPECT_FALSE(due(JobKind::Tags));
    const QString before = state();
    EXPECT_FALSE(due(JobKind::Tags));
    EXPECT_EQ(state(), before);
}

TEST_F(JobLibrary, WithoutALibraryItIsEmptyAndAskingFails)
{
    EXPECT_EQ(libraryState(suite.files, suite.file(u"away.mdb"_s)), QString());
    EXPECT_EQ(libraryState(suite.files, suite.dataFolder()), QString());
    EXPECT_EQ(libraryState(suite.files, QString()), QString());
    EXPECT_THROW(
        static_cast<void>(hasWork(*suite.engine, suite.file(u"away.mdb"_s), JobKind::Tags)),
        DbError);
}

} // namespace
} // namespace melovane::test
