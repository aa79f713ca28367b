#pragma once

#include "care/library_check.h"

namespace melovane {

class ConfigObjects;

/// What was found, a line per finding, as a person reads it.
[[nodiscard]] QStringList reportLines(const ConfigObjects& texts,
                                      const std::vector<Finding>& findings);

} // namespace melovane
