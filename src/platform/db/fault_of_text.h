#pragma once

#include <QString>

namespace melovane {

/// The number of the error that says this sentence, 0 for a text that no fault of the engine has.
///
/// For those who are handed the sentence alone and tell it in the user's language.
[[nodiscard]] int errorNumberOf(const QString& sentence);

} // namespace melovane
