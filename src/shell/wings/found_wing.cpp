#include "shell/wings/found_wing.h"

#include "bus/message_names.h"
#include "care/left_merges.h"
#include "care/ui/doubles_window.h"
#include "care/ui/find_again_window.h"
#include "shell/wings/desk.h"
#include "shell/wings/lists_wing.h"
#include "shell/wings/machine.h"
#include "shell/wings/suite_wing.h"
#include "store/kept_sounds.h"
#include "store/pending_jobs.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// For work beside the window, which may outlive it.
std::unique_ptr<DBEngine> makeEngine()
{
    static const SystemClock clock;
    return sqlite::makeEngine(clock);
}

} // namespace

FoundWing::FoundWing(Machine& base,
                     Desk& room,
                     SuiteWing& talk,
                     ListsWing& steps,
                     RecycleTools tools,
                     std::function<bool(BackupOccasion)> before)
    : machine(base)
    , desk(room)
    , suite(talk)
    , lists(steps)
    , recycler(std::move(tools))
    , backUp(std::move(before))
{}

FoundWing::~FoundWing()
{
    if (m_leftMerges) {
        m_leftMerges->end();
    }
}

void FoundWing::endLeftMerges()
{
    m_leftMerges = std::make_shared<LeftMerges>(makeEngine, machine.settings.DbName(), recycler);
    worker.run([left = m_leftMerges] { left->run(); }, [] {});
}

CareCommands FoundWing::commands()
{
    return {{u"mnuNoExistFind"_s, [this] { findAgain(); }},
            {u"mnuDoubles"_s, [this] { mergeDoubles(); }}};
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
    // Read by the worker, when the first file is in doubt.
    const auto sounds = std::make_shared<std::optional<QHash<QString, AudioPrint>>>();
    const auto kept = [sounds, this, library = machine.settings.DbName()](
                          const QString& fid) -> std::optional<AudioPrint> {
        if (!*sounds) {
            *sounds = KeptSounds::read(searchFiles, library);
        }
        const auto known = (*sounds)->constFind(fid);
        return known == (*sounds)->cend() ? std::nullopt : std::optional(*known);
    };
    FindAgain find({.engine = *machine.engine,
                    .history = lists.history,
                    .settings = machine.settings,
                    .files = machine.files,
                    .searchFiles = searchFiles,
                    .reader = lists.tagReader,
                    .audio = audio,
                    .worker = worker,
                    .makeEngine = makeEngine,
                    .dataFolder = machine.paths.GetConfigPath(),
                    .kept = kept});
    FindAgainWindow window(desk.skin, desk.icons, find, machine.texts, machine.loop, &desk.window);
    window.whyNotNow = [this] { return whyNotNow(); };
    window.backUp = [this] { return backUp(BackupOccasion::Relink); };
    window.whenWritten = [this] { libraryChanged({u"Dir"_s}); };
    window.load();
    window.exec();
}

void FoundWing::mergeDoubles()
{
    Doubles doubles({.engine = *machine.engine,
                     .history = lists.history,
                     .settings = machine.settings,
                     .files = machine.files,
                     .audio = audio,
                     .worker = worker,
                     .makeEngine = makeEngine,
                     .recycler = recycler});
    DoublesWindow window(desk.skin, desk.icons, doubles, machine.texts, machine.loop, &desk.window);
    window.whyNotNow = [this] { return whyNotNow(); };
    window.backUp = [this] { return backUp(BackupOccasion::Merge); };
    window.whenWritten = [this] {
        libraryChanged({u"Dir"_s, u"Interpret"_s, u"Album"_s, u"Genre"_s});
    };
    window.exec();
}

} // namespace melovane
