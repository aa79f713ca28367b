#include "playlistfiles/mlv_m3u.h"

#include "config/global_settings.h"
#include "intake/import_errors.h"
#include "intake/new_tracks.h"
#include "intake/tag_choice.h"
#include "platform/db/database.h"
#include "platform/db/db_error.h"
#include "platform/db/recordset.h"
#include "platform/db/sql_text.h"
#include "platform/system/io_error.h"
#include "playlistfiles/m3u_writer.h"
#include "playlists/entry_places.h"
#include "playlists/list_edit.h"
#include "playlists/playlist_table.h"
#include "playlists/undo_redo.h"
#include "store/row_statements.h"

#include <algorithm>
#include <iterator>
#include <limits>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString kLoaded = u"TEMP_PLImportM3U"_s;

/// The last position that the table can hold.
constexpr qint64 kLastSid = std::numeric_limits<qint32>::max();

/// Entries written between two turns of the window: some 200 ms on a slow machine.
constexpr int kEntriesAtOnce = 2000;

/// Width of the column for the name of a list.
constexpr int kNameWidth = 255;

/// The fields that an entry takes over from its row, in columns of the same names.
QString entryColumns()
{
    QList<TrackField> fields{TrackField::MixTime};
    std::ranges::copy(kTakenFields, std::back_inserter(fields));
    return columnList(fields);
}

/// A text as it fits into the column of its field.
Value cellOf(const M3uRow& row, const M3uField& field)
{
    if (const auto* const text = std::get_if<M3uField::Text>(&field.member)) {
        return tagchoice::cut(row.**text, rowOf(field.field).type.width);
    }
    return row.*std::get<M3uField::Number>(field.member);
}

QString number(Pnid list)
{
    return sql::number(numberOf(list));
}

qint64 countOf(Database& database, const QString& from)
{
    return database.OpenRecordset(u"select count(*) as anz from "_s + from)
        ->value(u"anz")
        .toInt64();
}

bool isThere(Database& database, Pnid list)
{
    return countOf(database, u"pl_name where nid="_s + number(list)) > 0;
}

/// False when it was ended by `goOn`.
bool writeLoaded(Database& database, const std::vector<M3uRow>& rows, const NewTracks::GoOn& goOn)
{
    database.Execute(u"delete from TEMP_PLImportM3U"_s);
    QStringList columns{u"SID"_s, u"PNID"_s};
    for (const M3uField& field : m3uFields()) {
        columns.append(columnOf(field.field).toString());
    }
    RowInsert insert(database, kLoaded, writtenColumns(database, kLoaded, columns));
    int position = 0;
    for (const M3uRow& row : rows) {
        const bool isAsked = goOn && position > 0 && position % kEntriesAtOnce == 0;
        if (isAsked && !goOn(position, qint64(rows.size()))) {
            return false;
        }
        std::vector<Value> values{++position, 0};
        for (const M3uField& field : m3uFields()) {
            values.push_back(cellOf(row, field));
        }
        insert.run(values);
    }
    return true;
}

Pnid createPlaylist(Database& database, const QString& name, GroupId group)
{
    const auto lists = database.OpenRecordset(u"pl_name"_s);
    lists->AddNew();
    lists->setValue(u"Name", tagchoice::cut(name, kNameWidth));
    lists->setValue(u"GRID", numberOf(group));
    lists->Update();
    lists->SetBookmark(lists->LastModified());
    const int nid = lists->value(u"NID").toLong();
    lists->Edit();
    // Until the group is sorted a new list sorts by its own number.
    lists->setValue(u"SID", nid);
    lists->Update();
    return Pnid(nid);
}

} // namespace

MlvM3U::MlvM3U(M3uParts parts)
    : m_parts(std::move(parts))
    , m_errors(m_parts.files, m_parts.logFolders, m_parts.clock)
{}

QString MlvM3U::GetMessageText(int code)
{
    return importerror::GetMessageText(code);
}

void MlvM3U::runtimeFailure(int code,
                            const QString& source,
                            const QString& file,
                            const QString& text)
{
    m_errors.add(code, source, file.isEmpty() ? text : file + u": "_s + text);
    if (events.RtError) {
        events.RtError(code, text, source);
    }
}

