#include "tagbench/bench_apply.h"

#include "intake/new_tracks.h"
#include "platform/db/database.h"
#include "platform/db/db_error.h"
#include "platform/db/sql_text.h"
#include "platform/system/path_text.h"
#include "playlists/playlist_table.h"
#include "playlists/track_step.h"
#include "store/pending_jobs.h"
#include "tagbench/file_moves.h"

#include <QHash>
#include <QSet>

#include <algorithm>
#include <map>
#include <utility>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qsizetype kKeysInCondition = 200;

/// What a column holds for a text of the bench.
Value storedValue(TrackField field, const QString& text)
{
    return field == TrackField::Note && text.isEmpty() ? Value() : Value(text);
}

/// Conditions that together name all identifiers, in portions that the engine takes well.
QStringList fidConditions(const QStringList& fids)
{
    QStringList conditions;
    for (qsizetype at = 0; at < fids.size(); at += kKeysInCondition) {
        QStringList texts;
        for (const QString& fid : fids.mid(at, kKeysInCondition)) {
            texts.append(sql::text(fid));
        }
        conditions.append(u"FID in ("_s + texts.join(u',') + u')');
    }
    return conditions;
}

QString folderOf(const QString& place)
{
    return place.chopped(path::fileName(place).size());
}

} // namespace

/// One call of apply().
class BenchApply::Run
{
public:
    Run(const Parts& parts, BenchTracks& tracks, const GoOn& goOn)
        : m_parts(parts)
        , m_tracks(tracks)
        , m_goOn(goOn)
        , m_moves(parts.files, parts.dataFolder)
    {
        for (int track = 0; track < tracks.count(); ++track) {
            if (tracks.at(track).fid.isEmpty() || tracks.at(track).isChanged()) {
                m_waiting.push_back(track);
            }
        }
    }

    BenchOutcome run()
    {
        TrackStep all(m_parts.history, m_parts.database, ListAction::Tracks);
        m_step = &all;
        if (!import() || !writeAll()) {
            BenchOutcome cancelled;
            cancelled.isCancelled = true;
            return cancelled; // its destructors take everything back
        }
        markLists();
        m_result.trees += all.trees();
        m_result.trees.removeDuplicates();
        for (const QString& tree : std::as_const(m_result.trees)) {
            PendingJobs::ChangeTree(m_parts.database, tree);
        }
        all.commit();
        m_moves.keep(m_parts.removeEmptyFolders);
        for (const auto& [track, fid] : m_newFids) {
            m_tracks.setFid(track, fid);
        }
        return m_result;
    }

private:
    /// New files enter the library as they are; what was changed of them follows as for all others.
    bool import()
    {
        NewTracks* const fresh = m_parts.newTracks;
        const int size = int(m_waiting.size());
        if (fresh && !fresh->write([&](qint64, qint64) { return isWanted(0, size); })) {
            return false;
        }
        std::erase_if(m_waiting, [&](int track) {
            if (!m_tracks.at(track).fid.isEmpty()) {
                return false;
            }
            const QString fid = fresh ? fresh->fidOf(m_tracks.at(track).storedPlace()) : QString();
            if (fid.isEmpty()) {
                m_result.problems.push_back({track, BenchFault::NotImported, {}});
                return true;
            }
            m_newFids.emplace(track, fid);
            return false;
        });
        m_result.imported = fresh ? fresh->entered() : 0;
        if (m_result.imported > 0) {
            m_result.trees += {u"Interpret"_s, u"Album"_s, u"Genre"_s, u"Dir"_s};
        }
        return true;
    }

    bool writeAll()
    {
        readRows();
        const int size = int(m_waiting.size());
        int done = 0;
        // A file whose new name another one of them still has waits until that one is gone.
        for (bool moved = true; moved && !m_waiting.empty();) {
            moved = false;
            std::vector<int> later;
            for (const int track : m_waiting) {
                if (!isFree(track)) {
                    later.push_back(track);
                    continue;
                }
                moved = true;
                if (done > 0 && done % kTracksAtOnce == 0 && !isWanted(done, size)) {
                    return false;
                }
                write(track, true);
                ++done;
            }
            m_waiting = std::move(later);
        }
        for (const int track : m_waiting) {
            m_result.problems.push_back({track, BenchFault::NotRenamed, u"File exists"_s});
            write(track, false);
        }
        return isWanted(size, size);
    }

    [[nodiscard]] bool isWanted(int done, int size) const { return !m_goOn || m_goOn(done, size); }

