#pragma once

#include "platform/sqlite/dialect/ast.h"
#include "platform/sqlite/dialect/token_reader.h"

#include <functional>

namespace melovane::sqlite::dialect {

/// Reads the statements that change the catalogue, behind their first word, and the types of
/// columns. They hold no expression but the value of a default, which is kept as it is written.
class DdlParser
{
public:
    /// \param reader stands at what is read; outlives it
    /// \param skipValue reads over the value of a default
    DdlParser(TokenReader& reader, std::function<void()> skipValue)
        : m_reader(reader)
        , m_skipValue(std::move(skipValue))
    {}

    [[nodiscard]] Statement create();
    [[nodiscard]] Statement drop();
    [[nodiscard]] Statement alter();

    /// Sets type, size and attributes.
    void columnType(FieldDef& field);

private:
    [[nodiscard]] Statement createTable();
    [[nodiscard]] Statement createIndex(bool unique);
    [[nodiscard]] FieldDef columnDefinition(TableDef* table);
    void columnConstraints(FieldDef& field, TableDef* table);
    void tableConstraint(TableDef& table);
    [[nodiscard]] QStringList columnNames();

    TokenReader& m_reader;
    std::function<void()> m_skipValue;
};

} // namespace melovane::sqlite::dialect
