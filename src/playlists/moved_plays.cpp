#include "playlists/moved_plays.h"

#include "platform/db/database.h"
#include "platform/db/recordset.h"
#include "platform/db/sql_text.h"
#include "playlists/playlist_table.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Rows of one moment in one difference.
constexpr qint64 kCounts = 1000;

/// The moment as a number, yyyyMMddhhmmss; 0 for none.
qint64 momentOf(const Value& moment)
{
    return moment.toDateTime().toString(u"yyyyMMddhhmmss"_s).toLongLong();
}

/// What the rows of one track are to become, by their moments.
using Wanted = QHash<qint64, std::vector<QString>>;

QHash<QString, Wanted> wantedOf(const TableDelta& delta)
{
    QHash<QString, Wanted> wanted;
    for (const RowChange& row : delta.rows) {
        if (row.kind == RowChange::Kind::Altered && row.columns.size() == 1) {
            wanted[row.before.front().toText()][row.key / kCounts].push_back(
                row.after.front().toText());
        }
    }
    return wanted;
}

QString statementOf(const QString& fid)
{
    return u"select * from pl_stat where FID="_s + sql::text(fid);
}

} // namespace

DeltaMaker playDelta()
{
    return {kPlayTable.toString(), {u"tstamp"_s, u"FID"_s}};
}

std::vector<qint64> playKeys(Database& database, const QString& fid, PlayCounts& counts)
{
    std::vector<qint64> keys;
    const auto rows = database.OpenRecordset(statementOf(fid));
    for (; !rows->Eof(); rows->MoveNext()) {
        const qint64 moment = momentOf(rows->value(u"tstamp"));
        keys.push_back(moment * kCounts + counts[moment]++ % kCounts);
    }
    return keys;
}

bool playsStand(Database& database, const TableDelta& delta)
{
    const QHash<QString, Wanted> wanted = wantedOf(delta);
    for (auto track = wanted.cbegin(); track != wanted.cend(); ++track) {
        PlayCounts there;
        const auto rows = database.OpenRecordset(statementOf(track.key()));
        for (; !rows->Eof(); rows->MoveNext()) {
            ++there[momentOf(rows->value(u"tstamp"))];
        }
        for (auto moment = track->cbegin(); moment != track->cend(); ++moment) {
            if (there.value(moment.key()) < int(moment->size())) {
                return false;
            }
        }
    }
    return true;
}

void movePlays(Database& database, const TableDelta& delta)
{
    QHash<QString, Wanted> wanted = wantedOf(delta);
    for (auto track = wanted.begin(); track != wanted.end(); ++track) {
        const auto rows = database.OpenRecordset(statementOf(track.key()));
        for (; !rows->Eof(); rows->MoveNext()) {
            const auto moment = track->find(momentOf(rows->value(u"tstamp")));
            if (moment != track->end() && !moment->empty()) {
                rows->Edit();
                rows->setValue(u"FID", moment->back());
                rows->Update();
                moment->pop_back();
            }
        }
    }
}

} // namespace melovane
