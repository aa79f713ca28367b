#pragma once

#include "platform/db/database.h"

#include <functional>
#include <string_view>

namespace melovane {

/// The present row of a walk; columns count from 0. Texts and the row itself end with the visit.
class WalkedRow
{
public:
    virtual ~WalkedRow() = default;

    [[nodiscard]] virtual bool isNull(int column) const = 0;
    /// True for a cell that is kept as a number.
    [[nodiscard]] virtual bool isNumber(int column) const = 0;
    /// 0 for null; a text reads as the number at its beginning.
    [[nodiscard]] virtual qint64 number(int column) const = 0;
    [[nodiscard]] virtual double real(int column) const = 0;
    /// The text as the file keeps it, for telling texts apart without a copy. Empty for null.
    [[nodiscard]] virtual std::string_view bytes(int column) const = 0;
    [[nodiscard]] virtual QString text(int column) const = 0;
};

using RowVisit = std::function<void(const WalkedRow&)>;

/// What a database is besides, when it can give the rows of a statement without making a set.
class RowWalk
{
public:
    virtual ~RowWalk() = default;

    /// \see walkRows
    virtual void walk(const QString& statement, const RowVisit& visit) = 0;
};

/// Shows every row of a select statement once, in its order, as the file holds them at one moment.
///
/// For reading whole tables: neither keys nor rows are kept, so it costs a fraction of a Recordset.
/// The visit changes nothing in the tables that are walked. What it throws ends the walk.
/// \throws DbError
void walkRows(Database& database, const QString& statement, const RowVisit& visit);

} // namespace melovane
