#pragma once

#include <QString>

namespace melovane {

/// How the suite is, as the console's window says it, \see healthOf; in the language of the
/// settings. The last messages are those that the console tells when it is asked.
[[nodiscard]] QString suiteHealth();

} // namespace melovane
