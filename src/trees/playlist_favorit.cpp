#include "trees/playlist_favorit.h"

#include "bus/message_names.h"
#include "config/config_objects.h"
#include "config/global_settings.h"
#include "platform/db/database.h"
#include "platform/db/sql_text.h"
#include "platform/system/leading_number.h"
#include "platform/system/letter_case.h"
#include "platform/system/timers.h"
#include "platform/system/trim_blanks.h"
#include "playlists/mlv_function.h"
#include "trees/tree_key.h"

#include <utility>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// From the last arrow key to the opening of a list: who holds the key down opens one list only.
constexpr std::chrono::milliseconds kRestInterval{150};

/// Section and key of what is folded, between two runs.
const QString kStateSection = u"Default"_s;
const QString kFoldedKey = u"PlaylistFavorit.Folded"_s;

/// Pictures are compared as they stand in rows.
constexpr QStringView kLockPicture = u"all.lock";

} // namespace

PlaylistFavorit::PlaylistFavorit(FavoritParts parts, TreeControl& tree)
    : m_parts(std::move(parts))
    , m_tree(tree)
    , m_bus(m_parts.bus, u"PlaylistFavorit"_s)
    , m_restTimer(m_parts.loop.makeTimer(kRestInterval,
                                         [this] {
                                             m_restTimer->stop();
                                             rowClicked(m_tree.currentRow());
                                         }))
    , m_guard(guardOverBus(m_bus, m_parts.texts, m_parts.settings, m_parts.sink))
    , m_messBus(subscribe(m_parts.bus, m_guard, *this, busTable()))
{}

PlaylistFavorit::~PlaylistFavorit() = default;

void PlaylistFavorit::withDatabase(const QString& where,
                                   const std::function<void(Database&)>& work) const
{
    quietly(m_parts.sink, where,
            [&] { work(*m_parts.engine.OpenDatabase(m_parts.settings.DbName())); });
}

// ---- rows

QString PlaylistFavorit::GetPlaylistname(int row) const
{
    const TreeRow wanted = m_tree.row(row);
    return treekey::playlistId(wanted.key).isEmpty() ? QString() : withoutCount(wanted.text);
}

QString PlaylistFavorit::GetPlaylistID(int row) const
{
    return treekey::playlistId(m_tree.row(row).key);
}

QString PlaylistFavorit::GetGroupID(int row) const
{
    return treekey::groupId(m_tree.row(row).key);
}

QString PlaylistFavorit::FindGRID(int row) const
{
    for (; row >= 0; --row) {
        QString group = GetGroupID(row);
        if (!group.isEmpty()) {
            return group;
        }
    }
    return {};
}

GroupId PlaylistFavorit::importGroup()
{
    const QString group = FindGRID(m_tree.currentRow());
    if (!group.isEmpty()) {
        return GroupId(leadingLong(group));
    }
    return m_parts.lists.CreateNewGroup(
        m_parts.lists.catalogue().nameFromFormat(m_parts.settings.PlaylistGroupNameFormat()));
}

bool PlaylistFavorit::isList(int row) const
{
    return !GetPlaylistID(row).isEmpty();
}

Pnid PlaylistFavorit::listOf(int row) const
{
    return Pnid(leadingLong(GetPlaylistID(row)));
}

int PlaylistFavorit::rowOfList(Pnid list) const
{
    const int row = m_tree.find(treekey::playlist(numberOf(list)));
    return row >= 0 ? row : m_tree.find(treekey::jingleList(numberOf(list)));
}

std::optional<ListState> PlaylistFavorit::readState(Pnid list) const
{
    std::optional<ListState> state;
    withDatabase(u"PlaylistFavorit.Row"_s,
                 [&](Database& database) { state = readList(database, list); });
    return state;
}

void PlaylistFavorit::rereadRow(int row)
{
    if (m_isAway) {
        return;
    }
    if (const auto state = readState(listOf(row))) {
        TreeRow shown = rowOf(*state);
        // The kind of a row changes with a refill only.
        shown.key = m_tree.row(row).key;
        m_tree.setRow(row, shown);
    }
}

