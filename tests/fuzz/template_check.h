#pragma once

#include <QByteArray>
#include <QString>

namespace melovane::fuzz {

/// Makes export paths of an input and says what is wrong with one; empty when all is well.
///
/// The input is lines: the template, then group, album, artist, title, genre, playlist, file name
/// and track number of a row. Missing lines are empty; "\\n" inside a value stands for a line end,
/// "\\0" for a zero.
[[nodiscard]] QString checkTemplate(const QByteArray& input);

} // namespace melovane::fuzz
