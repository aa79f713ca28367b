#pragma once

#include "platform/controls/grid_control.h"

#include <QStringList>

#include <vector>

namespace melovane::test {

/// Columns of a grid as a text: field, width in figures, first letter of the alignment, and
/// whether it is shown, hidden or takes the free width.
inline QString textOf(const std::vector<GridColumn>& columns)
{
    constexpr QStringView kAlignments[] = {u"L", u"C", u"R"};
    QStringList texts;
    for (const GridColumn& column : columns) {
        const QStringView state = !column.shown      ? u"hidden"
                                  : column.stretched ? u"stretched"
                                                     : u"shown";
        texts.append(QStringLiteral("%1|%2|%3|%4")
                         .arg(column.field, QString::number(column.width),
                              kAlignments[int(column.alignment)], state));
    }
    return texts.join(QChar(u' '));
}

} // namespace melovane::test
