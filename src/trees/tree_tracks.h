#pragma once

#include <QString>
#include <QStringList>

#include <optional>

namespace melovane {

class Database;

/// The tracks that rows of the library tree stand for.
namespace treetracks {

/// The condition of `db_all` that a click on the row means, without brackets around it. Nothing for
/// rows that stand for no tracks.
[[nodiscard]] std::optional<QString> condition(const QString& key);

/// The same for several rows: the tracks of any of them. Nothing when none stands for tracks.
[[nodiscard]] std::optional<QString> condition(const QStringList& keys);

struct Tracks
{
    QStringList fids;
    QStringList files; ///< folder and name as they are stored
};

/// Tracks that are neither deleted nor missing, in the order that albums have them. The entries of
/// a single playlist keep their own. \throws DbError
[[nodiscard]] Tracks read(Database& database, const QStringList& keys);

} // namespace treetracks

} // namespace melovane
