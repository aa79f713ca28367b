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

bool bringEntry(Database& database, const KeptRow& row)
{
    const QString number = sql::number(row.value(u"PLID"_s).toInt64());
    const QString list = sql::number(row.value(u"PNID"_s).toInt64());
    const QString track = u" and fid="_s + sql::text(row.value(u"FID"_s).toText());
    if (database.OpenRecordset(u"select nid from pl_name where nid="_s + list)->Eof() ||
        isThere(database, kEntries, u"plid="_s + number + track)) {
        return false;
    }
    const bool isTaken = isThere(database, kEntries, u"plid="_s + number);
    row.write(database, {}, isTaken ? u"PLID"_s : QString());
    database.Execute(u"update pl_name set anzahl=anzahl+1 where nid="_s + list);
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

std::vector<RemovedTrack> tracksToRemove(Database& database, const QString& condition)
{
    const auto entries = rowsByTrack(database, kEntries, condition);
    const auto plays = rowsByTrack(database, kPlays, condition);
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
    for (const TableDelta& table : *kept) {
        for (const RowChange& change : table.rows) {
            if (change.kind != RowChange::Kind::Removed) {
                continue;
            }
            const KeptRow row(table, change);
            if (table.table == kTracks) {
                result.hasTrack = bringTrack(database, row) || result.hasTrack;
            } else if (table.table == kEntries) {
                result.entries += bringEntry(database, row) ? 1 : 0;
            } else if (table.table == kPlays) {
                result.plays += bringPlay(database, row) ? 1 : 0;
            }
        }
    }
    return result;
}

} // namespace melovane
