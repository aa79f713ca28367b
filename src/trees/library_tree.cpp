#include "trees/library_tree.h"

#include "bus/bus_table.h"
#include "bus/message_names.h"
#include "config/config_objects.h"
#include "config/global_settings.h"
#include "config/update_colors.h"
#include "platform/db/database.h"
#include "platform/system/timers.h"
#include "platform/system/trim_blanks.h"
#include "playlists/mlv_function.h"
#include "trees/extended_rows.h"
#include "trees/info_rows.h"
#include "trees/tree_key.h"
#include "trees/tree_messages.h"

#include <utility>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Section and key of the kind that was seen last, between two runs.
const QString kStateSection = u"Default"_s;
const QString kKindKey = u"Tree.Kind"_s;

/// Rows that stand above a folder that is brought on the screen.
constexpr int kRowsAbove = 5;

/// The row that stands on the screen for a row: itself, or the outermost closed one above it.
int lineOf(const TreeControl& tree, int row)
{
    int line = row;
    int level = tree.row(row).level;
    for (int above = row - 1; above >= 0 && level > 0; --above) {
        if (tree.row(above).level < level) {
            level = tree.row(above).level;
            line = tree.isOpen(above) ? line : above;
        }
    }
    return line;
}

/// The lists as the tree of groups shows them: with their counts, and ticked while the panel of
/// lists has them.
ListTreeForm listForm()
{
    return {.read = [](Database& database, bool) { return treerows::playlists(database); },
            .row = treerows::playlist,
            .followsOpenList = false,
            .ordersGroups = true};
}

} // namespace

Tree::Tree(TreeParts parts, TreeForm& form)
    : m_parts(std::move(parts))
    , m_bus(m_parts.bus, u"Tree"_s)
    , m_pages(m_parts.engine, m_parts.settings, m_parts.texts, form)
    , m_listRows(
          m_parts.engine,
          m_parts.settings,
          m_parts.texts,
          m_parts.sink,
          form.page(TreeKind::Playlist),
          [] { return Pnid{}; },
          listForm())
    , m_listEdits({.rows = m_listRows,
                   .lists = m_parts.lists,
                   .settings = m_parts.settings,
                   .texts = m_parts.texts,
                   .warnings = m_parts.warnings,
                   .bus = m_bus,
                   .open = [](int) {}})
    , m_listDrops({.rows = m_listRows,
                   .lists = m_parts.lists,
                   .mayWrite = m_parts.mayWrite,
                   .append = m_parts.append})
    , m_ticks(m_pages, m_parts.lists, [this] { m_bus.SendMessage(bus::kFavoritRefresh); })
    , m_form(form)
    , m_guard(guardOverBus(m_bus, m_parts.texts, m_parts.settings, m_parts.sink))
    , m_messages(std::make_unique<TreeMessages>(m_parts.bus, m_guard, *this))
{}

Tree::~Tree() = default;

void Tree::start()
{
    m_started = true;
    m_library = m_parts.settings.DbName();
    const QString last = m_parts.settings.GetKeyValue(kStateSection, kKindKey, QString());
    for (int kind = 0; kind < kTreeKinds; ++kind) {
        if (nameOf(TreeKind(kind)) == last) {
            m_pages.bringUp(TreeKind(kind));
        }
    }
    activate(m_pages.kind());
    m_form.setGroupButtons(m_pages.kind() == TreeKind::Playlist);
}

void Tree::end()
{
    m_parts.settings.WriteKeyValue(kStateSection, kKindKey, nameOf(m_pages.kind()).toString());
}

void Tree::guarded(QStringView where, const std::function<void()>& work)
{
    m_guard.run(where.toString(), work);
}

TreeControl* Tree::GetObjectByName(QStringView kind) const
{
    for (int number = 0; number < kTreeKinds; ++number) {
        if (nameOf(TreeKind(number)).compare(kind, Qt::CaseInsensitive) == 0) {
            return &m_pages.control(TreeKind(number));
        }
    }
    return nullptr;
}

// ---- opening and filling

void Tree::activate(TreeKind kind)
{
    if (!m_started) {
        return;
    }
    const bool hasFlag = kind < TreeKind::State;
    if (!m_isAway && (!hasFlag || !m_pages.isFilled(kind))) {
        fill(kind);
    }
    m_pages.bringUp(kind);
}

