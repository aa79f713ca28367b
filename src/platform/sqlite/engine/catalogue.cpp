#include "platform/sqlite/engine/catalogue.h"

#include "platform/db/db_fault.h"
#include "platform/sqlite/dialect/stored_text.h"
#include "platform/sqlite/engine/sqlite_error.h"
#include "platform/sqlite/engine/table_reader.h"

#include <QDir>
#include <QFileInfo>

namespace melovane::sqlite {

namespace {

using namespace Qt::Literals::StringLiterals;

constexpr auto kDatabaseKey = "DATABASE="_L1;

CatalogueObject::Kind kindOf(const QString& letter)
{
    if (letter == "L"_L1) {
        return CatalogueObject::Kind::Link;
    }
    return letter == "Q"_L1 ? CatalogueObject::Kind::Query : CatalogueObject::Kind::Table;
}

[[noreturn]] void throwNotFound(const QString& name)
{
    throw dbError(DbFault::SourceNotFound, name);
}

} // namespace

QString pathOfConnect(const QString& connect)
{
    for (const QString& part : connect.split(u';')) {
        if (part.startsWith(kDatabaseKey, Qt::CaseInsensitive)) {
            // A path may hold the separator; it is the last thing in the text.
            return connect.sliced(connect.indexOf(part) + kDatabaseKey.size());
        }
    }
    return {};
}

void Catalogue::refresh()
{
    const qint64 dataVersion = m_connection.number(u"PRAGMA main.data_version"_s);
    if (m_dataVersion == dataVersion) {
        return;
    }
    const qint64 stamp = m_connection.number(u"PRAGMA main.schema_version"_s) * 0x100000000 +
                         m_connection.number(u"PRAGMA main.user_version"_s);
    if (std::exchange(m_stamp, stamp) != stamp) {
        invalidate();
    }
    // Last: a failed look must be taken again.
    m_dataVersion = dataVersion;
}

void Catalogue::invalidate()
{
    ++m_version;
    m_dataVersion = -1;
    m_loaded = false;
    m_objects.clear();
    m_byName.clear();
    m_tables.clear();
    m_linkedTables.clear();
}

const std::vector<CatalogueObject>& Catalogue::objects() const
{
    load();
    return m_objects;
}

const CatalogueObject* Catalogue::object(const QString& name) const
{
    load();
    const auto found = m_byName.constFind(nameKey(name));
    return found == m_byName.cend() ? nullptr : &m_objects[*found];
}

void Catalogue::load() const
{
    if (m_loaded) {
        return;
    }
    // A reading that failed half-way must leave nothing behind.
    m_objects.clear();
    m_byName.clear();
    QStringList linkedFiles;
    const auto statement = m_connection.statements().take(
        u"SELECT kind, name, sql, type, connect, source FROM main.mlv_object ORDER BY ord"_s);
    while (statement->step()) {
        CatalogueObject object;
        object.kind = kindOf(statement->text(0));
        object.name = statement->text(1);
        object.sql = statement->text(2);
        object.type = QueryType(int(statement->number(3)));
        object.connect = statement->text(4);
        object.source = statement->text(5);
        if (object.kind == CatalogueObject::Kind::Link) {
            linkedFiles.append(linkedFile(object.connect));
        }
        m_byName.insert(nameKey(object.name), m_objects.size());
        m_objects.push_back(std::move(object));
    }
    m_loaded = true;
    // What no link leads to any more may lie on a medium that somebody wants to take out.
    m_attachments.keepOnly(linkedFiles);
}

const TableDef& Catalogue::localTable(const QString& name) const
{
    const QString key = nameKey(name);
    if (!m_tables.contains(key)) {
        std::optional<TableDef> table = readTable(m_connection, u"main"_s, name);
        if (!table) {
            throwNotFound(name);
        }
        m_tables.insert(key, *std::move(table));
    }
    return m_tables[key];
}

QString Catalogue::linkedFile(const QString& connect) const
{
    const QDir folder = QFileInfo(m_connection.path()).absoluteDir();
    return QDir::cleanPath(folder.absoluteFilePath(pathOfConnect(connect)));
}

Source Catalogue::linkSource(const CatalogueObject& link) const
{
    const QString schema = m_attachments.schemaOf(linkedFile(link.connect));
    const qint64 version = m_attachments.versionOf(schema);
    LinkedTable& linked = m_linkedTables[schema + u'.' + nameKey(link.source)];
    if (linked.schemaVersion != version || version < 0) {
        std::optional<TableDef> table = readTable(m_connection, schema, link.source);
        if (!table) {
            throwNotFound(link.source);
        }
        linked = {version, *std::move(table)};
    }
    return {Source::Kind::Table, link.name, schema, linked.table.Name, linked.table.Fields, {}};
}

TableDef Catalogue::table(const CatalogueObject& object) const
{
    if (object.kind == CatalogueObject::Kind::Table) {
        return localTable(object.name);
    }
    const Source source = linkSource(object);
    TableDef table = m_linkedTables[source.schema + u'.' + nameKey(object.source)].table;
    table.Name = object.name;
    return table;
}

std::optional<Source> Catalogue::find(const QString& name) const
{
    const CatalogueObject* found = object(name);
    if (!found) {
        return std::nullopt;
    }
    switch (found->kind) {
    case CatalogueObject::Kind::Table:
        return Source{Source::Kind::Table,
                      found->name,
                      u"main"_s,
                      found->name,
                      localTable(found->name).Fields,
                      {}};
    case CatalogueObject::Kind::Link:
        return linkSource(*found);
    case CatalogueObject::Kind::Query:
        return Source{Source::Kind::Query, found->name, {}, {}, {}, found->sql};
    }
    return std::nullopt;
}

} // namespace melovane::sqlite