void MlvM3U::guarded(const QString& source,
                     const QString& file,
                     const std::function<void()>& work,
                     int databaseCode)
{
    m_databaseFailure = 0;
    try {
        work();
    } catch (const DbError& error) {
        m_databaseFailure = error.number();
        runtimeFailure(databaseCode, source, file, error.text());
    } catch (const IoError& error) {
        runtimeFailure(importerror::kFile, source, error.path(), error.reason());
    }
    m_errors.flush();
}

int MlvM3U::LoadPlaylist(const QString& file)
{
    return LoadPlaylists({file});
}

int MlvM3U::LoadPlaylists(const QStringList& files)
{
    m_errors.restart();
    m_givenUp = false;
    m_loaded = 0;
    m_entered = 0;
    guarded(
        u"LoadPlaylist"_s, files.join(u", "_s), [&] { load(files); }, importerror::kFile);
    return m_errors.count();
}

void MlvM3U::load(const QStringList& files)
{
    const auto database = m_parts.engine.OpenDatabase(m_parts.settings.DbName());
    NewTracks tracks(*database, m_parts.settings, m_parts.files, m_parts.reader, m_parts.clock);
    M3uLoader loader(m_parts, events, *database, tracks, m_errors);
    for (const QString& file : files) {
        try {
            m_givenUp = m_givenUp || !loader.load(file);
        } catch (const DbError& error) {
            // The load ends with the rows that it has.
            runtimeFailure(importerror::kFile, u"LoadPlaylist"_s, file, error.text());
        } catch (const IoError& error) {
            runtimeFailure(importerror::kFile, u"LoadPlaylist"_s, file, error.reason());
        }
    }
    m_givenUp = m_givenUp || !keep(*database, tracks, loader);
    if (m_givenUp) {
        database->Execute(u"delete from TEMP_PLImportM3U"_s);
    }
}

/// Writes the new tracks and the rows of the list; false when the user has ended that, and nothing
/// was written.
bool MlvM3U::keep(Database& database, NewTracks& tracks, M3uLoader& loader)
{
    Transaction all(database);
    if (!tracks.write(events.goOn)) {
        return false;
    }
    loader.takeWritten();
    if (!writeLoaded(database, loader.rows(), events.goOn)) {
        return false;
    }
    all.commit();
    m_loaded = int(loader.rows().size());
    m_entered = tracks.entered();
    return true;
}

int MlvM3U::addSlice(Database& database, Pnid list, qint64 before, int first, int last)
{
    const QString position = u"SID+%1"_s.arg(sql::number(before));
    // Those beyond the last position share it, where the younger stands first: they come backwards.
    database.Execute(
        u"insert into pl_all (FID, %5, SID, PNID, Aktion) select FID, %5, iif(%1>%2, %2, %1), %3, "
        "%4 from TEMP_PLImportM3U where SID between %6 and %7 order by iif(%1>%2, -SID, SID)"_s.arg(
            position, sql::number(kLastSid), number(list), sql::number(qint64{m_aktion}),
            entryColumns(), sql::number(qint64{first}), sql::number(qint64{last})));
    return database.RecordsAffected();
}

/// Nothing when the user has ended it: the caller's transaction is to be left.
std::optional<int> MlvM3U::addLoaded(Database& database, Pnid list, qint64 before)
{
    // Entries that share the last position are written in one go: their order is that of writing.
    const bool isOneSlice = before + m_loaded > kLastSid;
    const int slice = isOneSlice ? m_loaded : kEntriesAtOnce;
    int added = 0;
    for (int first = 1; first <= m_loaded; first += slice) {
        const bool isAsked = first > 1 && events.goOn;
        if (isAsked && !events.goOn(first - 1, m_loaded)) {
            m_givenUp = true;
            return {};
        }
        added += addSlice(database, list, before, first, first + slice - 1);
    }
    return added;
}

int MlvM3U::Append(Pnid list)
{
    int count = 0;
    guarded(u"Append"_s, {}, [&] {
        const auto database = m_parts.engine.OpenDatabase(m_parts.settings.DbName());
        if (m_loaded == 0 || !isThere(*database, list) || countOf(*database, kLoaded) == 0) {
            return;
        }
        m_parts.snapshots.UndoSnapshot(list, *database, undoaction::kAppendM3u);
        ListEdit edit(m_parts.history, *database, ListAction::Import, list);
        const Value last =
            database
                ->OpenRecordset(u"select max(sid) as anz from pl_all where pnid="_s + number(list))
                ->value(u"anz");
        edit.newEntriesFollow();
        const auto added = addLoaded(*database, list, last.isNull() ? 1 : last.toLong());
        if (!added) {
            return;
        }
        updateEntryCount(*database, list);
        edit.commit();
        count = *added;
    });
    return count;
}

