#include "platform/sqlite/column_index.h"

#include "platform/sqlite/read_scope.h"
#include "platform/sqlite/session.h"
#include "platform/sqlite/sqlite_error.h"

namespace melovane::sqlite {

namespace {

using namespace Qt::Literals::StringLiterals;

/// Rows that may differ from the load. With many of them searches get slower, and the table is read
/// anew while the old one serves on; with more it serves no longer.
constexpr qint64 kManyChanged = 4096;
constexpr qint64 kMostChanged = 20'000;

/// How long a search waits for the table before it turns to SQLite; the rest is loaded in slices.
constexpr std::chrono::milliseconds kPatience{60};
constexpr std::chrono::milliseconds kNoLimit = std::chrono::hours(1);

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

IndexMark ColumnIndex::markOf(Session& session) const
{
    Connection& connection = session.connection();
    return {connection.number(u"PRAGMA main.data_version"_s),
            sqlite3_total_changes64(connection.handle()), session.catalogue().version(),
            m_figures->loads};
}

bool ColumnIndex::wantsLoad() const
{
    if (m_load) {
        return false;
    }
    return !m_table || (m_startSlices && m_table->changedCount() > kManyChanged);
}

void ColumnIndex::follow(Session& session, const SearchStatement& statement)
{
    Connection& connection = session.connection();
    if (wantsLoad()) {
        startLoad(session, statement);
    }
    // Asked before the read begins: what is written in between is looked for once more.
    const IndexMark mark = markOf(session);
    const ReadScope scope(connection);
    if (m_table && !takeChanges(session)) {
        m_table.reset();
    }
    if (m_table) {
        addMissing(session, statement);
        m_figures->bytes = m_table->bytes();
        session.setIndexMark(mark);
    }
}

/// False when the table has to be read anew.
bool ColumnIndex::takeChanges(Session& session)
{
    if (session.connection().number(u"PRAGMA main.schema_version"_s) != m_schema) {
        return false;
    }
    IndexLog log(session.connection());
    const IndexLog::Position end = log.end();
    const auto changed = log.changedSince(m_position, kMostChanged);
    if (!changed || m_table->changedCount() + qint64(changed->size()) > kMostChanged) {
        return false;
    }
    readRows(session, *changed);
    m_position = end;
    return true;
}

void ColumnIndex::readRows(Session& session, const std::vector<qint64>& keys)
{
    for (const qint64 key : keys) {
        if (auto cells = readRow(session.connection(), m_fields, key)) {
            m_table->setRow(key, *std::move(cells));
        } else {
            m_table->removeRow(key);
        }
    }
}

void ColumnIndex::startLoad(Session& session, const SearchStatement& statement)
{
    Connection& connection = session.connection();
    IndexLog log(connection);
    if (!log.ensure()) {
        return;
    }
    log.trim();
    QStringList names(std::begin(kFirstColumns), std::end(kFirstColumns));
    names += IndexTable({}).missing(statement);
    for (const IndexField& field : m_fields) {
        names.append(field.name);
    }
    {
        const ReadScope scope(connection);
        m_load.emplace(Load{IndexLoader(fieldsOf(session, names)), log.end(),
                            connection.number(u"PRAGMA main.schema_version"_s)});
    }
    // A small library is there at once.
    loadFor(session, m_startSlices ? kPatience : kNoLimit);
    if (m_load) {
        m_startSlices(weak_from_this());
    }
}

void ColumnIndex::loadFor(Session& session, std::chrono::milliseconds time)
{
    using Clock = std::chrono::steady_clock;
    const auto begin = Clock::now();
    while (loadSlice(session) && Clock::now() - begin < time) {
    }
}

bool ColumnIndex::loadSlice(Session& session)
{
    if (!m_load) {
        return false;
    }
    Connection& connection = session.connection();
    if (connection.number(u"PRAGMA main.schema_version"_s) != m_load->schema) {
        m_load.reset();
        return false;
    }
    if (m_load->loader.step(connection)) {
        return true;
    }
    m_table = m_load->loader.take();
    m_fields = m_load->loader.fields();
    m_position = m_load->position;
    m_schema = m_load->schema;
    m_load.reset();
    ++m_figures->loads;
    return false;
}

void ColumnIndex::addMissing(Session& session, const SearchStatement& statement)
{
    const QStringList names = m_table->missing(statement);
    if (names.isEmpty()) {
        return;
    }
    const std::vector<IndexField> fields = fieldsOf(session, names);
    addColumns(session.connection(), *m_table, fields);
    m_fields.insert(m_fields.end(), fields.begin(), fields.end());
    readRows(session, m_table->changedRows());
}

} // namespace melovane::sqlite
