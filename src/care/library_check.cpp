#include "care/library_check.h"

#include "platform/db/database.h"
#include "platform/db/db_error.h"
#include "platform/db/sql_text.h"
#include "platform/system/files.h"
#include "platform/system/path_text.h"
#include "playlists/history_file.h"
#include "store/check_database.h"
#include "store/keep_aside.h"

#include <algorithm>
#include <array>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// What the engine says of an index; all other words are about pages and rows.
bool isAboutIndex(const QString& line)
{
    return line.contains(u"missing from index"_s) || line.contains(u"entries in index"_s) ||
           line.contains(u"entry in index"_s);
}

const QString kCountsOfLists =
    u"select pl_name.NID as NID, pl_name.Name as Name, pl_name.anzahl as anzahl, "
    "count(pl_all.PLID) as entries from pl_name left join pl_all on pl_name.NID=pl_all.PNID "
    "group by pl_name.NID, pl_name.Name, pl_name.anzahl"_s;

const QString kEntriesWithoutTrack =
    u"select count(*) as anz from pl_all where FID not in (select FID from db_all)"_s;
const QString kEntriesWithoutList =
    u"select count(*) as anz from pl_all where PNID not in (select NID from pl_name)"_s;
const QString kPlaysWithoutTrack =
    u"select count(*) as anz from pl_stat where FID not in (select FID from db_all)"_s;
const QString kTracksWithoutId =
    u"select count(*) as anz from db_all where len(FID)<>12 or FID is null"_s;
const QString kListsWithoutGroup =
    u"select NID, Name from pl_name where GRID<>-1 and GRID not in (select GRID from pl_group)"_s;
const QString kListsThatAreMissing =
    u"select PNID, count(*) as anz from pl_all where PNID not in (select NID from pl_name) "
    "group by PNID"_s;
/// Lists whose file holds them as they are.
const QString kStoredLists =
    u"select NID from pl_name where sicherung=false and anzahl>0 order by NID"_s;

/// Notes between programs that no program can follow: a track that is not there, a tree that is
/// none, a text under no number. `todo` holds texts of every form, so only its number says
/// anything.
const std::array kJobsOfNobody{
    u"db_edit where FID is null or FID not in (select FID from db_all)"_s,
    u"ChangeTree where TreeName is null or "
    "TreeName not in ('Interpret','Album','Genre','Dir')"_s,
    u"todo where ID is null or not IsNumeric(ID)"_s,
};

/// What every library has had from its beginning, and the user cannot remove.
constexpr std::array kNeverEmpty{u"genre", u"config", u"db_version", u"TreeErweitertConfig"};

/// How the names of tables begin that side files are made after; they never have rows.
constexpr QStringView kTemplate = u"X_";

/// What SQLite keeps beside a file. Left behind it would be played into the next one.
constexpr std::array kJournals{u"-wal", u"-shm", u"-journal"};

} // namespace

bool canBeMended(Flaw flaw)
{
    switch (flaw) {
    case Flaw::IndexDamaged:
    case Flaw::TemplateFilled:
    case Flaw::JobUnknown:
    case Flaw::CountWrong:
    case Flaw::EntryWithoutList:
    case Flaw::ListWithoutGroup:
    case Flaw::SideFileMissing:
    case Flaw::SideFileDamaged:
    case Flaw::ListFileMissing:
        return true;
    case Flaw::Unreadable:
    case Flaw::PageDamaged:
    case Flaw::TableLost:
    case Flaw::EntryWithoutTrack:
    case Flaw::PlayWithoutTrack:
    case Flaw::TrackWithoutId:
    case Flaw::HistoryDamaged:
        return false;
    }
    return false;
}

LibraryCheck::LibraryCheck(const Parts& parts, Place place)
    : m_parts(parts)
    , m_place(std::move(place))
{}

QString LibraryCheck::sideFile(QStringView name) const
{
    return path::join(m_place.dataFolder, name);
}

std::optional<std::vector<Finding>> LibraryCheck::run(DatabaseCare::Depth depth,
                                                      const SliceStep& step)
{
    m_findings.clear();
    try {
        if (!checkFile(depth, step)) {
            return std::nullopt;
        }
        const auto database = m_parts.engine.OpenDatabase(m_place.library);
        checkRows(*database);
        checkListFiles(*database);
    } catch (const DbError& error) {
        add(Flaw::Unreadable, error.text());
    }
    if (!checkSideFiles(step)) {
        return std::nullopt;
    }
    std::stable_sort(m_findings.begin(), m_findings.end(),
                     [](const Finding& a, const Finding& b) { return a.flaw < b.flaw; });
    return m_findings;
}

