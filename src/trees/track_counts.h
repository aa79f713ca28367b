#pragma once

#include "trees/folder_rows.h"
#include "trees/spellings.h"
#include "trees/track_block.h"

#include <QString>
#include <QStringList>

#include <cstdint>
#include <memory>
#include <optional>
#include <unordered_map>
#include <utility>
#include <vector>

namespace melovane {

class Database;

/// A column of the library that a counter looks at.
struct CountedColumn
{
    std::size_t number = 0;                      ///< in the block
    std::shared_ptr<const Spellings> texts = {}; ///< of a column that is counted by its text
};

/// Counts the tracks of a walk through the library, as a statement with `group by` does.
class TrackCounter
{
public:
    virtual ~TrackCounter() = default;

    /// The columns of `db_all` that it looks at.
    struct Column
    {
        QString name;
        TrackBlock::Kind kind = TrackBlock::Kind::Text;
    };

    [[nodiscard]] virtual std::vector<Column> columns() const = 0;

    /// Whether deleted tracks count, too.
    [[nodiscard]] virtual bool countsDeleted() const { return false; }

    /// Before the first track. \param columns in the order of columns()
    virtual void begin(std::vector<CountedColumn> columns) = 0;

    /// Further tracks; their texts have been read.
    virtual void add(const TrackBlock& block) = 0;
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
    void add(const TrackBlock& block) override;

    /// In the order of the names.
    [[nodiscard]] std::vector<Group> groups() const;

private:
    /// Tracks of one spelling.
    struct Counted
    {
        std::uint32_t count = 0;
        std::uint32_t met = 0; ///< how many spellings were met before it
    };

    /// A spelling or a pair of them.
    struct Spelled
    {
        std::uint64_t rank = 0; ///< equal ones share theirs
        std::uint32_t met = 0;
        std::uint32_t count = 0;
        std::uint64_t key = 0; ///< numbers of the spellings
    };

    [[nodiscard]] bool counts(const TrackBlock& block, std::size_t row) const;
    void addSingles(const TrackBlock& block);
    void addPairs(const TrackBlock& block);
    [[nodiscard]] std::vector<Spelled> spelled() const;

    QStringList m_names;
    Tracks m_tracks;
    std::vector<CountedColumn> m_columns;
    std::vector<Counted> m_singles; ///< of one column, by spelling
    std::uint32_t m_met = 0;        ///< spellings in it that have tracks
    PairTally m_pairs;              ///< of two columns
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
    void add(const TrackBlock& block) override;

    /// In the order of the days. Nothing when a cell holds no day that can be counted so.
    [[nodiscard]] std::optional<std::vector<Group>> groups() const;

private:
    std::size_t m_column = 0;
    PairTally m_days;
    bool m_isPlain = true;
};

/// Tracks by folder, as the view `v_tree_dir` groups them.
class FolderCounter : public TrackCounter
{
public:
    [[nodiscard]] std::vector<Column> columns() const override;
    void begin(std::vector<CountedColumn> columns) override;
    void add(const TrackBlock& block) override;

    /// In the order of the paths, a disc's folders in the order of their labels.
    [[nodiscard]] std::vector<TrackFolder> folders() const;

private:
    struct Volume
    {
        int typ = 0;
        std::uint32_t label = 0;
    };

    [[nodiscard]] std::uint32_t volumeOf(int typ, std::uint32_t label);

    CountedColumn m_paths;
    CountedColumn m_types;
    CountedColumn m_labels;
    std::vector<Volume> m_volumes;
    std::unordered_map<std::uint64_t, std::uint32_t> m_volumeNumbers;
    std::uint32_t m_lastVolume = 0; ///< of the track before, as a rule the next one's, too
    PairTally m_folders;            ///< spelling of a path and number of a volume
};

} // namespace melovane
