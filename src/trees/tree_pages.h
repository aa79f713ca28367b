#pragma once

#include "trees/tree_form.h"

#include <QSet>

#include <array>
#include <functional>

namespace melovane {

class ConfigObjects;
class Database;
class DBEngine;
class GlobalSettings;

/// The trees of the stack: which kind is seen, which ones are filled, and what is open in them.
class TreePages
{
public:
    /// What a page takes its rows from besides the tree tables.
    using Fill = std::function<std::vector<TreeRow>(Database&)>;

    /// All of it outlives the pages.
    TreePages(DBEngine& engine,
              const GlobalSettings& settings,
              const ConfigObjects& texts,
              TreeForm& form);

    [[nodiscard]] TreeKind kind() const { return m_kind; }

    [[nodiscard]] TreeControl& control(TreeKind kind) const { return m_form.page(kind); }

    /// The tree that is seen.
    [[nodiscard]] TreeControl& top() const { return control(m_kind); }

    /// Brings a kind to the top; it is the current one from then on.
    void bringUp(TreeKind kind);

    // -- Fill flags --

    /// Whether its next opening reads nothing.
    [[nodiscard]] bool isFilled(TreeKind kind) const { return m_flags[size_t(kind)] == kFilled; }

    void setFilled(TreeKind kind) { m_flags[size_t(kind)] = kFilled; }

    /// Its next opening fills it anew.
    void setStale(TreeKind kind) { m_flags[size_t(kind)] = 0; }

    /// Marks trees by a mask of digits. The suite gives each flag 0 or 1 by the digits; neither
    /// means filled, so every kind is stale behind it, whatever they are.
    void mark(const QString& mask);

    // -- Rows --

    /// Reads the rows of a kind that the tree tables hold and folds it as that kind begins.
    /// \throws DbError, with the rows as they were
    void fill(TreeKind kind);

    /// The same with rows from elsewhere.
    void fill(TreeKind kind, std::vector<TreeRow> rows);

    /// Reads the rows below a row that is opened for the first time since the program started; the
    /// keys of such rows outlive a refill, so a row that lost its rows by one stays without.
    /// \throws DbError
    void open(int row);
    /// Whether the rows below a key were read.
    [[nodiscard]] bool isLoaded(const QString& key) const;
    /// The rows below it are read anew at its next opening.
    void forget(const QString& key);
    /// Opens every row that is still unread, so that a filter finds what stands below.
    void openAll();

    // -- State --

    /// Keeps what is open, the current row and the first one on the screen.
    void save(TreeKind kind);
    /// Opens what was open and folds what was folded, over the folding of a first fill; keys that
    /// no row has any more are skipped.
    void restore(TreeKind kind);

    /// Folds or opens all rows, by turns; of the kinds that have a fold button.
    void expandTree();

private:
    struct State
    {
        QString openKeys; ///< each with its separator behind it
        QStringList folded;
        QString currentKey;
        int current = -1;
        int top = -1;
    };

    /// What a fill flag holds when the tree is filled: as the suite has it.
    static constexpr short kFilled = 99;

    void insertBelow(int row, std::vector<TreeRow> rows);
    void readExtended(Database& database, int row, qint64 id);
    [[nodiscard]] std::vector<TreeRow> read(TreeKind kind);

    DBEngine& m_engine;
    const GlobalSettings& m_settings;
    const ConfigObjects& m_texts;
    TreeForm& m_form;
    TreeKind m_kind = TreeKind::Dir;
    std::array<short, kTreeKinds> m_flags{};
    std::array<State, kTreeKinds> m_states;
    QSet<QString> m_loaded; ///< keys of rows whose rows were read
    bool m_folds = true;    ///< what the fold button does next
};

} // namespace melovane
