#include "platform/sqlite/engine/bulk_insert.h"

#include "platform/db/db_fault.h"
#include "platform/sqlite/dialect/column_defaults.h"
#include "platform/sqlite/dialect/stored_text.h"
#include "platform/sqlite/engine/columns.h"
#include "platform/sqlite/engine/sqlite_error.h"

namespace melovane::sqlite {

namespace {

using namespace Qt::Literals::StringLiterals;

/// Behind this more rows in a statement gain nothing; with the columns of the widest table it stays
/// below SQLite's limit of 32,766 parameters.
constexpr std::size_t kRowsTogether = 128;

QString selectOf(const QString& table, const QStringList& columns)
{
    QStringList names;
    for (const QString& column : columns) {
        names.append(u'[' + column + u']');
    }
    return u"select %1 from [%2]"_s.arg(names.join(u", "_s), table);
}

/// The value as a statement with pasted values would keep it. How long a text may be the file says
/// itself, in letters.
Value stored(const FieldDef& field, const Value& value)
{
    const bool isText = field.Type == FieldType::Text || field.Type == FieldType::Memo;
    return isText && value.isText() ? value : storable(field, value);
}

} // namespace

SqliteBulkInsert::SqliteBulkInsert(std::weak_ptr<SessionLease> lease,
                                   const QString& table,
                                   const QStringList& columns)
    : m_lease(std::move(lease))
    , m_source(selectOf(table, columns))
{
    m_rows.reserve(kRowsTogether);
    requireTarget(openSession(m_lease));
}

/// The table may have been made anew, in another file even, since the last rows were written.
void SqliteBulkInsert::requireTarget(Session& session)
{
    if (m_target && session.holds(*m_target)) {
        return;
    }
    m_many.reset();
    m_one.reset();
    m_names.clear();
    m_defaults.clear();
    m_target = session.translate(m_source, false);
    const Translation& target = m_target->translation;
    for (const ResultColumn& column : target.columns) {
        if (column.table != 0 || target.tables.size() != 1) {
            throw dbError(DbFault::FieldReadOnly, column.field.Name);
        }
        m_names.append(quotedName(column.column));
    }
    const std::optional<Source> source = session.catalogue().find(target.tables.front().name);
    for (const ComputedDefault& each :
         computedDefaults(source ? source->fields : std::vector<FieldDef>())) {
        if (const QString name = quotedName(each.column); !m_names.contains(name)) {
            m_names.append(name);
            m_defaults.append(each.sql);
        }
    }
}

QString SqliteBulkInsert::statementOf(std::size_t rows) const
{
    const qsizetype given = m_names.size() - m_defaults.size();
    const QString row = u'(' + (QStringList(given, u"?"_s) + m_defaults).join(u',') + u')';
    const BaseTable& table = m_target->translation.tables.front();
    return u"INSERT INTO %1.%2(%3) VALUES%4"_s.arg(table.schema, quotedName(table.table),
                                                   m_names.join(u", "_s),
                                                   QStringList(qsizetype(rows), row).join(u','));
}

void SqliteBulkInsert::add(std::vector<Value> row)
{
    m_rows.push_back(std::move(row));
    if (m_rows.size() == kRowsTogether) {
        write();
    }
}

void SqliteBulkInsert::finish()
{
    write();
    m_many.reset();
    m_one.reset();
}

void SqliteBulkInsert::write()
{
    std::vector<Row> rows;
    rows.reserve(kRowsTogether);
    rows.swap(m_rows);
    try {
        if (rows.size() == kRowsTogether) {
            insert(rows.data(), rows.size());
            return;
        }
    } catch (const DbError&) {
        if (!whenRefused) {
            throw;
        }
        // The statement has left nothing behind: row by row shows which of them are at fault.
    }
    for (const Row& row : rows) {
        try {
            insert(&row, 1);
        } catch (const DbError& error) {
            if (!whenRefused) {
                throw;
            }
            whenRefused(error);
        }
    }
}

/// One statement; all its rows are written, or none.
void SqliteBulkInsert::insert(const Row* rows, std::size_t count)
{
    withStatement(m_source, [&] {
        Session& session = openSession(m_lease);
        session.requireWritable();
        requireTarget(session);
        session.nextEpoch();
        std::unique_ptr<Statement>& statement = count > 1 ? m_many : m_one;
        if (!statement) {
            statement =
                std::make_unique<Statement>(session.connection().handle(), statementOf(count));
        }
        const std::vector<ResultColumn>& columns = m_target->translation.columns;
        int parameter = 0;
        for (const Row* row = rows; row != rows + count; ++row) {
            for (std::size_t i = 0; i < columns.size(); ++i) {
                statement->bind(++parameter, stored(columns[i].field, row->at(i)));
            }
        }
        try {
            statement->run();
        } catch (const DbError&) {
            statement->reset();
            throw;
        }
    });
}

} // namespace melovane::sqlite
