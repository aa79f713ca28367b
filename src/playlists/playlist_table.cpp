#include "playlists/playlist_table.h"

#include "platform/db/database.h"
#include "platform/db/db_error.h"
#include "platform/db/sql_text.h"
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
constexpr size_t kKeysAtOnce = 2000;

QString bracketed(const QString& name)
{
    return u'[' + name + u']';
}

/// The columns of a difference. \throws DbError for what is no table or column of lists: a
/// difference may come from a damaged file
std::vector<WrittenColumn> columnsOf(Database& database, const TableDelta& delta)
{
    const QString key = keyColumnOf(delta.table);
    if (key.isEmpty() || delta.columns.value(0).compare(key, Qt::CaseInsensitive) != 0) {
        throw DbError(dberror::kObjectNotFound, u"No table of lists: "_s + delta.table);
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

void removeRows(Database& database, const TableDelta& delta, RowChange::Kind kind)
{
    for (const QString& condition : keyConditions(delta.columns.front(), keysOf(delta, kind))) {
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
                                 RowUpdate(database, delta.table, delta.columns.front(), written));
            update = std::prev(updates.end());
        }
        update->second.run(row.key, row.after);
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

bool tableStandsBefore(Database& database, const TableDelta& delta)
{
    QHash<qint64, const RowChange*> changes;
    std::vector<qint64> keys;
    for (const RowChange& row : delta.rows) {
        changes.insert(row.key, &row);
        keys.push_back(row.key);
    }
    qsizetype found = 0;
    for (const QString& condition : keyConditions(delta.columns.front(), keys)) {
        for (const std::vector<Value>& row :
             readRows(database, delta.table, delta.columns, condition)) {
            const RowChange* change = changes.value(row.front().toInt64());
            if (!change || change->kind == RowChange::Kind::Added ||
                !isAsBefore(*change, row, delta.table == kEntryTable)) {
                return false;
            }
            ++found;
        }
    }
    return found + qsizetype(keysOf(delta, RowChange::Kind::Added).size()) ==
           qsizetype(delta.rows.size());
}

} // namespace

QString keyColumnOf(QStringView table)
{
    static const std::array<std::pair<QStringView, QStringView>, 3> kKeys{
        {{kEntryTable, u"PLID"}, {kListTable, u"NID"}, {kGroupTable, u"GRID"}}};
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
    QStringList conditions;
    for (size_t first = 0; first < keys.size(); first += kKeysAtOnce) {
        QStringList numbers;
        for (size_t i = first; i < std::min(first + kKeysAtOnce, keys.size()); ++i) {
            numbers.append(sql::number(keys[i]));
        }
        conditions.append(bracketed(column.toString()) + u" in ("_s + numbers.join(u',') + u')');
    }
    return conditions;
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

QString orderMark(Database& database, Pnid list)
{
    // Products tell two swapped entries apart, which plain sums don't; real numbers never overflow.
    const auto sums = database.OpenRecordset(
        u"select count(*) as c, sum(sid) as s, sum(1.0*plid*sid) as p from pl_all where pnid="_s +
        sql::number(numberOf(list)));
    return u"%1:%2:%3"_s.arg(sums->value(0).toText(), sums->value(1).toText(),
                             sums->value(2).toText());
}

bool standsBefore(Database& database, const ListDelta& delta)
{
    return std::all_of(delta.begin(), delta.end(), [&](const TableDelta& table) {
        [[maybe_unused]] const std::vector<WrittenColumn> known = columnsOf(database, table);
        return tableStandsBefore(database, table);
    });
}

void applyDelta(Database& database, const ListDelta& delta)
{
    for (const TableDelta& table : delta) {
        const std::vector<WrittenColumn> columns = columnsOf(database, table);
        removeRows(database, table, RowChange::Kind::Removed);
        alterRows(database, table, columns);
        removeRows(database, table, RowChange::Kind::Added);
        addRows(database, table, columns);
    }
}

} // namespace melovane
