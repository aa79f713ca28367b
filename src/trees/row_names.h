#pragma once

#include <QString>

#include <functional>
#include <vector>

namespace melovane {

class Database;

/// A list, a group of lists, or a row of the library's trees, by its name.
struct NamedRowPlace
{
    enum class Kind
    {
        List,
        JingleList,
        Group,
        Artist,
        Album,
        Genre,
        Folder
    };

    Kind kind = Kind::List;
    QString name;     ///< a folder has its whole path
    QString key = {}; ///< where it does not follow from the name

    /// The key of the row in the tree that shows it.
    [[nodiscard]] QString rowKey() const;
};

/// The names of all that the trees show, read once and then searched in memory. Knows neither
/// window nor engine, so that it may work on another thread.
class RowNames
{
public:
    /// Asked now and then; true ends the work.
    using IsOver = std::function<bool()>;

    /// Lists and groups first, then artists, albums, genres and folders. A tree table that cannot
    /// be read has none: the trees make it anew. \throws DbError for a library that cannot be read
    void read(Database& library, const IsOver& isOver);

    /// The rows that fit what was typed best, each kind of fit in the order of reading. Nothing for
    /// an empty text, and when the work was ended.
    [[nodiscard]] std::vector<NamedRowPlace>
    find(const QString& typed, size_t max, const IsOver& isOver) const;

    [[nodiscard]] size_t size() const { return m_rows.size(); }

private:
    std::vector<NamedRowPlace> m_rows;
};

} // namespace melovane
