#include "platform/sqlite/engine/table_reader.h"

#include "platform/sqlite/dialect/stored_text.h"
#include "platform/sqlite/engine/columns.h"

#include <QHash>

namespace melovane::sqlite {

namespace {

using namespace Qt::Literals::StringLiterals;

/// What mlv_field says about a column.
struct Properties
{
    QString defaultValue;
    bool allowZeroLength = true;
};

QString readName(Connection& connection, const QString& schema, const QString& name)
{
    const auto statement = connection.statements().take(
        u"SELECT name FROM %1.sqlite_schema WHERE type='table' AND name=?1 COLLATE NOCASE"_s.arg(
            schema));
    statement->bind(1, Value(name));
    return statement->step() ? statement->text(0) : QString();
}

QHash<QString, Properties>
readProperties(Connection& connection, const QString& schema, const QString& table)
{
    QHash<QString, Properties> properties;
    const auto statement = connection.statements().take(
        u"SELECT name, dflt, zerolen FROM %1.mlv_field WHERE tbl=?1"_s.arg(schema));
    statement->bind(1, Value(table));
    while (statement->step()) {
        properties.insert(nameKey(statement->text(0)),
                          {statement->text(1), statement->number(2) != 0});
    }
    return properties;
}

std::vector<FieldDef>
readFields(Connection& connection, const QString& schema, const QString& table)
{
    const QHash<QString, Properties> properties = readProperties(connection, schema, table);
    std::vector<FieldDef> fields;
    const auto statement = connection.statements().take(
        u"SELECT name, type, \"notnull\", pk FROM pragma_table_xinfo(?1, ?2)"_s);
    statement->bind(1, Value(table));
    statement->bind(2, Value(schema));
    while (statement->step()) {
        const QString name = statement->text(0);
        if (name == kRowColumn) {
            continue;
        }
        FieldDef field = fieldOfType(statement->text(1));
        field.Name = name;
        field.Required = statement->number(2) != 0;
        if (statement->number(3) != 0) {
            field.Attributes |= kFieldAutoNumber;
        }
        if (const auto found = properties.constFind(nameKey(name)); found != properties.cend()) {
            field.DefaultValue = found->defaultValue;
            field.AllowZeroLength = found->allowZeroLength;
        }
        fields.push_back(field);
    }
    return fields;
}

QStringList
readIndexFields(Connection& connection, const QString& schema, const QString& storedName)
{
    QStringList fields;
    const auto statement =
        connection.statements().take(u"SELECT name FROM pragma_index_info(?1, ?2)"_s);
    statement->bind(1, Value(storedName));
    statement->bind(2, Value(schema));
    while (statement->step()) {
        fields.append(statement->text(0));
    }
    return fields;
}

std::vector<IndexDef>
readIndexes(Connection& connection, const QString& schema, const QString& table)
{
    std::vector<IndexDef> indexes;
    const auto statement = connection.statements().take(
        u"SELECT name FROM %1.sqlite_schema WHERE type='index' AND tbl_name=?1 ORDER BY rowid"_s
            .arg(schema));
    statement->bind(1, Value(table));
    while (statement->step()) {
        const QString stored = statement->text(0);
        if (!stored.startsWith(table + u'|') || stored.size() < table.size() + 3) {
            continue;
        }
        IndexDef index;
        index.Name = stored.sliced(table.size() + 3);
        index.Primary = stored[table.size() + 1] == u'P';
        index.Unique = index.Primary || stored[table.size() + 1] == u'U';
        index.Fields = readIndexFields(connection, schema, stored);
        indexes.push_back(index);
    }
    return indexes;
}

} // namespace

std::optional<TableDef>
readTable(Connection& connection, const QString& schema, const QString& name)
{
    TableDef table;
    table.Name = readName(connection, schema, name);
    if (table.Name.isEmpty()) {
        return std::nullopt;
    }
    table.Fields = readFields(connection, schema, table.Name);
    table.Indexes = readIndexes(connection, schema, table.Name);
    return table;
}

QString storedIndexName(const QString& table, const IndexDef& index)
{
    const QChar kind = index.Primary ? u'P' : index.Unique ? u'U' : u'I';
    return table + u'|' + kind + u'|' + index.Name;
}

} // namespace melovane::sqlite
