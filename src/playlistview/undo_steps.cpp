#include "playlistview/undo_steps.h"

#include "bus/message_names.h"
#include "bus/mlv_message_bus.h"
#include "config/config_objects.h"
#include "platform/controls/warnings.h"
#include "playlists/mlv_function.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

UndoSteps::UndoSteps(PlaylistTools tools,
                     PendingJobs jobs,
                     const ConfigObjects& texts,
                     Warnings& warnings,
                     BusSender& bus,
                     std::function<void(Pnid list)> changed,
                     std::function<void(const ListHistory::Result& step)> show)
    : m_tools(tools)
    , m_jobs(std::move(jobs))
    , m_texts(texts)
    , m_warnings(warnings)
    , m_bus(bus)
    , m_changed(std::move(changed))
    , m_show(std::move(show))
{}

bool UndoSteps::undo()
{
    return takeStep(true);
}

bool UndoSteps::redo()
{
    return takeStep(false);
}

ListHistory::Result UndoSteps::take(bool isUndo, ListHistory::Force force)
{
    return isUndo ? m_tools.history.undo(force) : m_tools.history.redo(force);
}

bool UndoSteps::takeStep(bool isUndo)
{
    using Force = ListHistory::Force;
    using Outcome = ListHistory::Outcome;
    const auto next = isUndo ? m_tools.history.nextUndo() : m_tools.history.nextRedo();
    if (next && m_tools.functions.catalogue().stateOf(next->list) == ListCatalogue::State::Locked) {
        m_bus.SendMessage(bus::kShowStatusText,
                          m_texts.text(u"playlist.undo.locked"_s, next->listName));
        return false;
    }
    ListHistory::Result result = take(isUndo, Force::No);
    if (result.outcome == Outcome::ChangedElsewhere) {
        const WarningAnswer answer = m_warnings.ShowWarning(
            changedElsewhereText(m_texts, result.step), WarningType::Question,
            m_texts.text(u"glob_warn"_s), u"history.elsewhere"_s);
        if (answer != WarningAnswer::Yes) {
            return false;
        }
        result = take(isUndo, Force::Yes);
    }
    if (result.outcome == Outcome::Failed) {
        m_bus.SendMessage(bus::kShowStatusText, m_texts.text(u"playlist.undo.failed"_s));
    }
    for (const Pnid list : result.lists) {
        m_changed(list);
    }
    for (const QString& tree : result.trees) {
        m_jobs.ChangeTree(tree);
    }
    if (!result.tracks.isEmpty()) {
        // Once for all of them: who hears it paints every row anew.
        m_bus.SendMessage(bus::kDbRefreshByFid, result.tracks.first());
    }
    if (result.outcome == Outcome::Done) {
        // A list or a group may be there again, or be gone.
        m_bus.SendMessage(bus::kRefreshPlaylistTree);
        m_show(result);
        m_bus.SendMessage(bus::kShowStatusText,
                          isUndo ? undoText(m_texts, result.step) : redoText(m_texts, result.step));
    }
    return true;
}

} // namespace melovane
