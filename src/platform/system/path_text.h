#pragma once

#include <QStringList>
#include <QStringView>

/// Paths as texts. The only place that knows separators: a path is read with "/" and "\" alike and
/// keeps the separator that it was stored with, so a library that came from another system keeps
/// `C:\Music\` beside `/home/u/Music/`. Touches no disk.
namespace melovane::path {

/// The separator of this platform.
inline constexpr QChar kSeparator = u'/';

[[nodiscard]] bool isSeparator(QChar sign);

/// The separator that the text uses: the first one found, else the platform's.
[[nodiscard]] QChar separatorOf(QStringView path);

/// Folder and name with exactly one separator between them, that of the folder. An empty side gives
/// the other one.
[[nodiscard]] QString join(QStringView folder, QStringView name);

/// The text with one separator at its end; an empty text stays empty.
[[nodiscard]] QString withSeparator(QStringView folder);
/// The text without separators at its end; a root ("/", "C:\") stays as it is.
[[nodiscard]] QString withoutSeparator(QStringView folder);

/// What stands before the last component, without its separator; roots keep theirs ("/a" gives
/// "/"). Empty when there is no separator.
[[nodiscard]] QString parent(QStringView path);
/// The last component.
[[nodiscard]] QString fileName(QStringView path);
/// The name without its last extension.
[[nodiscard]] QString baseName(QStringView path);
/// The last extension without its dot, empty for none.
[[nodiscard]] QString extension(QStringView path);

/// Folder names and file name in order; a root is the first component ("/", "C:").
[[nodiscard]] QStringList components(QStringView path);

[[nodiscard]] bool isAbsolute(QStringView path);

/// The path with this platform's separators, for handing it to the system.
[[nodiscard]] QString toSystem(QStringView path);

} // namespace melovane::path
