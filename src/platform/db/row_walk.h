#pragma once

#include <QString>

#include <functional>
#include <string_view>

namespace melovane {

/// The present row of a walk, see Database::walkRows; columns count from 0. Texts and the row
/// itself end with the visit.
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

} // namespace melovane
