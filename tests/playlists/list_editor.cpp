// Edits the lists of a database at random until it is killed, and tells each edit before and after
// it: the proof that a kill loses nothing starts and ends it.
//
//   list_editor FOLDER SEED [EDITS]
//
// With EDITS it kills itself behind so many confirmed edits, at the moment at which the next one is
// committed.

#include "config/global_settings.h"
#include "config/paths.h"
#include "platform/db/database.h"
#include "platform/linux/ini_profile.h"
#include "platform/linux/linux_environment.h"
#include "platform/linux/linux_files.h"
#include "platform/sqlite/engine/sqlite_engine.h"
#include "platform/system/clock.h"
#include "playlists/list_model.h"
#include "playlists/undo_redo.h"
#include "store/file_locator.h"

#include <QCoreApplication>

#include <sqlite3.h>

#include <csignal>
#include <cstdio>
#include <cstring>
#include <map>
#include <utility>

namespace {

using namespace Qt::Literals::StringLiterals;
using namespace melovane;

void say(const QString& line)
{
    std::fprintf(stdout, "%s\n", line.toUtf8().constData());
    std::fflush(stdout);
}

bool endsAtCommit = false;

/// A transaction that has only read is committed, too; it is not meant.
int endAtCommit(unsigned /*event*/, void* /*context*/, void* statement, void* /*time*/)
{
    static std::map<sqlite3*, int> known;
    auto* const ended = static_cast<sqlite3_stmt*>(statement);
    sqlite3* const connection = sqlite3_db_handle(ended);
    if (sqlite3_get_autocommit(connection) != 0) {
        const int changes = sqlite3_total_changes(connection);
        const bool hasWritten = std::exchange(known[connection], changes) != changes;
        const char* const text = sqlite3_sql(ended);
        if (endsAtCommit && hasWritten && text != nullptr && std::strcmp(text, "COMMIT") == 0) {
            std::raise(SIGKILL);
        }
    }
    return 0;
}

/// Has every connection tell the end of each statement.
int follow(sqlite3* connection, char** /*error*/, const void* /*routines*/)
{
    return sqlite3_trace_v2(connection, SQLITE_TRACE_PROFILE, endAtCommit, nullptr);
}

EnvironmentPlaces placesIn(const QString& folder)
{
    EnvironmentPlaces places;
    places.programFolder = folder;
    places.programName = u"MelovaneDB"_s;
    return places;
}

/// \param edits after which it waits for a commit to end at; 0 for never
int edit(const QString& folder, unsigned seed, int edits)
{
    SystemClock clock;
    LinuxFiles files;
    const auto engine = sqlite::makeEngine(clock);
    LinuxEnvironment environment(placesIn(folder));
    IniProfile profile(files);
    Mod_API paths(environment, files);
    GlobalSettings settings(paths, profile, files, *engine);
    const QString database = folder + u"/melovane.mdb"_s;
    settings.SetDbName(database);
    const ErrorSink sink;
    ModUndoRedo snapshots(files, folder);
    ListHistory history(*engine, files, clock, settings, sink);
    cls_PLInsertMoveDel entries(*engine, snapshots, history);
    entries.SetDbName(database);
    FileLocator locator(files, folder);
    ListCatalogue names({*engine, settings, files, locator, history, sink});

    std::mt19937 random(seed);
    const auto tables = engine->OpenDatabase(database);
    test::ListModel model(*tables);
    say(u"lists "_s + model.text());
    for (int done = 1;; ++done) {
        const test::ModelStep step = model.randomStep(random, test::ListModel::Others::Away);
        const ListHistory::Outcome expected = model.apply(step);
        say(u"next "_s + model.text());
        endsAtCommit = edits > 0 && done > edits;
        const bool isAsTold = test::perform({entries, history, names, *tables}, step) == expected;
        endsAtCommit = false;
        if (!isAsTold || !model.adopt(*engine->OpenDatabase(database))) {
            std::fprintf(stderr, "the tables are not as they should be\n");
            return 1;
        }
        say(u"done"_s);
    }
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() > 3) {
        sqlite3_auto_extension(reinterpret_cast<void (*)()>(follow));
    }
    return edit(arguments.value(1), arguments.value(2).toUInt(), arguments.value(3).toInt());
}
