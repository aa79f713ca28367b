#pragma once

#include <QString>
#include <QStringList>

namespace melovane {

/// A drag text taken apart: "TYPE:id,id,id" or "TYPE:id,id,id:number".
struct DragList
{
    QString type;    ///< without its colon
    QStringList ids; ///< in the order of the text; empty when it holds none at all
    int extra = 0;   ///< third field of exactly three; kept, asked for by nobody
};

/// Never fails: a text of another form has no ids. A piece between two commas stays an id, also an
/// empty one: it is unknown later, and keeps its place.
[[nodiscard]] DragList parseDragList(const QString& text);

} // namespace melovane
