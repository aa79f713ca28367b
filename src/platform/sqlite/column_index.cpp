#include "platform/sqlite/column_index.h"

#include "platform/sqlite/read_scope.h"
#include "platform/sqlite/session.h"
#include "platform/sqlite/sqlite_error.h"

namespace melovane::sqlite {

namespace {

using namespace Qt::Literals::StringLiterals;

/// Rows that may differ from the load; with more of them searches get slow, and the table is read
/// anew.
constexpr std::size_t kMostChanged = 4096;

/// Read with the first search, whatever it asks for: what a library is searched and sorted by.
const QString kFirstColumns[] = {u"Titel"_s, u"Interpret"_s, u"Album"_s, u"Kommentar"_s,
                                 u"DName"_s, u"Path"_s,      u"Genre"_s, u"Jahr"_s,
                                 u"Track"_s, u"BPM"_s,       u"DEL"_s};

std::vector<FieldDef> fieldsOfTable(Session& session)
{
    const auto source = session.catalogue().find(QString::fromUtf16(kSearchedTable));
    return source ? source->fields : std::vector<FieldDef>{};
}

/// The columns with these names, as far as the table has them.
std::vector<IndexField> fieldsOf(Session& session, const QStringList& names)
{
    std::vector<IndexField> result;
    for (const FieldDef& field : fieldsOfTable(session)) {
        if (names.contains(field.Name, Qt::CaseInsensitive)) {
            result.push_back(
                {field.Name, field.Type == FieldType::Text || field.Type == FieldType::Memo});
        }
    }
    return result;
}

IndexMark markOf(Session& session)
{
    Connection& connection = session.connection();
    return {connection.number(u"PRAGMA main.data_version"_s),
            sqlite3_total_changes64(connection.handle()), session.catalogue().version()};
}

} // namespace

std::shared_ptr<const KeySource> ColumnIndex::search(Session& session,
                                                     const SearchStatement& statement)
{
    return answers(session, statement) ? m_table->search(statement) : nullptr;
}

std::optional<qint64> ColumnIndex::count(Session& session, const SearchStatement& statement)
{
    if (!answers(session, statement)) {
        return {};
    }
    return m_table->count(statement.where);
}

bool ColumnIndex::answers(Session& session, const SearchStatement& statement)
{
    const bool can = isReady(session, statement) && m_table->answers(statement);
    ++(can ? m_figures->answers : m_figures->left);
    return can;
}

bool ColumnIndex::isReady(Session& session, const SearchStatement& statement)
{
    if (session.connection().inTransaction()) {
        return false;
    }
    try {
        if (m_table && session.indexMark() == markOf(session) &&
            m_table->missing(statement).isEmpty()) {
            return true;
        }
        follow(session, statement);
        return m_table != nullptr;
    } catch (const DbError&) {
        // SQLite meets the same fault, and tells it.
        return false;
    }
}

void ColumnIndex::follow(Session& session, const SearchStatement& statement)
{
    Connection& connection = session.connection();
    IndexLog log(connection);
    if (!m_table && !log.ensure()) {
        return;
    }
    // Asked before the read begins: what is written in between is looked for once more.
    const IndexMark mark = markOf(session);
    {
        const ReadScope scope(connection);
        const qint64 schema = connection.number(u"PRAGMA main.schema_version"_s);
        if (m_table && (schema != m_schema || !takeChanges(session))) {
            m_table.reset();
            if (!log.isThere()) {
                return;
            }
        }
        if (!m_table) {
            m_schema = schema;
            m_position = log.end();
            load(session, statement);
        }
        addColumns(session, m_table->missing(statement));
        m_figures->bytes = m_table->bytes();
    }
    session.setIndexMark(mark);
}

/// False when the table has to be read anew.
bool ColumnIndex::takeChanges(Session& session)
{
    IndexLog log(session.connection());
    const IndexLog::Position end = log.end();
    const auto changed = log.changedSince(m_position, qint64(kMostChanged));
    if (!changed || m_table->changedRows().size() + changed->size() > kMostChanged) {
        return false;
    }
    readRows(session, *changed);
    m_position = end;
    return true;
}

void ColumnIndex::readRows(Session& session, const std::vector<qint64>& keys)
{
    IndexReader reader(session.connection());
    for (const qint64 key : keys) {
        if (auto cells = reader.row(m_fields, key)) {
            m_table->setRow(key, *std::move(cells));
        } else {
            m_table->removeRow(key);
        }
    }
}

void ColumnIndex::load(Session& session, const SearchStatement& statement)
{
    QStringList names(std::begin(kFirstColumns), std::end(kFirstColumns));
    names += IndexTable({}).missing(statement);
    m_fields = fieldsOf(session, names);
    m_table = IndexReader(session.connection()).table(m_fields);
    ++m_figures->loads;
}

void ColumnIndex::addColumns(Session& session, const QStringList& names)
{
    if (names.isEmpty()) {
        return;
    }
    const std::vector<IndexField> fields = fieldsOf(session, names);
    IndexReader(session.connection()).addColumns(*m_table, fields);
    m_fields.insert(m_fields.end(), fields.begin(), fields.end());
    readRows(session, m_table->changedRows());
}

} // namespace melovane::sqlite
