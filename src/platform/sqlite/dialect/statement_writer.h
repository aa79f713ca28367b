#pragma once

#include "platform/sqlite/dialect/binder.h"

/// Last step of the dialect: whole statements.
namespace melovane::sqlite::dialect {

/// What kind of statement it is by its words alone.
[[nodiscard]] QueryType queryTypeOf(const Statement& statement);

/// Translates one statement; used once.
class StatementWriter
{
public:
    /// \param statement its text, for the places of faults
    /// \param allowParameters see translate()
    StatementWriter(const QString& statement, const NameSource& names, bool allowParameters)
        : m_in(statement, names, allowParameters)
    {}

    /// \param statement the tree of that text
    [[nodiscard]] Translation translated(const Statement& statement);

private:
    void run(const Statement& statement);
    void executeStatement(const Statement& statement);
    void selectStatement(const Statement& statement);
    void makeTableStatement(const Statement& statement);
    void takeResult(const std::vector<ColumnRef>& columns);

    // writer_action.cpp
    void insertStatement(const Statement& statement);
    void updateStatement(const Statement& statement);
    void deleteStatement(const Statement& statement);
    [[nodiscard]] static QString insertSource(const std::vector<ColumnRef>& columns,
                                              const SelectSql& rows,
                                              const QString& defaults);
    [[nodiscard]] std::vector<ColumnRef>
    insertColumns(const Statement& statement, Scope& scope, const std::vector<ColumnRef>* offered);
    [[nodiscard]] Sql whereOf(const Statement& statement, Scope& scope);

    Translator m_in; ///< names, expressions and selects of the statement
    Translation m_result;
};

} // namespace melovane::sqlite::dialect
