#include "trees/tree_pages.h"

#include "config/global_settings.h"
#include "platform/db/database.h"
#include "trees/extended_rows.h"
#include "trees/tree_children.h"
#include "trees/tree_key.h"

#include <utility>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Albums with more tracks than that are listed.
constexpr int kAlbumThreshold = 1;

/// Deeper than any tree.
constexpr int kDeepest = 99;

/// The level up to which the rows of a kind are seen after a fill.
int firstFold(TreeKind kind)
{
    switch (kind) {
    case TreeKind::Dir:
    case TreeKind::Favorit:
    case TreeKind::State:
        return 2;
    case TreeKind::Album:
    case TreeKind::Interpret:
    case TreeKind::Playlist:
        return 1;
    default:
        return kDeepest;
    }
}

} // namespace

TreePages::TreePages(DBEngine& engine,
                     const GlobalSettings& settings,
                     const ConfigObjects& texts,
                     TreeForm& form)
    : m_engine(engine)
    , m_settings(settings)
    , m_texts(texts)
    , m_form(form)
{}

void TreePages::bringUp(TreeKind kind)
{
    m_form.bringUp(kind);
    m_kind = kind;
}

void TreePages::mark(const QString& mask)
{
    const auto digit = [&](qsizetype place) {
        return short(mask.size() >= place && mask[place - 1] == u'1' ? 0 : 1);
    };
    m_flags[size_t(TreeKind::Album)] = digit(3);
    m_flags[size_t(TreeKind::Dir)] = digit(2);
    m_flags[size_t(TreeKind::Genre)] = m_flags[size_t(TreeKind::Interpret)] = digit(5);
    m_flags[size_t(TreeKind::Favorit)] = short(mask == "10000"_L1 ? 0 : 1);
    setStale(TreeKind::Playlist);
}

std::vector<TreeRow> TreePages::read(TreeKind kind)
{
    const auto database = m_engine.OpenDatabase(m_settings.DbName());
    switch (kind) {
    case TreeKind::Dir:
        return treerows::directories(*database, m_texts);
    case TreeKind::Genre:
        return treerows::genres(*database, m_texts);
    case TreeKind::Album:
        return treerows::albums(*database, m_texts, kAlbumThreshold);
    case TreeKind::Interpret:
        return treerows::artists(*database, m_texts);
    case TreeKind::Favorit:
        return treerows::favourites(*database, m_texts);
    case TreeKind::State:
        return treerows::statistics(*database);
    case TreeKind::Playlist:
    case TreeKind::Info:
    case TreeKind::Erweitert:
        break;
    }
    return {};
}

void TreePages::fill(TreeKind kind)
{
    fill(kind, read(kind));
}

void TreePages::fill(TreeKind kind, std::vector<TreeRow> rows)
{
    for (TreeRow& row : rows) {
        if (row.fillable && m_loaded.contains(row.key)) {
            row.fillable = false;
        }
    }
    TreeControl& tree = control(kind);
    tree.setRows(std::move(rows));
    tree.foldTo(firstFold(kind));
}

// ---- rows that are read when they are opened

bool TreePages::isLoaded(const QString& key) const
{
    return m_loaded.contains(key);
}

void TreePages::forget(const QString& key)
{
    m_loaded.remove(key);
}

void TreePages::insertBelow(int row, std::vector<TreeRow> rows)
{
    TreeRow parent = top().row(row);
    parent.fillable = false;
    top().setRow(row, parent);
    top().insertRows(row + 1, std::move(rows));
}

/// Read at each opening of its tree, so nothing is remembered.
void TreePages::readExtended(Database& database, int row, qint64 id)
{
    TreeRow shown = top().row(row);
    std::vector<TreeRow> rows = extendedItem(database, m_texts, id);
    if (!rows.empty()) {
        shown.text = rows.front().text;
        shown.toolTip = rows.front().toolTip;
        top().setRow(row, shown);
        rows.erase(rows.begin());
    }
    insertBelow(row, std::move(rows));
}

void TreePages::open(int row)
{
    if (!top().row(row).fillable) {
        return;
    }
    const auto database = m_engine.OpenDatabase(m_settings.DbName());
    const QString key = top().row(row).key;
    if (const qint64 id = extendedHeadingOf(key); id != 0) {
        readExtended(*database, row, id);
    } else {
        insertBelow(row, treerows::children(*database, key));
        m_loaded.insert(key);
    }
    top().setOpen(row, true);
}

void TreePages::openAll()
{
    QStringList keys; // of those that are read together
    bool hasAny = false;
    for (int row = 0; row < top().rowCount(); ++row) {
        const TreeRow shown = top().row(row);
        hasAny = hasAny || shown.fillable;
        if (shown.fillable && extendedHeadingOf(shown.key) == 0) {
            keys.append(shown.key);
        }
    }
    if (!hasAny) {
        return;
    }
    const auto database = m_engine.OpenDatabase(m_settings.DbName());
    std::vector<std::vector<TreeRow>> below = treerows::childrenOfEach(*database, keys);
    std::size_t next = 0;
    // From above, so that few rows stand behind those that come.
    for (int row = 0; row < top().rowCount(); ++row) {
        const TreeRow shown = top().row(row);
        if (!shown.fillable) {
            continue;
        }
        const int before = top().rowCount();
        if (const qint64 id = extendedHeadingOf(shown.key); id != 0) {
            readExtended(*database, row, id);
        } else {
            insertBelow(row, std::move(below[next++]));
            m_loaded.insert(shown.key);
        }
        row += top().rowCount() - before;
    }
}

// ---- state

void TreePages::save(TreeKind kind)
{
    const TreeControl& tree = control(kind);
    State& state = m_states[size_t(kind)];
    const int current = tree.currentRow();
    state = {{}, tree.folded(), tree.row(current).key, current, tree.firstVisibleRow()};
    for (int row = 0; row < tree.rowCount(); ++row) {
        if (tree.isOpen(row)) {
            state.openKeys += tree.row(row).key + treekey::kStateSeparator.toString();
        }
    }
}

void TreePages::restore(TreeKind kind)
{
    TreeControl& tree = control(kind);
    const State& state = m_states[size_t(kind)];
    QStringList folded = state.folded;
    folded.removeAll(QString());
    QStringList open =
        state.openKeys.split(treekey::kStateSeparator.toString(), Qt::SkipEmptyParts);
    open.removeIf([&](const QString& key) { return tree.find(key) <= 0; });
    tree.setFolds(folded, open);
    const int same = state.currentKey.isEmpty() ? -1 : tree.find(state.currentKey);
    tree.setCurrentRow(same >= 0 ? same : state.current);
    tree.setFirstVisibleRow(state.top);
}

void TreePages::expandTree()
{
    if (m_kind > TreeKind::Playlist) {
        return;
    }
    if (m_folds) {
        // Level by level from the deepest: what is opened again one by one opens folded.
        constexpr int kDeepestFold = 8;
        for (int level = kDeepestFold; level > 0; --level) {
            top().foldTo(level);
        }
    } else {
        top().foldTo(kDeepest);
    }
    m_folds = !m_folds;
    m_form.setFolds(m_folds);
}

} // namespace melovane
