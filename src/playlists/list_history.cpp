#include "playlists/list_history.h"

#include "config/global_settings.h"
#include "platform/db/database.h"
#include "platform/db/db_error.h"
#include "platform/db/sql_text.h"
#include "platform/system/clock.h"
#include "platform/system/files.h"
#include "playlists/history_file.h"
#include "playlists/list_delta.h"
#include "playlists/playlist_table.h"
#include "playlists/touched_entries.h"
#include "store/create_db.h"
#include "store/keep_aside.h"
#include "store/pending_jobs.h"
#include "store/track_writing.h"

#include <algorithm>
#include <array>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString kAllOfNewest =
    u"select top 1 * from LIST_HISTORY where undone=false order by id desc"_s;
const QString kAllOfOldestUndone =
    u"select top 1 * from LIST_HISTORY where undone=true order by id"_s;

const QString kWordsOfBoth =
    u"select Undone, Verb, PNID, ListName, anzahl, tstamp from LIST_HISTORY "
    "where id in (select max(id) from LIST_HISTORY where undone=false) "
    "or id in (select min(id) from LIST_HISTORY where undone=true)"_s;

FieldDef field(const QString& name, FieldType type, int size)
{
    FieldDef def;
    def.Name = name;
    def.Type = type;
    def.Size = size;
    return def;
}

/// The table of steps. The long text stands last, so that looking at the others never reads it.
TableDef historyTable()
{
    TableDef table;
    table.Name = kHistoryTable.toString();
    table.Fields = {
        field(u"id"_s, FieldType::Long, 4),          field(u"Undone"_s, FieldType::Boolean, 1),
        field(u"Verb"_s, FieldType::Text, 50),       field(u"PNID"_s, FieldType::Long, 4),
        field(u"ListName"_s, FieldType::Text, 255),  field(u"anzahl"_s, FieldType::Long, 4),
        field(u"tstamp"_s, FieldType::Date, 8),      field(u"Letters"_s, FieldType::Long, 4),
        field(u"MarksBefore"_s, FieldType::Memo, 0), field(u"MarksAfter"_s, FieldType::Memo, 0),
        field(u"Changes"_s, FieldType::Memo, 0)};
    table.Fields.front().Attributes = kFieldAutoNumber;
    IndexDef key;
    key.Name = u"PrimaryKey"_s;
    key.Fields = QStringList{u"id"_s};
    key.Primary = key.Unique = true;
    table.Indexes = {key};
    return table;
}

/// True for an error that a new side file heals.
bool isMissingOrBroken(int error)
{
    constexpr std::array kErrors{
        dberror::kFileNotFound,     dberror::kObjectNotFound,     dberror::kItemNotFound,
        dberror::kTooFewParameters, dberror::kUnrecognisedFormat, dberror::kPreviousEngineFile,
        dberror::kCorrupt};
    return std::find(kErrors.begin(), kErrors.end(), error) != kErrors.end();
}

bool isLinkedTo(Database& database, const QString& sideFile)
{
    const QString name = kHistoryTable.toString();
    return database.tableDefs().Contains(name) &&
           database.tableDefs().connectOf(name).compare(u";DATABASE="_s + sideFile,
                                                        Qt::CaseInsensitive) == 0;
}

/// Reads the columns that every step needs. \throws DbError
void lookAtTable(Database& database)
{
    database.OpenRecordset(u"select top 1 id, Undone, Verb, Letters, MarksBefore, MarksAfter, "
                           "Changes from LIST_HISTORY order by id desc"_s);
}

ListStep stepOf(const Recordset& row)
{
    ListStep step;
    step.action = actionOfWord(row.value(u"Verb").toText()).value_or(ListAction::Entry);
    step.list = Pnid(row.value(u"PNID").toLong());
    step.listName = row.value(u"ListName").toText();
    step.count = row.value(u"anzahl").toLong();
    step.moment = row.value(u"tstamp").toDateTime();
    return step;
}

/// Lists and their marks of a text "list=mark;list=mark".
std::vector<std::pair<Pnid, QString>> marksOf(const QString& text)
{
    std::vector<std::pair<Pnid, QString>> marks;
    for (const QString& item : text.split(u';', Qt::SkipEmptyParts)) {
        const qsizetype middle = item.indexOf(u'=');
        marks.emplace_back(Pnid(item.left(middle).toInt()), item.mid(middle + 1));
    }
    return marks;
}

