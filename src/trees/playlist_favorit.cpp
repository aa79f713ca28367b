#include "trees/playlist_favorit.h"

#include "bus/message_names.h"
#include "config/config_objects.h"
#include "config/global_settings.h"
#include "config/update_colors.h"
#include "platform/controls/popup_menu.h"
#include "platform/system/leading_number.h"
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

PlaylistFavorit::PlaylistFavorit(FavoritParts parts, TreeControl& tree)
    : m_parts(std::move(parts))
    , m_bus(m_parts.bus, u"PlaylistFavorit"_s)
    , m_tree(tree)
    , m_rows(m_parts.engine,
             m_parts.settings,
             m_parts.texts,
             m_parts.sink,
             tree,
             m_parts.openList,
             {.read =
                  [this](Database& database, bool all) {
                      return readFavoritRows(database, m_parts.texts.text(u"tree.root.jingle"),
                                             all);
                  },
              .row = [](const ListState& list) { return rowOf(list); }})
    , m_edits({.rows = m_rows,
               .lists = m_parts.lists,
               .settings = m_parts.settings,
               .texts = m_parts.texts,
               .warnings = m_parts.warnings,
               .bus = m_bus,
               .open = [this](int row) { rowClicked(row); }})
    , m_drops({.rows = m_rows,
               .lists = m_parts.lists,
               .mayWrite = [this] { return !m_parts.world.isReadOnly(); },
               .append = m_parts.append})
    , m_gate(m_parts.texts, m_parts.world)
    , m_restTimer(m_parts.loop.makeTimer(kRestInterval,
                                         [this] {
                                             m_restTimer->stop();
                                             rowClicked(m_tree.currentRow());
                                         }))
    , m_guard(guardOverBus(m_bus, m_parts.texts, m_parts.settings, m_parts.sink))
    , m_messBus(subscribe(m_parts.bus, m_guard, *this, busTable()))
{}

PlaylistFavorit::~PlaylistFavorit() = default;

void PlaylistFavorit::ShowActivePlaylist()
{
    m_shownLibrary = m_parts.settings.DbName();
    const int wanted = m_rows.activeRow();
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
    if (!m_rows.isList(row)) {
        return;
    }
    const TreeRow opened = m_tree.row(row);
    const bool isJingle = treekey::isJingleRow(opened.key);
    m_bus.SendMessage(isJingle ? bus::kJinglelistAktivieren : bus::kPlaylistAktivieren,
                      numberOf(m_rows.listOf(row)), opened.picture == kLockPicture);
}

void PlaylistFavorit::showRow(const QString& key)
{
    const int row = m_tree.find(key);
    if (row >= 0) {
        m_tree.setCurrentRow(row);
        rowClicked(row);
        return;
    }
    const auto list = Pnid(treekey::idOf(key));
    if (!treekey::playlistId(key).isEmpty() &&
        m_parts.lists.catalogue().stateOf(list) != ListCatalogue::State::Gone) {
        m_bus.SendMessage(treekey::isJingleRow(key) ? bus::kJinglelistAktivieren
                                                    : bus::kPlaylistAktivieren,
                          numberOf(list),
                          m_parts.lists.catalogue().stateOf(list) == ListCatalogue::State::Locked);
    }
}

/// The row of a list once it is on the screen, -1 when it could not be opened; of others itself.
int PlaylistFavorit::opened(int row)
{
    if (!m_rows.isList(row) || m_rows.isOpen(row)) {
        return row;
    }
    const Pnid list = m_rows.listOf(row);
    rowClicked(row);
    // Found anew: an answer to the message may have filled the tree.
    row = m_rows.rowOfList(list);
    return m_rows.isOpen(row) ? row : -1;
}

void PlaylistFavorit::rowEntered(int row)
{
    if (m_rows.isList(row)) {
        m_restTimer->stop();
        m_restTimer->start();
    }
}

void PlaylistFavorit::rowActivated(int row)
{
    if (!m_rows.isList(row)) {
        return;
    }
    const Pnid list = m_rows.listOf(row);
    if (m_parts.lists.catalogue().stateOf(list) == ListCatalogue::State::Gone) {
        // Another program has deleted it: nobody is told to play what is not there.
        m_bus.SendMessage(bus::kShowStatusText, m_parts.texts.text(u"lists.gone"));
        Refresh();
        return;
    }
    if (!may(u"all.activate")) {
        rowClicked(row);
        return;
    }
    const bool isJingle = treekey::isJingleRow(m_tree.row(row).key);
    m_parts.lists.catalogue().activate(list);
    m_rows.rereadPlaying(isJingle);
    m_rows.rereadRow(row);
    m_tree.setCurrentRow(row);
    rowClicked(row);
    m_bus.SendMessage(isJingle ? bus::kPlaylistJinglePlay : bus::kPlaylistPlay, numberOf(list));
}

