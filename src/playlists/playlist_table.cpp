#include "playlists/playlist_table.h"

#include "platform/db/database.h"
#include "platform/db/db_error.h"
#include "platform/db/sql_text.h"
#include "playlists/moved_plays.h"
#include "store/row_statements.h"

#include <QHash>
#include <QSet>

#include <algorithm>
#include <array>
#include <utility>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Keys in one condition: fewer cost more statements, more cost a longer one to understand.
constexpr qsizetype kKeysAtOnce = 2000;

QString bracketed(const QString& name)
{
    return u'[' + name + u']';
}

bool isOfTracks(const TableDelta& delta)
{
    return kTrackTable.compare(delta.table, Qt::CaseInsensitive) == 0;
}

bool staysWithin(const TableDelta& delta, TrackReach reach)
{
    return std::all_of(delta.rows.begin(), delta.rows.end(), [&](const RowChange& row) {
        return row.kind == RowChange::Kind::Altered
                   ? std::all_of(
                         row.columns.begin(), row.columns.end(),
                         [&](int column) { return isTakenBack(delta.columns[column], reach); })
                   : reach == TrackReach::Rows;
    });
}

bool isOfPlays(const TableDelta& delta, TrackReach reach)
{
    return reach == TrackReach::Rows && delta.table == kPlayTable;
}

/// The columns of a difference. \throws DbError for what is no table or column of lists: a
/// difference may come from a damaged file
std::vector<WrittenColumn> columnsOf(Database& database, const TableDelta& delta, TrackReach reach)
{
    const QString key = keyColumnOf(delta.table);
    if (key.isEmpty() || delta.columns.value(0).compare(key, Qt::CaseInsensitive) != 0) {
        throw DbError(dberror::kObjectNotFound, u"No table of lists: "_s + delta.table);
    }
    if (isOfTracks(delta) && !staysWithin(delta, reach)) {
        throw DbError(dberror::kObjectNotFound, u"More than fields of tracks"_s);
    }
    return writtenColumns(database, delta.table, delta.columns);
}

std::vector<qint64> keysOf(const TableDelta& delta, RowChange::Kind kind)
{
    std::vector<qint64> keys;
    for (const RowChange& row : delta.rows) {
        if (row.kind == kind) {
            keys.push_back(row.key);
        }
    }
    return keys;
}

QStringList conditions(QStringView column, const QStringList& values)
{
    QStringList result;
    for (qsizetype first = 0; first < values.size(); first += kKeysAtOnce) {
        result.append(bracketed(column.toString()) + u" in ("_s +
                      values.mid(first, kKeysAtOnce).join(u',') + u')');
    }
    return result;
}

/// The key of a track is a text.
QStringList trackConditions(const std::vector<qint64>& keys)
{
    QStringList values;
    for (const qint64 key : keys) {
        values.append(sql::text(QString::number(key)));
    }
    return conditions(columnOf(TrackField::FID), values);
}

/// Conditions that name rows of the table.
QStringList rowConditions(const TableDelta& delta, const std::vector<qint64>& keys)
{
    return isOfTracks(delta) ? trackConditions(keys) : keyConditions(delta.columns.front(), keys);
}

void removeRows(Database& database, const TableDelta& delta, RowChange::Kind kind)
{
    for (const QString& condition : rowConditions(delta, keysOf(delta, kind))) {
        database.Execute(u"delete from %1 where %2"_s.arg(delta.table, condition));
    }
}

void alterRows(Database& database,
               const TableDelta& delta,
               const std::vector<WrittenColumn>& columns)
{
    std::vector<std::pair<std::vector<int>, RowUpdate>> updates;
    for (const RowChange& row : delta.rows) {
        if (row.kind != RowChange::Kind::Altered) {
            continue;
        }
        auto update = std::find_if(updates.begin(), updates.end(),
                                   [&](const auto& known) { return known.first == row.columns; });
        if (update == updates.end()) {
            std::vector<WrittenColumn> written;
            for (const int column : row.columns) {
                written.push_back(columns[size_t(column)]);
            }
            updates.emplace_back(row.columns,
                                 RowUpdate(database, delta.table, columns.front(), written));
            update = std::prev(updates.end());
        }
        const Value key = isOfTracks(delta) ? Value(QString::number(row.key)) : row.key;
        update->second.run(key, row.after);
    }
}

