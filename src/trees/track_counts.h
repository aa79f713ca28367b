#pragma once

#include "trees/folder_rows.h"

#include <QString>
#include <QStringList>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace melovane {

class Database;
class WalkedRow;

/// Texts in the order in which they were met, each spelling once.
class Spellings
{
public:
    /// The number of the text in that column, from 0.
    std::uint32_t add(const WalkedRow& row, int column);

    [[nodiscard]] const std::vector<QString>& texts() const { return m_texts; }

    /// Of each text, the number by which it is ordered; equal texts share theirs.
    [[nodiscard]] std::vector<std::uint32_t> ranks() const;

private:
    struct Hash : std::hash<std::string_view>
    {
        using is_transparent = void;
    };

    std::unordered_map<std::string, std::uint32_t, Hash, std::equal_to<>> m_numbers;
    std::vector<QString> m_texts;
};

/// Counts the tracks of a walk through the library, as a statement with `group by` does.
class TrackCounter
{
public:
    virtual ~TrackCounter() = default;

    /// The columns of `db_all` that it looks at.
    [[nodiscard]] virtual QStringList columns() const = 0;

    /// \param first number of its first column in the row
    virtual void add(const WalkedRow& row, int first) = 0;
};

/// Shows each track that isn't deleted to all counters. \throws DbError
void countTracks(Database& library, const std::vector<TrackCounter*>& counters);

/// Tracks by the values of one or two text columns. Values that compare equal are one group, shown
/// in the spelling of the track that stands first in the library. Tracks without a value in any of
/// the columns are left out.
class ValueCounter : public TrackCounter
{
public:
    explicit ValueCounter(QStringList columns)
        : m_columns(std::move(columns))
    {}

    struct Group
    {
        QStringList names; ///< one for each column
        qint64 count = 0;
    };

    [[nodiscard]] QStringList columns() const override { return m_columns; }

    void add(const WalkedRow& row, int first) override;

    /// In the order of the names.
    [[nodiscard]] std::vector<Group> groups() const;

private:
    struct Counted
    {
        std::uint64_t key = 0; ///< numbers of the spellings
        qint64 count = 0;
    };

    QStringList m_columns;
    Spellings m_first;
    Spellings m_second;
    std::unordered_map<std::uint64_t, std::size_t> m_places;
    std::vector<Counted> m_counted; ///< in the order in which they were met
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

    [[nodiscard]] QStringList columns() const override { return {QStringLiteral("DTSImport")}; }

    void add(const WalkedRow& row, int first) override;

    /// In the order of the days. Nothing when a cell holds no day that can be counted so.
    [[nodiscard]] std::optional<std::vector<Group>> groups() const;

private:
    std::unordered_map<qint64, qint64> m_days;
    bool m_isPlain = true;
};

/// Tracks by folder, as the view `v_tree_dir` groups them.
class FolderCounter : public TrackCounter
{
public:
    [[nodiscard]] QStringList columns() const override;
    void add(const WalkedRow& row, int first) override;

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

    [[nodiscard]] std::uint32_t volumeOf(const WalkedRow& row, int first);

    Spellings m_paths;
    Spellings m_labels;
    std::unordered_map<std::uint64_t, std::uint32_t> m_volumeNumbers;
    std::vector<Volume> m_volumes;
    std::unordered_map<std::uint64_t, std::size_t> m_places;
    std::vector<Counted> m_counted; ///< in the order in which they were met
};

} // namespace melovane
