#pragma once

#include "trees/folder_rows.h"
#include "trees/spellings.h"

#include <QString>
#include <QStringList>

#include <cstdint>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace melovane {

class Database;
class WalkedRow;

/// A column of the library that a counter looks at.
struct CountedColumn
{
    int number = 0;                              ///< in the walked row
    std::shared_ptr<const Spellings> texts = {}; ///< of a column that is counted by its text
};

/// Counts the tracks of a walk through the library, as a statement with `group by` does.
class TrackCounter
{
public:
    virtual ~TrackCounter() = default;

    /// The columns of `db_all` that it looks at, each with whether its texts are told apart.
    struct Column
    {
        QString name;
        bool isText = true;
    };

    [[nodiscard]] virtual std::vector<Column> columns() const = 0;

    /// Whether deleted tracks count, too.
    [[nodiscard]] virtual bool countsDeleted() const { return false; }

    /// Before the first track. \param columns in the order of columns()
    virtual void begin(std::vector<CountedColumn> columns) = 0;

    /// A track; its texts have been read.
    virtual void add(const WalkedRow& row) = 0;
};

/// Shows each track to all counters. A column that several of them look at is read once.
/// \throws DbError
void countTracks(Database& library, const std::vector<TrackCounter*>& counters);

/// Tracks by the values of one or two text columns. Values that compare equal are one group, shown
/// in the spelling of the track that stands first in the library. Tracks without a value in any of
/// the columns are left out.
class ValueCounter : public TrackCounter
{
public:
    /// Which tracks count.
    enum class Tracks
    {
        Live,
        All ///< deleted ones, too
    };

    explicit ValueCounter(QStringList names, Tracks tracks = Tracks::Live)
        : m_names(std::move(names))
        , m_tracks(tracks)
    {}

    struct Group
    {
        QStringList names; ///< one for each column
        qint64 count = 0;
    };

    [[nodiscard]] std::vector<Column> columns() const override;

    [[nodiscard]] bool countsDeleted() const override { return m_tracks == Tracks::All; }

    void begin(std::vector<CountedColumn> columns) override;
    void add(const WalkedRow& row) override;

    /// In the order of the names.
    [[nodiscard]] std::vector<Group> groups() const;

private:
    struct Counted
    {
        std::uint64_t key = 0; ///< numbers of the spellings
        qint64 count = 0;
    };

    QStringList m_names;
    Tracks m_tracks;
    [[nodiscard]] std::uint32_t placeOf(std::uint32_t first, std::uint32_t last);

    std::vector<CountedColumn> m_columns;
    std::vector<std::uint32_t> m_single; ///< of one column: by spelling, places counted from 1
    PlaceMap m_pairs;                    ///< of two columns: places
    std::vector<Counted> m_counted;      ///< in the order in which they were met
};

/// Tracks by the day of their import.
class DayCounter : public TrackCounter
{
public:
    struct Group
    {
        QString name; ///< "dd.mm.yyyy"
        qint64 count = 0;
    };

    [[nodiscard]] std::vector<Column> columns() const override;
    void begin(std::vector<CountedColumn> columns) override;
    void add(const WalkedRow& row) override;

    /// In the order of the days. Nothing when a cell holds no day that can be counted so.
    [[nodiscard]] std::optional<std::vector<Group>> groups() const;

private:
    int m_column = 0;
    PlaceMap m_places;
    std::vector<std::pair<qint64, qint64>> m_days; ///< day and tracks, in the order of meeting
    bool m_isPlain = true;
};

/// Tracks by folder, as the view `v_tree_dir` groups them.
class FolderCounter : public TrackCounter
{
public:
    [[nodiscard]] std::vector<Column> columns() const override;
    void begin(std::vector<CountedColumn> columns) override;
    void add(const WalkedRow& row) override;

    /// In the order of the paths, a disc's folders in the order of their labels.
    [[nodiscard]] std::vector<TrackFolder> folders() const;

private:
    /// Tracks of one spelling of a folder.
    struct Counted
    {
        std::uint32_t path = 0;
        std::uint32_t volume = 0;
        qint64 count = 0;
    };

    struct Volume
    {
        int typ = 0;
        std::uint32_t label = 0;
    };

    [[nodiscard]] std::uint32_t volumeOf(int typ, std::uint32_t label);

    CountedColumn m_paths;
    CountedColumn m_types;
    CountedColumn m_labels;
    PlaceMap m_volumeNumbers;
    std::vector<Volume> m_volumes;
    std::uint32_t m_lastVolume = 0; ///< of the track before, as a rule the next one's, too
    [[nodiscard]] std::uint32_t placeOf(std::uint32_t path, std::uint32_t volume);

    std::vector<std::uint32_t> m_firsts; ///< by path: the first place with it, counted from 1
    PlaceMap m_others;                   ///< places of paths that lie on further volumes, too
    std::vector<Counted> m_counted;      ///< in the order in which they were met
};

} // namespace melovane
