#include "care/health.h"
#include "care/last_check.h"
#include "config/melovane_configuration.h"
#include "support/suite_fixture.h"
#include "support/text_catalogue.h"

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

struct HealthTest : test::SuiteFixture
{
    HealthTest() { catalogue.fill(); }

    [[nodiscard]] QString report()
    {
        return healthText(healthOf({.texts = catalogue.texts,
                                    .settings = *settings,
                                    .paths = suite.folders.paths(),
                                    .files = suite.files,
                                    .engine = *suite.engine,
                                    .clock = suite.clock,
                                    .runtimeFolder = suite.folders.environment().runtimeFolder(),
                                    .programs = [this] { return programs; },
                                    .messages = [this] { return messages; },
                                    .backups = [this] { return backups; }}));
    }

    [[nodiscard]] bool says(const QString& line)
    {
        const bool does = report().split(u'\n').contains(line);
        EXPECT_TRUE(does) << line.toStdString() << "\nin\n" << report().toStdString();
        return does;
    }

    test::TextCatalogue catalogue;
    std::unique_ptr<GlobalSettings> settings = suite.makeSettings();
    std::vector<LiveProgram> programs;
    QStringList messages;
    std::vector<Backup> backups;
};

TEST_F(HealthTest, ProgramsThatLiveHaveTheNamesUnderWhichTheyArePublished)
{
    EXPECT_TRUE(says(u"  Kein Programm der Suite läuft."_s));
    suite.folders.profile().write(suite.file(u"melovane.ini"_s), u"Message"_s, u"Handle.DJ"_s,
                                  u"4711"_s);
    programs = {{4711, 12, u"player"_s}};
    EXPECT_TRUE(says(u"  player: Gegenstelle 4711, Prozess 12  Handle.DJ"_s));
}

TEST_F(HealthTest, AProgramIsNotListedForEachControlThatItHasForItself)
{
    suite.folders.profile().write(suite.file(u"melovane.ini"_s), u"Message"_s, u"Handle.DB"_s,
                                  u"4711"_s);
    programs = {{4700, 12, u"MelovaneDB"_s},
                {4711, 12, u"MelovaneDB"_s},
                {4712, 12, u"MelovaneDB"_s},
                {4720, 13, u"tagbench"_s},
                {4721, 13, u"tagbench"_s}};
    EXPECT_TRUE(says(u"  MelovaneDB: Gegenstelle 4711, Prozess 12  Handle.DB"_s));
    EXPECT_EQ(report().count(u"MelovaneDB: "_s), 1);
    EXPECT_EQ(report().count(u"tagbench: "_s), 1);
}

TEST_F(HealthTest, WhatWaitsIsCounted)
{
    EXPECT_TRUE(says(u"  Tags, die in Dateien zu schreiben sind (db_edit): nichts"_s));
    suite.execute(u"insert into todo (id, fid) values (1046, '1')"_s);
    suite.execute(u"insert into todo (id, fid) values (1, '1')"_s);
    suite.execute(u"insert into todo (id, fid) values (1, '2')"_s);
    suite.execute(u"insert into db_edit (fid) values ('836123456001')"_s);
    suite.execute(u"insert into db_edit (fid) values ('836123456001')"_s);
    suite.execute(u"insert into ChangeTree (TreeName) values ('Album')"_s);
    EXPECT_TRUE(says(u"  Postfach der Programme (todo): Nummer 1: 2, Nummer 1046: 1"_s));
    EXPECT_TRUE(says(u"  Tags, die in Dateien zu schreiben sind (db_edit): 1 Titel"_s));
    EXPECT_TRUE(says(u"  Bäume, die neu zu füllen sind (ChangeTree): Album"_s));
    EXPECT_TRUE(says(u"  Playlisten, die in Dateien zu schreiben sind: nichts"_s));
}

TEST_F(HealthTest, MessagesStandAsTheyAreTold)
{
    EXPECT_TRUE(says(u"  Noch keine."_s));
    messages = {u"12:00:00  <  1039 0 0  = 0"_s};
    EXPECT_TRUE(says(u"  12:00:00  <  1039 0 0  = 0"_s));
}

TEST_F(HealthTest, ALibraryWithoutBackupOrWithFindingsIsAlarming)
{
    EXPECT_TRUE(says(u"! Letzte Sicherung: noch nie"_s));
    EXPECT_TRUE(says(u"  Letzte Prüfung der Datenbank: noch nie"_s));
    keepLastCheck(*settings, settings->DbName(), {QDateTime({2026, 3, 1}, {20, 15}), 3});
    EXPECT_TRUE(report().contains(u"\n! Letzte Prüfung der Datenbank: "_s));
    EXPECT_TRUE(report().contains(u", Befunde: 3\n"_s));
    keepLastCheck(*settings, settings->DbName(), {QDateTime({2026, 3, 1}, {20, 15}), 0});
    EXPECT_TRUE(report().contains(u", ohne Befund\n"_s));
    EXPECT_FALSE(lastCheck(*settings, u"C:\\other.mdb"_s).has_value());
}

TEST_F(HealthTest, ABackupIsAlarmingWhenItIsDamagedOrOld)
{
    backups.emplace_back();
    backups.front().made = suite.clock.now();
    backups.front().state = BackupState::Good;
    EXPECT_TRUE(report().contains(u"\n  Letzte Sicherung: "_s));
    EXPECT_TRUE(report().contains(u"in Ordnung; 1 vorhanden"_s));
    backups.front().made = suite.clock.now().addDays(-8);
    EXPECT_TRUE(report().contains(u"\n! Letzte Sicherung: "_s));
    backups.front().made = suite.clock.now();
    backups.front().state = BackupState::Damaged;
    EXPECT_TRUE(report().contains(u"\n! Letzte Sicherung: "_s));
}

TEST_F(HealthTest, ALibraryThatCannotBeReadIsToldInItsPlace)
{
    suite.engine->Release(suite.dbName());
    suite.files.remove(suite.dbName());
    EXPECT_TRUE(report().contains(u"\n! Die Bibliothek lässt sich nicht lesen: "_s));
    EXPECT_TRUE(report().contains(u"\nWo alles liegt\n"_s));
}

TEST_F(HealthTest, AFileThatIsMissingIsMarked)
{
    EXPECT_TRUE(report().contains(u"  Datenbank: "_s + suite.dbName()));
    suite.files.remove(suite.file(u"melovane.tree.mdb"_s));
    EXPECT_TRUE(report().contains(u"melovane.tree.mdb  (fehlt)"_s));
}

} // namespace
} // namespace melovane
