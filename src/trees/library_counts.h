#pragma once

#include "trees/track_counts.h"

#include <QString>
#include <QStringList>

#include <array>
#include <future>
#include <optional>
#include <thread>
#include <vector>

namespace melovane {

class Database;

/// The fields whose typed values are offered in the tag panel, in the order in which they are
/// looked after.
constexpr std::array kSelectionFields{QLatin1StringView("Kategorie"), QLatin1StringView("Stimmung"),
                                      QLatin1StringView("Situation"), QLatin1StringView("Tempo")};

/// What one walk through the library counts for all tree tables.
///
/// The names are put into their order on a thread of its own, table by table as a rebuild asks for
/// them, while the first tables are written. That thread sees nothing of the library.
class LibraryCounts
{
public:
    using Names = std::vector<ValueCounter::Group>;

    /// Walks through the library. \param library outlives this \throws DbError
    explicit LibraryCounts(Database& library);
    /// Waits for the column that is put in order at present.
    ~LibraryCounts();
    LibraryCounts(const LibraryCounts&) = delete;
    LibraryCounts& operator=(const LibraryCounts&) = delete;

    /// False once somebody else has written into the library.
    [[nodiscard]] bool areCurrent() const;

    /// The values of one or two columns with their tracks, in order; null for columns without a
    /// tree. Waits until they are there.
    [[nodiscard]] const Names* names(const QStringList& columns) const;

    /// The values of a selection field, those of deleted tracks, too.
    [[nodiscard]] const Names& typed(std::size_t field) const { return m_typed[field].get(); }

    [[nodiscard]] std::optional<std::vector<DayCounter::Group>> days() const
    {
        return m_days.groups();
    }

    /// Put in order here and now: they share no column with the names.
    [[nodiscard]] std::vector<TrackFolder> folders() const { return m_folders.folders(); }

private:
    using Ordered = std::shared_future<Names>;

    void order();

    Database& m_library;
    qint64 m_version; ///< of the library, before it was walked
    std::vector<ValueCounter> m_counters;
    DayCounter m_days;
    FolderCounter m_folders;
    std::vector<Ordered> m_names; ///< of the trees
    std::vector<Ordered> m_typed; ///< of the selection fields
    std::jthread m_ordering;      ///< works on m_counters alone
};

} // namespace melovane
