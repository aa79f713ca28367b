#include "platform/db/db_error.h"
#include "support/held_worker.h"
#include "support/suite_fixture.h"
#include "trees/row_search.h"

#include <gtest/gtest.h>

#include <optional>

namespace melovane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

/// The search with a worker that works when it is told to.
struct RowSearchTest : SuiteFixture
{
    RowSearchTest()
    {
        for (const QString& name : {u"Kaja"_s, u"Kajal"_s, u"Mara"_s}) {
            suite.execute(
                u"insert into tree_interpret (Name, anzahl) values ('%1', 1)"_s.arg(name));
        }
        search.emplace(
            worker,
            [this](const std::function<void(Database&)>& work) {
                ++opened;
                work(*suite.open());
            },
            10);
    }

    void find(const QString& typed)
    {
        search->find(typed, [this, typed](const std::vector<NamedRowPlace>& found) {
            for (const NamedRowPlace& row : found) {
                answers.append(typed + u": "_s + row.name);
            }
        });
    }

    HeldWorker worker;
    std::optional<RowSearch> search;
    QStringList answers;
    int opened = 0;
};

TEST_F(RowSearchTest, TheNamesAreReadOnceForAllThatIsTyped)
{
    EXPECT_TRUE(worker.waiting.empty()) << "nothing is read before a letter is typed";
    find(u"mar"_s);
    EXPECT_EQ(opened, 0) << "never on the thread of the window";
    worker.finish();
    find(u"kajal"_s);
    worker.finish();
    EXPECT_EQ(answers, (QStringList{u"mar: Mara"_s, u"kajal: Kajal"_s}));
    EXPECT_EQ(opened, 1);
}

TEST_F(RowSearchTest, OnlyTheLastTextIsAnswered)
{
    find(u"k"_s);
    find(u"ka"_s);
    find(u"mara"_s);
    worker.finish();
    EXPECT_EQ(answers, QStringList{u"mara: Mara"_s});
    find(u"kaja"_s);
    search->forget();
    worker.finish();
    EXPECT_EQ(answers.size(), 1);
}

TEST_F(RowSearchTest, WhatIsLeftBehindIsGivenBackByTheWorkerAndNotAnswered)
{
    find(u"kaja"_s);
    search.reset();
    EXPECT_EQ(worker.waiting.size(), 2U) << "the question, and giving back what was read";
    worker.finish();
    EXPECT_EQ(answers, QStringList());
}

TEST_F(RowSearchTest, ALibraryThatCannotBeReadHasNoRowsAndIsTriedAgain)
{
    search.emplace(
        worker,
        [this](const std::function<void(Database&)>& work) {
            if (++opened == 1) {
                throw DbError(3024, u"gone"_s);
            }
            work(*suite.open());
        },
        10);
    worker.finish();
    find(u"mara"_s);
    worker.finish();
    EXPECT_EQ(answers, QStringList());
    find(u"mara"_s);
    worker.finish();
    EXPECT_EQ(answers, QStringList{u"mara: Mara"_s});
}

} // namespace
} // namespace melovane::test