bool marksStand(Database& database, const QString& marks)
{
    const auto known = marksOf(marks);
    return std::all_of(known.begin(), known.end(), [&](const auto& mark) {
        return orderMark(database, mark.first) == mark.second;
    });
}

bool hasEntriesWithoutList(Database& database, const QString& marks)
{
    const auto known = marksOf(marks);
    return std::any_of(known.begin(), known.end(), [&](const auto& mark) {
        const QString number = sql::number(numberOf(mark.first));
        return database.OpenRecordset(u"select nid from pl_name where nid="_s + number)->Eof() &&
               !database.OpenRecordset(u"select top 1 plid from pl_all where pnid="_s + number)
                    ->Eof();
    });
}

/// False, and nothing written, when entries would stand in a list that is gone.
bool writeUnlessLost(Database& database,
                     const ListDelta& delta,
                     const QString& marks,
                     TrackReach reach)
{
    Transaction part(database);
    applyDelta(database, delta, reach);
    if (hasEntriesWithoutList(database, marks)) {
        return false;
    }
    part.commit();
    return true;
}

/// Lists whose files name the places of these tracks are written again.
void markListsOf(Database& database, const std::vector<qint64>& tracks)
{
    QStringList fids;
    for (const qint64 track : tracks) {
        fids.append(QString::number(track));
    }
    for (const Pnid list : listsWith(database, fids)) {
        markChanged(database, list);
    }
}

/// The tracks that a difference has altered and their trees. What stands in files is entered for
/// the job that writes them, so that the files follow.
void tellTracks(Database& database, const ListDelta& delta, QStringList& tracks, QStringList& trees)
{
    for (const TableDelta& table : delta) {
        if (table.table != kTrackTable) {
            continue;
        }
        std::vector<qint64> moved;
        for (const RowChange& row : table.rows) {
            TrackChange change{QString::number(row.key), {}};
            bool isMoved = row.kind != RowChange::Kind::Altered;
            for (const int column : row.columns) {
                change.columns.push_back({table.columns[column], {}, {}});
                isMoved = isMoved || isPlaceColumn(table.columns[column]);
            }
            if (isMoved) {
                moved.push_back(row.key);
            }
            if (row.kind != RowChange::Kind::Altered) {
                trees += {u"Interpret"_s, u"Album"_s, u"Genre"_s};
            }
            tracks.append(change.fid);
            trees.append(change.trees());
            if (change.isInFile()) {
                PendingJobs::SaveEditFID(database, change.fid);
            }
        }
        if (!moved.empty()) {
            trees.append(u"Dir"_s);
            markListsOf(database, moved);
        }
    }
    trees.removeDuplicates();
}

/// A list that comes back keeps the rules of its table: one plays at most, and its group is there.
void fitIn(Database& database, Pnid list)
{
    const QString nid = sql::number(numberOf(list));
    const auto row = database.OpenRecordset(u"select * from pl_name where nid="_s + nid);
    if (row->Eof()) {
        return;
    }
    const qint64 group = row->value(u"GRID").toInt64();
    const bool isJingle = group == numberOf(kJingleGroup);
    const auto playing = database.OpenRecordset(
        u"select nid from pl_name where isplay=true and grid%1 and nid<>%2"_s.arg(
            isJingle ? u"=-1"_s : u">0"_s, nid));
    if (row->value(u"IsPlay").toBool() && !playing->Eof()) {
        database.Execute(u"update pl_name set isplay=false where nid="_s + nid);
    }
    const auto groups = database.OpenRecordset(u"select grid from pl_group order by sid, grid"_s);
    const auto own =
        database.OpenRecordset(u"select grid from pl_group where grid="_s + sql::number(group));
    if (!isJingle && own->Eof() && !groups->Eof()) {
        database.Execute(u"update pl_name set grid="_s + sql::number(groups->value(0).toInt64()) +
                         u" where nid="_s + nid);
    }
}

} // namespace

ListHistory::ListHistory(DBEngine& engine,
                         Files& files,
                         const Clock& clock,
                         const GlobalSettings& settings,
                         ErrorSink sink)
    : m_engine(engine)
    , m_files(files)
    , m_clock(clock)
    , m_settings(settings)
    , m_sink(std::move(sink))
{}

bool ListHistory::isOn() const
{
    return m_settings.GetKeyValueLong(u"Global"_s, kHistorySetting.toString(), 1) != 0;
}

