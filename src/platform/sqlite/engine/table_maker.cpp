#include "platform/sqlite/engine/table_maker.h"

#include "platform/sqlite/dialect/stored_text.h"
#include "platform/sqlite/engine/columns.h"
#include "platform/sqlite/engine/table_reader.h"

namespace melovane::sqlite {

namespace {

using namespace Qt::Literals::StringLiterals;

/// The name under which a table is rebuilt before it takes the place of the old one.
const QString kRebuiltName = u"mlv_rebuilt"_s;

bool isAutoNumber(const FieldDef& field)
{
    return (field.Attributes & kFieldAutoNumber) != 0;
}

bool inPrimaryKey(const TableDef& table, const QString& field)
{
    return std::any_of(table.Indexes.begin(), table.Indexes.end(), [&](const IndexDef& index) {
        return index.Primary && index.Fields.contains(field);
    });
}

QString createTableSql(const TableDef& table, const QString& name)
{
    QStringList columns;
    if (std::none_of(table.Fields.begin(), table.Fields.end(), isAutoNumber)) {
        columns.append(quotedName(kRowColumn) + u" INTEGER PRIMARY KEY AUTOINCREMENT"_s);
    }
    for (const FieldDef& field : table.Fields) {
        columns.append(columnClause(table.Name, field, inPrimaryKey(table, field.Name)));
    }
    return u"CREATE TABLE main.%1(%2)"_s.arg(quotedName(name), columns.join(u", "_s));
}

/// A key that is the auto-number alone is held by the table itself; its index stays empty and only
/// keeps the name.
bool isHeldByTable(const TableDef& table, const IndexDef& index)
{
    return index.Unique && index.Fields.size() == 1 &&
           std::any_of(table.Fields.begin(), table.Fields.end(), [&](const FieldDef& field) {
               return isAutoNumber(field) && field.Name == index.Fields.front();
           });
}

QString createIndexSql(const TableDef& table, IndexDef index)
{
    index.Unique = index.Unique || index.Primary;
    QStringList columns;
    for (const QString& field : index.Fields) {
        columns.append(quotedName(field));
    }
    return u"CREATE %1INDEX main.%2 ON %3(%4)%5"_s.arg(
        index.Unique ? u"UNIQUE "_s : QString(), quotedName(storedIndexName(table.Name, index)),
        quotedName(table.Name), columns.join(u", "_s),
        isHeldByTable(table, index) ? u" WHERE 0"_s : QString());
}

} // namespace

void TableMaker::make(const TableDef& table)
{
    createTable(table, table.Name);
    createIndexes(table);
    writeProperties(table);
}

void TableMaker::addIndex(const TableDef& table, const IndexDef& index)
{
    m_connection.run(createIndexSql(table, index));
}

void TableMaker::createTable(const TableDef& table, const QString& name)
{
    m_connection.run(createTableSql(table, name));
}

void TableMaker::createIndexes(const TableDef& table)
{
    for (const IndexDef& index : table.Indexes) {
        addIndex(table, index);
    }
}

void TableMaker::writeProperties(const TableDef& table)
{
    {
        Statement clear(m_connection.handle(), u"DELETE FROM main.mlv_field WHERE tbl=?1"_s);
        clear.bind(1, Value(table.Name));
        clear.run();
    }
    Statement insert(m_connection.handle(), u"INSERT INTO main.mlv_field(tbl, name, dflt, zerolen) "
                                            "VALUES(?1, ?2, ?3, ?4)"_s);
    for (const FieldDef& field : table.Fields) {
        if (!field.DefaultValue.isEmpty() || !field.AllowZeroLength) {
            insert.bindAll({Value(table.Name), Value(field.Name), Value(field.DefaultValue),
                            Value(field.AllowZeroLength ? 1 : 0)});
            insert.run();
        }
    }
}

/// SQLite changes no column in place: the rows move to a new table under their old row numbers.
void TableMaker::rebuild(const TableDef& before, const TableDef& after)
{
    const QStringList triggers = triggersOf(before.Name);
    const qint64 sequence = sequenceOf(before.Name);
    createTable(after, kRebuiltName);
    copyRows(before, after);
    m_connection.run(u"DROP TABLE main."_s + quotedName(before.Name));
    m_connection.run(u"ALTER TABLE main.%1 RENAME TO %2"_s.arg(quotedName(kRebuiltName),
                                                               quotedName(after.Name)));
    setSequence(after.Name, sequence);
    createIndexes(after);
    for (const QString& trigger : triggers) {
        m_connection.run(trigger);
    }
    writeProperties(after);
}

void TableMaker::copyRows(const TableDef& before, const TableDef& after)
{
    // One pair of columns per column that both have; first the row number.
    QStringList from{u"_rowid_"_s};
    QStringList to{u"_rowid_"_s};
    std::vector<const FieldDef*> converted{nullptr};
    for (const FieldDef& field : after.Fields) {
        const auto old =
            std::find_if(before.Fields.begin(), before.Fields.end(),
                         [&](const FieldDef& candidate) { return candidate.Name == field.Name; });
        if (old == before.Fields.end()) {
            continue;
        }
        if (isAutoNumber(field)) {
            from.front() = quotedName(old->Name);
            continue;
        }
        from.append(quotedName(field.Name));
        to.append(quotedName(field.Name));
        const bool same = old->Type == field.Type && old->Size == field.Size;
        converted.push_back(same ? nullptr : &field);
    }
    QStringList marks;
    for (qsizetype i = 1; i <= to.size(); ++i) {
        marks.append(u"?%1"_s.arg(i));
    }
    Statement read(m_connection.handle(), u"SELECT %1 FROM main.%2 ORDER BY _rowid_"_s.arg(
                                              from.join(u", "_s), quotedName(before.Name)));
    Statement write(m_connection.handle(),
                    u"INSERT INTO main.%1(%2) VALUES(%3)"_s.arg(
                        quotedName(kRebuiltName), to.join(u", "_s), marks.join(u", "_s)));
    while (read.step()) {
        for (std::size_t i = 0; i < converted.size(); ++i) {
            const int column = int(i);
            if (converted[i]) {
                write.bind(column + 1, storable(*converted[i], read.plainValue(column)));
            } else {
                write.bindCell(column + 1, read, column);
            }
        }
        write.run();
    }
}

QStringList TableMaker::triggersOf(const QString& table)
{
    QStringList triggers;
    Statement statement(m_connection.handle(),
                        u"SELECT sql FROM main.sqlite_schema WHERE type='trigger' AND "
                        "tbl_name=?1 ORDER BY rowid"_s);
    statement.bind(1, Value(table));
    while (statement.step()) {
        triggers.append(statement.text(0));
    }
    return triggers;
}

qint64 TableMaker::sequenceOf(const QString& table)
{
    Statement statement(m_connection.handle(),
                        u"SELECT seq FROM main.sqlite_sequence WHERE name=?1"_s);
    statement.bind(1, Value(table));
    return statement.step() ? statement.number(0) : 0;
}

/// Numbers that were given once are never given again, rebuilt or not.
void TableMaker::setSequence(const QString& table, qint64 value)
{
    for (const QString& sql : {u"DELETE FROM main.sqlite_sequence WHERE name=?1"_s,
                               u"INSERT INTO main.sqlite_sequence(name, seq) VALUES(?1, ?2)"_s}) {
        Statement statement(m_connection.handle(), sql);
        statement.bind(1, Value(table));
        if (sql.startsWith(u'I')) {
            statement.bind(2, Value(value));
        }
        statement.run();
    }
}

} // namespace melovane::sqlite