/// Never fails: the rows stay as they were, and the panel says why there are none.
void Tree::fill(TreeKind kind)
{
    m_pages.control(kind).setNote({});
    try {
        fillKind(kind);
        m_pages.setFilled(kind);
    } catch (const DbError& error) {
        m_parts.sink(nameOf(kind).toString(), error.text());
        passReleased(error);
        tableFailed(kind, error.text());
    }
}

void Tree::fillKind(TreeKind kind)
{
    switch (kind) {
    case TreeKind::State:
        m_pages.save(kind);
        m_pages.fill(kind);
        m_pages.restore(kind);
        setNoteWhenEmpty(kind, u"tree.state.title", u"tree.state.none");
        break;
    case TreeKind::Playlist:
        fillLists();
        setNoteWhenEmpty(kind, u"tree.lists.title", u"tree.lists.none");
        break;
    case TreeKind::Info:
        fillInfo();
        break;
    case TreeKind::Erweitert: {
        const auto database = m_parts.engine.OpenDatabase(m_parts.settings.DbName());
        ExtendedRows rows = extendedRows(*database, m_parts.texts);
        m_pages.fill(kind, std::move(rows.rows));
        m_pages.control(kind).setFolded(rows.folded);
        break;
    }
    default:
        m_pages.fill(kind);
        noteWithoutTracks(kind);
    }
}

/// Headings alone would say nothing to somebody who has just begun.
void Tree::noteWithoutTracks(TreeKind kind)
{
    const auto database = m_parts.engine.OpenDatabase(m_parts.settings.DbName());
    if (treerows::isWithoutTracks(*database, kind)) {
        m_pages.control(kind).setNote({m_parts.texts.text(u"library.empty.title"),
                                       m_parts.texts.text(u"library.empty.text"),
                                       {}});
    }
}

void Tree::fillLists()
{
    TreeControl& tree = m_pages.control(TreeKind::Playlist);
    const bool isFirst = tree.rowCount() == 0;
    m_listRows.refresh();
    if (!isFirst) {
        return;
    }
    // Groups are folded, unless a list plays that the user may look for.
    bool plays = false;
    for (int row = 0; row < tree.rowCount() && !plays; ++row) {
        plays = tree.row(row).bold;
    }
    tree.foldTo(plays ? 0 : 1);
    if (plays) {
        tree.setFolded({});
    }
}

/// Tempos on either side of a track's that get a row of their own.
int Tree::bpmRange() const
{
    return m_parts.settings.GetKeyValueLong(u"Global"_s, u"BPMShowRange"_s, 3);
}

/// What a tree without rows says.
void Tree::setNoteWhenEmpty(TreeKind kind, QStringView title, QStringView text)
{
    if (m_pages.control(kind).rowCount() == 0) {
        m_pages.control(kind).setNote({m_parts.texts.text(title), m_parts.texts.text(text), {}});
    }
}

void Tree::fillInfo()
{
    if (m_lastFid.isEmpty()) {
        m_pages.control(TreeKind::Info)
            .setNote({m_parts.texts.text(u"tree.info.title"),
                      m_parts.texts.text(u"tree.info.none"),
                      {}});
        return;
    }
    const MlvAllData track = m_parts.track(m_lastFid);
    const auto database = m_parts.engine.OpenDatabase(m_parts.settings.DbName());
    m_pages.fill(TreeKind::Info, informationRows(*database, m_parts.texts, track, bpmRange(),
                                                 m_parts.cover(track)));
}

/// A table that can't be read is made anew once; until then the panel says so.
void Tree::tableFailed(TreeKind kind, const QString& what)
{
    const ConfigObjects& texts = m_parts.texts;
    m_pages.control(kind).setNote({texts.text(u"tree.damaged.title"),
                                   m_rebuilds ? what : texts.text(u"tree.damaged.text"),
                                   {}});
    if (!std::exchange(m_rebuilds, true)) {
        m_parts.rebuildTables();
    }
}

void Tree::Refresh(const QString& mask)
{
    m_pages.mark(mask);
    reload();
}

/// Reads the tree that is seen anew.
void Tree::reload()
{
    if (!m_started || m_isAway) {
        return;
    }
    const TreeKind kind = m_pages.kind();
    const bool keepsState = kind == TreeKind::Dir;
    if (keepsState) {
        m_pages.save(kind);
    }
    activate(kind);
    if (keepsState) {
        m_pages.restore(kind);
    }
}

