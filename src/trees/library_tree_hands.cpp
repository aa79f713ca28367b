#include "bus/bus_table.h"
#include "bus/message_names.h"
#include "config/config_objects.h"
#include "config/global_settings.h"
#include "platform/controls/popup_menu.h"
#include "platform/db/database.h"
#include "platform/system/letter_case.h"
#include "platform/system/timers.h"
#include "playlists/mlv_function.h"
#include "trees/extended_rows.h"
#include "trees/library_tree.h"
#include "trees/tree_key.h"
#include "trees/tree_tracks.h"
#include "views/drag_data.h"

#include <array>

// Buttons, mouse, keys and menu of the library tree.

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Entries of the context menu, by the numbers that the suite gives them; ours behind.
enum Entry
{
    Append = 1001,
    Insert = 1002,
    Line = 1003,
    AppendAktuell = 1004,
    SecondLine = 1005,
    Rename = 1006,
    Delete = 1007,
};

struct KindTool
{
    QStringView key;
    TreeKind kind;
};

constexpr std::array kKindTools = std::to_array<KindTool>({
    {u"tree.dir", TreeKind::Dir},
    {u"tree.genre", TreeKind::Genre},
    {u"tree.album", TreeKind::Album},
    {u"tree.interpret", TreeKind::Interpret},
    {u"tree.favorit", TreeKind::Favorit},
    {u"tree.playlist", TreeKind::Playlist},
    {u"tree.state", TreeKind::State},
    {u"tree.info", TreeKind::Info},
    {u"tree.erweitert", TreeKind::Erweitert},
});

/// The message that has the table of a kind made anew; empty for kinds without one.
QStringView rebuildMessage(TreeKind kind)
{
    switch (kind) {
    case TreeKind::Dir:
        return bus::kRefreshTreeDir;
    case TreeKind::Genre:
        return bus::kRefreshTreeGenre;
    case TreeKind::Album:
        return bus::kRefreshTreeAlbum;
    case TreeKind::Interpret:
        return bus::kRefreshTreeInterpret;
    default:
        return {};
    }
}

} // namespace

// ---- buttons and keys

void Tree::toolPressed(const QString& key)
{
    const QString name = lowerCase(key);
    for (const KindTool& tool : kKindTools) {
        if (tool.key == name) {
            guarded(tool.key, [&] { activate(tool.kind); });
            m_form.setGroupButtons(tool.kind == TreeKind::Playlist);
            m_parts.loop.turn();
            return;
        }
    }
    if (name == "all.refresh"_L1) {
        const QStringView message = rebuildMessage(m_pages.kind());
        if (!message.isEmpty()) {
            m_bus.SendMessage(message);
        }
        guarded(u"all.refresh", [&] { reload(); });
    } else if (name == "tree.collaps.close"_L1) {
        ExpandTree();
    } else if (name == "sleeve.viewer"_L1) {
        m_parts.startViewer();
    } else if (name == "newgenre"_L1) {
        if (!refusesChange()) {
            guarded(u"newgenre", [&] { m_listEdits.newGroup(); });
        }
    } else if (name == "delete"_L1) {
        deletePressed(m_pages.top().currentRow());
    }
}

void Tree::sendRow(QStringView command, const TreeRow& row)
{
    if (const auto values = treekey::clickValues(row.key)) {
        m_bus.SendMessage(command, values->value1, values->value2, values->value3, row.text);
    }
}

QStringList Tree::keysOf(const std::vector<int>& rows) const
{
    QStringList keys;
    for (const int row : rows) {
        keys.append(m_pages.top().row(row).key);
    }
    return keys;
}

void Tree::rowClicked(int row)
{
    if (m_pages.top().row(row).key != m_enteredKey) {
        rowEntered(row);
    }
    const std::vector<int> selected = m_pages.top().selectedRows();
    if (selected.size() > 1) {
        sendSelected(selected);
        return;
    }
    const TreeRow clicked = m_pages.top().row(row);
    const auto parts = treekey::split(clicked.key);
    if (!parts || parts->type == "RunProc"_L1) {
        return;
    }
    m_lastKey = clicked.key;
    sendRow(bus::kTreeClickRow, clicked);
}

/// All tracks of any of the rows.
void Tree::sendSelected(const std::vector<int>& rows)
{
    if (const auto wanted = treetracks::condition(keysOf(rows))) {
        m_lastKey.clear();
        m_bus.SendMessage(bus::kTreeClickRow, *wanted, u"FID:where"_s, QString(),
                          m_parts.texts.text(u"tree.selected", qint64(rows.size())));
    }
}

void Tree::rowEntered(int row)
{
    const TreeRow entered = m_pages.top().row(row);
    m_enteredKey = entered.key;
    const auto parts = treekey::split(entered.key);
    if (!parts) {
        return;
    }
    const QStringView command = treekey::enterMessage(*parts);
    if (command == bus::kRunProc) {
        m_bus.SendMessage(command, parts->field, parts->value);
    } else {
        sendRow(command, entered);
    }
}

void Tree::rowOpening(int row)
{
    guarded(u"Tree.Open", [&] { m_pages.open(row); });
    rowToggled(row, true);
}

