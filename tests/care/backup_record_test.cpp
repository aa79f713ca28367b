#include "care/backup_record.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace melovane;

namespace {

const QDate kToday(2026, 11, 22);

Backup backup(int daysAgo, BackupOccasion occasion = BackupOccasion::Daily, int hour = 19)
{
    Backup made;
    made.made = QDateTime(kToday.addDays(-daysAgo), QTime(hour, 0));
    made.name = backupName(34150, made.made);
    made.occasion = occasion;
    made.state = BackupState::Good;
    return made;
}

/// One a day, for so many days.
std::vector<Backup> daily(int days)
{
    std::vector<Backup> backups;
    for (int day = 0; day < days; ++day) {
        backups.push_back(backup(day));
    }
    return backups;
}

std::vector<Backup> kept(std::vector<Backup> backups, const QDate& today = kToday)
{
    const QStringList dropped = backupsToDrop(backups, today);
    std::erase_if(backups, [&](const Backup& b) { return dropped.contains(b.name); });
    return backups;
}

} // namespace

TEST(BackupRecord, ANameTellsLevelAndTime)
{
    const QDateTime made(kToday, QTime(1, 42, 7));
    EXPECT_EQ(backupName(34150, made), u"Melovane.Backup.(34150).20261122_014207.tar.zst"_s);
    const auto told = backupOfName(backupName(34150, made));
    ASSERT_TRUE(told.has_value());
    EXPECT_EQ(told->made, made);
    EXPECT_EQ(told->level, 34150);
    EXPECT_FALSE(told->isPlain());
}

TEST(BackupRecord, ACopyOfAnUpgradeIsPlain)
{
    const auto told = backupOfName(u"Melovane.Backup.(343).20260314_150926.mdb"_s);
    ASSERT_TRUE(told.has_value());
    EXPECT_TRUE(told->isPlain());
    EXPECT_EQ(told->occasion, BackupOccasion::Upgrade);
}

TEST(BackupRecord, OtherFilesAreNoBackups)
{
    for (const QString& name :
         {u"melovane.mdb"_s, u"Melovane.Backup.(x).20260314_150926.mdb"_s,
          u"Melovane.Backup.(1).20261399_150926.mdb"_s, u"Melovane.Backup.state"_s,
          u"Melovane.Backup.(1).20260314_150926.tar.zst.part"_s}) {
        EXPECT_FALSE(backupOfName(name).has_value()) << name.toStdString();
    }
}

TEST(BackupRecord, FactsComeBackAsTheyWereWritten)
{
    Backup before = backup(0, BackupOccasion::Cleaning);
    before.tracks = 41820;
    before.lists = 126;
    before.library = u"/home/u/a=b/melovane.mdb"_s;
    Backup after;
    readFacts(factsText(before), after);
    EXPECT_EQ(after.occasion, BackupOccasion::Cleaning);
    EXPECT_EQ(after.tracks, 41820);
    EXPECT_EQ(after.lists, 126);
    EXPECT_EQ(after.library, before.library);
}

TEST(BackupRecord, SevenDaysFourWeeksAndTwelveMonthsStay)
{
    const std::vector<Backup> stay = kept(daily(500));
    EXPECT_EQ(stay.size(), 7U + 3U + 11U) << "this week and this month are among the days";
    EXPECT_EQ(stay.back().made.date(), QDate(2025, 12, 31));
}

TEST(BackupRecord, AfterEveryDayOfAYearTheRulesKeepTheSameNumber)
{
    std::vector<Backup> backups;
    for (int day = 400; day >= 0; --day) {
        backups.push_back(backup(day));
        backups = kept(backups, kToday.addDays(-day));
        ASSERT_FALSE(backups.empty());
        EXPECT_EQ(backups.back().made.date(), kToday.addDays(-day));
    }
    EXPECT_GE(backups.size(), 18U);
    EXPECT_LE(backups.size(), 23U);
}

TEST(BackupRecord, TheNewestOfADayStandsForIt)
{
    const std::vector<Backup> stay =
        kept({backup(10, BackupOccasion::Daily, 8), backup(10, BackupOccasion::Daily, 20)});
    ASSERT_EQ(stay.size(), 1U);
    EXPECT_EQ(stay.front().made.time().hour(), 20);
}

TEST(BackupRecord, WhatWasMadeByHandOrBeforeAnUpgradeStays)
{
    std::vector<Backup> backups = daily(3);
    backups.push_back(backup(900, BackupOccasion::ByHand));
    backups.push_back(backup(901, BackupOccasion::ByHand));
    backups.push_back(backup(902, BackupOccasion::Upgrade));
    EXPECT_EQ(kept(backups).size(), 6U);
}

TEST(BackupRecord, EveryBackupBeforeACleaningStaysForAWeek)
{
    EXPECT_EQ(kept({backup(0), backup(0, BackupOccasion::Cleaning, 9),
                    backup(0, BackupOccasion::Cleaning, 8), backup(6, BackupOccasion::Restore, 8),
                    backup(6, BackupOccasion::Restore, 7)})
                  .size(),
              5U);
    EXPECT_EQ(kept({backup(8), backup(8, BackupOccasion::Cleaning, 9)}).size(), 1U);
}

TEST(BackupRecord, ADamagedOneTakesNobodysPlaceAndGoesAfterAWeek)
{
    std::vector<Backup> backups{backup(2), backup(40, BackupOccasion::Daily, 8)};
    Backup damaged = backup(40, BackupOccasion::Daily, 20);
    damaged.state = BackupState::Damaged;
    backups.push_back(damaged);
    const std::vector<Backup> stay = kept(backups);
    ASSERT_EQ(stay.size(), 2U);
    EXPECT_EQ(stay.back().made.time().hour(), 8);
}

TEST(BackupRecord, TheOnlyGoodOneIsNeverDropped)
{
    std::vector<Backup> backups = daily(30);
    for (Backup& each : backups) {
        each.state = BackupState::Damaged;
    }
    Backup good = backup(2000);
    backups.push_back(good);
    EXPECT_FALSE(backupsToDrop(backups, kToday).contains(good.name));
}
