#include "platform/sqlite/index/column_index.h"

#include "platform/db/db_error.h"

#include <utility>

namespace melovane::sqlite {

namespace {

using namespace Qt::Literals::StringLiterals;

/// Rows that may differ from the load. With many of them searches get slower, and the table is read
/// anew while the old one serves on; with more it serves no longer.
constexpr qint64 kManyChanged = 4096;
constexpr qint64 kMostChanged = 20'000;

/// Smaller tables are read as fast as a snapshot of them.
constexpr qint64 kWorthKeeping = 20'000;

/// Tries to mark the file, a few milliseconds apart, while other programs write.
constexpr int kMostMarks = 200;

/// Read with the first search, whatever it asks for: what a library is searched and sorted by.
/// Names of columns, since the engine knows tables and no tracks; one that the table lacks is left
/// out, one that is missing here is read when it is first asked for.
const QString kFirstColumns[] = {u"Titel"_s, u"Interpret"_s, u"Album"_s, u"Kommentar"_s,
                                 u"DName"_s, u"Path"_s,      u"Genre"_s, u"Jahr"_s,
                                 u"Track"_s, u"BPM"_s,       u"Note"_s,  u"PlayCountAll"_s,
                                 u"DEL"_s};

/// The columns with these names, as far as the table has them.
std::vector<IndexField> fieldsOf(IndexedFile& file, const QStringList& names)
{
    std::vector<IndexField> result = file.fields();
    std::erase_if(result, [&](const IndexField& field) {
        return !names.contains(field.name, Qt::CaseInsensitive);
    });
    return result;
}

} // namespace

std::shared_ptr<const KeySource> ColumnIndex::search(IndexedFile& file,
                                                     const SearchStatement& statement)
{
    return answers(file, statement) ? m_table->search(statement) : nullptr;
}

std::optional<qint64> ColumnIndex::count(IndexedFile& file, const SearchStatement& statement)
{
    if (!answers(file, statement)) {
        return {};
    }
    return m_table->count(statement.where);
}

bool ColumnIndex::answers(IndexedFile& file, const SearchStatement& statement)
{
    const bool can = isReady(file, statement) && m_table->answers(statement);
    ++(can ? m_options.figures->answers : m_options.figures->left);
    return can;
}

bool ColumnIndex::isReady(IndexedFile& file, const SearchStatement& statement)
{
    if (file.inTransaction()) {
        return false;
    }
    try {
        if (m_table && file.seen() == markOf(file) && m_table->missing(statement).isEmpty()) {
            return true;
        }
        follow(file, statement);
        return m_table != nullptr;
    } catch (const DbError&) {
        // SQLite meets the same fault, and tells it.
        return false;
    }
}

IndexMark ColumnIndex::markOf(IndexedFile& file) const
{
    IndexMark mark = file.mark();
    mark.table = m_options.figures->loads + m_options.figures->snapshots;
    return mark;
}

bool ColumnIndex::wantsLoad() const
{
    if (m_load) {
        return false;
    }
    return !m_table || (m_options.startSlices && m_table->changedCount() > kManyChanged);
}

void ColumnIndex::follow(IndexedFile& file, const SearchStatement& statement)
{
    if (wantsLoad()) {
        startLoad(file, statement);
    }
    // Asked before the read begins: what is written in between is looked for once more.
    const IndexMark mark = markOf(file);
    const auto reading = file.startReading();
    if (m_table && isOfSchema(file)) {
        // Changed rows are read behind it, with all columns.
        addMissing(file, statement);
    }
    if (m_table && !takeChanges(file)) {
        m_table.reset();
        m_snapshot.reset();
    }
    if (m_table) {
        m_options.figures->bytes = m_table->bytes();
        file.setSeen(mark);
    }
}

bool ColumnIndex::isOfSchema(IndexedFile& file) const
{
    return file.schemaVersion() == m_schema;
}

/// False when the table has to be read anew.
bool ColumnIndex::takeChanges(IndexedFile& file)
{
    if (!isOfSchema(file)) {
        return false;
    }
    ChangeLog& log = file.changes();
    const ChangeLog::Position end = log.end();
    const auto changed = log.changedSince(m_position, kMostChanged);
    if (!changed || m_table->changedCount() + qint64(changed->size()) > kMostChanged) {
        return false;
    }
    readRows(file, *changed);
    m_position = end;
    return true;
}

void ColumnIndex::readRows(IndexedFile& file, const std::vector<qint64>& keys)
{
    for (const qint64 key : keys) {
        if (auto cells = file.readRow(m_fields, key)) {
            m_table->setRow(key, *std::move(cells));
        } else {
            m_table->removeRow(key);
        }
    }
}

void ColumnIndex::startLoad(IndexedFile& file, const SearchStatement& statement)
{
    ChangeLog& log = file.changes();
    if (!log.ensure() || adoptSnapshot(file, statement)) {
        return;
    }
    log.trim();
    startReading(file, statement);
    // A small library is there at once.
    loadUntilTimeout(file);
    if (m_load || m_keeping || m_marksLeft > 0) {
        m_options.startSlices(weak_from_this());
    }
}

/// The table as a former run left it, if the file has its mark and tells of all that changed since.
/// Columns are read from the snapshot when they are asked for.
bool ColumnIndex::adoptSnapshot(IndexedFile& file, const SearchStatement& statement)
{
    if (m_table || std::exchange(m_snapshotTried, true)) {
        return false;
    }
    if (!m_options.snapshotFile.isEmpty()) {
        IndexSnapshot::removeUnfinished(m_options.snapshotFile);
    }
    auto snapshot = IndexSnapshot::open(m_options.snapshotFile);
    if (!snapshot) {
        return false;
    }
    const SnapshotStamp& stamp = snapshot->stamp();
    m_schema = stamp.schema;
    m_from = m_position = stamp.from;
    const auto reading = file.startReading();
    ChangeLog& log = file.changes();
    if (!isOfSchema(file) || !log.knows(stamp.mark) ||
        !log.changedSince(stamp.from, kMostChanged)) {
        return false;
    }
    const auto keys = snapshot->keys();
    if (!keys) {
        return false;
    }
    m_table = std::make_unique<IndexTable>(*keys);
    m_fields.clear();
    m_snapshot = std::move(snapshot);
    addMissing(file, statement);
    if (auto order = m_snapshot ? m_snapshot->order(statement.order) : nullptr) {
        m_table->addOrder(statement.order, std::move(order));
    }
    ++m_options.figures->snapshots;
    return true;
}

void ColumnIndex::startReading(IndexedFile& file, const SearchStatement& statement)
{
    QStringList names(std::begin(kFirstColumns), std::end(kFirstColumns));
    names += IndexTable({}).missing(statement);
    for (const IndexField& field : m_fields) {
        names.append(field.name);
    }
    const auto reading = file.startReading();
    m_load.emplace(Load{IndexLoader(fieldsOf(file, names), statement.order), file.changes().end(),
                        file.schemaVersion()});
}

/// Without slices to come there is no time-out.
void ColumnIndex::loadUntilTimeout(IndexedFile& file)
{
    const std::chrono::microseconds begin = m_options.time->passed();
    while (loadSlice(file) &&
           (!m_options.startSlices || m_options.time->passed() - begin < m_options.timeout)) {
    }
}

bool ColumnIndex::loadSlice(IndexedFile& file)
{
    if (!m_load) {
        return keepSlice(file);
    }
    if (file.schemaVersion() != m_load->schema) {
        m_load.reset();
        return false;
    }
    if (m_load->loader.step(file)) {
        return true;
    }
    finishLoad();
    return m_marksLeft > 0;
}

void ColumnIndex::finishLoad()
{
    m_table = m_load->loader.take();
    m_fields = m_load->loader.fields();
    m_from = m_position = m_load->position;
    m_schema = m_load->schema;
    m_snapshot.reset();
    m_keeping.reset();
    const bool isLarge = qint64(m_table->keys().size()) >= kWorthKeeping;
    m_marksLeft = isLarge && !m_options.snapshotFile.isEmpty() ? kMostMarks : 0;
    m_load.reset();
    ++m_options.figures->loads;
}

/// Goes on writing the snapshot. False at the end.
bool ColumnIndex::keepSlice(IndexedFile& file)
{
    if (!m_keeping) {
        return startKeeping(file);
    }
    if (m_keeping->step()) {
        return true;
    }
    m_options.figures->kept += m_keeping->isKept() ? 1 : 0;
    m_keeping.reset();
    return false;
}

bool ColumnIndex::startKeeping(IndexedFile& file)
{
    if (m_marksLeft == 0 || !m_table || !isOfSchema(file)) {
        m_marksLeft = 0;
        return false;
    }
    if (const auto mark = file.changes().mark()) {
        m_keeping = std::make_unique<IndexSnapshotWriter>(
            m_options.snapshotFile, SnapshotStamp{m_schema, m_from, *mark}, *m_table);
        m_marksLeft = 0;
        return true;
    }
    return --m_marksLeft > 0;
}

void ColumnIndex::addMissing(IndexedFile& file, const SearchStatement& statement)
{
    const QStringList names = m_table->missing(statement);
    if (names.isEmpty()) {
        return;
    }
    const std::vector<IndexField> fields = fieldsOf(file, names);
    const std::vector<IndexField> others = addFromSnapshot(fields);
    if (!others.empty()) {
        file.addColumns(*m_table, others);
        m_fields.insert(m_fields.end(), others.begin(), others.end());
    }
    readRows(file, m_table->changedRows());
}

/// \return the columns that it does not have
std::vector<IndexField> ColumnIndex::addFromSnapshot(const std::vector<IndexField>& fields)
{
    std::vector<IndexField> others;
    for (const IndexField& field : fields) {
        auto column = m_snapshot ? m_snapshot->column(field.name, field.isText) : nullptr;
        if (column) {
            m_table->addColumn(field.name, std::move(column));
            m_fields.push_back(field);
        } else {
            others.push_back(field);
        }
    }
    return others;
}

} // namespace melovane::sqlite
