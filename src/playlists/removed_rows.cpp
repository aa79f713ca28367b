#include "playlists/removed_rows.h"

#include "platform/db/database.h"
#include "platform/db/recordset.h"
#include "platform/db/sql_text.h"
#include "playlists/history_file.h"
#include "playlists/list_history.h"
#include "playlists/playlist_table.h"

#include <algorithm>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

bool isOfTable(const TableDelta& table, QStringView name)
{
    return table.table.compare(name, Qt::CaseInsensitive) == 0;
}

bool hasKey(const TableDelta& table, const QSet<qint64>& keys)
{
    return std::any_of(table.rows.begin(), table.rows.end(),
                       [&](const RowChange& row) { return keys.contains(row.key); });
}

/// Whether a row is, or becomes, one about such a track.
bool isAboutTrack(const TableDelta& table, const QSet<QString>& tracks)
{
    const auto isFid = [&](int column) {
        return table.columns.value(column).compare(u"FID", Qt::CaseInsensitive) == 0;
    };
    const auto isAbout = [&](const RowChange& row, const std::vector<Value>& values) {
        for (size_t i = 0; i < values.size(); ++i) {
            const int column = row.columns.empty() ? int(i) : row.columns[i];
            if (isFid(column) && tracks.contains(values[i].toText())) {
                return true;
            }
        }
        return false;
    };
    return std::any_of(table.rows.begin(), table.rows.end(), [&](const RowChange& row) {
        return isAbout(row, row.before) || isAbout(row, row.after);
    });
}

/// Lists of a text "list=mark;list=mark".
bool namesList(const QString& marks, const QSet<qint64>& lists)
{
    const QStringList items = marks.split(u';', Qt::SkipEmptyParts);
    return std::any_of(items.begin(), items.end(), [&](const QString& item) {
        return lists.contains(item.section(u'=', 0, 0).toLongLong());
    });
}

bool hasOwnSteps(Database& database)
{
    const QString table = kHistoryTable.toString();
    return database.tableDefs().Contains(table) &&
           database.tableDefs().connectOf(table).compare(
               u";DATABASE="_s + historyFileOf(database.Name()), Qt::CaseInsensitive) == 0;
}

} // namespace

bool touches(const ListDelta& delta, const RemovedRows& removed)
{
    return std::any_of(delta.begin(), delta.end(), [&](const TableDelta& table) {
        if (isOfTable(table, kTrackTable)) {
            return std::any_of(table.rows.begin(), table.rows.end(), [&](const RowChange& row) {
                return removed.tracks.contains(QString::number(row.key));
            });
        }
        return (isOfTable(table, u"pl_all") && hasKey(table, removed.entries)) ||
               (isOfTable(table, u"pl_name") && hasKey(table, removed.lists)) ||
               isAboutTrack(table, removed.tracks);
    });
}

void forgetSteps(Database& database, const RemovedRows& removed, const std::function<void()>& turn)
{
    if (removed.isEmpty() || !hasOwnSteps(database)) {
        return;
    }
    const auto ids = database.OpenRecordset(u"select id from LIST_HISTORY"_s);
    for (; !ids->Eof(); ids->MoveNext()) {
        const QString id = sql::number(ids->value(0).toInt64());
        const auto step = database.OpenRecordset(
            u"select MarksAfter, Changes from LIST_HISTORY where id="_s + id);
        if (step->Eof()) {
            continue;
        }
        const auto delta = readDelta(step->value(1).toText());
        if (!delta || touches(*delta, removed) ||
            namesList(step->value(0).toText(), removed.lists)) {
            database.Execute(u"delete from LIST_HISTORY where id="_s + id);
        }
        turn();
    }
}

} // namespace melovane
