#pragma once

#include <QDateTime>

#include <functional>

struct sqlite3;

namespace melovane::sqlite {

/// Name of the collation of every text column.
inline constexpr char kCollation[] = "MLV";

/// Begins the message of an error that a function of the dialect raises; a number of dberror, a
/// colon and the text follow: "MLV:3163:Der Text ist zu lang."
inline constexpr char kErrorMark[] = "MLV:";

/// Gives a connection the collation, `like`, and all functions that translated statements call.
/// \param now local time for `now`, `date` and `time`; asked at each call
/// \throws DbError when SQLite refuses
void registerFunctions(sqlite3* connection, const std::function<QDateTime()>& now);

} // namespace melovane::sqlite