int MlvM3U::Insert(Sid position, Pnid list)
{
    int count = 0;
    guarded(u"Insert"_s, {}, [&] {
        const auto database = m_parts.engine.OpenDatabase(m_parts.settings.DbName());
        const qint64 loaded = countOf(*database, kLoaded);
        if (m_loaded == 0 || !isThere(*database, list) || loaded == 0) {
            return;
        }
        m_parts.snapshots.UndoSnapshot(list, *database, undoaction::kInsertM3u);
        ListEdit edit(m_parts.history, *database, ListAction::Import, list);
        edit.newEntriesFollow();
        makeRoom(*database, edit, list, position, numberOf(position) + loaded + 1);
        // One place stays free, and the last new entry meets the first that was moved: lists of the
        // suite are numbered so. The new one is younger and stands first.
        const auto added = addLoaded(*database, list, numberOf(position) + 1);
        if (!added) {
            return;
        }
        updateEntryCount(*database, list);
        edit.commit();
        count = *added;
    });
    return count;
}

Pnid MlvM3U::importAsNewList(const QString& name, GroupId group)
{
    Pnid made{};
    guarded(u"CreatePlaylist"_s, {}, [&] {
        const auto database = m_parts.engine.OpenDatabase(m_parts.settings.DbName());
        ListEdit edit(m_parts.history, *database, ListAction::Import, Pnid{});
        const Pnid list = createPlaylist(*database, name, group);
        edit.setName(name);
        edit.alsoChanges(list);
        edit.newEntriesFollow();
        if (!addLoaded(*database, list, 1)) {
            return;
        }
        updateEntryCount(*database, list);
        database->Execute(u"update pl_name set activ=true where nid="_s + number(list));
        edit.adds(kListTable, u"nid="_s + number(list));
        edit.commit();
        made = list;
    });
    return made;
}

bool MlvM3U::IsChangePlaylist()
{
    bool changed = false;
    guarded(u"IsChangePlaylist"_s, {}, [&] {
        changed = countOf(*m_parts.engine.OpenDatabase(m_parts.settings.DbName()),
                          u"VPLGROUP_SAVE"_s) > 0;
    });
    return changed;
}

void MlvM3U::ChangeAllPlaylist()
{
    guarded(u"ChangeAllPlaylist"_s, {}, [&] {
        m_parts.engine.OpenDatabase(m_parts.settings.DbName())
            ->Execute(u"update pl_name set sicherung=true"_s);
        m_parts.engine.Idle(dbRefreshCache);
    });
}

Pnid MlvM3U::CreatePlaylist(const QString& name, GroupId group)
{
    Pnid made{};
    guarded(u"CreatePlaylist"_s, {}, [&] {
        const auto database = m_parts.engine.OpenDatabase(m_parts.settings.DbName());
        Transaction whole(*database);
        const Pnid list = createPlaylist(*database, name, group);
        whole.commit();
        made = list;
    });
    return made;
}

QString MlvM3U::fileNameOf(Pnid list)
{
    QString name;
    guarded(u"SavePlaylist"_s, {}, [&] {
        const auto database = m_parts.engine.OpenDatabase(m_parts.settings.DbName());
        name = M3uWriter(*database, m_parts.files).nameOf(list);
    });
    return name;
}

bool MlvM3U::SavePlaylist(Pnid list, QString& target, bool relative, const QString& folder)
{
    bool done = false;
    m_leftOut.clear();
    guarded(u"SavePlaylist"_s, target, [&] {
        const auto database = m_parts.engine.OpenDatabase(m_parts.settings.DbName());
        M3uWriter writer(*database, m_parts.files);
        m_leftOut = writer.withoutTrack(list);
        const auto names = relative ? M3uWriter::Names::Relative : M3uWriter::Names::Full;
        target = writer.write(list, target, names, folder);
        done = true;
    });
    return done;
}

} // namespace melovane
