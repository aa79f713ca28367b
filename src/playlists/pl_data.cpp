#include "playlists/pl_data.h"

#include "platform/db/database.h"
#include "platform/db/db_error.h"
#include "platform/db/sql_text.h"
#include "playlists/playlist_table.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

Database& requireOpen(const std::unique_ptr<Database>& database)
{
    if (!database) {
        throw DbError(dberror::kObjectClosed, u"No database is open."_s);
    }
    return *database;
}

} // namespace

GetPLData::GetPLData(DBEngine& engine)
    : m_engine(engine)
{}

GetPLData::~GetPLData() = default;

void GetPLData::DBOpen(const QString& name)
{
    DBClose();
    m_database = m_engine.OpenDatabase(name);
}

void GetPLData::DBClose()
{
    RecClose();
    m_database.reset();
}

Recordset& GetPLData::GetDataRec(const QString& plid)
{
    Database& database = requireOpen(m_database);
    m_row = database.OpenRecordset(u"select * from pl_all where PLID="_s +
                                   sql::number(entryNumber(plid).value_or(-1)));
    return *m_row;
}

void GetPLData::RecClose()
{
    m_row.reset();
}

GetPLData::Entries GetPLData::entries(const QStringList& plids) const
{
    Database& database = requireOpen(m_database);
    Entries result;
    result.columns = columnsOf(database, kEntryTable);
    for (const QString& condition : keyConditions(result.columns.front(), entryNumbers(plids))) {
        for (const std::vector<Value>& row :
             readRows(database, kEntryTable, result.columns, condition)) {
            result.rows.insert(row.front().toInt64(), row);
        }
    }
    return result;
}

} // namespace melovane
