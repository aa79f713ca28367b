#pragma once

#include <QString>
#include <QStringList>

#include <optional>
#include <ostream>
#include <vector>

namespace melovane::test {

/// One statement of the dialect and what it does to the small library.
///
/// The table is a folder of texts. A line tells by its first sign what it is:
///
///   # a remark
///   ? a statement
///   @ names of its columns, joined by commas
///   | a row of it: cells joined by "|", null as "null"
///   = rows that it touched
///   : a select to look with afterwards; its rows follow
///   ! number of the error, then a word that the error's text holds
struct StatementCase
{
    QString file; ///< without folder and ending
    int line = 0;
    QString statement;
    QString columns; ///< empty: not looked at
    QStringList rows;
    std::optional<int> affected;
    QString look;
    int error = 0;
    QString errorWord;
};

void PrintTo(const StatementCase& value, std::ostream* stream);

/// All cases of the table, file by file.
[[nodiscard]] std::vector<StatementCase> readStatementTable();

/// The functions that the page about the dialect lists.
[[nodiscard]] QStringList describedFunctions();

/// The statements that make the small library, to be run in this order on a fresh one.
[[nodiscard]] QStringList smallLibrary();

} // namespace melovane::test
