#pragma once

#include <QByteArray>
#include <QString>

/// The lines of the two scripts in a recycle folder, which put files back where they were.
namespace melovane::recyclescript {

/// Name of the script for a command shell: keep, other programs of the suite append to it.
inline constexpr QStringView kBatch = u"ReMoveFiles.bat";
/// Name of the script that `sh` runs.
inline constexpr QStringView kShell = u"ReMoveFiles.sh";

/// The line of kBatch for one file, with its line end.
///
/// \param recycled where the file lies now \param oldFolder where it belongs
///
/// What no file name of that system can hold, quotes and control characters, is written as "?",
/// which its `Move` takes for any one letter: so a name can neither end its quotes nor begin a line
/// of its own. A percent sign is doubled, as a script needs it.
[[nodiscard]] QString batchLine(const QString& recycled, const QString& oldFolder);

/// What stands at the beginning of kShell: it never replaces a file, makes the folders it needs,
/// passes over what is back already, and ends with an error for a file that stays.
[[nodiscard]] QByteArray shellHead();

/// The line of kShell for one file, with its line end; a name with a line feed takes several lines.
/// \param recycled \param original full names as the system has them, byte by byte
[[nodiscard]] QByteArray shellLine(const QByteArray& recycled, const QByteArray& original);

} // namespace melovane::recyclescript
