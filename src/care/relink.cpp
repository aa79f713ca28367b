#include "care/relink.h"

#include "platform/db/database.h"
#include "platform/db/db_error.h"
#include "platform/db/sql_text.h"
#include "platform/system/files.h"
#include "playlists/playlist_table.h"
#include "playlists/track_step.h"

#include <QHash>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kMarked = -1; ///< column `DEL`: keep
constexpr int kMissing = 2;
constexpr int kMarkedAndMissing = 3;

int delOfFound(int del)
{
    return del == kMissing ? 0 : del == kMarkedAndMissing ? kMarked : del;
}

class Relinking
{
public:
    Relinking(Database& database, const Files& files, TrackStep& step)
        : m_database(database)
        , m_files(files)
        , m_step(step)
        , m_byPlace(database.CreateQueryDef(
              {},
              u"parameters pPath memo, pName memo; select Path, DName from db_all "
              "where Path=pPath and DName=pName"_s))
    {}

    /// False for a row or a file that is not as it was.
    bool write(const RelinkOrder& order)
    {
        const auto row = m_database.OpenRecordset(
            u"select Path, DName, DEL from db_all where FID="_s + sql::text(order.fid));
        if (row->Eof() || row->value(0).toText() + row->value(1).toText() != order.storedPlace ||
            !m_files.fileExists(order.folder + order.name) || isTaken(order)) {
            return false;
        }
        const VolumeFacts& volume = volumeOf(order.folder);
        const std::vector<ColumnValue> values{{u"Path"_s, order.folder},
                                              {u"DName"_s, order.name},
                                              {u"DriveTyp"_s, int(volume.kind)},
                                              {u"DriveName"_s, volume.label},
                                              {u"DEL"_s, delOfFound(row->value(2).toLong())}};
        m_step.write(order.fid, values, TagOrder::None);
        return true;
    }

private:
    /// Letter case counts: on disk other letters are another file.
    [[nodiscard]] bool isTaken(const RelinkOrder& order)
    {
        m_byPlace->SetParameter(u"pPath"_s, order.folder);
        m_byPlace->SetParameter(u"pName"_s, order.name);
        const auto rows = m_byPlace->OpenRecordset();
        for (; !rows->Eof(); rows->MoveNext()) {
            if (rows->value(0).toText() == order.folder && rows->value(1).toText() == order.name) {
                return true;
            }
        }
        return false;
    }

    [[nodiscard]] const VolumeFacts& volumeOf(const QString& folder)
    {
        auto known = m_volumes.constFind(folder);
        if (known == m_volumes.cend()) {
            known = m_volumes.insert(folder, m_files.volume(folder));
        }
        return *known;
    }

    Database& m_database;
    const Files& m_files;
    TrackStep& m_step;
    std::unique_ptr<QueryDef> m_byPlace;
    QHash<QString, VolumeFacts> m_volumes;
};

} // namespace

RelinkResult relink(Database& database,
                    ListHistory& history,
                    const Files& files,
                    const std::vector<RelinkOrder>& orders,
                    const RelinkStep& goOn)
{
    RelinkResult result;
    QStringList moved;
    TrackStep step(history, database, ListAction::Relink);
    Relinking work(database, files, step);
    const int size = int(orders.size());
    for (int i = 0; i < size; ++i) {
        if (i > 0 && i % kRelinksAtOnce == 0 && goOn && !goOn(i, size)) {
            result = {};
            result.isCancelled = true;
            return result; // the step takes everything back
        }
        if (work.write(orders[size_t(i)])) {
            moved.append(orders[size_t(i)].fid);
        } else {
            ++result.left;
        }
    }
    for (const Pnid list : listsWith(database, moved)) {
        markChanged(database, list);
    }
    step.commit();
    result.moved = int(moved.size());
    return result;
}

} // namespace melovane
