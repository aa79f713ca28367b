#include "trees/favorit_edits.h"

#include "bus/message_names.h"
#include "bus/mlv_message_bus.h"
#include "config/config_objects.h"
#include "config/global_settings.h"
#include "platform/controls/warnings.h"
#include "platform/system/leading_number.h"
#include "platform/system/trim_blanks.h"
#include "playlists/mlv_function.h"
#include "trees/favorit_tree.h"
#include "trees/tree_key.h"

#include <utility>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Letters that the columns of names hold.
constexpr qsizetype kLongestName = 255;

/// The choice not to be asked again before a list is deleted; stands in the settings: keep.
const QString kDeleteQuestion = u"delete.playlist.warn"_s;

} // namespace

FavoritEdits::FavoritEdits(FavoritEditParts parts)
    : m_parts(std::move(parts))
    , m_rows(m_parts.rows)
    , m_tree(m_rows.control())
{}

// ---- new rows

void FavoritEdits::newList()
{
    const int group = m_rows.groupRow(m_tree.currentRow());
    if (group < 0) {
        m_parts.bus.SendMessage(bus::kShowStatusText, m_parts.texts.text(u"lists.nogroup"));
        return;
    }
    const auto number = GroupId(leadingLong(m_rows.groupId(group)));
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
    m_tree.insertRow(m_rows.endOfGroup(group), rowOf({list, isJingle, name}));
    m_parts.bus.SendMessage(bus::kRefreshPlaylistTree);
    // Found anew: an answer to the message may have filled the m_tree.
    const int place = m_rows.rowOfList(list);
    m_tree.setCurrentRow(place);
    m_parts.open(place);
    m_tree.focus();
    rename(place);
}

/// The row of the first group that playlists stand in, or -1.
int FavoritEdits::firstGroup() const
{
    int row = 0;
    while (row < m_tree.rowCount() && leadingLong(m_rows.groupId(row)) <= 0) {
        ++row;
    }
    return row < m_tree.rowCount() ? row : -1;
}

void FavoritEdits::newPlaylist()
{
    int group = m_rows.groupRow(m_tree.currentRow());
    if (leadingLong(m_rows.groupId(group)) <= 0) {
        group = firstGroup();
    }
    if (group < 0) {
        const GroupId made = importGroup();
        m_rows.refresh();
        group = m_tree.find(treekey::group(numberOf(made)));
    }
    m_tree.setCurrentRow(group);
    newList();
}

void FavoritEdits::newGroup()
{
    const QString name =
        m_parts.lists.catalogue().nameFromFormat(m_parts.settings.PlaylistGroupNameFormat());
    const GroupId group = m_parts.lists.CreateNewGroup(name.left(kLongestName));
    if (group == GroupId{}) {
        return;
    }
    m_parts.bus.SendMessage(bus::kRefreshPlaylistTree);
    m_rows.refresh();
    const int row = m_tree.find(treekey::group(numberOf(group)));
    m_tree.setCurrentRow(row);
    m_tree.focus();
    rename(row);
}

GroupId FavoritEdits::importGroup()
{
    const int row = m_rows.groupRow(m_tree.currentRow());
    const GroupId group = row < 0 ? GroupId{} : GroupId(leadingLong(m_rows.groupId(row)));
    if (group != GroupId{} && group != kJingleGroup) {
        return group;
    }
    return m_parts.lists.CreateNewGroup(
        m_parts.lists.catalogue().nameFromFormat(m_parts.settings.PlaylistGroupNameFormat()));
}

// ---- names

void FavoritEdits::rename(int row)
{
    const QString id = m_rows.groupId(row);
    const bool isGroup = !id.isEmpty() && GroupId(leadingLong(id)) != kJingleGroup;
    if (m_rows.isList(row) || isGroup) {
        m_tree.editRow(row, withoutCount(m_tree.row(row).text));
    }
}

void FavoritEdits::rowEdited(int row, const QString& text)
{
    const QString name = trimBlanks(text).left(kLongestName);
    const QString key = m_tree.row(row).key;
    if (name.isEmpty()) {
        return;
    }
    if (m_rows.isList(row)) {
        m_parts.lists.UpdatePlaylistName(m_rows.listOf(row), name);
        UpdatePlaylistName(m_rows.listOf(row));
        m_parts.bus.SendMessage(bus::kUpdateTreeRow, key,
                                QString(withoutCount(m_tree.row(row).text) + u' '));
    } else if (!m_rows.groupId(row).isEmpty()) {
        m_parts.lists.UpdateGroupName(GroupId(leadingLong(m_rows.groupId(row))), name);
        m_rows.rereadGroup(leadingLong(m_rows.groupId(row)));
        m_parts.bus.SendMessage(bus::kUpdateTreeRow, key, m_tree.row(row).text);
    }
}

void FavoritEdits::UpdatePlaylistName(Pnid list)
{
    m_rows.rereadRow(m_rows.rowOfList(list));
    m_rows.markForFile(list);
}

