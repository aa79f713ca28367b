#pragma once

#include "platform/db/value.h"

#include <optional>
#include <vector>

namespace melovane::sqlite {

/// An `insert ... values (...)` whose values are pasted in, taken apart: the same statement with
/// parameters in their place, and the values.
///
/// Such statements come by the thousand and no two are alike, while without their values all are
/// one: translated and compiled once, they cost a tenth.
struct PastedInsert
{
    QString statement;
    std::vector<Value> values;
};

/// Nothing for any other statement, also for an insert with a value that is no plain text in
/// quotes, no whole or decimal number and not null: those mean more than they say.
[[nodiscard]] std::optional<PastedInsert> takeApart(const QString& statement);

} // namespace melovane::sqlite
