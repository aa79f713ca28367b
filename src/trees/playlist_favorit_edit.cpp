// What the user changes in the tree of lists.
#include "bus/message_names.h"
#include "config/config_objects.h"
#include "config/global_settings.h"
#include "platform/controls/popup_menu.h"
#include "platform/controls/warnings.h"
#include "platform/system/leading_number.h"
#include "platform/system/trim_blanks.h"
#include "playlists/mlv_function.h"
#include "trees/playlist_favorit.h"
#include "trees/tree_key.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Letters that the columns of names hold.
constexpr qsizetype kLongestName = 255;

/// The choice not to be asked again before a list is deleted; stands in the settings: keep.
const QString kDeleteQuestion = u"delete.playlist.warn"_s;

/// Entries of the context menu; the first ones have the numbers that the suite gives them.
enum Entry
{
    Activate = 1001,
    Rename = 1002,
    FirstLine = 1003,
    SortByName = 1004,
    SortByDate = 1005,
    SecondLine = 1006,
    Properties = 1007,
    ThirdLine = 1008,
    InPanel = 1009,
    ShowAll = 1010,
    SaveFile = 1011,
};

} // namespace

bool PlaylistFavorit::canDo(const QString& key) const
{
    return key != "all.book"_L1 || m_parts.showDetails;
}

void PlaylistFavorit::toolPressed(const QString& key)
{
    const int row = m_tree.currentRow();
    if (key == "all.newdoc"_L1) {
        newList();
    } else if (key == "all.newdir"_L1) {
        newGroup();
    } else if (key == "all.activate"_L1) {
        rowActivated(row);
    } else if (key == "all.lock"_L1) {
        lock(row);
    } else if (key == "all.book"_L1) {
        m_bus.SendMessage(bus::kPlaylistEigenschaften, GetPlaylistID(row));
    } else if (key == "all.refresh"_L1) {
        Refresh();
    } else if (key == "all.delete"_L1) {
        deleteRow(row);
    }
}

// ---- new rows

void PlaylistFavorit::newList()
{
    int group = m_tree.currentRow();
    while (group >= 0 && GetGroupID(group).isEmpty()) {
        --group;
    }
    if (group < 0) {
        m_bus.SendMessage(bus::kShowStatusText, m_parts.texts.text(u"lists.nogroup"));
        return;
    }
    const auto number = GroupId(leadingLong(GetGroupID(group)));
    const bool isJingle = number == kJingleGroup;
    const QString format =
        isJingle ? m_parts.settings.GetKeyValue(u"Global"_s, u"JinglelistNameFormat"_s,
                                                u"Neue Jingleliste #DD.MM.YY#"_s)
                 : m_parts.settings.PlaylistNameFormat();
    ListCatalogue& names = m_parts.lists.catalogue();
    const QString name = names.nameFromFormat(format).left(kLongestName);
    const Pnid list = names.newList(number, name);
    if (list == Pnid{}) {
        return;
    }
    int place = group + 1;
    while (isList(place)) {
        ++place;
    }
    m_tree.insertRow(place, rowOf({list, isJingle, name}));
    m_bus.SendMessage(bus::kRefreshPlaylistTree);
    // Found anew: an answer to the message may have filled the tree.
    place = rowOfList(list);
    m_tree.setCurrentRow(place);
    rowClicked(place);
    m_tree.focus();
    rename(place);
}

void PlaylistFavorit::newGroup()
{
    const QString name =
        m_parts.lists.catalogue().nameFromFormat(m_parts.settings.PlaylistGroupNameFormat());
    const GroupId group = m_parts.lists.CreateNewGroup(name.left(kLongestName));
    if (group == GroupId{}) {
        return;
    }
    m_bus.SendMessage(bus::kRefreshPlaylistTree);
    Refresh();
    const int row = m_tree.find(treekey::group(numberOf(group)));
    m_tree.setCurrentRow(row);
    m_tree.focus();
    rename(row);
}

// ---- names

