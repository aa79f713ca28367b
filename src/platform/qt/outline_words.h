#pragma once

#include <QString>

namespace melovane {

/// What a reader of the screen says of a row of an outline beside its text; what is empty is not
/// said.
struct OutlineWords
{
    QString level; ///< in front of the number, from 1
    QString open;
    QString folded;
    QString ticked;
    QString unticked;
};

} // namespace melovane