void addRows(Database& database, const TableDelta& delta, const std::vector<WrittenColumn>& columns)
{
    RowInsert insert(database, delta.table, columns);
    for (const RowChange& row : delta.rows) {
        if (row.kind == RowChange::Kind::Added) {
            insert.run(row.after);
        }
    }
}

bool isAsBefore(const RowChange& change, const std::vector<Value>& row, bool contentCounts)
{
    if (!contentCounts) {
        return true;
    }
    if (change.kind == RowChange::Kind::Removed) {
        return row == change.before;
    }
    for (size_t i = 0; i < change.columns.size(); ++i) {
        if (row[size_t(change.columns[i])] != change.before[i]) {
            return false;
        }
    }
    return true;
}

/// The number of a row; that of a track is written as text.
qint64 keyOf(const std::vector<Value>& row)
{
    const Value& key = row.front();
    return key.isText() ? key.toText().toLongLong() : key.toInt64();
}

bool tableStandsBefore(Database& database, const TableDelta& delta)
{
    const bool contentCounts = delta.table == kEntryTable || isOfTracks(delta);
    QHash<qint64, const RowChange*> changes;
    std::vector<qint64> keys;
    for (const RowChange& row : delta.rows) {
        changes.insert(row.key, &row);
        keys.push_back(row.key);
    }
    qsizetype found = 0;
    for (const QString& condition : rowConditions(delta, keys)) {
        for (const std::vector<Value>& row :
             readRows(database, delta.table, delta.columns, condition)) {
            const RowChange* change = changes.value(keyOf(row));
            if (!change || change->kind == RowChange::Kind::Added ||
                !isAsBefore(*change, row, contentCounts)) {
                return false;
            }
            ++found;
        }
    }
    return found + qsizetype(keysOf(delta, RowChange::Kind::Added).size()) ==
           qsizetype(delta.rows.size());
}

} // namespace

TrackReach trackReach(ListAction action)
{
    return action == ListAction::Relink  ? TrackReach::Places
           : action == ListAction::Merge ? TrackReach::Rows
                                         : TrackReach::Fields;
}

bool isPlaceColumn(QStringView trackColumn)
{
    constexpr std::array kPlace{TrackField::Path, TrackField::DName, TrackField::DriveTyp,
                                TrackField::DriveName};
    return std::any_of(kPlace.begin(), kPlace.end(), [&](TrackField field) {
        return trackColumn.compare(columnOf(field), Qt::CaseInsensitive) == 0;
    });
}

bool isTakenBack(QStringView trackColumn, TrackReach reach)
{
    return trackColumn.compare(columnOf(TrackField::FID), Qt::CaseInsensitive) != 0 &&
           (reach != TrackReach::Fields || !isPlaceColumn(trackColumn));
}

QString keyColumnOf(QStringView table)
{
    static const std::array<std::pair<QStringView, QStringView>, 4> kKeys{{{kEntryTable, u"PLID"},
                                                                           {kListTable, u"NID"},
                                                                           {kGroupTable, u"GRID"},
                                                                           {kTrackTable, u"FID"}}};
    for (const auto& [name, key] : kKeys) {
        if (table.compare(name, Qt::CaseInsensitive) == 0) {
            return key.toString();
        }
    }
    return {};
}

QStringList columnsOf(Database& database, QStringView table)
{
    const QString key = keyColumnOf(table);
    QStringList columns{key};
    for (const FieldDef& field : database.tableDefs().Item(table.toString()).Fields) {
        if (field.Name.compare(key, Qt::CaseInsensitive) != 0) {
            columns.append(field.Name);
        }
    }
    return columns;
}