void ListHistory::link(const QString& mainFile, const QString& sideFile) const
{
    MLVCreateDB linker(m_engine, m_files);
    linker.targetFile = mainFile;
    linker.sourceFile = sideFile;
    linker.LinkTable(kHistoryTable.toString());
}

bool ListHistory::follow(Database& database) const
{
    const QString sideFile = historyFileOf(database.Name());
    if (isLinkedTo(database, sideFile)) {
        return true;
    }
    const QString table = kHistoryTable.toString();
    if (!database.tableDefs().Contains(table)) {
        return false;
    }
    if (m_files.fileExists(sideFile)) {
        link(database.Name(), sideFile);
        return true;
    }
    database.tableDefs().Delete(table);
    return false;
}

bool ListHistory::prepare(Database& database)
{
    const QString mainFile = database.Name();
    const QString sideFile = historyFileOf(mainFile);
    const auto make = [&] { makeSideFile(mainFile, sideFile); };
    const auto use = [&] {
        if (!isLinkedTo(database, sideFile)) {
            link(mainFile, sideFile);
        }
        lookAtTable(database);
    };
    const QString where = u"ListHistory"_s;
    const bool isThere = m_files.fileExists(sideFile);
    if (!isThere && quietly(m_sink, where, make) != 0) {
        return false;
    }
    const int error = quietly(m_sink, where, use);
    return error == 0 || (isThere && isMissingOrBroken(error) &&
                          quietly(m_sink, where, make) == 0 && quietly(m_sink, where, use) == 0);
}

void ListHistory::makeSideFile(const QString& mainFile, const QString& sideFile)
{
    // Whatever stands under that name cannot be read; its steps are gone, its bytes are kept.
    if (m_files.fileExists(sideFile)) {
        const QString kept = keepAside(m_files, sideFile);
        if (m_sink) {
            m_sink(u"ListHistory"_s, u"The damaged file was kept as "_s + kept);
        }
        if (m_begunAnew) {
            m_begunAnew(kept);
        }
    }
    MLVCreateDB maker(m_engine, m_files);
    maker.targetFile = sideFile;
    maker.sourceFile = mainFile;
    maker.CreateDB();
    m_engine.OpenDatabase(sideFile)->tableDefs().Append(historyTable());
    // From now on it is reached through its library, and let go with it.
    m_engine.Release(sideFile);
}

void ListHistory::write(Database& database, const Record& record)
{
    database.Execute(u"delete from LIST_HISTORY where undone=true"_s);
    const auto set = database.OpenRecordset(u"select * from LIST_HISTORY where id is null"_s);
    set->AddNew();
    set->setValue(u"Undone", false);
    set->setValue(u"Verb", actionWord(record.step.action));
    set->setValue(u"PNID", numberOf(record.step.list));
    set->setValue(u"ListName", record.step.listName.left(255));
    set->setValue(u"anzahl", record.step.count);
    set->setValue(u"tstamp", Value(m_clock.now()));
    set->setValue(u"Letters", int(std::min<qsizetype>(record.changes.size(), INT_MAX)));
    set->setValue(u"MarksBefore", record.marksBefore);
    set->setValue(u"MarksAfter", record.marksAfter);
    set->setValue(u"Changes", record.changes);
    set->Update();
    trim(database);
}

void ListHistory::trim(Database& database)
{
    const auto sums =
        database.OpenRecordset(u"select count(*) as c, sum(Letters) as l from LIST_HISTORY"_s);
    if (sums->value(0).toLong() <= kMaxSteps && sums->value(1).toInt64() <= kMaxLetters) {
        return;
    }
    const auto steps =
        database.OpenRecordset(u"select id, Letters from LIST_HISTORY order by id desc"_s);
    qint64 letters = 0;
    for (int kept = 0; !steps->Eof(); ++kept, steps->MoveNext()) {
        letters += steps->value(1).toInt64();
        // The newest step is kept however long it is.
        if (kept > 0 && (kept >= kMaxSteps || letters > kMaxLetters)) {
            database.Execute(u"delete from LIST_HISTORY where id<="_s +
                             sql::number(steps->value(0).toInt64()));
            return;
        }
    }
}

std::optional<ListHistory::Record> ListHistory::next(Database& database, Direction direction)
{
    const auto row =
        database.OpenRecordset(direction == Direction::Undo ? kAllOfNewest : kAllOfOldestUndone);
    if (row->Eof()) {
        return std::nullopt;
    }
    Record record;
    record.id = row->value(u"id").toInt64();
    record.step = stepOf(*row);
    record.marksBefore = row->value(u"MarksBefore").toText();
    record.marksAfter = row->value(u"MarksAfter").toText();
    record.changes = row->value(u"Changes").toText();
    return record;
}