    [[nodiscard]] bool isFree(int track)
    {
        const BenchTrack& asked = m_tracks.at(track);
        return asked.place() == asked.storedPlace() ||
               m_moves.isFree(asked.storedPlace(), asked.place());
    }

    [[nodiscard]] QString fidOf(int track) const
    {
        const QString& known = m_tracks.at(track).fid;
        return known.isEmpty() ? m_newFids.at(track) : known;
    }

    /// What is stored now of the tracks that will be written.
    void readRows()
    {
        QStringList fids;
        for (const int track : m_waiting) {
            if (!m_tracks.at(track).fid.isEmpty()) {
                fids.append(fidOf(track));
            }
        }
        for (const QString& condition : fidConditions(fids)) {
            const auto rows =
                m_parts.database.OpenRecordset(u"select * from db_all where "_s + condition);
            for (; !rows->Eof(); rows->MoveNext()) {
                BenchTrack::Texts texts;
                for (const TrackField field : benchFields()) {
                    texts[size_t(benchSlot(field))] = rows->value(columnOf(field)).toText();
                }
                texts.back() = rows->value(u"Path").toText() + rows->value(u"DName").toText();
                m_rows.insert(rows->value(u"FID").toText(), texts);
            }
        }
    }

    [[nodiscard]] bool isStale(const BenchTrack& track, const BenchTrack::Texts& row) const
    {
        for (size_t slot = 0; slot < row.size(); ++slot) {
            if (track.now[slot] != track.stored[slot] && row[slot] != track.stored[slot]) {
                return true;
            }
        }
        return false;
    }

    void write(int number, bool withPlace)
    {
        const BenchTrack& track = m_tracks.at(number);
        const bool isNew = track.fid.isEmpty();
        const auto row = m_rows.constFind(track.fid);
        if (!isNew && row == m_rows.cend()) {
            m_result.problems.push_back({number, BenchFault::Gone, {}});
            return;
        }
        if (!isNew && isStale(track, *row)) {
            m_result.problems.push_back({number, BenchFault::ChangedElse, {}});
            return;
        }
        std::vector<ColumnValue> values;
        for (const TrackField field : benchFields()) {
            if (m_tracks.isChanged(number, field)) {
                values.push_back(
                    {columnOf(field).toString(), storedValue(field, m_tracks.text(number, field))});
            }
        }
        const bool isMoved = withPlace && move(number);
        if (isMoved) {
            values.push_back({u"Path"_s, folderOf(track.place())});
            values.push_back({u"DName"_s, path::fileName(track.place())});
        }
        store(number, values, track.isChangedInTag() ? TagOrder::Enter : TagOrder::None);
        if (isMoved || track.place() == track.storedPlace()) {
            m_result.written.push_back(number);
        }
    }

    /// The one place where a change of the bench enters a row.
    void store(int number, const std::vector<ColumnValue>& values, TagOrder order)
    {
        if (values.empty()) {
            return;
        }
        m_step->write(fidOf(number), values, order);
    }

    /// False when the file keeps its name, which is told.
    bool move(int number)
    {
        const BenchTrack& track = m_tracks.at(number);
        if (track.place() == track.storedPlace()) {
            return false;
        }
        try {
            m_moves.move(track.storedPlace(), track.place());
        } catch (const IoError& error) {
            m_result.problems.push_back({number, BenchFault::NotRenamed, error.reason()});
            return false;
        }
        m_movedFids.append(fidOf(number));
        m_result.trees.append(u"Dir"_s);
        ++m_result.renamed;
        return true;
    }

    void markLists()
    {
        QSet<qint64> lists;
        for (const QString& condition : fidConditions(m_movedFids)) {
            const auto rows = m_parts.database.OpenRecordset(
                u"select distinct PNID from pl_all where "_s + condition);
            for (; !rows->Eof(); rows->MoveNext()) {
                lists.insert(rows->value(u"PNID").toInt64());
            }
        }
        for (const qint64 list : lists) {
            markChanged(m_parts.database, Pnid{int(list)});
        }
    }

    const Parts& m_parts;
    BenchTracks& m_tracks;
    const GoOn& m_goOn;
    FileMoves m_moves;
    TrackStep* m_step = nullptr; ///< while run() works
    std::vector<int> m_waiting;
    std::map<int, QString> m_newFids;
    QHash<QString, BenchTrack::Texts> m_rows;
    QStringList m_movedFids;
    BenchOutcome m_result;
};

BenchApply::BenchApply(Parts parts)
    : m_parts(std::move(parts))
{}

BenchOutcome BenchApply::apply(BenchTracks& tracks, const GoOn& goOn)
{
    return Run(m_parts, tracks, goOn).run();
}

} // namespace melovane