bool LibraryCheck::checkFile(DatabaseCare::Depth depth, const SliceStep& step)
{
    const auto lines = m_parts.care.check(m_place.library, depth, step);
    if (!lines) {
        return false;
    }
    for (const QString& line : *lines) {
        add(isAboutIndex(line) ? Flaw::IndexDamaged : Flaw::PageDamaged, line);
    }
    return true;
}

void LibraryCheck::checkRows(Database& database)
{
    checkTables(database);
    checkJobs(database);
    checkCounts(database);
    checkOrphans(database);
}

/// The engine has no checksums: a page of nothing in place of a small table's only one is whole,
/// and so is one of another table.
void LibraryCheck::checkTables(Database& database)
{
    for (const QStringView table : kNeverEmpty) {
        const QString name = table.toString();
        if (database.OpenRecordset(u"select top 1 * from "_s + name)->Eof()) {
            add(Flaw::TableLost, name);
        }
    }
    for (const QString& name : database.tableDefs().ownNames()) {
        if (name.startsWith(kTemplate, Qt::CaseInsensitive) &&
            !database.OpenRecordset(u"select top 1 * from ["_s + name + u']')->Eof()) {
            add(Flaw::TemplateFilled, name);
        }
    }
}

void LibraryCheck::checkJobs(Database& database)
{
    qint64 count = 0;
    for (const QString& jobs : kJobsOfNobody) {
        count += database.OpenRecordset(u"select count(*) as anz from "_s + jobs)
                     ->value(u"anz")
                     .toInt64();
    }
    if (count > 0) {
        add(Flaw::JobUnknown, QString::number(count));
    }
}

void LibraryCheck::checkCounts(Database& database)
{
    const auto lists = database.OpenRecordset(kCountsOfLists);
    for (; !lists->Eof(); lists->MoveNext()) {
        if (lists->value(u"anzahl").toInt64() != lists->value(u"entries").toInt64()) {
            add(Flaw::CountWrong, lists->value(u"Name").toText());
        }
    }
}

void LibraryCheck::addCount(Database& database, Flaw flaw, const QString& statement)
{
    const qint64 count = database.OpenRecordset(statement)->value(u"anz").toInt64();
    if (count > 0) {
        add(flaw, QString::number(count));
    }
}

void LibraryCheck::checkOrphans(Database& database)
{
    addCount(database, Flaw::EntryWithoutTrack, kEntriesWithoutTrack);
    addCount(database, Flaw::EntryWithoutList, kEntriesWithoutList);
    addCount(database, Flaw::PlayWithoutTrack, kPlaysWithoutTrack);
    addCount(database, Flaw::TrackWithoutId, kTracksWithoutId);
    const auto lists = database.OpenRecordset(kListsWithoutGroup);
    for (; !lists->Eof(); lists->MoveNext()) {
        add(Flaw::ListWithoutGroup, lists->value(u"Name").toText());
    }
}

/// Nothing when the step gave it up.
std::optional<bool> LibraryCheck::isWhole(const QString& file, const SliceStep& step)
{
    try {
        const auto lines = m_parts.care.check(file, DatabaseCare::Depth::Indexes, step);
        return lines ? std::optional(lines->isEmpty()) : std::nullopt;
    } catch (const DbError&) {
        return false;
    }
}

bool LibraryCheck::checkSideFiles(const SliceStep& step)
{
    if (m_place.dataFolder.isEmpty()) {
        return true;
    }
    for (const QStringView name : {kTempFile, kTreeFile}) {
        const QString file = sideFile(name);
        if (!m_parts.files.fileExists(file)) {
            add(Flaw::SideFileMissing, file);
            continue;
        }
        const auto whole = isWhole(file, step);
        if (!whole) {
            return false;
        }
        if (!*whole) {
            add(Flaw::SideFileDamaged, file);
        }
    }
    const QString history = historyFileOf(m_place.library);
    if (m_parts.files.fileExists(history)) {
        const auto whole = isWhole(history, step);
        if (!whole) {
            return false;
        }
        if (!*whole) {
            add(Flaw::HistoryDamaged, history);
        }
    }
    return true;
}

void LibraryCheck::checkListFiles(Database& database)
{
    if (m_place.listFiles.isEmpty()) {
        return;
    }
    const auto lists = database.OpenRecordset(kStoredLists);
    for (; !lists->Eof(); lists->MoveNext()) {
        const QString file = m_place.listFiles.value(Pnid(lists->value(0).toLong()));
        if (!file.isEmpty() && !m_parts.files.fileExists(file)) {
            add(Flaw::ListFileMissing, file);
        }
    }
}

