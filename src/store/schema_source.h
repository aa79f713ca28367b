#pragma once

#include "platform/db/definitions.h"

#include <QString>
#include <QStringList>

#include <vector>

/// The readable sources of a new database: tables, rows and stored queries as plain texts.
///
/// Readers touch no file and never throw; what they could not read is listed with its line.
namespace melovane::schema {

/// What a reader did not understand: "line 12: unknown type 'lnog'".
using Faults = QStringList;

struct Tables
{
    std::vector<TableDef> tables; ///< in the order of the text
    Faults faults;
};

/// Reads table definitions. The form is told at the head of resources/schema/tables.txt.
[[nodiscard]] Tables parseTables(const QString& text);

/// Rows of one table.
struct Rows
{
    QStringList columns;
    std::vector<std::vector<Value>> rows; ///< as wide as columns; empty cells are null
    Faults faults;
};

/// Reads rows: a line of column names, then a line per row, cells parted by "|" and cut of blanks.
///
/// An empty cell is null, two double quotes are the empty text. "true" and "false" fill Yes/No
/// columns. An indented line goes on with the row above it; "#" at the beginning of a line makes a
/// comment.
/// \param table gives the types of the columns
[[nodiscard]] Rows parseRows(const QString& text, const TableDef& table);

/// The statement of a stored query: the text without lines that begin with "--" and without line
/// ends at its end. Everything else stays as it is.
[[nodiscard]] QString queryStatement(const QString& text);

} // namespace melovane::schema
