#pragma once

#include "platform/qt/outline_words.h"

namespace melovane {

class ConfigObjects;

/// What a reader of the screen says of the rows of all trees.
[[nodiscard]] OutlineWords treeWords(const ConfigObjects& texts);

} // namespace melovane
