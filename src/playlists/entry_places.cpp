#include "playlists/entry_places.h"

#include "platform/db/database.h"
#include "platform/db/sql_text.h"
#include "playlists/playlist_table.h"

#include <QHash>

#include <algorithm>
#include <limits>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

Sid clamped(qint64 position)
{
    using Limits = std::numeric_limits<qint32>;
    return Sid(std::clamp<qint64>(position, Limits::min(), Limits::max()));
}

std::vector<EntryPlace> placesWhere(Database& database, const QString& condition)
{
    std::vector<EntryPlace> places;
    const auto rows = database.OpenRecordset(u"select plid, pnid, sid from pl_all where "_s +
                                             condition + u" order by sid, plid"_s);
    places.reserve(size_t(rows->rowCount()));
    for (; !rows->Eof(); rows->MoveNext()) {
        places.push_back({Plid(rows->value(0).toLong()), Pnid(rows->value(1).toLong()),
                          Sid(rows->value(2).toLong())});
    }
    return places;
}

} // namespace

qint64 nextSid(Database& database, Pnid list)
{
    const auto highest = database.OpenRecordset(
        u"select max(sid) as msid from pl_all where pnid="_s + sql::number(numberOf(list)));
    return highest->value(u"msid").toInt64() + 1;
}

std::vector<EntryPlace> placesFrom(Database& database, Pnid list, std::optional<Sid> position)
{
    QString condition = u"PNID="_s + sql::number(numberOf(list));
    if (position) {
        condition += u" and SID>="_s + sql::number(numberOf(*position));
    }
    return placesWhere(database, condition);
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
    , m_update(database.CreateQueryDef(
          {},
          u"parameters paramSid long, paramPnid long, paramPlid long; "
          "update pl_all set sid=paramSid, pnid=paramPnid where plid=paramPlid"_s))
{}

PlaceWriter::~PlaceWriter() = default;

void PlaceWriter::write(const EntryPlace& from, Pnid list, Sid position)
{
    m_update->SetParameter(u"paramSid"_s, numberOf(position));
    m_update->SetParameter(u"paramPnid"_s, numberOf(list));
    m_update->SetParameter(u"paramPlid"_s, numberOf(from.entry));
    m_update->Execute();
    m_edit.moved(from.entry, {from.list, from.position}, {list, position});
}

void makeRoom(Database& database, ListEdit& edit, Pnid list, Sid position, qint64 newFirst)
{
    PlaceWriter writer(database, edit);
    for (const EntryPlace& place : placesFrom(database, list, position)) {
        const Sid target = clamped(newFirst++);
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
        const Sid target = clamped(first++);
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
    const auto set =
        database.OpenRecordset(u"select * from pl_all where PNID="_s + sql::number(numberOf(list)) +
                               u" and SID>="_s + sql::number(first) + u" order by sid"_s);
    std::vector<std::pair<int, size_t>> copied; // column of the set, column of the source
    for (int i = 0; i < set->fieldCount(); ++i) {
        const QString name = set->fieldDef(i).Name.toUpper();
        const auto source = std::find_if(
            sources.columns.cbegin(), sources.columns.cend(),
            [&](const QString& column) { return column.compare(name, Qt::CaseInsensitive) == 0; });
        const bool isPlace = name == "PLID"_L1 || name == "SID"_L1 || name == "PNID"_L1;
        if (!isPlace && source != sources.columns.cend()) {
            copied.emplace_back(i, size_t(source - sources.columns.cbegin()));
        }
    }
    const int sid = set->fieldIndex(u"SID");
    const int pnid = set->fieldIndex(u"PNID");
    for (const QString& id : ids) {
        const auto source = sources.rows.constFind(entryNumber(id).value_or(0));
        if (source == sources.rows.cend()) {
            first += unknown == UnknownEntry::KeepsItsPlace ? 1 : 0;
            continue;
        }
        set->AddNew();
        for (const auto& [to, from] : copied) {
            set->setValue(to, (*source)[from]);
        }
        set->setValue(sid, numberOf(clamped(first++)));
        set->setValue(pnid, numberOf(list));
        set->Update();
    }
}

} // namespace melovane
