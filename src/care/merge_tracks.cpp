#include "care/merge_tracks.h"

#include "platform/db/database.h"
#include "platform/db/recordset.h"
#include "platform/db/sql_text.h"
#include "platform/system/files.h"
#include "playlists/list_edit.h"
#include "playlists/playlist_table.h"
#include "store/file_locator.h"
#include "store/track_writing.h"

#include <algorithm>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Orders done between two questions.
constexpr int kOrdersAtOnce = 20;

QString conditionOf(const QStringList& fids)
{
    QStringList texts;
    for (const QString& fid : fids) {
        texts.append(sql::text(fid));
    }
    return u"FID in ("_s + texts.join(u',') + u')';
}

bool isOneFile(const std::optional<FileFacts>& one, const std::optional<FileFacts>& other)
{
    return one && other && one->device == other->device && one->inode == other->inode;
}

/// One call of mergeTracks().
class Merging
{
public:
    Merging(Database& database, const MergeDisk& disk, ListEdit& edit, MergeResult& result)
        : m_database(database)
        , m_disk(disk)
        , m_edit(edit)
        , m_result(result)
    {}

    void merge(const MergeOrder& order)
    {
        const QStringList others = goingOf(order);
        m_result.left += int(order.others.size()) - int(others.size());
        if (others.isEmpty()) {
            return;
        }
        const QString condition = conditionOf(others);
        noteFiles(order.kept, condition);
        // First, so that the step counts the tracks that go.
        m_edit.removes(kTrackTable, condition);
        addCounters(order.kept.fid, condition);
        moveEntries(order.kept.fid, others, condition);
        for (const QString& fid : others) {
            m_edit.movesPlays(fid, order.kept.fid);
        }
        m_database.Execute(
            u"update pl_stat set FID=%1 where %2"_s.arg(sql::text(order.kept.fid), condition));
        m_database.Execute(u"delete from db_all where "_s + condition);
        m_result.removed += int(others.size());
    }

    void markLists()
    {
        for (const Pnid list : m_lists) {
            markChanged(m_database, list);
        }
    }

private:
    [[nodiscard]] std::optional<FileFacts> factsOf(const QString& place)
    {
        return m_disk.files.facts(m_disk.locator.placeOf(place));
    }

    [[nodiscard]] bool isAsSeen(const MergedRow& row)
    {
        const auto now = m_database.OpenRecordset(u"select Path, DName from db_all where FID="_s +
                                                  sql::text(row.fid));
        return !now->Eof() && now->value(0).toText() + now->value(1).toText() == row.place;
    }

    [[nodiscard]] QStringList goingOf(const MergeOrder& order)
    {
        QStringList others;
        if (isAsSeen(order.kept) && !m_disk.locator.placeOf(order.kept.place).isEmpty()) {
            for (const MergedRow& row : order.others) {
                if (row.fid != order.kept.fid && isAsSeen(row)) {
                    others.append(row.fid);
                }
            }
        }
        return others;
    }

    void noteFiles(const MergedRow& kept, const QString& condition)
    {
        const auto stays = factsOf(kept.place);
        for (RemovedTrack& track : tracksToRemove(m_database, condition, Dependencies::Stay)) {
            if (!isOneFile(stays, factsOf(track.path + track.name)) &&
                !hasAnotherRow(track, condition)) {
                m_result.files.push_back(std::move(track));
            }
        }
    }

    /// Letter case counts for nothing here: rather a file that stays than one that another row
    /// lacks.
    [[nodiscard]] bool hasAnotherRow(const RemovedTrack& track, const QString& condition)
    {
        return !m_database
                    .OpenRecordset(
                        u"select FID from db_all where Path=%1 and DName=%2 and not %3"_s.arg(
                            sql::text(track.path), sql::text(track.name), u'(' + condition + u')'))
                    ->Eof();
    }

    void addCounters(const QString& kept, const QString& condition)
    {
        const auto sums = m_database.OpenRecordset(
            u"select sum(PlayCountAll) as c, sum(PlayCountDay) as d, max(Play) as p "
            "from db_all where "_s +
            condition);
        const auto row = m_database.OpenRecordset(
            u"select PlayCountAll, PlayCountDay, Play from db_all where FID="_s + sql::text(kept));
        std::vector<ColumnValue> values;
        for (const auto& [column, index] :
             {std::pair{u"PlayCountAll"_s, 0}, std::pair{u"PlayCountDay"_s, 1}}) {
            if (const int more = sums->value(index).toLong(); more > 0) {
                values.push_back({column, row->value(index).toLong() + more});
            }
        }
        const Value last = sums->value(2);
        if (!last.isNull() &&
            (row->value(2).isNull() || row->value(2).toDouble() < last.toDouble())) {
            values.push_back({u"Play"_s, Value(Value::Day{last.toDouble()})});
        }
        if (!values.empty()) {
            m_edit.changes(writeTrack(m_database, kept, values, TagOrder::None));
        }
    }

    void moveEntries(const QString& kept, const QStringList& others, const QString& condition)
    {
        for (const Pnid list : listsWith(m_database, others)) {
            m_edit.alsoChanges(list);
            if (std::find(m_lists.begin(), m_lists.end(), list) == m_lists.end()) {
                m_lists.push_back(list);
            }
        }
        std::vector<qint64> entries;
        const auto rows = m_database.OpenRecordset(u"select PLID from pl_all where "_s + condition);
        for (; !rows->Eof(); rows->MoveNext()) {
            entries.push_back(rows->value(0).toInt64());
        }
        m_edit.before(condition);
        m_database.Execute(u"update pl_all set FID=%1 where %2"_s.arg(sql::text(kept), condition));
        for (const QString& some : keyConditions(u"PLID", entries)) {
            m_edit.after(some);
        }
    }

    Database& m_database;
    const MergeDisk& m_disk;
    ListEdit& m_edit;
    MergeResult& m_result;
    std::vector<Pnid> m_lists;
};

} // namespace

MergeResult mergeTracks(Database& database,
                        ListHistory& history,
                        const MergeDisk& disk,
                        const std::vector<MergeOrder>& orders,
                        const MergeStep& goOn,
                        const MergeRecord& record)
{
    MergeResult result;
    ListEdit edit(history, database, ListAction::Merge, Pnid{});
    Merging work(database, disk, edit, result);
    const int size = int(orders.size());
    for (int i = 0; i < size; ++i) {
        if (i > 0 && i % kOrdersAtOnce == 0 && goOn && !goOn(i, size)) {
            result = {};
            result.isCancelled = true;
            return result; // the edit takes everything back
        }
        work.merge(orders[size_t(i)]);
    }
    work.markLists();
    if (record) {
        record(result.files);
    }
    edit.commit();
    return result;
}

} // namespace melovane
