#pragma once

#include <QByteArray>
#include <QString>

#include <optional>
#include <vector>

namespace melovane {

/// One view of the library that can be gone back to.
struct HistoryEntry
{
    QString kind;  ///< kind of a tree node, or kTextSearch
    QString field; ///< empty for a text search
    QString value;
    qint16 byNumber = 0; ///< 1 compares numbers

    bool operator==(const HistoryEntry&) const = default;
};

/// Kind of an entry that was typed into the search line: keep, it stands in the file.
inline constexpr QStringView kTextSearch = u"TextSuche";

/// The views of the library from the oldest to the newest, and which of them is shown.
///
/// Holds 27 at most. The first of a run without a history file goes to index 1; index 0 then is an
/// empty entry, which a step back reaches and which shows nothing.
class SearchHistory
{
public:
    /// Index of the newest entry that is kept.
    static constexpr int kLastIndex = 26;

    /// Makes an entry the newest and the shown one. One that is there already (kind, field and
    /// value compared exactly) leaves its former place; of equal ones the first. Full, the oldest
    /// falls off. Nothing is thrown away by a push after going back.
    void push(const HistoryEntry& entry);

    /// One step; nothing, and no change, at the end.
    [[nodiscard]] std::optional<HistoryEntry> back();
    [[nodiscard]] std::optional<HistoryEntry> forward();

    [[nodiscard]] bool canGoBack() const { return m_cursor > 0; }

    [[nodiscard]] bool canGoForward() const { return m_cursor < m_last; }

    [[nodiscard]] int last() const { return m_last; }

    [[nodiscard]] int cursor() const { return m_cursor; }

    /// Reads `suche.his`: from index 0 on, up to the first line that is broken. Of more lines than
    /// fit the newest stay. A file without a readable line changes nothing.
    /// \return false when a line was broken
    bool read(const QByteArray& bytes);

    /// The text of `suche.his`; entries whose kind or value is empty are left out.
    [[nodiscard]] QByteArray toText() const;

private:
    std::vector<HistoryEntry> m_entries = std::vector<HistoryEntry>(1);
    int m_last = 0;
    int m_cursor = 0;
};

} // namespace melovane
