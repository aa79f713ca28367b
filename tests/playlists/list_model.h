#pragma once

#include "playlists/list_catalogue.h"
#include "playlists/list_history.h"
#include "playlists/pl_insert_move_del.h"

#include <QList>
#include <QString>

#include <map>
#include <random>
#include <vector>

namespace melovane::test {

/// One edit of a random sequence.
struct ModelStep
{
    enum class Kind
    {
        AppendTracks,
        InsertTracks,
        InsertCopies,
        AppendCopies,
        Move,
        Delete,
        Swap,
        DeleteList,
        Undo,
        Redo,
        Foreign ///< another program writes into a list, without a word to the history
    };

    Kind kind = Kind::AppendTracks;
    int list = 0;
    int position = 0; ///< or -1 and 1 for a swap, or which foreign change
    QList<int> ids;   ///< numbers of tracks or entries; moved and copied ones of any list
};

/// Lists in memory that follow the rules of the tables by themselves: a second opinion.
class ListModel
{
public:
    /// Track kWithoutLength is in the library and never enters a list, the ones behind it are not
    /// even there.
    static constexpr int kWithoutLength = 20;
    static constexpr int kTracks = 22;

    struct Entry
    {
        int plid = 0; ///< 0 for one that the database has not numbered yet
        int sid = 0;
        int track = 0;

        bool operator==(const Entry&) const = default;
    };

    using Lists = std::map<int, std::vector<Entry>>;

    /// Takes over what the tables hold.
    explicit ListModel(Database& database);

    enum class Others
    {
        Away,
        Write ///< foreign changes are among the steps
    };

    [[nodiscard]] ModelStep randomStep(std::mt19937& random, Others others) const;

    /// What an undo or redo must tell; Done for an edit.
    ListHistory::Outcome apply(const ModelStep& step);

    /// Takes the numbers of new entries from the tables; false when these hold anything else than
    /// the model.
    [[nodiscard]] bool adopt(Database& database);

    /// "list: position:track ..." of all lists.
    [[nodiscard]] QString text() const;

    [[nodiscard]] static QString textOf(Database& database);

private:
    /// The lists that a step concerned, as they were and as it left them; a deleted one is absent.
    struct Change
    {
        Lists before;
        Lists after;
    };

    [[nodiscard]] ModelStep::Kind randomKind(std::mt19937& random, Others others) const;
    [[nodiscard]] QList<int> randomEntries(std::mt19937& random, int list, int most) const;
    [[nodiscard]] static Lists read(Database& database);
    [[nodiscard]] static QString textOf(const Lists& lists);
    [[nodiscard]] std::vector<Entry> entriesOf(int list) const;
    [[nodiscard]] std::vector<Entry> allEntries() const;
    ListHistory::Outcome take(std::vector<Change>& from, std::vector<Change>& to, bool isUndo);
    void note(const Lists& former, const ModelStep& step);
    void edit(const ModelStep& step);
    void insert(const ModelStep& step, std::vector<Entry>& list);
    void move(const ModelStep& step, int first);
    void writeElsewhere(const ModelStep& step);

    Lists m_lists;
    std::vector<Change> m_undo;
    std::vector<Change> m_redo;
    ModelStep::Kind m_lastKind = ModelStep::Kind::AppendTracks;
    bool m_isNew = false; ///< the newest step waits for the numbers of its entries
};

/// The program's classes that do the steps.
struct ListTools
{
    cls_PLInsertMoveDel& edits;
    ListHistory& history;
    ListCatalogue& names;
    Database& others; ///< the connection of another program
};

/// \return what undo and redo have told; Done for others
ListHistory::Outcome perform(const ListTools& tools, const ModelStep& step);

} // namespace melovane::test
