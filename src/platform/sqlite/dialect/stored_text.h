#pragma once

#include <QByteArray>
#include <QString>

/// Texts on their way into and out of a file.
namespace melovane::sqlite {

/// UTF-8 as the file keeps it. Zero characters are dropped, since a text ends there for half of
/// SQLite. A surrogate without its partner, which damaged tags hold, becomes its three bytes and is
/// so read back unharmed.
[[nodiscard]] QByteArray toBytes(QStringView text);

/// The opposite of toBytes; other bytes that are no UTF-8 read as U+FFFD.
[[nodiscard]] QString fromBytes(const char* bytes, qsizetype size);

/// A name in double quotes, for use in a statement.
[[nodiscard]] QString quotedName(QStringView name);

/// The form in which names of tables, columns and queries are compared.
[[nodiscard]] QString nameKey(QStringView name);

} // namespace melovane::sqlite
