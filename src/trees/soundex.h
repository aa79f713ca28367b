#pragma once

#include <QString>
#include <QStringView>

namespace melovane {

/// The phonetic code of a word: its first letter and three digits, padded with "0". "0000" for a
/// word without letters.
///
/// Not the rule of the textbooks: "H" and "W" part two letters of one class as vowels do, while
/// what is no letter parts nothing. Umlauts are no letters here.
[[nodiscard]] QString soundexOf(QStringView word);

} // namespace melovane
