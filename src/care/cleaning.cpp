#include "care/cleaning.h"

#include "platform/db/database.h"
#include "platform/db/sql_text.h"
#include "platform/system/clock.h"

#include <array>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// The statements of a box.
struct Removal
{
    QString condition;
    QString remember;
    QString remove;
};

const std::array kRemovals{
    Removal{u"del=-1"_s,
            u"insert into todo ( ID , FID ) select 1 as ID , FID from db_all where del=-1"_s,
            u"delete from db_all where del=-1"_s},
    Removal{u"DTIME='MP3ERROR'"_s,
            u"insert into todo ( ID , FID ) select 1 as ID , FID from db_all where "
            "DTIME='MP3ERROR'"_s,
            u"delete from db_all where DTIME = 'MP3ERROR'"_s},
    Removal{u"del=2"_s,
            u"insert into todo ( ID , FID ) select 1 as ID , FID from db_all where del=2"_s,
            u"delete from db_all where del=2"_s},
};

const QString kRemembered = u"select count(*) as anz from todo where id=1"_s;

const QString kEntriesThatGo = u" from pl_all where fid in (select fid from todo where id=1)"_s;
const QString kListsThatGo = u" from pl_name where anzahl=0 and activ=false and isplay=false"_s;

/// Rows of one transaction.
constexpr int kRowsAtOnce = 1000;
/// Between two questions whether the search goes on: some milliseconds.
constexpr qint64 kRowsBetween = 51;

} // namespace

Cleaning::Cleaning(Database& database, const Clock& clock)
    : m_database(database)
    , m_clock(clock)
{}

QString Cleaning::condition(CleaningBox box)
{
    return kRemovals.at(size_t(box)).condition;
}

int Cleaning::execute(const QString& statement)
{
    m_database.Execute(statement);
    return m_database.RecordsAffected();
}

qint64 Cleaning::number(const QString& statement) const
{
    return m_database.OpenRecordset(statement)->value(0).toInt64();
}

QSet<qint64> Cleaning::numbers(const QString& statement) const
{
    QSet<qint64> found;
    const auto rows = m_database.OpenRecordset(statement);
    for (; !rows->Eof(); rows->MoveNext()) {
        found.insert(rows->value(0).toInt64());
    }
    return found;
}

CleaningCounts Cleaning::count() const
{
    CleaningCounts counts;
    for (size_t i = 0; i < kRemovals.size(); ++i) {
        counts.tracks[i] =
            number(u"select count(fid) as anz from db_all where "_s + kRemovals[i].condition);
    }
    const QString moved[] = {u"del=-1 and drivetyp<>4"_s,
                             u"DTIME='MP3ERROR' and del<>-1 and drivetyp<>4"_s};
    for (size_t i = 0; i < std::size(moved); ++i) {
        const auto sums = m_database.OpenRecordset(
            u"select count(fid) as anz, sum(dlen) as bytes from db_all where "_s + moved[i]);
        counts.files[i] = sums->value(0).toInt64();
        counts.fileBytes[i] = sums->value(1).toInt64();
    }
    counts.entries =
        number(u"select count(*) as anz from pl_all where fid not in (select fid from db_all)"_s);
    counts.lists = number(u"select count(*) as anz from pl_name where activ=false and isplay=false "
                          "and nid not in (select pnid from pl_all where pnid is not null and fid "
                          "in (select fid from db_all))"_s);
    return counts;
}

int Cleaning::removeTracks(CleaningBox box)
{
    const Removal& removal = kRemovals.at(size_t(box));
    Transaction change(m_database);
    m_database.Execute(removal.remember);
    const int removed = execute(removal.remove);
    change.commit();
    return removed;
}

void Cleaning::findOrphans(const std::function<bool(qint64 done, qint64 whole)>& goesOn)
{
    QStringList gone;
    const auto write = [&] {
        Transaction rows(m_database);
        for (const QString& fid : gone) {
            m_database.Execute(u"insert into todo ( ID , FID ) values ( 1 ,"_s + sql::text(fid) +
                               u")"_s);
        }
        rows.commit();
        gone.clear();
    };
    bool isWanted = true;
    for (const QString& table : {u"pl_all"_s, u"pl_stat"_s}) {
        const auto tracks =
            m_database.OpenRecordset(u"select fid from %1 group by fid"_s.arg(table));
        const qint64 whole = tracks->rowCount();
        for (; isWanted && !tracks->Eof(); tracks->MoveNext()) {
            const QString fid = tracks->value(0).toText();
            if (number(u"select count(*) as anz from db_all where fid="_s + sql::text(fid)) == 0) {
                gone.append(fid);
            }
            if (gone.size() == kRowsAtOnce) {
                write();
            }
            const qint64 done = tracks->AbsolutePosition() + 1;
            isWanted = done % kRowsBetween != 0 || goesOn(done, whole);
        }
    }
    write();
}

/// `anzahl` of each list says how many entries it has.
void Cleaning::setCounts()
{
    const auto lists = m_database.OpenRecordset(u"select * from pl_name"_s);
    for (; !lists->Eof(); lists->MoveNext()) {
        const qint64 count = number(u"select count(*) as anz from pl_all where pnid="_s +
                                    sql::number(lists->value(u"NID").toInt64()));
        if (lists->value(u"anzahl").toInt64() != count) {
            lists->Edit();
            lists->setValue(u"anzahl", Value(count));
            lists->setValue(u"UpdateTime", Value(m_clock.now()));
            lists->Update();
        }
    }
}

RemovedDependencies
Cleaning::removeOrphans(const std::function<bool(qint64 done, qint64 whole)>& goesOn)
{
    if (number(kRemembered) == 0) {
        findOrphans(goesOn);
    }
    // One change: a list whose count lies about its entries is never there to be seen.
    Transaction change(m_database);
    RemovedDependencies removed;
    removed.entryKeys = numbers(u"select plid"_s + kEntriesThatGo);
    removed.entries = execute(u"delete"_s + kEntriesThatGo);
    removed.plays =
        execute(u"delete from pl_stat where fid in (select fid from todo where id=1)"_s);
    setCounts();
    removed.listKeys = numbers(u"select nid"_s + kListsThatGo);
    removed.lists = execute(u"delete"_s + kListsThatGo);
    removed.groups =
        execute(u"delete from pl_group where grid not in (select grid from pl_name)"_s);
    change.commit();
    return removed;
}

QSet<QString> Cleaning::removedTracks() const
{
    QSet<QString> fids;
    const auto rows = m_database.OpenRecordset(u"select fid from todo where id=1"_s);
    for (; !rows->Eof(); rows->MoveNext()) {
        fids.insert(rows->value(0).toText());
    }
    return fids;
}

void Cleaning::forgetRemoved()
{
    m_database.Execute(u"delete from todo where id=1"_s);
}

} // namespace melovane
