#include "bus/event_guard.h"
#include "config/config_objects.h"
#include "config/melovane_configuration.h"
#include "support/suite_folders.h"

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

struct EventGuardTest : public testing::Test
{
    EventGuardTest() { MelovaneConfiguration::fill(texts); }

    test::SuiteFolders folders;
    ConfigObjects texts{folders.paths(), folders.profile(), folders.files()};
    QStringList told;
    QStringList logged;
    EventGuard guard{
        texts, [] { return u"/m/melovane.mdb"_s; },
        [this](const QString& text) { told.append(text); },
        [this](const QString& where, const QString& what) { logged.append(where + u'|' + what); }};
};

TEST_F(EventGuardTest, AKnownFaultOfTheDatabaseIsToldInTheUsersLanguageOnOneLine)
{
    guard.run(u"mnuX"_s, [] { throw DbError(dberror::kFileNotFound, u"no file"_s); });
    EXPECT_EQ(told, QStringList{u"Die Datenbankdatei ist nicht vorhanden: /m/melovane.mdb"_s});
    EXPECT_EQ(logged, QStringList{u"mnuX|no file"_s});
}

TEST_F(EventGuardTest, AnotherFaultOfTheDatabaseIsToldInTheEnginesWords)
{
    guard.run(u"mnuX"_s, [] { throw DbError(dberror::kSyntax, u"what is this"_s); });
    EXPECT_EQ(told, QStringList{u"what is this"_s});
}

TEST_F(EventGuardTest, AFileThatFailsIsTold)
{
    guard.run(u"mnuX"_s, [] { throw IoError(u"/m/a"_s, u"full"_s); });
    EXPECT_EQ(told, QStringList{u"Unerwarteter Fehler: /m/a: full"_s});
    EXPECT_EQ(logged, QStringList{u"mnuX|/m/a: full"_s});
}

TEST_F(EventGuardTest, WorkThatSucceedsIsRunOnceAndNothingIsTold)
{
    int runs = 0;
    guard.run(u"mnuX"_s, [&runs] { ++runs; });
    EXPECT_EQ(runs, 1);
    EXPECT_TRUE(told.isEmpty());
    EXPECT_TRUE(logged.isEmpty());
}

TEST_F(EventGuardTest, AFaultOfTheProgramItselfIsNotHidden)
{
    EXPECT_THROW(guard.run(u"mnuX"_s, [] { throw std::logic_error("bug"); }), std::logic_error);
}

} // namespace
} // namespace melovane
