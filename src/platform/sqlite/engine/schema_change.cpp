#include "platform/sqlite/engine/schema_change.h"

#include "platform/db/db_fault.h"
#include "platform/sqlite/dialect/stored_text.h"
#include "platform/sqlite/engine/sqlite_error.h"
#include "platform/sqlite/engine/table_maker.h"

#include <QSet>

namespace melovane::sqlite {

namespace {

using namespace Qt::Literals::StringLiterals;

/// Longest name of a table, column, index or query, in letters.
constexpr qsizetype kLongestName = 64;

void checkName(const QString& name)
{
    static const QString forbidden = u"[]`!\""_s;
    const bool ours = name.startsWith("mlv_"_L1, Qt::CaseInsensitive) ||
                      name.startsWith("sqlite_"_L1, Qt::CaseInsensitive);
    const bool bad = std::any_of(name.cbegin(), name.cend(), [](QChar sign) {
        return sign < u' ' || forbidden.contains(sign);
    });
    if (name.trimmed().isEmpty() || name.size() > kLongestName || ours || bad) {
        throw dbError(DbFault::NameInvalid, name);
    }
}

bool isAutoNumber(const FieldDef& field)
{
    return (field.Attributes & kFieldAutoNumber) != 0;
}

FieldDef* fieldOf(TableDef& table, const QString& name)
{
    for (FieldDef& field : table.Fields) {
        if (nameKey(field.Name) == nameKey(name)) {
            return &field;
        }
    }
    return nullptr;
}

FieldDef& requireField(TableDef& table, const QString& name)
{
    if (FieldDef* field = fieldOf(table, name)) {
        return *field;
    }
    throw dbError(DbFault::FieldNotThere, name, table.Name);
}

void checkFields(const TableDef& table)
{
    QSet<QString> names;
    int autoNumbers = 0;
    for (const FieldDef& field : table.Fields) {
        checkName(field.Name);
        if (names.contains(nameKey(field.Name))) {
            throw dbError(DbFault::FieldTwice, field.Name, table.Name);
        }
        names.insert(nameKey(field.Name));
        if (isAutoNumber(field) && (++autoNumbers > 1 || field.Type != FieldType::Long)) {
            throw dbError(DbFault::AutoNumberWrong, table.Name);
        }
    }
    if (names.isEmpty()) {
        throw dbError(DbFault::NoFields, table.Name);
    }
}

/// Index columns are spelled as the table spells them.
void checkIndexes(TableDef& table)
{
    QSet<QString> names;
    int keys = 0;
    for (IndexDef& index : table.Indexes) {
        checkName(index.Name);
        if (names.contains(nameKey(index.Name))) {
            throw dbError(DbFault::IndexTwice, index.Name, table.Name);
        }
        if (index.Primary && ++keys > 1) {
            throw dbError(DbFault::PrimaryTwice, table.Name);
        }
        names.insert(nameKey(index.Name));
        if (index.Fields.isEmpty()) {
            throw dbError(DbFault::IndexWithoutFields, index.Name, table.Name);
        }
        for (QString& field : index.Fields) {
            field = requireField(table, field).Name;
        }
    }
}

TableDef checkedTable(TableDef table)
{
    checkName(table.Name);
    checkFields(table);
    checkIndexes(table);
    return table;
}

} // namespace

void SchemaChange::createTable(const TableDef& definition)
{
    const TableDef table = checkedTable(definition);
    change([&] {
        requireFree(table.Name);
        TableMaker(m_connection).make(table);
        CatalogueObject object;
        object.name = table.Name;
        addObject(u"T"_s, object);
    });
}

void SchemaChange::createLink(const TableDef& link)
{
    checkName(link.Name);
    if (pathOfConnect(link.Connect).isEmpty()) {
        throw dbError(DbFault::LinkWithoutFile, link.Name);
    }
    change([&] {
        requireFree(link.Name);
        CatalogueObject object;
        object.name = link.Name;
        object.connect = u";DATABASE="_s + pathOfConnect(link.Connect);
        object.source = link.SourceTableName.isEmpty() ? link.Name : link.SourceTableName;
        addObject(u"L"_s, object);
    });
}

void SchemaChange::createQuery(const QString& name, const QString& sql, QueryType type)
{
    checkName(name);
    change([&] {
        requireFree(name);
        CatalogueObject object;
        object.name = name;
        object.sql = sql;
        object.type = type;
        addObject(u"Q"_s, object);
    });
}

void SchemaChange::dropTable(const QString& name)
{
    change([&] {
        const CatalogueObject object = require(name, false);
        if (object.kind == CatalogueObject::Kind::Table) {
            m_connection.run(u"DROP TABLE main."_s + quotedName(object.name));
        }
        removeObject(object.name);
    });
}

void SchemaChange::dropQuery(const QString& name)
{
    change([&] { removeObject(require(name, true).name); });
}

void SchemaChange::apply(const DdlAction& action)
{
    switch (action.kind) {
    case DdlAction::Kind::CreateTable:
        return createTable(action.table);
    case DdlAction::Kind::DropTable:
        return dropTable(action.table.Name);
    case DdlAction::Kind::AddColumn:
        return addColumn(action.table.Name, action.field);
    case DdlAction::Kind::AlterColumn:
        return alterColumn(action.table.Name, action.field);
    case DdlAction::Kind::DropColumn:
        return dropColumn(action.table.Name, action.field.Name);
    case DdlAction::Kind::CreateIndex:
        return createIndex(action.table.Name, action.index);
    case DdlAction::Kind::DropIndex:
        return dropIndex(action.table.Name, action.index.Name);
    }
}

void SchemaChange::addColumn(const QString& table, const FieldDef& field)
{
    change([&] {
        const TableDef before = localTable(table);
        TableDef after = before;
        after.Fields.push_back(field);
        TableMaker(m_connection).rebuild(before, checkedTable(after));
    });
}

void SchemaChange::alterColumn(const QString& table, const FieldDef& field)
{
    change([&] {
        const TableDef before = localTable(table);
        TableDef after = before;
        FieldDef& changed = requireField(after, field.Name);
        changed.Type = field.Type;
        changed.Size = field.Size;
        changed.Attributes = field.Attributes;
        TableMaker(m_connection).rebuild(before, checkedTable(after));
    });
}

void SchemaChange::dropColumn(const QString& table, const QString& name)
{
    change([&] {
        const TableDef before = localTable(table);
        TableDef after = before;
        const QString spelled = requireField(after, name).Name;
        for (const IndexDef& index : before.Indexes) {
            if (index.Fields.contains(spelled)) {
                throw dbError(DbFault::FieldInIndex, spelled, index.Name);
            }
        }
        std::erase_if(after.Fields, [&](const FieldDef& f) { return f.Name == spelled; });
        TableMaker(m_connection).rebuild(before, checkedTable(after));
    });
}

void SchemaChange::createIndex(const QString& table, const IndexDef& index)
{
    change([&] {
        TableDef after = localTable(table);
        after.Indexes.push_back(index);
        after = checkedTable(after);
        if (index.Primary) {
            // The columns of a key refuse nulls, which only a new table can say.
            TableDef before = after;
            before.Indexes.pop_back();
            TableMaker(m_connection).rebuild(before, after);
        } else {
            TableMaker(m_connection).addIndex(after, after.Indexes.back());
        }
    });
}

void SchemaChange::dropIndex(const QString& table, const QString& name)
{
    change([&] {
        const TableDef before = localTable(table);
        for (const IndexDef& index : before.Indexes) {
            if (nameKey(index.Name) == nameKey(name)) {
                TableDef after = before;
                std::erase_if(after.Indexes,
                              [&](const IndexDef& other) { return other.Name == index.Name; });
                if (index.Primary) {
                    // They refused nulls for the sake of the key.
                    for (const QString& field : index.Fields) {
                        requireField(after, field).Required = false;
                    }
                }
                TableMaker(m_connection).rebuild(before, after);
                return;
            }
        }
        throw dbError(DbFault::IndexNotThere, name, before.Name);
    });
}

void SchemaChange::change(const std::function<void()>& work)
{
    // Whatever happens, what was cached is doubtful afterwards.
    struct Forget
    {
        Catalogue& catalogue;

        ~Forget() { catalogue.invalidate(); }
    };

    WriteScope scope(m_transactions);
    m_catalogue.refresh();
    const Forget forget{m_catalogue};
    work();
    const qint64 stamp = m_connection.number(u"PRAGMA main.user_version"_s);
    m_connection.run(u"PRAGMA main.user_version=%1"_s.arg((stamp + 1) & 0x7FFFFFFF));
    scope.commit();
}

void SchemaChange::requireFree(const QString& name)
{
    if (m_catalogue.object(name)) {
        throw dbError(DbFault::NameTaken, name);
    }
}

const CatalogueObject& SchemaChange::require(const QString& name, bool query)
{
    const CatalogueObject* object = m_catalogue.object(name);
    if (!object || (object->kind == CatalogueObject::Kind::Query) != query) {
        throw dbError(DbFault::ItemNotFound, name);
    }
    return *object;
}

TableDef SchemaChange::localTable(const QString& name)
{
    const CatalogueObject* object = m_catalogue.object(name);
    if (!object || object->kind == CatalogueObject::Kind::Query) {
        throw dbError(DbFault::SourceNotFound, name);
    }
    if (object->kind == CatalogueObject::Kind::Link) {
        throw dbError(DbFault::TableOfOtherFile, name);
    }
    return m_catalogue.table(*object);
}

void SchemaChange::addObject(const QString& kind, const CatalogueObject& object)
{
    Statement statement(m_connection.handle(),
                        u"INSERT INTO main.mlv_object(kind, name, sql, type, connect, source) "
                        "VALUES(?1, ?2, ?3, ?4, ?5, ?6)"_s);
    statement.bindAll({Value(kind), Value(object.name), Value(object.sql), Value(int(object.type)),
                       Value(object.connect), Value(object.source)});
    statement.run();
}

void SchemaChange::removeObject(const QString& name)
{
    for (const QString& sql : {u"DELETE FROM main.mlv_object WHERE name=?1"_s,
                               u"DELETE FROM main.mlv_field WHERE tbl=?1"_s}) {
        Statement statement(m_connection.handle(), sql);
        statement.bind(1, Value(name));
        statement.run();
    }
}

} // namespace melovane::sqlite
