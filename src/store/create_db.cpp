#include "store/create_db.h"

#include "platform/db/database.h"
#include "platform/system/files.h"

#include <array>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

void cloneTable(const TableDef& original, const QString& name, Database& target)
{
    TableDef copy;
    copy.Name = name;
    copy.Indexes = original.Indexes;
    for (FieldDef field : original.Fields) {
        field.AllowZeroLength = field.AllowZeroLength || field.Type == FieldType::Text;
        copy.Fields.push_back(std::move(field));
    }
    target.tableDefs().Append(copy);
}

void replaceQuery(Database& database, const QString& name, const QString& statement)
{
    Transaction change(database);
    if (database.queryDefs().Contains(name)) {
        database.queryDefs().Delete(name);
    }
    database.CreateQueryDef(name, statement)->Close();
    change.commit();
}

} // namespace

MLVCreateDB::MLVCreateDB(DBEngine& engine, Files& files)
    : m_engine(engine)
    , m_files(files)
{}

void MLVCreateDB::CreateDB()
{
    m_engine.Release(targetFile);
    // What the journal of an old file holds must never be played into the new one.
    for (const auto suffix : std::array{""_L1, "-wal"_L1, "-shm"_L1, "-journal"_L1}) {
        if (m_files.fileExists(targetFile + suffix)) {
            m_files.remove(targetFile + suffix);
        }
    }
    m_engine.Workspaces(0)
        .CreateDatabase(targetFile, QStringView(kDatabaseLocale).toString())
        ->Close();
}

void MLVCreateDB::ClonDBStruktur()
{
    const auto source = m_engine.OpenDatabase(sourceFile);
    const auto target = m_engine.OpenDatabase(targetFile);
    for (const TableDef& table : source->tableDefs().All()) {
        if (table.Attributes == 0) {
            cloneTable(table, table.Name, *target);
        }
    }
    for (const QString& name : source->queryDefs().Names()) {
        const auto query = source->queryDefs().Item(name);
        if (query->Type() != QueryType::Update) {
            replaceQuery(*target, name, query->SQL());
        }
    }
}

void MLVCreateDB::ClonTableStrukt(const QString& templateName, const QString& newName)
{
    const auto target = m_engine.OpenDatabase(targetFile);
    const auto source = m_engine.OpenDatabase(sourceFile);
    const TableDef original = source->tableDefs().Item(templateName);
    if (original.Attributes == 0) {
        cloneTable(original, newName.isEmpty() ? original.Name : newName, *target);
    }
}

void MLVCreateDB::ClonQuerydef(const QString& name)
{
    const auto source = m_engine.OpenDatabase(sourceFile);
    CreateQuerydef(name, source->queryDefs().Item(name)->SQL());
}

void MLVCreateDB::CreateQuerydef(const QString& name, const QString& statement)
{
    replaceQuery(*m_engine.OpenDatabase(targetFile), name, statement);
}

void MLVCreateDB::LinkTable(const QString& name, const QString& /*second*/)
{
    const auto target = m_engine.OpenDatabase(targetFile);
    if (target->tableDefs().Contains(name)) {
        target->tableDefs().Delete(name);
    }
    TableDef link;
    link.Name = name;
    link.Attributes = kTableLinked;
    link.Connect = u";Database="_s + sourceFile;
    link.SourceTableName = name;
    target->tableDefs().Append(link);
}

} // namespace melovane
