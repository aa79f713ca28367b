#include "trees/favorit_tree.h"

#include "config/config_objects.h"
#include "config/global_settings.h"
#include "platform/db/database.h"
#include "platform/db/sql_text.h"
#include "platform/system/leading_number.h"
#include "trees/tree_key.h"

#include <utility>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

FavoritTree::FavoritTree(DBEngine& engine,
                         GlobalSettings& settings,
                         const ConfigObjects& texts,
                         ErrorSink sink,
                         TreeControl& tree,
                         std::function<Pnid()> openList,
                         ListTreeForm form)
    : m_engine(engine)
    , m_settings(settings)
    , m_texts(texts)
    , m_sink(std::move(sink))
    , m_tree(tree)
    , m_openList(std::move(openList))
    , m_form(std::move(form))
{}

void FavoritTree::withDatabase(const QString& where,
                               const std::function<void(Database&)>& work) const
{
    quietly(m_sink, where, [&] { work(*m_engine.OpenDatabase(m_settings.DbName())); });
}

// ---- what a row stands for

QString FavoritTree::listName(int row) const
{
    const TreeRow wanted = m_tree.row(row);
    return treekey::playlistId(wanted.key).isEmpty() ? QString() : withoutCount(wanted.text);
}

QString FavoritTree::listId(int row) const
{
    return treekey::playlistId(m_tree.row(row).key);
}

QString FavoritTree::groupId(int row) const
{
    return treekey::groupId(m_tree.row(row).key);
}

int FavoritTree::groupRow(int row) const
{
    while (row >= 0 && groupId(row).isEmpty()) {
        --row;
    }
    return row;
}

bool FavoritTree::isList(int row) const
{
    return !listId(row).isEmpty();
}

Pnid FavoritTree::listOf(int row) const
{
    return Pnid(leadingLong(listId(row)));
}

bool FavoritTree::isLocked(int row) const
{
    return m_tree.row(row).picture == "all.lock"_L1;
}

int FavoritTree::rowOfList(Pnid list) const
{
    const int row = m_tree.find(treekey::playlist(numberOf(list)));
    return row >= 0 ? row : m_tree.find(treekey::jingleList(numberOf(list)));
}

int FavoritTree::endOfGroup(int group) const
{
    int row = group + 1;
    while (isList(row)) {
        ++row;
    }
    return row;
}

int FavoritTree::activeRow() const
{
    int first = -1;
    for (int row = 0; row < m_tree.rowCount(); ++row) {
        const TreeRow shown = m_tree.row(row);
        if (treekey::isJingleRow(shown.key) || !isList(row)) {
            continue;
        }
        // Bold, too: the picture of a locked one does not tell that it is playing.
        if (shown.picture == "all.audio"_L1 || shown.bold) {
            return row;
        }
        first = first < 0 ? row : first;
    }
    return first;
}

std::vector<ListPlace> FavoritTree::places(const std::vector<TreeRow>& rows)
{
    std::vector<ListPlace> result;
    GroupId group{};
    int position = 0;
    for (const TreeRow& row : rows) {
        ++position;
        const QString groupId = treekey::groupId(row.key);
        // One that was ticked in place is a list, too.
        const QString list = treekey::playlistId(treekey::unmadeFavourite(row.key));
        if (!groupId.isEmpty()) {
            group = GroupId(leadingLong(groupId));
        } else if (!list.isEmpty() && group != GroupId{}) {
            result.push_back({Pnid(leadingLong(list)), group, position});
        }
    }
    return result;
}

std::vector<GroupPlace> FavoritTree::groupPlaces(const std::vector<TreeRow>& rows) const
{
    std::vector<GroupPlace> result;
    int position = 0;
    for (const TreeRow& row : rows) {
        ++position;
        if (const auto group = leadingLong(treekey::groupId(row.key));
            m_form.ordersGroups && group > 0) {
            result.push_back({GroupId(group), position});
        }
    }
    return result;
}

// ---- as the library has it

std::optional<ListState> FavoritTree::readState(Pnid list) const
{
    std::optional<ListState> state;
    withDatabase(u"PlaylistFavorit.Row"_s,
                 [&](Database& database) { state = readList(database, list); });
    return state;
}