void Tree::rowToggled(int row, bool open)
{
    if (m_pages.kind() != TreeKind::Erweitert) {
        return;
    }
    if (const qint64 id = extendedHeadingOf(m_pages.top().row(row).key); id != 0) {
        guarded(u"SetCollapsInfoState", [&] {
            m_parts.lists.favorites().SetCollapsInfoState(id, open ? u"true" : u"false");
        });
    }
}

/// Whether nothing can be written now, which the user is told then.
bool Tree::refusesChange()
{
    if (!m_isAway && m_parts.mayWrite()) {
        return false;
    }
    m_bus.SendMessage(bus::kShowStatusText,
                      m_parts.texts.text(m_isAway ? u"library.lent.title" : u"library.readonly"));
    return true;
}

void Tree::rowTicked(int row, bool on)
{
    if (refusesChange()) {
        TreeRow shown = m_pages.top().row(row);
        shown.tick = on ? RowTick::Off : RowTick::On;
        m_pages.top().setRow(row, shown);
        return;
    }
    guarded(u"Tree.Tick", [&] { m_ticks.ticked(row, on); });
}

QString Tree::tickTip(int row) const
{
    return FavouriteTicks::tip(m_pages.top().row(row), m_parts.texts);
}

void Tree::filterBegins()
{
    if (!m_isAway) {
        guarded(u"Tree.Filter", [&] { m_pages.openAll(); });
    }
}

DragContent Tree::dragContent(const std::vector<int>& rows)
{
    DragContent content;
    guarded(u"Tree.Drag", [&] {
        const auto database = m_parts.engine.OpenDatabase(m_parts.settings.DbName());
        const treetracks::Tracks tracks = treetracks::read(*database, keysOf(rows));
        content.text = dragText(DragKind::FidMp3db, tracks.fids);
        content.files = [files = tracks.files, locate = m_parts.placeOf] {
            QStringList found;
            for (const QString& file : files) {
                if (const QString place = locate(file); !place.isEmpty()) {
                    found.append(place);
                }
            }
            return found;
        };
    });
    return content;
}

// ---- names, order and menu of the lists

void Tree::rename(int row)
{
    if (m_pages.kind() == TreeKind::Playlist &&
        treekey::isPlaylistRow(m_pages.top().row(row).key) && !refusesChange()) {
        m_listEdits.rename(row);
    }
}

void Tree::rowEdited(int row, const QString& text)
{
    guarded(u"Tree.Rename", [&] { m_listEdits.rowEdited(row, text); });
}

void Tree::editEnded()
{
    guarded(u"Tree.EditEnded", [&] { m_listRows.editEnded(); });
}

void Tree::deletePressed(int row)
{
    if (m_pages.kind() == TreeKind::Playlist && row >= 0 && !refusesChange()) {
        guarded(u"Tree.Delete", [&] { m_listEdits.deleteRow(row); });
    }
}

void Tree::rowDropped(int from, int to, DropPlace place)
{
    if (!refusesChange()) {
        guarded(u"Tree.Drop", [&] { m_listEdits.rowDropped(from, to, place); });
    }
}

void Tree::contextMenu(int row)
{
    const TreeRow clicked = m_pages.top().row(row);
    const bool hasTracks = treetracks::condition(clicked.key).has_value();
    const bool isList = m_pages.kind() == TreeKind::Playlist && treekey::isPlaylistRow(clicked.key);
    const auto add = [&](Entry entry, bool enabled, const QString& icon) {
        m_parts.popup.Append({.id = entry,
                              .caption = m_parts.texts.text(u"tree.menu.%1"_s.arg(int(entry))),
                              .enabled = enabled,
                              .icon = icon});
    };
    m_parts.popup.Create();
    add(Append, hasTracks, u"append"_s);
    add(Insert, hasTracks, u"insert"_s);
    m_parts.popup.Append({.id = Line});
    add(AppendAktuell, hasTracks, u"append"_s);
    if (m_pages.kind() == TreeKind::Playlist) {
        m_parts.popup.Append({.id = SecondLine});
        add(Rename, isList, u"edit"_s);
        add(Delete, isList, u"delete"_s);
    }
    const int entry = m_parts.popup.Show();
    if (entry == 0) {
        return;
    }
    // The tree may be another one after the menu.
    row = m_pages.top().find(clicked.key);
    if (entry == Rename) {
        rename(row);
        return;
    }
    if (entry == Delete) {
        deletePressed(row);
        return;
    }
    if (clicked.key != m_lastKey && row >= 0) {
        // The library passes its rows on: they have to be those of the row that was meant.
        m_lastKey = clicked.key;
        sendRow(bus::kTreeClickRow, clicked);
    }
    if (entry == Append) {
        m_bus.SendMessage(bus::kAllDbAppend);
    } else if (entry == Insert) {
        m_bus.SendMessage(bus::kAllDbInsert);
    } else if (entry == AppendAktuell) {
        m_bus.SendMessage(bus::kAllDbAppendAktuell);
    }
}

} // namespace melovane