Rows readRows(Database& database,
              QStringView table,
              const QStringList& columns,
              const QString& condition)
{
    QStringList names;
    for (const QString& column : columns) {
        names.append(bracketed(column));
    }
    Rows rows;
    const auto set = database.OpenRecordset(u"select %1 from %2 where %3 order by %4"_s.arg(
        names.join(u','), table.toString(), condition, names.front()));
    rows.reserve(size_t(set->rowCount()));
    for (; !set->Eof(); set->MoveNext()) {
        std::vector<Value>& row = rows.emplace_back();
        row.reserve(size_t(columns.size()));
        for (int i = 0; i < columns.size(); ++i) {
            row.push_back(set->value(i));
        }
    }
    return rows;
}

std::optional<qint64> entryNumber(QStringView text)
{
    bool isNumber = false;
    const int number = text.trimmed().toInt(&isNumber);
    return isNumber ? std::optional<qint64>(number) : std::nullopt;
}

std::vector<qint64> entryNumbers(const QStringList& texts)
{
    std::vector<qint64> numbers;
    QSet<qint64> known;
    for (const QString& text : texts) {
        const std::optional<qint64> number = entryNumber(text);
        if (number && !known.contains(*number)) {
            known.insert(*number);
            numbers.push_back(*number);
        }
    }
    return numbers;
}

QStringList keyConditions(QStringView column, const std::vector<qint64>& keys)
{
    QStringList values;
    for (const qint64 key : keys) {
        values.append(sql::number(key));
    }
    return conditions(column, values);
}

void updateEntryCount(Database& database, Pnid list)
{
    const QString number = sql::number(numberOf(list));
    const auto count =
        database.OpenRecordset(u"select count(*) as anz from pl_all where pnid="_s + number);
    database.Execute(u"update pl_name set anzahl="_s + sql::number(count->value(0).toInt64()) +
                     u" , UpdateTime=now, sicherung=true where nid="_s + number);
}

void markChanged(Database& database, Pnid list)
{
    database.Execute(u"update pl_name set sicherung=true where sicherung=false and nid="_s +
                     sql::number(numberOf(list)));
}

std::vector<Pnid> listsWith(Database& database, const QStringList& fids)
{
    QStringList values;
    for (const QString& fid : fids) {
        values.append(sql::text(fid));
    }
    std::vector<Pnid> lists;
    for (const QString& condition : conditions(u"FID", values)) {
        const auto rows =
            database.OpenRecordset(u"select distinct PNID from pl_all where "_s + condition);
        for (; !rows->Eof(); rows->MoveNext()) {
            const Pnid list{rows->value(0).toLong()};
            if (std::find(lists.begin(), lists.end(), list) == lists.end()) {
                lists.push_back(list);
            }
        }
    }
    return lists;
}

QString orderMark(Database& database, Pnid list)
{
    // Products tell two swapped entries apart, which plain sums don't; real numbers never overflow.
    const auto sums = database.OpenRecordset(
        u"select count(*) as c, sum(sid) as s, sum(1.0*plid*sid) as p from pl_all where pnid="_s +
        sql::number(numberOf(list)));
    return u"%1:%2:%3"_s.arg(sums->value(0).toText(), sums->value(1).toText(),
                             sums->value(2).toText());
}

bool standsBefore(Database& database, const ListDelta& delta, TrackReach reach)
{
    return std::all_of(delta.begin(), delta.end(), [&](const TableDelta& table) {
        if (isOfPlays(table, reach)) {
            return playsStand(database, table);
        }
        [[maybe_unused]] const std::vector<WrittenColumn> known = columnsOf(database, table, reach);
        return tableStandsBefore(database, table);
    });
}

void applyDelta(Database& database, const ListDelta& delta, TrackReach reach)
{
    for (const TableDelta& table : delta) {
        if (isOfPlays(table, reach)) {
            movePlays(database, table);
            continue;
        }
        const std::vector<WrittenColumn> columns = columnsOf(database, table, reach);
        removeRows(database, table, RowChange::Kind::Removed);
        alterRows(database, table, columns);
        removeRows(database, table, RowChange::Kind::Added);
        addRows(database, table, columns);
    }
}

} // namespace melovane