bool LibraryCheck::repair(const std::vector<Finding>& findings)
{
    const auto has = [&findings](Flaw flaw) {
        return std::any_of(findings.begin(), findings.end(),
                           [flaw](const Finding& finding) { return finding.flaw == flaw; });
    };
    // What is written into a damaged file may hit what could still be read.
    if (has(Flaw::Unreadable) || has(Flaw::PageDamaged)) {
        return false;
    }
    // The rows are changed by way of the indexes.
    if (has(Flaw::IndexDamaged)) {
        m_parts.care.reindex(m_place.library);
    }
    {
        const auto database = m_parts.engine.OpenDatabase(m_place.library);
        Transaction change(*database);
        if (has(Flaw::EntryWithoutList) || has(Flaw::ListWithoutGroup)) {
            mendHomeless(*database);
        }
        emptyTemplates(*database, findings);
        if (has(Flaw::JobUnknown)) {
            dropJobs(*database);
        }
        mendCounts(*database);
        if (has(Flaw::ListFileMissing)) {
            mendListFiles(*database);
        }
        change.commit();
    }
    for (const Finding& finding : findings) {
        if (finding.flaw == Flaw::SideFileDamaged) {
            dropSideFile(finding.what);
        }
    }
    if (!has(Flaw::SideFileDamaged) && !has(Flaw::SideFileMissing)) {
        return false;
    }
    CheckDatabase check(m_parts.engine, m_parts.files, m_parts.clock,
                        {m_place.library, m_place.dataFolder, {}}, {});
    check.checkTempTables();
    return check.checkTreeTables() < 0;
}

void LibraryCheck::dropJobs(Database& database)
{
    for (const QString& jobs : kJobsOfNobody) {
        database.Execute(u"delete from "_s + jobs);
    }
}

void LibraryCheck::emptyTemplates(Database& database, const std::vector<Finding>& findings)
{
    for (const Finding& finding : findings) {
        if (finding.flaw == Flaw::TemplateFilled) {
            database.Execute(u"delete from ["_s + finding.what + u']');
        }
    }
}

void LibraryCheck::mendCounts(Database& database) const
{
    const auto lists = database.OpenRecordset(kCountsOfLists);
    for (; !lists->Eof(); lists->MoveNext()) {
        const qint64 entries = lists->value(u"entries").toInt64();
        if (lists->value(u"anzahl").toInt64() != entries) {
            database.Execute(u"update pl_name set anzahl="_s + sql::number(entries) +
                             u" where NID="_s + sql::number(lists->value(u"NID").toInt64()));
        }
    }
}

/// The group for what has none, made when it is needed.
qint64 LibraryCheck::restGroup(Database& database) const
{
    const QString name = sql::text(m_place.restName);
    const QString look = u"select GRID from pl_group where Name="_s + name;
    const auto known = database.OpenRecordset(look);
    if (!known->Eof()) {
        return known->value(0).toInt64();
    }
    database.Execute(u"insert into pl_group (Name,SID,Activ) values ("_s + name + u",9999,true)"_s);
    return database.OpenRecordset(look)->value(0).toInt64();
}

void LibraryCheck::mendHomeless(Database& database) const
{
    const QString group = sql::number(restGroup(database));
    const auto lost = database.OpenRecordset(kListsThatAreMissing);
    for (; !lost->Eof(); lost->MoveNext()) {
        const QString number = sql::number(lost->value(u"PNID").toInt64());
        database.Execute(
            u"insert into pl_name (NID,GRID,Name,anzahl,sicherung) values (%1,%2,%3,%4,true)"_s.arg(
                number, group, sql::text(m_place.restName + u' ' + number),
                sql::number(lost->value(u"anz").toInt64())));
    }
    database.Execute(u"update pl_name set GRID="_s + group +
                     u" where GRID<>-1 and GRID not in (select GRID from pl_group)"_s);
}

/// They are written again by the next program that stores lists.
void LibraryCheck::mendListFiles(Database& database) const
{
    for (auto place = m_place.listFiles.begin(); place != m_place.listFiles.end(); ++place) {
        if (!m_parts.files.fileExists(place.value())) {
            database.Execute(u"update pl_name set sicherung=true where anzahl>0 and NID="_s +
                             sql::number(numberOf(place.key())));
        }
    }
}

/// What cannot be read any more is kept beside it.
void LibraryCheck::dropSideFile(const QString& file) const
{
    m_parts.engine.Release(m_place.library);
    m_parts.engine.Release(file);
    quietly({}, {}, [&] { (void)keepAside(m_parts.files, file); });
    m_parts.files.remove(file);
    for (const QStringView journal : kJournals) {
        m_parts.files.remove(file + journal.toString());
    }
}

} // namespace melovane
