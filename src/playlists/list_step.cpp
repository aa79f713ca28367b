#include "playlists/list_step.h"

#include "config/config_objects.h"

#include <algorithm>
#include <array>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

struct ActionName
{
    ListAction action;
    QStringView word; ///< in the side file, and behind "history." in the catalogue
};

constexpr std::array kActions = std::to_array<ActionName>({
    {ListAction::Append, u"append"},
    {ListAction::Insert, u"insert"},
    {ListAction::Copy, u"copy"},
    {ListAction::Move, u"move"},
    {ListAction::Delete, u"delete"},
    {ListAction::MoveUp, u"up"},
    {ListAction::MoveDown, u"down"},
    {ListAction::Aktion, u"aktion"},
    {ListAction::Entry, u"entry"},
    {ListAction::Reset, u"reset"},
    {ListAction::Styles, u"styles"},
    {ListAction::Import, u"import"},
    {ListAction::DeleteList, u"deletelist"},
    {ListAction::DeleteGroup, u"deletegroup"},
    {ListAction::Tracks, u"tracks"},
    {ListAction::Rating, u"rating"},
    {ListAction::Cover, u"cover"},
    {ListAction::Favorit, u"favorit"},
    {ListAction::Flag, u"flag"},
    {ListAction::Relink, u"relink"},
    {ListAction::Merge, u"merge"},
});

} // namespace

QString actionWord(ListAction action)
{
    const auto* found = std::find_if(kActions.begin(), kActions.end(),
                                     [&](const ActionName& name) { return name.action == action; });
    return found->word.toString();
}

std::optional<ListAction> actionOfWord(QStringView word)
{
    const auto* found = std::find_if(kActions.begin(), kActions.end(),
                                     [&](const ActionName& name) { return name.word == word; });
    return found == kActions.end() ? std::nullopt : std::optional(found->action);
}

QString stepText(const ConfigObjects& texts, const ListStep& step)
{
    const QString key = u"history."_s + actionWord(step.action);
    const QString one =
        step.count == 1 ? texts.text(key + u".one"_s, step.count, step.listName) : QString();
    return one.isEmpty() ? texts.text(key, step.count, step.listName) : one;
}

QString undoText(const ConfigObjects& texts, const std::optional<ListStep>& step)
{
    return step ? texts.text(u"history.undo", stepText(texts, *step))
                : texts.text(u"history.undo.nothing");
}

QString redoText(const ConfigObjects& texts, const std::optional<ListStep>& step)
{
    return step ? texts.text(u"history.redo", stepText(texts, *step))
                : texts.text(u"history.redo.nothing");
}

QString changedElsewhereText(const ConfigObjects& texts, const ListStep& step)
{
    // Several tracks have no name together.
    return step.listName.isEmpty()
               ? texts.text(u"history.elsewhere.tracks", stepText(texts, step))
               : texts.text(u"history.elsewhere", step.listName, stepText(texts, step));
}

} // namespace melovane
