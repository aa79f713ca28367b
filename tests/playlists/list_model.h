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
        Redo
    };

    Kind kind = Kind::AppendTracks;
    int list = 0;
    int position = 0; ///< or -1 and 1 for a swap
    QList<int> ids;   ///< numbers of tracks or entries
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

    [[nodiscard]] ModelStep randomStep(std::mt19937& random) const;

    void apply(const ModelStep& step);

    /// Takes the numbers of new entries from the tables; false when these hold anything else than
    /// the model.
    [[nodiscard]] bool adopt(Database& database);

    /// "list: position:track ..." of all lists.
    [[nodiscard]] QString text() const;

    [[nodiscard]] static QString textOf(Database& database);

private:
    [[nodiscard]] ModelStep::Kind randomKind(std::mt19937& random) const;
    [[nodiscard]] static Lists read(Database& database);
    [[nodiscard]] static QString textOf(const Lists& lists);
    void edit(const ModelStep& step);
    void insert(const ModelStep& step, std::vector<Entry>& list);

    Lists m_lists;
    std::vector<Lists> m_undo;
    std::vector<Lists> m_redo;
};

/// The program's classes that do the steps.
struct ListTools
{
    cls_PLInsertMoveDel& edits;
    ListHistory& history;
    ListCatalogue& names;
};

void perform(const ListTools& tools, const ModelStep& step);

} // namespace melovane::test
