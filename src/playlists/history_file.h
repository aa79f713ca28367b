#pragma once

#include "platform/system/path_text.h"

namespace melovane {

/// The side file that holds the steps of undo of a library.
[[nodiscard]] inline QString historyFileOf(const QString& library)
{
    return path::join(path::parent(library), path::baseName(library) + QStringLiteral(".undo.mdb"));
}

} // namespace melovane
