#pragma once

#include <QString>
#include <QStringList>
#include <QStringView>

/// What the path line of a list file may mean as a path. Pure functions; the disk decides.
namespace melovane::m3uplace {

/// The path without "." and with each ".." taken back, separators as they are; a root stays.
[[nodiscard]] QString cleaned(const QString& path);

/// The readings of a path line, the likeliest first: as it stands, as a "file:" address, with
/// "%20" read as a blank, and with its "|" as a sign of the name.
///
/// \param file the line up to its first "|" \param line all of it
[[nodiscard]] QStringList readings(const QString& file, const QString& line);

} // namespace melovane::m3uplace
