#include "trees/named_rows.h"

#include "platform/db/database.h"

namespace melovane::treerows {

using namespace Qt::Literals::StringLiterals;

void walkNamed(Database& database,
               const QString& from,
               const std::function<void(const NamedRow&)>& visit,
               const QString& keyed)
{
    database.walkRows("select Name, anzahl, imgkey, favorit, "_L1 + keyed + from,
                      [&](const WalkedRow& row) { visit(NamedRow(row)); });
}

RowTick tickOf(bool on)
{
    return on ? RowTick::On : RowTick::Off;
}

TreeRow countedRow(const NamedRow& named, int level, const KeyOf& keyOf, RowTick tick)
{
    TreeRow row = treerows::row(level, {}, keyOf(named.keyed()), named.picture());
    treerows::setCounted(row, named.name(), named.count());
    row.tick = tick;
    return row;
}

} // namespace melovane::treerows
