#pragma once

#include "bus/mlv_message_bus.h"
#include "config/config_objects.h"
#include "platform/db/database.h"
#include "platform/sqlite/engine/sqlite_engine.h"
#include "support/fake_clock.h"
#include "support/suite_folders.h"

#include <memory>
#include <vector>

namespace melovane::test {

/// A track in few words; everything else is null, `DEL` 0.
struct TestTrack
{
    QString title;
    QString artist;
    QString album;
    QString note;
    int del = 0;
};

/// An installation with a database of tracks in its configuration folder and settings that name it.
class TestLibrary
{
public:
    TestLibrary();

    /// In one transaction; FIDs of twelve digits rise.
    void add(const std::vector<TestTrack>& tracks);
    /// Tracks "Titel 00000" and so on, in one transaction.
    void addMany(int count);

    /// Runs a statement on a connection of its own, as another program would.
    void execute(const QString& statement);

    [[nodiscard]] QString databaseName() const { return m_databaseName; }

    FakeClock clock;
    SuiteFolders folders;
    std::unique_ptr<DBEngine> engine;
    std::unique_ptr<GlobalSettings> settings;
    ConfigObjects texts; ///< the built-in ones
    MLVMessageBus bus;

private:
    void makeDatabase();
    void insert(Recordset& tracks, const TestTrack& track);

    QString m_databaseName;
    qint64 m_lastFid = 800'000'000'000;
};

} // namespace melovane::test
