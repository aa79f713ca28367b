#pragma once

#include "platform/db/row_walk.h"
#include "trees/tree_rows.h"

#include <functional>

namespace melovane::treerows {

using KeyOf = std::function<QString(const QString& name)>;

/// A row of a tree table with one name and one count.
class NamedRow
{
public:
    explicit NamedRow(const WalkedRow& row)
        : m_row(row)
    {}

    [[nodiscard]] QString name() const { return m_row.text(0); }

    [[nodiscard]] QString count() const { return u'[' + QString::number(m_row.number(1)) + u']'; }

    [[nodiscard]] QString picture() const { return treerows::pictureOf(m_row.text(2)); }

    [[nodiscard]] bool favorit() const { return m_row.number(3) != 0; }

    /// What the key is made of.
    [[nodiscard]] QString keyed() const { return m_row.text(4); }

private:
    const WalkedRow& m_row;
};

/// \param from " from ..." and what follows
/// \param keyed column that the key is made of
/// \throws DbError
void walkNamed(Database& database,
               const QString& from,
               const std::function<void(const NamedRow&)>& visit,
               const QString& keyed = QStringLiteral("Name"));

[[nodiscard]] RowTick tickOf(bool on);

/// Name, count and tick of the table's row.
[[nodiscard]] TreeRow
countedRow(const NamedRow& named, int level, const KeyOf& keyOf, RowTick tick);

} // namespace melovane::treerows