// ---- what the library allows

QString PlaylistFavorit::whyNot(QStringView key) const
{
    return m_gate.whyNot(QString(u"lists."_s + key.toString()), {.isLent = m_rows.isAway()});
}

/// Keys and drags come also where the button is grey: then the user is told why.
bool PlaylistFavorit::may(QStringView command)
{
    const QString reason = whyNot(command);
    if (!reason.isEmpty()) {
        m_bus.SendMessage(bus::kShowStatusText, reason);
    }
    return reason.isEmpty();
}

void PlaylistFavorit::newPlaylist()
{
    if (may(u"all.newdoc")) {
        m_edits.newPlaylist();
    }
}

void PlaylistFavorit::rename(int row)
{
    if (may(u"rename")) {
        m_edits.rename(opened(row));
    }
}

void PlaylistFavorit::rowEdited(int row, const QString& text)
{
    if (may(u"rename")) {
        m_edits.rowEdited(row, text);
    }
}

void PlaylistFavorit::deleteRow(int row)
{
    if (may(u"all.delete")) {
        m_edits.deleteRow(opened(row));
    }
}

void PlaylistFavorit::rowDropped(int from, int to, DropPlace place)
{
    if (may(u"move")) {
        m_edits.rowDropped(from, to, place);
    }
}

// ---- names

void PlaylistFavorit::editEnded()
{
    m_rows.editEnded();
    m_rows.leaveOtherLists();
}

void PlaylistFavorit::UpdateTreeRow(const QString& key, const QString& text)
{
    m_rows.setText(m_tree.find(key), trimBlanks(text));
}

void PlaylistFavorit::UpdatePlaylistName(const QString& list)
{
    m_edits.UpdatePlaylistName(Pnid(leadingLong(list)));
}

void PlaylistFavorit::UpdateGroupName(const QString& group)
{
    m_rows.rereadGroup(leadingLong(group));
}

// ---- tool bar and menu

bool PlaylistFavorit::canDo(const QString& key) const
{
    return key != "all.book"_L1 || m_parts.showDetails;
}

void PlaylistFavorit::toolPressed(const QString& key)
{
    const int row = m_tree.currentRow();
    if (!may(key)) {
        return;
    }
    if (key == "all.newdoc"_L1) {
        m_edits.newList();
    } else if (key == "all.newdir"_L1) {
        m_edits.newGroup();
    } else if (key == "all.activate"_L1) {
        rowActivated(row);
    } else if (key == "all.lock"_L1) {
        m_edits.lock(opened(row));
    } else if (key == "all.book"_L1) {
        m_bus.SendMessage(bus::kPlaylistEigenschaften, GetPlaylistID(opened(row)));
    } else if (key == "all.refresh"_L1) {
        Refresh();
    } else if (key == "all.delete"_L1) {
        deleteRow(row);
    }
}

void PlaylistFavorit::contextMenu(int row)
{
    const bool list = m_rows.isList(row);
    const bool group = leadingLong(GetGroupID(row)) > 0;
    const QString noList = list ? QString() : m_parts.texts.text(u"lists.norow");
    const QString later = m_parts.texts.text(u"status.later");
    const QString noName = list || group ? QString() : m_parts.texts.text(u"lists.nogroup");
    const auto add = [&](Entry entry, QStringView command, const QString& noRow,
                         bool checked = false) {
        const QString reason = noRow.isEmpty() ? whyNot(command) : noRow;
        m_parts.popup.Append({.id = entry,
                              .caption = m_parts.texts.text(u"lists.menu.%1"_s.arg(int(entry))),
                              .enabled = reason.isEmpty(),
                              .checked = checked,
                              .tip = reason});
    };
    m_parts.popup.Create();
    add(Activate, u"all.activate", noList);
    add(Rename, u"rename", noName);
    m_parts.popup.Append({FirstLine});
    add(SortByName, u"sort", noList);
    add(SortByDate, u"sort", noList);
    m_parts.popup.Append({SecondLine});
    add(Properties, u"all.book", canDo(u"all.book"_s) ? noList : later);
    m_parts.popup.Append({ThirdLine});
    add(InPanel, u"panel", noList, list && !m_tree.row(row).dimmed);
    add(ShowAll, u"showall", {}, m_rows.showsAll());
    add(SaveFile, u"save", m_parts.saveList ? noList : later);
    const QString key = m_tree.row(row).key;
    choose(m_parts.popup.Show(), key);
    // A menu that was broken off leaves the list open that was; a name is typed in its own row.
    if (!m_tree.isEditing()) {
        m_rows.leaveOtherLists();
    }
}

