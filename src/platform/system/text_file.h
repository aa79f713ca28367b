#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace melovane::textfile {

/// A text of unknown encoding: by byte order mark (UTF-8, UTF-16), else UTF-8 when it is valid,
/// else Windows-1252.
[[nodiscard]] QString decode(const QByteArray& bytes);

/// Lines without their ends; CR LF, LF and CR all end a line, and an end at the end makes no
/// further line.
[[nodiscard]] QStringList lines(const QString& text);

} // namespace melovane::textfile
