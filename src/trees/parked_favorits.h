#pragma once

#include "platform/db/value.h"

#include <QString>
#include <QStringList>

#include <vector>

namespace melovane {

/// A favourite of a tree table while its table is refilled.
struct ParkedFavorit
{
    QStringList names; ///< what finds its row again: name, genre and name, or folder
    QString stamp;     ///< as it goes into a statement: "#yyyy-mm-dd hh:mm:ss#", or "null"

    bool operator==(const ParkedFavorit&) const = default;
};

/// The stamp of a favourite as it is parked.
[[nodiscard]] QString parkedStamp(const Value& tstamp);

/// The text of `~tree.tmp`: a record per favourite, fields parted by commas, names in double quotes
/// with quotes inside doubled. A line end in a name stays as it is.
[[nodiscard]] QString parkedText(const std::vector<ParkedFavorit>& favorits);

/// What such a text holds. Empty lines are skipped; the first record with another number of names,
/// or a stamp that is none, ends the read, so nothing but a stamp gets into a statement.
[[nodiscard]] std::vector<ParkedFavorit> readParked(const QString& text, int nameCount);

} // namespace melovane
