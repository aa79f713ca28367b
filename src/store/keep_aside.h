#pragma once

#include <QString>

namespace melovane {

class Files;

/// Copies a damaged file, with its journal, before it is made anew: to "name.damaged", then to
/// "name.damaged.2" and so on; the ninth copy is replaced by later ones. So nobody loses for ever
/// what a better tool could still read.
/// \return path of the copy \throws IoError
[[nodiscard]] QString keepAside(Files& files, const QString& file);

} // namespace melovane