void FavoritTree::rereadRow(int row)
{
    if (m_isAway) {
        return;
    }
    if (const auto state = readState(listOf(row))) {
        TreeRow shown = m_form.row(*state);
        // The kind of a row changes with a refill only.
        shown.key = m_tree.row(row).key;
        m_tree.setRow(row, shown);
    }
}

void FavoritTree::rereadGroup(qint64 group)
{
    const int row = m_tree.find(treekey::group(group));
    withDatabase(u"UpdateGroupName"_s, [&](Database& database) {
        const auto lists = database.OpenRecordset(u"select * from VPL_GROUPNAME where grid="_s +
                                                  sql::number(group));
        if (row >= 0 && !lists->Eof()) {
            setText(row, lists->value(u"grname").toText());
        }
    });
}

void FavoritTree::rereadPlaying(bool isJingle)
{
    for (int row = 0; row < m_tree.rowCount(); ++row) {
        const TreeRow shown = m_tree.row(row);
        if (shown.bold && treekey::isJingleRow(shown.key) == isJingle) {
            rereadRow(row);
        }
    }
}

void FavoritTree::markForFile(Pnid list) const
{
    withDatabase(u"UpdatePlaylistName"_s, [&](Database& database) {
        database.Execute(u"update pl_name set sicherung=true where grid>0 and nid="_s +
                         sql::number(numberOf(list)));
    });
}

void FavoritTree::setText(int row, const QString& text)
{
    TreeRow shown = m_tree.row(row);
    shown.text = text;
    m_tree.setRow(row, shown);
}

// ---- all rows

void FavoritTree::fill()
{
    const TreeRow current = m_tree.row(m_tree.currentRow());
    const QString top = m_tree.row(m_tree.firstVisibleRow()).key;
    const QStringList folded = m_tree.folded();
    withDatabase(u"PlaylistFavorit.Fill"_s, [&](Database& database) {
        m_tree.setRows(m_form.read(database, m_showAll));
        m_library = m_settings.DbName();
    });
    const bool stays = current.heading || !m_form.followsOpenList;
    m_tree.setCurrentRow(stays ? m_tree.find(current.key) : -1);
    leaveOtherLists();
    // Behind the marked row, which would unfold its group.
    m_tree.setFolded(folded);
    m_tree.setFirstVisibleRow(top.isEmpty() ? -1 : m_tree.find(top));
}

void FavoritTree::refresh()
{
    if (m_isAway) {
        return;
    }
    if (m_tree.isEditing()) {
        m_refillWaits = true;
        return;
    }
    fill();
}

void FavoritTree::editEnded()
{
    if (std::exchange(m_refillWaits, false)) {
        refresh();
    }
}

void FavoritTree::leaveLibrary()
{
    m_isAway = true;
    m_tree.setNote({m_texts.text(u"library.lent.title"), m_texts.text(u"library.lent.text"), {}});
}

void FavoritTree::libraryIsBack()
{
    if (!std::exchange(m_isAway, false)) {
        return;
    }
    m_tree.setNote({});
    if (!leftForOther()) {
        refresh();
    }
}

void FavoritTree::libraryChanged()
{
    if (!m_isAway) {
        leftForOther();
    }
}

/// Numbers mean other lists and groups in another library: what the user types goes nowhere, and no
/// row stays current or folded.
bool FavoritTree::leftForOther()
{
    if (m_settings.DbName() == m_library) {
        return false;
    }
    m_refillWaits = false;
    m_tree.setRows({});
    m_tree.setFolded({});
    fill();
    return true;
}

void FavoritTree::setShowAll(bool all)
{
    m_showAll = all;
    refresh();
}

void FavoritTree::markOpenList()
{
    if (!m_form.followsOpenList) {
        return;
    }
    const int row = rowOfList(m_openList());
    if (row != m_tree.currentRow()) {
        m_tree.setCurrentRow(row);
    }
}

void FavoritTree::leaveOtherLists()
{
    if (!m_tree.row(m_tree.currentRow()).heading) {
        markOpenList();
    }
}

} // namespace melovane