void Tree::UpdateColors()
{
    const GridFont font = melovane::UpdateColors(m_parts.settings).font();
    for (int kind = 0; kind < kTreeKinds; ++kind) {
        m_pages.control(TreeKind(kind)).setTreeFont(font);
    }
}

void Tree::showTrack(const QString& fid)
{
    if (fid.isEmpty()) {
        return;
    }
    m_lastFid = fid;
    if (m_started && !m_isAway && m_pages.kind() == TreeKind::Info) {
        fill(TreeKind::Info);
    }
}

void Tree::trackEntered(const QString& fid)
{
    if (fid != m_lastFid) {
        showTrack(fid);
    }
}

// ---- lists

void Tree::refreshLists()
{
    m_pages.setStale(TreeKind::Playlist);
    if (m_pages.kind() == TreeKind::Playlist) {
        AktivateTreePlaylist();
    }
}

void Tree::setListPicture(const QString& key, const QString& picture)
{
    TreeControl& tree = m_pages.control(TreeKind::Playlist);
    if (const int row = tree.find(key); row >= 0) {
        TreeRow shown = tree.row(row);
        shown.picture = picture;
        tree.setRow(row, shown);
    }
}

void Tree::UpdatePlaylistTreeRow(const QString& key, const QString& text)
{
    const int row = m_pages.control(TreeKind::Playlist).find(key);
    if (row < 0) {
        return;
    }
    m_listRows.setText(row, trimBlanks(text));
    // The count belongs to the row, not to the name.
    m_listRows.rereadRow(row);
}

void Tree::ActivatePlaylist(Pnid list)
{
    m_listRows.rereadPlaying(false);
    m_listRows.rereadRow(m_listRows.rowOfList(list));
}

// ---- a folder

void Tree::showDirectory(const QString& path, const QString& volume)
{
    AktivateTreeDir();
    m_form.setGroupButtons(false);
    m_parts.loop.turn();
    const TreeControl& tree = m_pages.control(TreeKind::Dir);
    const QString key =
        volume.isEmpty() ? treekey::directory(path) : treekey::discDirectory(volume, path);
    int row = tree.find(key);
    if (row < 0) {
        // A favourite that was made in place has another key until the next fill.
        row = tree.find(treekey::madeFavourite(key));
    }
    if (row >= 0) {
        goToRow(row);
    }
}

void Tree::goToRow(int row)
{
    TreeControl& tree = m_pages.top();
    int level = tree.row(row).level;
    for (int above = row - 1; above >= 0 && level > 0; --above) {
        if (tree.row(above).level < level) {
            level = tree.row(above).level;
            tree.setOpen(above, true);
        }
    }
    const int top = tree.firstVisibleRow();
    tree.setCurrentRow(row);
    if (tree.firstVisibleRow() == top) {
        return;
    }
    int first = row;
    for (int line = 0; line < kRowsAbove && first > 0; ++line) {
        first = lineOf(tree, first - 1);
    }
    tree.setFirstVisibleRow(first);
}

// ---- the library

void Tree::setNote(const EmptyNote& note)
{
    for (int kind = 0; kind < kTreeKinds; ++kind) {
        m_pages.control(TreeKind(kind)).setNote(note);
    }
}

void Tree::leaveLibrary()
{
    m_isAway = true;
    m_listRows.leaveLibrary();
    setNote(
        {m_parts.texts.text(u"library.lent.title"), m_parts.texts.text(u"library.lent.text"), {}});
}

void Tree::libraryIsBack()
{
    if (!std::exchange(m_isAway, false)) {
        return;
    }
    setNote({});
    m_listRows.libraryIsBack();
    m_library = m_parts.settings.DbName();
    Refresh(u"111111"_s);
}

void Tree::libraryChanged()
{
    if (m_isAway || !m_started || m_parts.settings.DbName() == m_library) {
        return;
    }
    m_library = m_parts.settings.DbName();
    m_lastFid.clear();
    m_lastKey.clear();
    for (int kind = 0; kind < kTreeKinds; ++kind) {
        m_pages.control(TreeKind(kind)).setRows({});
    }
    Refresh(u"111111"_s);
}

} // namespace melovane