void PlaylistFavorit::rename(int row)
{
    const QString id = GetGroupID(row);
    const bool isGroup = !id.isEmpty() && GroupId(leadingLong(id)) != kJingleGroup;
    if (isList(row) || isGroup) {
        m_tree.editRow(row, withoutCount(m_tree.row(row).text));
    }
}

void PlaylistFavorit::rowEdited(int row, const QString& text)
{
    const QString name = trimBlanks(text).left(kLongestName);
    const QString key = m_tree.row(row).key;
    if (name.isEmpty()) {
        return;
    }
    if (isList(row)) {
        m_parts.lists.UpdatePlaylistName(listOf(row), name);
        UpdatePlaylistName(GetPlaylistID(row));
        m_bus.SendMessage(bus::kUpdateTreeRow, key, QString(m_tree.row(row).text + u' '));
    } else if (!GetGroupID(row).isEmpty()) {
        m_parts.lists.UpdateGroupName(GroupId(leadingLong(GetGroupID(row))), name);
        UpdateGroupName(GetGroupID(row));
        m_bus.SendMessage(bus::kUpdateTreeRow, key, m_tree.row(row).text);
    }
}

// ---- lock, order, mark

void PlaylistFavorit::lock(int row)
{
    const auto state = readState(listOf(row));
    if (!isList(row) || !state) {
        return;
    }
    m_parts.lists.catalogue().setLock(state->list, !state->lock);
    rereadRow(row);
    const TreeRow shown = m_tree.row(row);
    m_bus.SendMessage(bus::kPlaylistSetLock, shown.key, shown.picture, !state->lock);
    // The list is open: from now on it may be changed, or no longer.
    rowClicked(rowOfList(state->list));
}

void PlaylistFavorit::sort(int row, const QString& column)
{
    if (!isList(row)) {
        return;
    }
    m_parts.lists.SortPlaylistTree(listOf(row), column);
    m_bus.SendMessage(bus::kRefreshPlaylistTree);
    Refresh();
}

void PlaylistFavorit::showInPanel(int row)
{
    const auto state = readState(listOf(row));
    if (!isList(row) || !state) {
        return;
    }
    m_parts.lists.catalogue().setActiv(state->list, !state->activ);
    m_bus.SendMessage(bus::kRefreshPlaylistTree);
    Refresh();
}

std::vector<TreeRow> PlaylistFavorit::rowsFrom(int first, int last) const
{
    std::vector<TreeRow> rows;
    for (int row = first; row < last; ++row) {
        rows.push_back(m_tree.row(row));
    }
    return rows;
}

std::vector<ListPlace> PlaylistFavorit::places(const std::vector<TreeRow>& rows) const
{
    std::vector<ListPlace> result;
    GroupId group{};
    int position = 0;
    for (const TreeRow& row : rows) {
        ++position;
        const QString groupId = treekey::groupId(row.key);
        const QString list = treekey::playlistId(row.key);
        if (!groupId.isEmpty()) {
            group = GroupId(leadingLong(groupId));
        } else if (!list.isEmpty() && group != GroupId{}) {
            result.push_back({Pnid(leadingLong(list)), group, position});
        }
    }
    return result;
}

void PlaylistFavorit::rowDropped(int from, int to, DropPlace place)
{
    if (!isList(from) || from == to || to < 0 || to >= m_tree.rowCount()) {
        return;
    }
    int target = place == DropPlace::Above ? to : to + 1;
    if (!GetGroupID(to).isEmpty()) {
        target = to + 1;
        while (isList(target)) {
            ++target;
        }
    }
    const Pnid list = listOf(from);
    std::vector<TreeRow> rows = rowsFrom(0, m_tree.rowCount());
    const TreeRow moved = rows[size_t(from)];
    rows.insert(rows.begin() + target, moved);
    rows.erase(rows.begin() + (target <= from ? from + 1 : from));
    m_parts.lists.catalogue().arrange(places(rows));
    m_bus.SendMessage(bus::kRefreshPlaylist);
    Refresh();
    // A playlist among jingles has another key.
    m_tree.setCurrentRow(rowOfList(list));
}

