#include "playlists/entry_places.h"

#include "platform/db/database.h"
#include "platform/db/sql_text.h"
#include "playlists/playlist_table.h"
#include "store/row_statements.h"

#include <QHash>

#include <algorithm>
#include <limits>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

std::vector<EntryPlace> readPlaces(Database& database, const QString& statement)
{
    std::vector<EntryPlace> places;
    const auto rows = database.OpenRecordset(statement);
    places.reserve(size_t(rows->rowCount()));
    for (; !rows->Eof(); rows->MoveNext()) {
        places.push_back({Plid(rows->value(0).toLong()), Pnid(rows->value(1).toLong()),
                          Sid(rows->value(2).toLong())});
    }
    return places;
}

std::vector<EntryPlace> placesWhere(Database& database, const QString& condition)
{
    return readPlaces(database, u"select plid, pnid, sid from pl_all where "_s + condition +
                                    u" order by sid, plid desc"_s);
}

} // namespace

Sid clampedSid(qint64 position)
{
    using Limits = std::numeric_limits<qint32>;
    return Sid(std::clamp<qint64>(position, Limits::min(), Limits::max()));
}

qint64 nextSid(Database& database, Pnid list)
{
    const auto highest = database.OpenRecordset(
        u"select max(sid) as msid from pl_all where pnid="_s + sql::number(numberOf(list)));
    return highest->value(u"msid").toInt64() + 1;
}

std::vector<EntryPlace> placesFrom(Database& database, Pnid list, Sid position)
{
    return placesWhere(database, u"PNID="_s + sql::number(numberOf(list)) + u" and SID>="_s +
                                     sql::number(numberOf(position)));
}

std::optional<EntryPlace> placeOf(Database& database, Plid entry)
{
    const auto found = placesWhere(database, u"plid="_s + sql::number(numberOf(entry)));
    return found.empty() ? std::nullopt : std::optional(found.front());
}

std::optional<EntryPlace> neighbourOf(Database& database, const EntryPlace& place, int step)
{
    // Of equal positions the younger entry stands first, so numbers run against positions.
    const QString side = step < 0 ? u"<"_s : u">"_s;
    const QString ofNumber = step < 0 ? u">"_s : u"<"_s;
    const QString order =
        step < 0 ? u"pl_all.sid desc, pl_all.plid"_s : u"pl_all.sid, pl_all.plid desc"_s;
    const QString sid = sql::number(numberOf(place.position));
    const auto found = readPlaces(
        database,
        u"select top 1 pl_all.plid, pl_all.pnid, pl_all.sid from pl_all inner join db_all on "
        "pl_all.fid = db_all.fid where pl_all.pnid=%1 and pl_all.sid%2=%3 "
        "and (pl_all.sid%2%3 or pl_all.plid%4%5) order by %6"_s.arg(
            sql::number(numberOf(place.list)), side, sid, ofNumber,
            sql::number(numberOf(place.entry)), order));
    return found.empty() ? std::nullopt : std::optional(found.front());
}

std::vector<Pnid> listsOf(Database& database, const QString& condition)
{
    std::vector<Pnid> lists;
    const auto rows =
        database.OpenRecordset(u"select distinct pnid from pl_all where "_s + condition);
    for (; !rows->Eof(); rows->MoveNext()) {
        lists.push_back(Pnid(rows->value(0).toLong()));
    }
    return lists;
}

PlaceWriter::PlaceWriter(Database& database, ListEdit& edit)
    : m_edit(edit)
    , m_update(database,
               kEntryTable.toString(),
               {keyColumnOf(kEntryTable), FieldType::Long},
               {{u"SID"_s, FieldType::Long}, {u"PNID"_s, FieldType::Long}})
{}

void PlaceWriter::write(const EntryPlace& from, Pnid list, Sid position)
{
    m_update.run(numberOf(from.entry), {numberOf(position), numberOf(list)});
    m_edit.moved(from.entry, {from.list, from.position}, {list, position});
}

