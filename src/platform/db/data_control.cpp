#include "platform/db/data_control.h"

#include "platform/db/db_error.h"

namespace melovane {

DataControl::DataControl(DBEngine& engine, QObject* parent)
    : GridSource(parent)
    , m_engine(engine)
{}

DataControl::~DataControl() = default;

void DataControl::SetDatabaseName(const QString& name)
{
    if (name != m_databaseName) {
        closeDatabase();
        m_databaseName = name;
    }
}

void DataControl::SetRecordSource(const QString& statement)
{
    m_recordSource = statement;
}

std::unique_ptr<melovane::Recordset> DataControl::openSet()
{
    if (m_database) {
        try {
            return m_database->OpenRecordset(m_recordSource);
        } catch (const DbError& error) {
            if (error.number() != dberror::kObjectClosed) {
                throw;
            }
        }
    }
    // First use, or somebody closed the database that he was given.
    auto database = m_engine.OpenDatabase(m_databaseName);
    auto set = database->OpenRecordset(m_recordSource);
    m_database = std::move(database);
    return set;
}

void DataControl::Refresh()
{
    auto set = openSet();
    auto painter = set->Clone();
    m_painter = std::move(painter);
    m_set = std::move(set);
    emit refreshed();
}

void DataControl::closeDatabase()
{
    if (!m_database) {
        return;
    }
    m_painter.reset();
    m_set.reset();
    m_database.reset();
    emit refreshed();
}

qint64 DataControl::rowCount() const
{
    return m_set ? m_set->rowCount() : 0;
}

int DataControl::columnCount() const
{
    return m_set ? m_set->fieldCount() : 0;
}

const FieldDef& DataControl::column(int index) const
{
    return m_set->fieldDef(index);
}

Value DataControl::cell(qint64 row, int column) const
{
    if (!m_painter || row < 0 || row >= m_painter->rowCount()) {
        return {};
    }
    try {
        m_painter->SetAbsolutePosition(row);
        return m_painter->value(column);
    } catch (const DbError&) {
        // A row deleted by a sibling, or a file that went away, must not stop a paint.
        return {};
    }
}

void DataControl::refreshCells()
{
    if (m_painter) {
        m_painter->Refresh(); // and with it the set that it was cloned from
        emit cellsChanged();
    }
}

} // namespace melovane