// ---- deleting

void PlaylistFavorit::deleteRow(int row)
{
    if (isList(row)) {
        deleteList(row);
    } else if (leadingLong(GetGroupID(row)) > 0) {
        deleteGroup(row);
    }
}

void PlaylistFavorit::deleteList(int row)
{
    const TreeRow doomed = m_tree.row(row);
    const QString caption = m_parts.texts.text(u"achtung");
    const auto refuse = [&](QStringView key) {
        m_parts.warnings.ShowWarning(m_parts.texts.text(key), WarningType::Stop, caption);
    };
    if (doomed.picture == "all.lock"_L1) {
        refuse(u"warnDelPlaylistLock");
        return;
    }
    // No row has this picture: the playing one's is "all.audio", and it may be deleted.
    if (doomed.picture == "tree.audio"_L1) {
        refuse(u"warnDelPlaylistAktiv");
        return;
    }
    const Pnid list = listOf(row);
    const QString question = m_parts.texts.text(u"warnDelPlaylist", GetPlaylistname(row));
    if (m_parts.warnings.ShowWarning(question, WarningType::Question, caption, {},
                                     kDeleteQuestion) != WarningAnswer::Yes) {
        return;
    }
    m_parts.lists.DeletePlaylist(list);
    if (!readState(list)) {
        // Found anew: the tree may be another one after the question.
        m_tree.removeRow(rowOfList(list));
        m_bus.SendMessage(bus::kRefreshPlaylistTree);
        // Who shows the entries of the list has none any more.
        m_bus.SendMessage(bus::kRefreshPlaylist, numberOf(list));
        rowClicked(m_tree.currentRow());
    }
}

void PlaylistFavorit::deleteGroup(int row)
{
    if (m_parts.lists.KannGroupDel(GetGroupID(row))) {
        m_tree.removeRow(row);
        m_bus.SendMessage(bus::kRefreshPlaylistTree);
        return;
    }
    m_parts.warnings.ShowWarning(m_parts.texts.text(u"warnDelGroup", m_tree.row(row).text),
                                 WarningType::Stop, m_parts.texts.text(u"achtung"));
}

// ---- menu

void PlaylistFavorit::contextMenu(int row)
{
    const bool list = isList(row);
    const bool group = leadingLong(GetGroupID(row)) > 0;
    const auto add = [&](Entry entry, bool enabled, bool checked = false) {
        m_parts.popup.Append(
            {entry, m_parts.texts.text(u"lists.menu.%1"_s.arg(int(entry))), enabled, checked});
    };
    m_parts.popup.Create();
    add(Activate, list);
    add(Rename, list || group);
    m_parts.popup.Append({FirstLine});
    add(SortByName, list);
    add(SortByDate, list);
    m_parts.popup.Append({SecondLine});
    add(Properties, list && canDo(u"all.book"_s));
    m_parts.popup.Append({ThirdLine});
    add(InPanel, list, list && !m_tree.row(row).dimmed);
    add(ShowAll, true, m_showAll);
    add(SaveFile, list && m_parts.saveList);
    const QString key = m_tree.row(row).key;
    const int chosen = m_parts.popup.Show();
    // The tree may be another one after the menu.
    row = key.isEmpty() ? -1 : m_tree.find(key);
    switch (chosen) {
    case Activate:
        rowActivated(row);
        break;
    case Rename:
        rename(row);
        break;
    case SortByName:
        sort(row, u"name"_s);
        break;
    case SortByDate:
        sort(row, u"createtime"_s);
        break;
    case Properties:
        toolPressed(u"all.book"_s);
        break;
    case SaveFile:
        if (isList(row) && m_parts.saveList) {
            m_parts.saveList(listOf(row));
        }
        break;
    case InPanel:
        showInPanel(row);
        break;
    case ShowAll:
        m_showAll = !m_showAll;
        Refresh();
        break;
    default:
        break;
    }
}

} // namespace melovane