std::optional<ListStep> ListHistory::nextStep(Direction direction) const
{
    std::optional<ListStep> step;
    quietly({}, {}, [&] {
        const auto database = m_engine.OpenDatabase(m_settings.DbName());
        if (isOn() && follow(*database)) {
            if (const auto record = next(*database, direction)) {
                step = record->step;
            }
        }
    });
    return step;
}

ListHistory::NextSteps ListHistory::nextSteps() const
{
    NextSteps steps;
    quietly({}, {}, [&] {
        const auto database = m_engine.OpenDatabase(m_settings.DbName());
        if (!isOn() || !follow(*database)) {
            return;
        }
        const auto row = database->OpenRecordset(kWordsOfBoth);
        for (; !row->Eof(); row->MoveNext()) {
            (row->value(u"Undone").toBool() ? steps.redo : steps.undo) = stepOf(*row);
        }
    });
    return steps;
}

std::optional<ListStep> ListHistory::nextUndo() const
{
    return nextStep(Direction::Undo);
}

std::optional<ListStep> ListHistory::nextRedo() const
{
    return nextStep(Direction::Redo);
}

ListHistory::Result ListHistory::undo(Force force)
{
    return take(Direction::Undo, force);
}

ListHistory::Result ListHistory::redo(Force force)
{
    return take(Direction::Redo, force);
}

ListHistory::Result ListHistory::take(Direction direction, Force force)
{
    Result result;
    const int error = quietly(m_sink, u"ListHistory"_s, [&] {
        const auto database = m_engine.OpenDatabase(m_settings.DbName());
        // Looked at once before the transaction: a side file can only be attached outside of one.
        if (!isOn() || !follow(*database) || !next(*database, direction)) {
            return;
        }
        Transaction change(*database);
        if (const std::optional<Record> record = next(*database, direction)) {
            result.step = record->step;
            result.outcome = Outcome::Failed;
            const Outcome outcome = take(*database, *record, direction, force, result);
            if (outcome != Outcome::ChangedElsewhere) {
                change.commit();
            }
            result.outcome = outcome;
        }
    });
    if (error != 0) {
        result.lists.clear();
        result.entries.clear();
    }
    return result;
}

ListHistory::Outcome ListHistory::take(Database& database,
                                       const Record& record,
                                       Direction direction,
                                       Force force,
                                       Result& result)
{
    const bool isUndo = direction == Direction::Undo;
    const TrackReach reach = trackReach(record.step.action);
    const std::optional<ListDelta> known = readDelta(record.changes);
    if (!known) {
        return drop(database, record, u"it could not be read"_s);
    }
    const ListDelta delta = isUndo ? inverse(*known) : *known;
    const bool isExpected = marksStand(database, isUndo ? record.marksAfter : record.marksBefore) &&
                            standsBefore(database, delta, reach);
    if (!isExpected && force == Force::No) {
        return Outcome::ChangedElsewhere;
    }
    if (!writeUnlessLost(database, delta, record.marksAfter, reach)) {
        return drop(database, record, u"its list is gone"_s);
    }
    for (const auto& [list, mark] : marksOf(record.marksAfter)) {
        fitIn(database, list);
        updateEntryCount(database, list);
        result.lists.push_back(list);
    }
    result.entries = touchedEntries(delta);
    tellTracks(database, delta, result.tracks, result.trees);
    database.Execute(u"update LIST_HISTORY set undone=%1 where id=%2"_s.arg(
        isUndo ? u"true"_s : u"false"_s, sql::number(record.id)));
    return Outcome::Done;
}

/// A step that can never be taken must not stand in the way of the others.
ListHistory::Outcome
ListHistory::drop(Database& database, const Record& record, const QString& why) const
{
    database.Execute(u"delete from LIST_HISTORY where id="_s + sql::number(record.id));
    if (m_sink) {
        m_sink(u"ListHistory"_s, u"Step %1 was dropped: %2"_s.arg(sql::number(record.id), why));
    }
    return Outcome::Failed;
}

void ListHistory::clear()
{
    quietly(m_sink, u"ListHistory"_s, [&] {
        const auto database = m_engine.OpenDatabase(m_settings.DbName());
        if (follow(*database)) {
            database->Execute(u"delete from LIST_HISTORY"_s);
        }
    });
}

} // namespace melovane
