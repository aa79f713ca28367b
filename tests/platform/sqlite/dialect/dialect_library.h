#pragma once

#include "platform/sqlite/dialect/dialect.h"

#include <QStringList>

#include <map>

struct sqlite3;
struct sqlite3_stmt;

namespace melovane::sqlite {

/// A small library on a real SQLite connection, with hand-made tables and a catalogue that names
/// them. The clock stands at 2024-06-15 12:30:00.
class DialectLibrary : public NameSource
{
public:
    DialectLibrary();
    ~DialectLibrary() override;

    [[nodiscard]] std::optional<Source> find(const QString& name) const override;

    void addQuery(const QString& name, const QString& sql);

    /// Translates and runs. Rows joined by line feeds, cells by "|", null as "-".
    [[nodiscard]] QString run(const QString& statement);
    [[nodiscard]] QString run(const QString& statement, const QStringList& parameters);

    /// Rows of a keyed select read the long way: keys first, then row by row.
    [[nodiscard]] QString runByKeys(const Translation& translation,
                                    const QStringList& parameters = {});

    /// Runs SQLite text as it stands.
    [[nodiscard]] QString raw(const QString& sql, const QStringList& parameters = {});

    /// True when SQLite accepts the text; otherwise its message is kept.
    [[nodiscard]] bool prepares(const QString& sql);

    [[nodiscard]] const QString& message() const { return m_message; }

private:
    void addTable(const QString& name, std::vector<FieldDef> fields);
    [[nodiscard]] QString rowsOf(sqlite3_stmt* statement);

    sqlite3* m_connection = nullptr;
    std::map<QString, Source> m_sources;
    QString m_message;
};

[[nodiscard]] FieldDef textField(const QString& name, int size = 255);
[[nodiscard]] FieldDef field(const QString& name, FieldType type);
[[nodiscard]] FieldDef autoNumber(const QString& name);

} // namespace melovane::sqlite
