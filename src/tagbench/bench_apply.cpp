#include "tagbench/bench_apply.h"

#include "intake/new_tracks.h"
#include "platform/db/database.h"
#include "platform/db/db_error.h"
#include "platform/db/sql_text.h"
#include "platform/system/path_text.h"
#include "playlists/playlist_table.h"
#include "playlists/track_step.h"
#include "store/pending_jobs.h"
#include "tagbench/cover_work.h"
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
        , m_locator(parts.files, parts.dataFolder)
        , m_moves(parts.files, parts.dataFolder, parts.library)
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
        if (!import() || !moveFiles() || !writeRows()) {
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
        if (m_parts.covers) {
            m_parts.covers->settle();
        }
        all.commit();
        if (m_parts.covers) {
            m_parts.covers->keep(m_parts.database);
        }
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
            if (fresh->wasKnown(m_tracks.at(track).storedPlace())) {
                m_knownTracks.insert(track);
            }
            return false;
        });
        m_result.imported = fresh ? fresh->entered() : 0;
        if (m_result.imported > 0) {
            m_result.trees += {u"Interpret"_s, u"Album"_s, u"Genre"_s, u"Dir"_s};
        }
        return true;
    }

    /// Files get their new names, in the order in which these are free.
    bool moveFiles()
    {
        readRows();
        std::vector<FileMove> moves;
        std::vector<int> owners;
        std::erase_if(m_waiting, [&](int track) { return !isAsItWas(track); });
        for (const int track : m_waiting) {
            const BenchTrack& asked = m_tracks.at(track);
            if (asked.place() != asked.storedPlace()) {
                moves.push_back({fidOf(track), asked.storedPlace(), asked.place()});
                owners.push_back(track);
            }
        }
        const auto isGoingOn = [this, size = int(m_waiting.size())](int) {
            return isWanted(0, size);
        };
        if (!m_moves.move(moves, isGoingOn)) {
            return false;
        }
        for (size_t index = 0; index < moves.size(); ++index) {
            if (moves[index].fault.isEmpty()) {
                m_moved.insert(owners[index]);
            } else {
                m_result.problems.push_back(
                    {owners[index], BenchFault::NotRenamed, moves[index].fault});
            }
        }
        return true;
    }

    bool writeRows()
    {
        const int size = int(m_waiting.size());
        int done = 0;
        for (const int track : m_waiting) {
            if (done > 0 && done % kTracksAtOnce == 0 && !isWanted(done, size)) {
                return false;
            }
            write(track);
            ++done;
        }
        return isWanted(size, size);
    }

    [[nodiscard]] bool isWanted(int done, int size) const { return !m_goOn || m_goOn(done, size); }

    [[nodiscard]] QString fidOf(int track) const
    {
        const QString& known = m_tracks.at(track).fid;
        return known.isEmpty() ? m_newFids.at(track) : known;
    }

    /// Whether this call has made its row.
    [[nodiscard]] bool isNew(int track) const
    {
        return m_tracks.at(track).fid.isEmpty() && !m_knownTracks.contains(track);
    }

    /// What is stored now of the tracks that will be written.
    void readRows()
    {
        QStringList fids;
        for (const int track : m_waiting) {
            if (!isNew(track)) {
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
                texts[size_t(benchSlot(kBenchCover))] = rows->value(columnOf(kBenchCover)).toText();
                texts.back() = rows->value(u"Path").toText() + rows->value(u"DName").toText();
                m_rows.insert(rows->value(u"FID").toText(), texts);
            }
        }
    }

    [[nodiscard]] bool isStale(const BenchTrack& track, const BenchTrack::Texts& row) const
    {
        for (size_t slot = 0; slot < row.size(); ++slot) {
            if (track.now[slot] != track.stored[slot] && row[slot] != imageOf(track.stored[slot])) {
                return true;
            }
        }
        return false;
    }

    /// False for a track that is gone or that somebody else has changed, which is told.
    bool isAsItWas(int number)
    {
        const BenchTrack& track = m_tracks.at(number);
        if (isNew(number)) {
            return true;
        }
        const auto row = m_rows.constFind(fidOf(number));
        if (row == m_rows.cend()) {
            m_result.problems.push_back({number, BenchFault::Gone, {}});
            return false;
        }
        if (isStale(track, *row)) {
            m_result.problems.push_back({number, BenchFault::ChangedElse, {}});
            tellFound(number, *row);
            return false;
        }
        return true;
    }

    void tellFound(int number, const BenchTrack::Texts& row)
    {
        for (const TrackField field : benchFields()) {
            addFound(number, field, row);
        }
        addFound(number, kBenchPlace, row);
    }

    void addFound(int number, TrackField field, const BenchTrack::Texts& row)
    {
        const QString& text = row[size_t(benchSlot(field))];
        if (text != m_tracks.storedText(number, field)) {
            m_result.found.push_back({number, field, text});
        }
    }

    void write(int number)
    {
        const BenchTrack& track = m_tracks.at(number);
        std::vector<ColumnValue> values;
        for (const TrackField field : benchFields()) {
            if (m_tracks.isChanged(number, field)) {
                values.push_back(
                    {columnOf(field).toString(), storedValue(field, m_tracks.text(number, field))});
            }
        }
        const bool isMoved = m_moved.contains(number);
        if (m_parts.covers && m_tracks.isChanged(number, kBenchCover)) {
            changeCover(number, isMoved ? track.place() : track.storedPlace(), values);
        }
        if (isMoved) {
            values.push_back({u"Path"_s, folderOf(track.place())});
            values.push_back({u"DName"_s, path::fileName(track.place())});
            m_movedFids.append(fidOf(number));
            m_result.trees.append(u"Dir"_s);
            ++m_result.renamed;
        }
        store(number, values, track.isChangedInTag() ? TagOrder::Enter : TagOrder::None);
        if (!isMoved && track.place() != track.storedPlace()) {
            m_result.left.push_back({number, kBenchPlace, track.place()});
        }
        if (m_knownTracks.contains(number)) {
            tellFound(number, m_rows.value(fidOf(number)));
        }
        if (!values.empty() || isNew(number)) {
            m_result.written.push_back(number);
        }
    }

    void changeCover(int number, const QString& place, std::vector<ColumnValue>& values)
    {
        const QString& now = m_tracks.text(number, kBenchCover);
        try {
            m_parts.covers->change(m_parts.database, fidOf(number),
                                   imageOf(m_tracks.storedText(number, kBenchCover)), imageOf(now),
                                   m_locator.placeOf(place));
        } catch (const IoError& error) {
            m_result.problems.push_back({number, BenchFault::NoCover, error.reason()});
            m_result.left.push_back({number, kBenchCover, now});
            return;
        }
        values.push_back({columnOf(kBenchCover).toString(), imageOf(now)});
    }

    /// The one place where a change of the bench enters a row.
    void store(int number, const std::vector<ColumnValue>& values, TagOrder order)
    {
        if (!values.empty()) {
            m_step->write(fidOf(number), values, order);
        }
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
    FileLocator m_locator;
    FileMoves m_moves;
    TrackStep* m_step = nullptr; ///< while run() works
    std::vector<int> m_waiting;
    std::map<int, QString> m_newFids;
    QSet<int> m_knownTracks; ///< new files that another program has entered meanwhile
    QHash<QString, BenchTrack::Texts> m_rows;
    QSet<int> m_moved;
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