void swapNeighbours(Database& database,
                    ListEdit& edit,
                    const EntryPlace& upper,
                    const EntryPlace& lower)
{
    PlaceWriter writer(database, edit);
    const Pnid list = upper.list;
    const auto sharers = placesWhere(
        database, u"pnid=%1 and sid in (%2,%3)"_s.arg(sql::number(numberOf(list)),
                                                      sql::number(numberOf(upper.position)),
                                                      sql::number(numberOf(lower.position))));
    if (upper.position != lower.position && sharers.size() == 2) {
        writer.write(upper, list, lower.position);
        writer.write(lower, list, upper.position);
        return;
    }
    std::vector<EntryPlace> places = placesFrom(database, list, upper.position);
    const auto placeIn = [&places](Plid entry) {
        return std::find_if(places.begin(), places.end(),
                            [entry](const EntryPlace& place) { return place.entry == entry; });
    };
    const auto first = placeIn(upper.entry);
    const auto second = placeIn(lower.entry);
    if (first == places.end() || second == places.end()) {
        return; // another program has taken one of them away
    }
    std::vector<qint64> positions;
    positions.reserve(places.size());
    for (const EntryPlace& place : places) {
        positions.push_back(numberOf(place.position));
    }
    std::iter_swap(first, second);
    for (size_t i = 0; i < places.size(); ++i) {
        const bool follows = i == 0 || positions[i] > positions[i - 1] ||
                             (positions[i] == positions[i - 1] &&
                              numberOf(places[i].entry) < numberOf(places[i - 1].entry));
        if (!follows) {
            positions[i] = positions[i - 1] + 1;
        }
        if (const Sid target = clampedSid(positions[i]); target != places[i].position) {
            writer.write(places[i], list, target);
        }
    }
}

void makeRoom(Database& database, ListEdit& edit, Pnid list, Sid position, qint64 newFirst)
{
    PlaceWriter writer(database, edit);
    for (const EntryPlace& place : placesFrom(database, list, position)) {
        const Sid target = clampedSid(newFirst++);
        if (target != place.position) {
            writer.write(place, list, target);
        }
    }
}

void moveEntries(Database& database,
                 ListEdit& edit,
                 const QStringList& ids,
                 Pnid list,
                 qint64 first)
{
    QHash<qint64, EntryPlace> known;
    for (const QString& condition : keyConditions(u"plid", entryNumbers(ids))) {
        for (const EntryPlace& place : placesWhere(database, condition)) {
            known.insert(numberOf(place.entry), place);
            edit.alsoChanges(place.list);
        }
    }
    PlaceWriter writer(database, edit);
    for (const QString& id : ids) {
        const auto place = known.constFind(entryNumber(id).value_or(0));
        const Sid target = clampedSid(first++);
        if (place != known.cend()) {
            writer.write(*place, list, target);
        }
    }
}

void addCopies(Database& database,
               const GetPLData::Entries& sources,
               const QStringList& ids,
               Pnid list,
               qint64 first,
               UnknownEntry unknown)
{
    QStringList names{u"SID"_s, u"PNID"_s};
    std::vector<size_t> copied; // columns of the source behind these two
    for (qsizetype i = 0; i < sources.columns.size(); ++i) {
        const QString name = sources.columns[i].toUpper();
        if (name != "PLID"_L1 && name != "SID"_L1 && name != "PNID"_L1) {
            names.append(sources.columns[i]);
            copied.push_back(size_t(i));
        }
    }
    const QString table = kEntryTable.toString();
    RowInsert insert(database, table, writtenColumns(database, table, names));
    for (const QString& id : ids) {
        const auto source = sources.rows.constFind(entryNumber(id).value_or(0));
        if (source == sources.rows.cend()) {
            first += unknown == UnknownEntry::KeepsItsPlace ? 1 : 0;
            continue;
        }
        std::vector<Value> values{numberOf(clampedSid(first++)), numberOf(list)};
        for (const size_t column : copied) {
            values.push_back((*source)[column]);
        }
        insert.run(values);
    }
}

} // namespace melovane