void PlaylistFavorit::choose(int entry, const QString& key)
{
    // The tree may be another one after the menu.
    const int row = key.isEmpty() ? -1 : m_tree.find(key);
    switch (entry) {
    case Activate:
        rowActivated(row);
        break;
    case Rename:
        rename(row);
        break;
    case SortByName:
        m_edits.sort(row, u"name"_s);
        break;
    case SortByDate:
        m_edits.sort(row, u"createtime"_s);
        break;
    case Properties:
        m_bus.SendMessage(bus::kPlaylistEigenschaften, GetPlaylistID(opened(row)));
        break;
    case SaveFile:
        if (const int saved = opened(row); m_rows.isList(saved) && m_parts.saveList) {
            m_parts.saveList(m_rows.listOf(saved));
        }
        break;
    case InPanel:
        m_edits.showInPanel(row);
        break;
    case ShowAll:
        m_rows.setShowAll(!m_rows.showsAll());
        break;
    default:
        break;
    }
}

// ---- messages

std::span<const BusRow<PlaylistFavorit>> PlaylistFavorit::busTable()
{
    static constexpr BusRow<PlaylistFavorit> kRows[] = {
        {bus::kPlaylistEigenschaften, &PlaylistFavorit::showDetails},
        {bus::kPlaylistSaveFile, &PlaylistFavorit::saveFile},
        {bus::kCreateToolBars, &PlaylistFavorit::createToolBars},
        {bus::kUpdateColor, &PlaylistFavorit::updateColor},
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
        {bus::kPlaylistAktivieren, &PlaylistFavorit::listOpened},
        {bus::kJinglelistAktivieren, &PlaylistFavorit::listOpened},
        {bus::kPlaylistInsertDataEnd, &PlaylistFavorit::rereadList},
        {bus::kPlaylistChange, &PlaylistFavorit::listChanged},
        {bus::kStart, &PlaylistFavorit::start},
    };
    return kRows;
}

void PlaylistFavorit::showDetails(const MLVMessage&)
{
    const int row = m_tree.currentRow();
    if (m_rows.isList(row) && m_parts.showDetails) {
        m_parts.showDetails(m_rows.listOf(row));
    }
}

void PlaylistFavorit::saveFile(const MLVMessage&)
{
    m_bus.SendMessage(bus::kPlaylistSaveFileShow, GetPlaylistID(opened(m_tree.currentRow())));
}

void PlaylistFavorit::createToolBars(const MLVMessage&)
{
    emit toolBarWanted();
}

void PlaylistFavorit::updateColor(const MLVMessage&)
{
    m_tree.setTreeFont(UpdateColors(m_parts.settings).font());
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
    m_rows.leaveLibrary();
    judgeCommands();
}

void PlaylistFavorit::reconnectDatabase(const MLVMessage&)
{
    m_rows.libraryIsBack();
    judgeCommands();
}

void PlaylistFavorit::changeDatabase(const MLVMessage&)
{
    // New content of the same file is told by messages of its own.
    m_rows.libraryChanged();
    if (!m_shownLibrary.isEmpty() && m_shownLibrary != m_parts.settings.DbName()) {
        ShowActivePlaylist();
    }
    judgeCommands();
}

void PlaylistFavorit::listOpened(const MLVMessage&)
{
    // The view of the entries hears it first: what it shows now is open, whatever was wanted.
    m_restTimer->stop();
    m_rows.markOpenList();
}

void PlaylistFavorit::rereadList(const MLVMessage& message)
{
    m_rows.rereadRow(m_rows.rowOfList(Pnid(message.Value1.toLong())));
}

void PlaylistFavorit::listChanged(const MLVMessage& message)
{
    const int row = m_rows.rowOfList(Pnid(message.Value1.toLong()));
    if (row >= 0) {
        m_rows.rereadRow(row);
        const TreeRow shown = m_tree.row(row);
        m_bus.SendMessage(bus::kUpdateTreeRow, shown.key, shown.text);
    }
}

} // namespace melovane
