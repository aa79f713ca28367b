// Edits the lists of a database at random until it is killed, and tells each edit before and after
// it: the proof that a kill loses nothing starts and ends it.
//
//   list_editor FOLDER SEED

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

#include <cstdio>

namespace {

using namespace Qt::Literals::StringLiterals;
using namespace melovane;

void say(const QString& line)
{
    std::fprintf(stdout, "%s\n", line.toUtf8().constData());
    std::fflush(stdout);
}

EnvironmentPlaces placesIn(const QString& folder)
{
    EnvironmentPlaces places;
    places.programFolder = folder;
    places.programName = u"MelovaneDB"_s;
    return places;
}

int edit(const QString& folder, unsigned seed)
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
    cls_PLInsertMoveDel edits(*engine, snapshots, history);
    edits.SetDbName(database);
    FileLocator locator(files, folder);
    ListCatalogue names({*engine, settings, files, locator, history, sink});

    std::mt19937 random(seed);
    test::ListModel model(*engine->OpenDatabase(database));
    say(u"lists "_s + model.text());
    for (;;) {
        const test::ModelStep step = model.randomStep(random);
        model.apply(step);
        say(u"next "_s + model.text());
        test::perform({edits, history, names}, step);
        if (!model.adopt(*engine->OpenDatabase(database))) {
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
    return edit(arguments.value(1), arguments.value(2).toUInt());
}