void PlaylistFavorit::fill()
{
    const QString current = m_tree.row(m_tree.currentRow()).key;
    const QString top = m_tree.row(m_tree.firstVisibleRow()).key;
    const QStringList folded = m_tree.folded();
    withDatabase(u"PlaylistFavorit.Fill"_s, [&](Database& database) {
        m_tree.setRows(
            readFavoritRows(database, m_parts.texts.text(u"tree.root.jingle"), m_showAll));
        m_library = m_parts.settings.DbName();
    });
    m_tree.setFolded(folded);
    m_tree.setCurrentRow(current.isEmpty() ? -1 : m_tree.find(current));
    m_tree.setFirstVisibleRow(top.isEmpty() ? -1 : m_tree.find(top));
}

void PlaylistFavorit::Refresh()
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

void PlaylistFavorit::editEnded()
{
    if (std::exchange(m_refillWaits, false)) {
        Refresh();
    }
}

void PlaylistFavorit::ShowActivePlaylist()
{
    int playing = -1;
    int first = -1;
    for (int row = 0; row < m_tree.rowCount() && playing < 0; ++row) {
        const TreeRow shown = m_tree.row(row);
        if (treekey::isJingleRow(shown.key) || !isList(row)) {
            continue;
        }
        first = first < 0 ? row : first;
        // Bold, too: the picture of a locked one does not tell that it is playing.
        playing = shown.picture == "all.audio"_L1 || shown.bold ? row : playing;
    }
    const int wanted = playing >= 0 ? playing : first;
    if (wanted >= 0) {
        m_tree.setCurrentRow(wanted);
        rowClicked(wanted);
    }
}

void PlaylistFavorit::end()
{
    m_parts.settings.WriteKeyValue(kStateSection, kFoldedKey,
                                   m_tree.folded().join(treekey::kStateSeparator.toString()));
}

void PlaylistFavorit::start(const MLVMessage&)
{
    Refresh();
    const QString folded = m_parts.settings.GetKeyValue(kStateSection, kFoldedKey, QString());
    m_tree.setFolded(folded.split(treekey::kStateSeparator.toString(), Qt::SkipEmptyParts));
    ShowActivePlaylist();
}

// ---- opening and playing

void PlaylistFavorit::rowClicked(int row)
{
    m_restTimer->stop();
    if (!isList(row)) {
        return;
    }
    const TreeRow opened = m_tree.row(row);
    const bool isJingle = treekey::isJingleRow(opened.key);
    m_bus.SendMessage(isJingle ? bus::kJinglelistAktivieren : bus::kPlaylistAktivieren,
                      numberOf(listOf(row)), opened.picture == kLockPicture);
}

void PlaylistFavorit::rowEntered(int row)
{
    if (isList(row)) {
        m_restTimer->stop();
        m_restTimer->start();
    }
}

void PlaylistFavorit::rowActivated(int row)
{
    if (!isList(row)) {
        return;
    }
    const Pnid list = listOf(row);
    if (m_parts.lists.catalogue().stateOf(list) == ListCatalogue::State::Gone) {
        // Another program has deleted it: nobody is told to play what is not there.
        m_bus.SendMessage(bus::kShowStatusText, m_parts.texts.text(u"lists.gone"));
        Refresh();
        return;
    }
    const bool isJingle = treekey::isJingleRow(m_tree.row(row).key);
    m_parts.lists.catalogue().activate(list);
    for (int other = 0; other < m_tree.rowCount(); ++other) {
        const TreeRow shown = m_tree.row(other);
        if (shown.bold && treekey::isJingleRow(shown.key) == isJingle) {
            rereadRow(other);
        }
    }
    rereadRow(row);
    m_tree.setCurrentRow(row);
    rowClicked(row);
    m_bus.SendMessage(isJingle ? bus::kPlaylistJinglePlay : bus::kPlaylistPlay, numberOf(list));
}

// ---- names

void PlaylistFavorit::UpdateTreeRow(const QString& key, const QString& text)
{
    const int row = m_tree.find(key);
    TreeRow shown = m_tree.row(row);
    shown.text = trimBlanks(text);
    m_tree.setRow(row, shown);
}

void PlaylistFavorit::UpdatePlaylistName(const QString& list)
{
    const Pnid number = Pnid(leadingLong(list));
    rereadRow(rowOfList(number));
    withDatabase(u"UpdatePlaylistName"_s, [&](Database& database) {
        database.Execute(u"update pl_name set sicherung=true where grid>0 and nid="_s +
                         sql::number(numberOf(number)));
    });
}

