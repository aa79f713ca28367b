#pragma once

#include "platform/sqlite/dialect/dialect.h"

#include <QStringList>

#include <map>

struct sqlite3;

namespace melovane::fuzz {

/// The tables and stored queries that ship, on an empty SQLite connection in memory. Tables of the
/// side files stand in an attached schema, as links reach them.
class ShippedNames : public sqlite::NameSource
{
public:
    ShippedNames();
    ~ShippedNames() override;

    [[nodiscard]] std::optional<sqlite::Source> find(const QString& name) const override;

    [[nodiscard]] sqlite3* connection() const { return m_connection; }

    /// Names, in lower case, of the tables that a text reaches: those whose name is a word of it,
    /// and those that stored queries reach whose name is one. Found by words alone, without asking
    /// the translator.
    [[nodiscard]] QStringList reached(const QString& text) const;

    /// Runs SQLite text as it stands. \return true when it worked
    bool run(const QString& sql);

private:
    void readTables(const QString& path);
    void readQueries(const QString& folder);
    void addTable(const QString& name, const std::vector<FieldDef>& fields);
    void addRows();

    sqlite3* m_connection = nullptr;
    std::map<QString, sqlite::Source> m_sources; ///< by name in lower case
};

} // namespace melovane::fuzz
