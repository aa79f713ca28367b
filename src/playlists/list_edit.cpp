#include "playlists/list_edit.h"

#include "platform/db/database.h"
#include "platform/db/db_error.h"
#include "platform/db/recordset.h"
#include "platform/db/sql_text.h"
#include "playlists/list_history.h"
#include "playlists/moved_plays.h"
#include "playlists/playlist_table.h"
#include "store/track_writing.h"

#include <algorithm>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

QString nameOf(Database& database, Pnid list)
{
    const auto row = database.OpenRecordset(u"select name from pl_name where nid="_s +
                                            sql::number(numberOf(list)));
    return row->Eof() ? QString() : row->value(0).toText();
}

int columnOf(const QStringList& columns, QStringView name)
{
    const auto found = std::find_if(columns.cbegin(), columns.cend(), [&](const QString& column) {
        return column.compare(name, Qt::CaseInsensitive) == 0;
    });
    return int(found - columns.cbegin());
}

int rowsOf(const ListDelta& delta, ListAction action)
{
    if (action == ListAction::DeleteGroup) {
        return 1;
    }
    const auto entries = std::find_if(delta.begin(), delta.end(), [](const TableDelta& table) {
        return table.table == kEntryTable || table.table == kTrackTable;
    });
    if (entries == delta.end()) {
        return 0;
    }
    // Of an insertion the new entries count, not those that made room.
    const auto isChosen = [](const RowChange& row) { return row.kind != RowChange::Kind::Altered; };
    const auto chosen = std::count_if(entries->rows.begin(), entries->rows.end(), isChosen);
    return int(chosen > 0 ? chosen : std::ptrdiff_t(entries->rows.size()));
}

} // namespace

ListEdit::ListEdit(ListHistory& history, Database& database, ListAction action, Pnid list)
    : m_history(history)
    , m_database(database)
    , m_action(action)
    , m_list(list)
    , m_records(history.isOn() && history.prepare(database))
{
    m_database.BeginTrans();
    if (m_records && numberOf(list) != 0) {
        try {
            m_name = nameOf(m_database, list);
            alsoChanges(list);
        } catch (const DbError&) {
            m_database.Rollback();
            throw;
        }
    }
}

ListEdit::~ListEdit()
{
    if (m_open) {
        m_database.Rollback();
    }
}

DeltaMaker& ListEdit::makerOf(QStringView table)
{
    const auto known = std::find(m_tables.cbegin(), m_tables.cend(), table);
    if (known != m_tables.cend()) {
        return *m_makers[size_t(known - m_tables.cbegin())];
    }
    m_tables.append(table.toString());
    m_makers.push_back(
        std::make_unique<DeltaMaker>(table.toString(), columnsOf(m_database, table)));
    return *m_makers.back();
}

void ListEdit::before(const QString& condition)
{
    removes(kEntryTable, condition);
}

void ListEdit::removes(QStringView table, const QString& condition)
{
    if (!m_records) {
        return;
    }
    DeltaMaker& maker = makerOf(table);
    for (const std::vector<Value>& row : readRows(m_database, table, maker.columns(), condition)) {
        maker.before(row);
    }
}

void ListEdit::after(const QString& condition)
{
    adds(kEntryTable, condition);
}

void ListEdit::adds(QStringView table, const QString& condition)
{
    if (!m_records) {
        return;
    }
    DeltaMaker& maker = makerOf(table);
    for (const std::vector<Value>& row : readRows(m_database, table, maker.columns(), condition)) {
        maker.after(row);
    }
}

void ListEdit::moved(Plid entry, const Place& from, const Place& to)
{
    if (!m_records) {
        return;
    }
    DeltaMaker& maker = makerOf(kEntryTable);
    if (m_positionColumn < 0) {
        m_listColumn = columnOf(maker.columns(), u"PNID");
        m_positionColumn = columnOf(maker.columns(), u"SID");
    }
    maker.cell(numberOf(entry), m_positionColumn, numberOf(from.position), numberOf(to.position));
    if (from.list != to.list) {
        maker.cell(numberOf(entry), m_listColumn, numberOf(from.list), numberOf(to.list));
    }
}

void ListEdit::changes(const TrackChange& track)
{
    const qint64 key = track.fid.toLongLong();
    if (!m_records || QString::number(key) != track.fid) {
        return;
    }
    DeltaMaker& maker = makerOf(kTrackTable);
    for (const ColumnChange& change : track.columns) {
        const int column = columnOf(maker.columns(), change.column);
        if (column < maker.columns().size()) {
            maker.cell(key, column, change.before, change.after);
        }
    }
}

void ListEdit::movesPlays(const QString& fid, const QString& other)
{
    if (!m_records) {
        return;
    }
    const auto known = m_tables.indexOf(kPlayTable.toString());
    if (known < 0) {
        m_tables.append(kPlayTable.toString());
        m_makers.push_back(std::make_unique<DeltaMaker>(playDelta()));
    }
    DeltaMaker& maker = *m_makers[size_t(known < 0 ? m_tables.size() - 1 : known)];
    for (const qint64 key : playKeys(m_database, fid, m_plays)) {
        maker.cell(key, kPlayTrackColumn, fid, other);
    }
}

void ListEdit::newEntriesFollow()
{
    if (m_records) {
        m_lastEntry = m_database.OpenRecordset(u"select max(plid) as mplid from pl_all"_s)
                          ->value(0)
                          .toInt64();
    }
}

void ListEdit::alsoChanges(Pnid list)
{
    const bool known = std::any_of(m_touched.begin(), m_touched.end(),
                                   [&](const Touched& touched) { return touched.list == list; });
    if (m_records && !known) {
        m_touched.push_back({list, orderMark(m_database, list)});
    }
}

QString ListEdit::marksNow() const
{
    QStringList marks;
    for (const Touched& touched : m_touched) {
        marks.append(sql::number(numberOf(touched.list)) + u'=' +
                     orderMark(m_database, touched.list));
    }
    return marks.join(u';');
}

void ListEdit::record()
{
    if (m_lastEntry) {
        after(u"plid>"_s + sql::number(*m_lastEntry));
    }
    ListDelta delta;
    for (const auto& maker : m_makers) {
        TableDelta table = maker->finish();
        if (!table.rows.empty()) {
            delta.push_back(std::move(table));
        }
    }
    if (delta.empty()) {
        return;
    }
    QStringList before;
    for (const Touched& touched : m_touched) {
        before.append(sql::number(numberOf(touched.list)) + u'=' + touched.mark);
    }
    ListHistory::Record record;
    record.step = {m_action, m_list, m_name, rowsOf(delta, m_action), {}};
    record.marksBefore = before.join(u';');
    record.marksAfter = marksNow();
    record.changes = deltaText(delta);
    Transaction part(m_database);
    m_history.write(m_database, record);
    part.commit();
}

void ListEdit::commit()
{
    if (m_records) {
        // The change is worth more than its record.
        quietly(m_history.m_sink, u"ListHistory"_s, [&] { record(); });
    }
    m_open = false;
    m_database.CommitTrans();
}

} // namespace melovane