void PlaylistFavorit::UpdateGroupName(const QString& group)
{
    const qint64 number = leadingLong(group);
    const int row = m_tree.find(treekey::group(number));
    withDatabase(u"UpdateGroupName"_s, [&](Database& database) {
        const auto lists = database.OpenRecordset(u"select * from VPL_GROUPNAME where grid="_s +
                                                  sql::number(number));
        if (row >= 0 && !lists->Eof()) {
            TreeRow shown = m_tree.row(row);
            shown.text = lists->value(u"grname").toText();
            m_tree.setRow(row, shown);
        }
    });
}

// ---- messages

std::span<const BusRow<PlaylistFavorit>> PlaylistFavorit::busTable()
{
    static constexpr BusRow<PlaylistFavorit> kRows[] = {
        {bus::kPlaylistEigenschaften, &PlaylistFavorit::showDetails},
        {bus::kPlaylistSaveFile, &PlaylistFavorit::saveFile},
        {bus::kCreateToolBars, &PlaylistFavorit::createToolBars},
        {bus::kUpdatePlaylistName, &PlaylistFavorit::playlistName},
        {bus::kUpdateGroupName, &PlaylistFavorit::groupName},
        {bus::kUpdateTreeRow, &PlaylistFavorit::treeRow},
        {bus::kFavoritRefresh, &PlaylistFavorit::refill},
        {bus::kRefreshAll, &PlaylistFavorit::refillAll},
        {bus::kRefreshPlaylist, &PlaylistFavorit::refill},
        {bus::kRefreshPlaylistTree, &PlaylistFavorit::refill},
        {bus::kDbDisconnect, &PlaylistFavorit::disconnectDatabase},
        {bus::kDbReconnect, &PlaylistFavorit::reconnectDatabase},
        {bus::kDbChange, &PlaylistFavorit::changeDatabase},
        {bus::kPlaylistInsertDataEnd, &PlaylistFavorit::rereadList},
        {bus::kPlaylistChange, &PlaylistFavorit::listChanged},
        {bus::kStart, &PlaylistFavorit::start},
    };
    return kRows;
}

void PlaylistFavorit::showDetails(const MLVMessage&)
{
    const int row = m_tree.currentRow();
    if (isList(row) && m_parts.showDetails) {
        m_parts.showDetails(listOf(row));
    }
}

void PlaylistFavorit::saveFile(const MLVMessage&)
{
    m_bus.SendMessage(bus::kPlaylistSaveFileShow, GetPlaylistID(m_tree.currentRow()));
}

void PlaylistFavorit::createToolBars(const MLVMessage&)
{
    emit toolBarWanted();
}

void PlaylistFavorit::playlistName(const MLVMessage& message)
{
    const QString key = message.Value1.toText();
    const QString id = treekey::playlistId(key);
    UpdatePlaylistName(id.isEmpty() ? key : id);
}

void PlaylistFavorit::groupName(const MLVMessage& message)
{
    const QString key = message.Value1.toText();
    const QString id = treekey::groupId(key);
    UpdateGroupName(id.isEmpty() ? key : id);
}

void PlaylistFavorit::treeRow(const MLVMessage& message)
{
    // The row that the name was typed in has it already.
    if (message.Sender != m_bus.name()) {
        UpdateTreeRow(message.Value1.toText(), message.Value2.toText());
    }
}

void PlaylistFavorit::refill(const MLVMessage& message)
{
    if (message.Sender != m_bus.name()) {
        Refresh();
    }
}

void PlaylistFavorit::refillAll(const MLVMessage& message)
{
    if (message.Value1.toText() == "start"_L1) {
        start(message);
    } else {
        refill(message);
    }
}

void PlaylistFavorit::disconnectDatabase(const MLVMessage&)
{
    m_restTimer->stop();
    m_isAway = true;
}

void PlaylistFavorit::reconnectDatabase(const MLVMessage&)
{
    if (std::exchange(m_isAway, false)) {
        Refresh();
    }
}

void PlaylistFavorit::changeDatabase(const MLVMessage&)
{
    // New content of the same file is told by messages of its own.
    if (m_parts.settings.DbName() != m_library) {
        Refresh();
    }
}

void PlaylistFavorit::rereadList(const MLVMessage& message)
{
    rereadRow(rowOfList(Pnid(message.Value1.toLong())));
}

void PlaylistFavorit::listChanged(const MLVMessage& message)
{
    const int row = rowOfList(Pnid(message.Value1.toLong()));
    if (row >= 0) {
        rereadRow(row);
        const TreeRow shown = m_tree.row(row);
        m_bus.SendMessage(bus::kUpdateTreeRow, shown.key, shown.text);
    }
}

} // namespace melovane
