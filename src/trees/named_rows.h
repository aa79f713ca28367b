#pragma once

#include "platform/db/row_walk.h"
#include "trees/tree_rows.h"

#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace melovane::treerows {

using KeyOf = std::function<QString(const QString& name)>;

/// Pictures by the `imgkey` of a row. There are few, and each text is made once.
class PictureNames
{
public:
    [[nodiscard]] const QString& of(const WalkedRow& row, int column);

private:
    std::vector<std::pair<std::string, QString>> m_names;
};

/// Gives a row its text, made in one piece of memory: the two texts of a row are most of the time
/// that a large tree takes to open. "name [3]", and with a total that says more "name [3 - 12]".
/// \param name as the file keeps it
void setText(TreeRow& row, std::string_view name, int own, int total = 0);

/// A row of a tree table with one name and one count.
class NamedRow
{
public:
    /// What the rows of a walk share.
    struct Shared
    {
        QString keyHead{};   ///< in front of the name
        int keyedColumn = 0; ///< with what stands behind it
        PictureNames pictures{};
    };

    NamedRow(const WalkedRow& row, Shared& shared)
        : m_row(row)
        , m_shared(shared)
    {}

    [[nodiscard]] QString name() const { return m_row.text(0); }

    [[nodiscard]] const QString& picture() const { return m_shared.pictures.of(m_row, 2); }

    [[nodiscard]] bool favorit() const { return m_row.number(3) != 0; }

    [[nodiscard]] QString key() const;

    /// "name [3]"
    void setCounted(TreeRow& row) const { setText(row, m_row.bytes(0), int(m_row.number(1))); }

private:
    const WalkedRow& m_row;
    Shared& m_shared;
};

/// \param from " from ..." and what follows
/// \param keyOf a form of keys that ends with the name
/// \param keyed column that stands there as the name
/// \throws DbError
void walkNamed(Database& database,
               const QString& from,
               const KeyOf& keyOf,
               const std::function<void(const NamedRow&)>& visit,
               const QString& keyed = QStringLiteral("Name"));

/// Room for the rows of a tree table; an estimate, for its numbers may have gaps.
[[nodiscard]] std::size_t roomFor(Database& database, const QString& table);

/// "[3]", "[3 - 12]" with those of folders below it: as setText() shows them.
[[nodiscard]] QString countText(int own, int total);

[[nodiscard]] RowTick tickOf(bool on);

/// Name, key, picture and count of the table's row.
[[nodiscard]] TreeRow countedRow(const NamedRow& named, int level, RowTick tick);

} // namespace melovane::treerows
