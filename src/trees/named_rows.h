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

/// Puts the text of a row together as the file keeps it, so that it is made once. A row with its
/// two texts is most of the time that a large tree takes to open.
class RowText
{
public:
    /// "name [3]", and with a total that says more "name [3 - 12]".
    /// \param name as the file keeps it
    void set(TreeRow& row, std::string_view name, int own, int total = 0);

private:
    std::string m_bytes;
};

/// A row of a tree table with one name and one count.
class NamedRow
{
public:
    /// What the rows of a walk share.
    struct Shared
    {
        PictureNames pictures{};
        RowText text{};
    };

    NamedRow(const WalkedRow& row, Shared& shared)
        : m_row(row)
        , m_shared(shared)
    {}

    [[nodiscard]] QString name() const { return m_row.text(0); }

    [[nodiscard]] const QString& picture() const { return m_shared.pictures.of(m_row, 2); }

    [[nodiscard]] bool favorit() const { return m_row.number(3) != 0; }

    /// What the key is made of.
    [[nodiscard]] QString keyed() const { return m_row.text(4); }

    /// "name [3]"
    void setCounted(TreeRow& row) const
    {
        m_shared.text.set(row, m_row.bytes(0), int(m_row.number(1)));
    }

private:
    const WalkedRow& m_row;
    Shared& m_shared;
};

/// \param from " from ..." and what follows
/// \param keyed column that the key is made of
/// \throws DbError
void walkNamed(Database& database,
               const QString& from,
               const std::function<void(const NamedRow&)>& visit,
               const QString& keyed = QStringLiteral("Name"));

/// Room for the rows of a tree table; an estimate, for its numbers may have gaps.
[[nodiscard]] std::size_t roomFor(Database& database, const QString& table);

/// "[3]", "[3 - 12]" with those of folders below it: as RowText shows them.
[[nodiscard]] QString countText(int own, int total);

[[nodiscard]] RowTick tickOf(bool on);

/// Name, count and tick of the table's row.
[[nodiscard]] TreeRow
countedRow(const NamedRow& named, int level, const KeyOf& keyOf, RowTick tick);

} // namespace melovane::treerows