// ---- lock, order, mark

void FavoritEdits::lock(int row)
{
    const auto state = m_rows.readState(m_rows.listOf(row));
    if (!m_rows.isList(row) || !state) {
        return;
    }
    m_parts.lists.catalogue().setLock(state->list, !state->lock);
    m_rows.rereadRow(row);
    const TreeRow shown = m_tree.row(row);
    m_parts.bus.SendMessage(bus::kPlaylistSetLock, shown.key, shown.picture, !state->lock);
    // The list is open: from now on it may be changed, or no longer.
    m_parts.open(m_rows.rowOfList(state->list));
}

void FavoritEdits::sort(int row, const QString& column)
{
    if (!m_rows.isList(row)) {
        return;
    }
    m_parts.lists.SortPlaylistTree(m_rows.listOf(row), column);
    m_parts.bus.SendMessage(bus::kRefreshPlaylistTree);
    m_rows.refresh();
}

void FavoritEdits::showInPanel(int row)
{
    const auto state = m_rows.readState(m_rows.listOf(row));
    if (!m_rows.isList(row) || !state) {
        return;
    }
    m_parts.lists.catalogue().setActiv(state->list, !state->activ);
    m_parts.bus.SendMessage(bus::kRefreshPlaylistTree);
    m_rows.refresh();
}

void FavoritEdits::rowDropped(int from, int to, DropPlace place)
{
    if (!m_rows.isList(from) || from == to || to < 0 || to >= m_tree.rowCount()) {
        return;
    }
    const Pnid list = m_rows.listOf(from);
    const bool wasJingle = treekey::isJingleRow(m_tree.row(from).key);
    int target = place == DropPlace::Above ? to : to + 1;
    if (!m_rows.groupId(to).isEmpty()) {
        target = m_rows.endOfGroup(to);
    }
    std::vector<TreeRow> rows;
    rows.reserve(size_t(m_tree.rowCount()) + 1);
    for (int row = 0; row < m_tree.rowCount(); ++row) {
        rows.push_back(m_tree.row(row));
    }
    const TreeRow moved = rows[size_t(from)];
    rows.insert(rows.begin() + target, moved);
    rows.erase(rows.begin() + (target <= from ? from + 1 : from));
    const std::vector<GroupPlace> groups = m_rows.groupPlaces(rows);
    m_parts.lists.catalogue().arrange(FavoritTree::places(rows), groups);
    // The tree of all groups names the list that was moved.
    m_parts.bus.SendMessage(bus::kRefreshPlaylist, groups.empty() ? Value() : numberOf(list));
    m_rows.refresh();
    const int now = m_rows.rowOfList(list);
    if (m_rows.isOpen(now) && treekey::isJingleRow(m_tree.row(now).key) != wasJingle) {
        m_parts.open(now); // who shows it knows its kind by the message that opened it
    }
}

// ---- deleting

void FavoritEdits::deleteRow(int row)
{
    if (m_rows.isList(row)) {
        deleteList(row);
    } else if (leadingLong(m_rows.groupId(row)) > 0) {
        deleteGroup(row);
    }
}

void FavoritEdits::deleteList(int row)
{
    const TreeRow doomed = m_tree.row(row);
    const QString caption = m_parts.texts.text(u"achtung");
    const auto refuse = [&](QStringView key) {
        m_parts.warnings.ShowWarning(m_parts.texts.text(key), WarningType::Stop, caption,
                                     key.toString());
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
    const Pnid list = m_rows.listOf(row);
    const QString question = m_parts.texts.text(u"warnDelPlaylist", m_rows.listName(row));
    if (m_parts.warnings.ShowWarning(question, WarningType::Question, caption, u"warnDelPlaylist"_s,
                                     kDeleteQuestion) != WarningAnswer::Yes) {
        return;
    }
    m_parts.lists.DeletePlaylist(list);
    if (!m_rows.readState(list)) {
        // Found anew: the tree may be another one after the question.
        m_tree.removeRow(m_rows.rowOfList(list));
        m_parts.bus.SendMessage(bus::kRefreshPlaylistTree);
        // Who shows the entries of the list has none any more.
        m_parts.bus.SendMessage(bus::kRefreshPlaylist, numberOf(list));
        m_parts.open(m_tree.currentRow());
    }
}

void FavoritEdits::deleteGroup(int row)
{
    if (m_parts.lists.KannGroupDel(m_rows.groupId(row))) {
        m_tree.removeRow(row);
        m_parts.bus.SendMessage(bus::kRefreshPlaylistTree);
        return;
    }
    m_parts.warnings.ShowWarning(m_parts.texts.text(u"warnDelGroup", m_tree.row(row).text),
                                 WarningType::Stop, m_parts.texts.text(u"achtung"),
                                 u"warnDelGroup"_s);
}

} // namespace melovane
