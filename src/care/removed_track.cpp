#include "care/removed_track.h"

#include "platform/db/database.h"
#include "platform/db/sql_text.h"
#include "playlists/list_delta.h"
#include "store/row_statements.h"

#include <QHash>
#include <QSet>

#include <optional>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

// Tables in the side record: keep.
const QString kTracks = u"db_all"_s;
const QString kEntries = u"pl_all"_s;
const QString kPlays = u"pl_stat"_s;
const QString kLists = u"pl_name"_s;
const QString kGroups = u"pl_group"_s;

/// Name of the column in front of the others: the form of differences wants a number there.
const QString kNumber = u"number"_s;

QStringList columnsOf(const Recordset& set)
{
    QStringList names{kNumber};
    for (int i = 0; i < set.fieldCount(); ++i) {
        names.append(set.fieldDef(i).Name);
    }
    return names;
}

RowChange removedRow(const Recordset& set, qint64 number)
{
    RowChange row{RowChange::Kind::Removed, number, {}, {Value(number)}, {}};
    for (int i = 0; i < set.fieldCount(); ++i) {
        row.before.push_back(set.value(i));
    }
    return row;
}

/// Rows of a table by the track that they are about.
QHash<QString, TableDelta>
rowsByTrack(Database& database, const QString& table, const QString& condition)
{
    QHash<QString, TableDelta> result;
    const auto set = database.OpenRecordset(
        u"select * from %1 where fid in (select fid from db_all where %2)"_s.arg(table, condition));
    const QStringList columns = columnsOf(*set);
    const int fid = set->fieldIndex(u"FID");
    for (; !set->Eof(); set->MoveNext()) {
        TableDelta& rows = result[set->value(fid).toText()];
        rows.table = table;
        rows.columns = columns;
        rows.rows.push_back(removedRow(*set, qint64(rows.rows.size())));
    }
    return result;
}

/// All rows of a table, each as one to be kept, by their number.
class NumberedRows
{
public:
    /// \param condition of the rows; empty for all of them
    NumberedRows(Database& database,
                 const QString& table,
                 const QString& number,
                 const QString& condition = {})
    {
        const auto set = database.OpenRecordset(u"select * from "_s + table + condition);
        m_rows.table = table;
        m_rows.columns = columnsOf(*set);
        const int at = set->fieldIndex(number);
        for (; !set->Eof(); set->MoveNext()) {
            const qint64 key = set->value(at).toInt64();
            m_places.insert(key, m_rows.rows.size());
            m_rows.rows.push_back(removedRow(*set, key));
        }
    }

    /// The rows of these numbers; those that are none are left out.
    [[nodiscard]] TableDelta of(const QSet<qint64>& numbers) const
    {
        TableDelta some{m_rows.table, m_rows.columns, {}};
        for (const qint64 number : numbers) {
            if (const auto place = m_places.constFind(number); place != m_places.cend()) {
                some.rows.push_back(m_rows.rows[*place]);
            }
        }
        return some;
    }

private:
    TableDelta m_rows;
    QHash<qint64, size_t> m_places;
};

/// The numbers in a column of rows.
QSet<qint64> numbersIn(const TableDelta& rows, const QString& column)
{
    QSet<qint64> numbers;
    const qsizetype at = rows.columns.indexOf(column);
    for (const RowChange& row : rows.rows) {
        if (at >= 0) {
            numbers.insert(row.before[size_t(at)].toInt64());
        }
    }
    return numbers;
}

/// One row of the side record, by names.
class KeptRow
{
public:
    KeptRow(const TableDelta& table, const RowChange& row)
        : m_table(table)
        , m_row(row)
    {}

    [[nodiscard]] Value value(const QString& column) const
    {
        for (qsizetype i = 0; i < m_table.columns.size(); ++i) {
            if (m_table.columns[i].compare(column, Qt::CaseInsensitive) == 0) {
                return m_row.before[size_t(i)];
            }
        }
        return {};
    }

