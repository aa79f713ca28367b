#include "shell/wings/found_wing.h"

#include "bus/message_names.h"
#include "care/ui/find_again_window.h"
#include "shell/wings/desk.h"
#include "shell/wings/lists_wing.h"
#include "shell/wings/machine.h"
#include "shell/wings/suite_wing.h"
#include "store/pending_jobs.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

FoundWing::FoundWing(Machine& base, Desk& room, SuiteWing& talk, ListsWing& steps)
    : machine(base)
    , desk(room)
    , suite(talk)
    , lists(steps)
{}

CareCommands FoundWing::commands()
{
    return {{u"mnuNoExistFind"_s, [this] { findAgain(); }}};
}

QString FoundWing::whyNotNow() const
{
    return suite.world(machine).isReadOnly() ? machine.texts.text(u"library.readonly"_s)
                                             : QString();
}

void FoundWing::libraryChanged(const QStringList& trees)
{
    PendingJobs jobs(*machine.engine, machine.settings);
    for (const QString& tree : trees) {
        jobs.ChangeTree(tree);
    }
    suite.sender.SendMessage(bus::kDbChange);
    suite.sender.SendMessage(bus::kRefreshAll);
}

void FoundWing::findAgain()
{
    FindAgain find({.engine = *machine.engine,
                    .history = lists.history,
                    .settings = machine.settings,
                    .files = machine.files,
                    .searchFiles = searchFiles,
                    .reader = lists.tagReader,
                    .audio = audio,
                    .worker = worker,
                    .dataFolder = machine.paths.GetConfigPath()});
    FindAgainWindow window(desk.skin, desk.icons, find, machine.texts, machine.loop, &desk.window);
    window.whyNotNow = [this] { return whyNotNow(); };
    window.whenWritten = [this] { libraryChanged({u"Dir"_s}); };
    window.load();
    window.exec();
}

} // namespace melovane