    /// Writes it again, but for one column and with others in place of what they were.
    void write(Database& database,
               const QHash<QString, Value>& instead,
               const QString& without = {}) const
    {
        QStringList names;
        std::vector<Value> values;
        for (qsizetype i = 1; i < m_table.columns.size(); ++i) {
            const QString& name = m_table.columns[i];
            if (name.compare(without, Qt::CaseInsensitive) != 0) {
                names.append(name);
                values.push_back(instead.value(name.toLower(), m_row.before[size_t(i)]));
            }
        }
        RowInsert(database, m_table.table, writtenColumns(database, m_table.table, names))
            .run(values);
    }

private:
    const TableDelta& m_table;
    const RowChange& m_row;
};

bool isThere(Database& database, const QString& table, const QString& condition)
{
    return !database.OpenRecordset(u"select top 1 fid from %1 where %2"_s.arg(table, condition))
                ->Eof();
}

bool bringTrack(Database& database, const KeptRow& row)
{
    if (isThere(database, kTracks, u"fid="_s + sql::text(row.value(u"FID"_s).toText()))) {
        return false;
    }
    row.write(database, {{u"del"_s, Value(0)}});
    return true;
}

/// Lists of the side record, and where they stand now.
///
/// One that the cleaning has removed because nothing was left in it comes back with its first
/// entry. Only such a list stands in the record: one that is shown or played is removed by nobody
/// but the user, and stays away.
class KeptLists
{
public:
    KeptLists(Database& database, const ListDelta& record)
        : m_database(database)
    {
        for (const TableDelta& table : record) {
            auto& rows = table.table == kLists ? m_lists : m_groups;
            if (table.table == kLists || table.table == kGroups) {
                for (const RowChange& row : table.rows) {
                    rows.insert(row.key, {&table, &row});
                }
            }
        }
    }

    /// The number that the list has now; nothing when there is none.
    [[nodiscard]] std::optional<qint64> numberOf(qint64 list)
    {
        const auto known = m_lists.constFind(list);
        if (known == m_lists.cend()) {
            return isTaken(kLists, u"NID"_s, list) ? std::optional(list) : std::nullopt;
        }
        const KeptRow row(*known->first, *known->second);
        if (const auto there = lookUp(row)) {
            return there;
        }
        row.write(
            m_database,
            {{u"anzahl"_s, Value(0)}, {u"grid"_s, Value(groupNow(row.value(u"GRID"_s).toInt64()))}},
            isTaken(kLists, u"NID"_s, list) ? u"NID"_s : QString());
        return lookUp(row);
    }

private:
    using Kept = QHash<qint64, std::pair<const TableDelta*, const RowChange*>>;

    [[nodiscard]] bool isTaken(const QString& table, const QString& column, qint64 number)
    {
        return !m_database
                    .OpenRecordset(
                        u"select %1 from %2 where %1=%3"_s.arg(column, table, sql::number(number)))
                    ->Eof();
    }

    /// A number may have been given away again: a list is known by the moment at which it was made,
    /// and one that came back under another number by its name and group, too.
    [[nodiscard]] std::optional<qint64> lookUp(const KeptRow& row)
    {
        const qint64 number = row.value(u"NID"_s).toInt64();
        const auto lists = m_database.OpenRecordset(
            u"select NID, CreateTime, GRID, Name from pl_name where NID=%1 or Name=%2 "
            "order by NID desc"_s.arg(sql::number(number),
                                      sql::text(row.value(u"Name"_s).toText())));
        std::optional<qint64> found;
        for (; !lists->Eof(); lists->MoveNext()) {
            const qint64 there = lists->value(0).toInt64();
            if (lists->value(1) != row.value(u"CreateTime"_s)) {
                continue;
            }
            if (there == number) {
                return there;
            }
            if (lists->value(2) == row.value(u"GRID"_s) &&
                lists->value(3) == row.value(u"Name"_s)) {
                found = there;
            }
        }
        return found;
    }

    /// The group that stands for one of the record; made anew when the cleaning has removed it.
    [[nodiscard]] qint64 groupNow(qint64 group)
    {
        const auto known = m_groups.constFind(group);
        if (known != m_groups.cend() && !isTaken(kGroups, u"GRID"_s, group)) {
            KeptRow(*known->first, *known->second).write(m_database, {});
        }
        return group;
    }

    Database& m_database;
    Kept m_lists;
    Kept m_groups;
};

bool bringEntry(Database& database, const KeptRow& row, KeptLists& lists)
{
    const QString number = sql::number(row.value(u"PLID"_s).toInt64());
    const QString track = u" and fid="_s + sql::text(row.value(u"FID"_s).toText());
    if (isThere(database, kEntries, u"plid="_s + number + track)) {
        return false;
    }
    const std::optional<qint64> list = lists.numberOf(row.value(u"PNID"_s).toInt64());
    if (!list) {
        return false;
    }
    const bool isTaken = isThere(database, kEntries, u"plid="_s + number);
    row.write(database, {{u"pnid"_s, Value(*list)}}, isTaken ? u"PLID"_s : QString());
    database.Execute(u"update pl_name set anzahl=anzahl+1 where nid="_s + sql::number(*list));
    return true;
}

bool bringPlay(Database& database, const KeptRow& row)
{
    const auto there = database.OpenRecordset(u"select tstamp, plid from pl_stat where fid="_s +
                                              sql::text(row.value(u"FID"_s).toText()));
    for (; !there->Eof(); there->MoveNext()) {
        if (there->value(0) == row.value(u"tstamp"_s) && there->value(1) == row.value(u"PLID"_s)) {
            return false;
        }
    }
    row.write(database, {});
    return true;
}

} // namespace

std::vector<RemovedTrack>
tracksToRemove(Database& database, const QString& condition, Dependencies dependencies)
{
    const bool go = dependencies == Dependencies::Go;
    using Rows = QHash<QString, TableDelta>;
    const Rows entries = go ? rowsByTrack(database, kEntries, condition) : Rows();
    const Rows plays = go ? rowsByTrack(database, kPlays, condition) : Rows();
    const NumberedRows lists(database, kLists, u"NID"_s, u" where activ=false and isplay=false"_s);
    const NumberedRows groups(database, kGroups, u"GRID"_s);
    const auto set = database.OpenRecordset(u"select * from db_all where "_s + condition);
    const QStringList columns = columnsOf(*set);
    std::vector<RemovedTrack> result;
    for (; !set->Eof(); set->MoveNext()) {
        RemovedTrack track;
        track.fid = set->value(u"FID").toText();
        track.path = set->value(u"Path").toText();
        track.name = set->value(u"DName").toText();
        track.isOnDisc = set->value(u"DriveTyp").toLong() == 4;
        const QString artist = set->value(u"Interpret").toText();
        const QString title = set->value(u"Titel").toText();
        track.title =
            artist.isEmpty() || title.isEmpty() ? artist + title : artist + u" - "_s + title;
        ListDelta rows{{kTracks, columns, {removedRow(*set, 0)}}};
        if (const auto own = entries.constFind(track.fid); own != entries.cend()) {
            rows.push_back(lists.of(numbersIn(*own, u"PNID"_s)));
            rows.push_back(groups.of(numbersIn(rows.back(), u"GRID"_s)));
        }
        for (const auto* table : {&entries, &plays}) {
            if (const auto own = table->constFind(track.fid); own != table->cend()) {
                rows.push_back(*own);
            }
        }
        track.rows = deltaText(rows);
        result.push_back(std::move(track));
    }
    return result;
}

BroughtBack bringBack(Database& database, const QString& rows)
{
    BroughtBack result;
    const std::optional<ListDelta> kept = readDelta(rows);
    if (!kept) {
        return result;
    }
    KeptLists lists(database, *kept);
    for (const TableDelta& table : *kept) {
        for (const RowChange& change : table.rows) {
            if (change.kind != RowChange::Kind::Removed) {
                continue;
            }
            const KeptRow row(table, change);
            if (table.table == kTracks) {
                result.hasTrack = bringTrack(database, row) || result.hasTrack;
            } else if (table.table == kEntries) {
                result.entries += bringEntry(database, row, lists) ? 1 : 0;
            } else if (table.table == kPlays) {
                result.plays += bringPlay(database, row) ? 1 : 0;
            }
        }
    }
    return result;
}

} // namespace melovane
