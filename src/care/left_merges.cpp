#include "care/left_merges.h"

#include "platform/db/database.h"
#include "platform/db/db_error.h"
#include "platform/db/sql_text.h"
#include "platform/system/files.h"
#include "platform/system/path_text.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

LeftMerges::LeftMerges(MakeEngine makeEngine, QString library, RecycleTools tools)
    : m_makeEngine(std::move(makeEngine))
    , m_library(std::move(library))
    , m_tools(std::move(tools))
{}

void LeftMerges::run()
{
    const std::unique_ptr<Files> files = m_tools.makeFiles();
    const QStringList journals = MergeJournal::left(*files, m_library);
    if (journals.isEmpty()) {
        return;
    }
    try {
        const std::unique_ptr<DBEngine> engine = m_makeEngine();
        const auto database = engine->OpenDatabase(m_library);
        for (const QString& journal : journals) {
            auto named = MergeJournal::read(*files, journal);
            if (named && moveAll(*files, goneOf(*database, std::move(*named)))) {
                files->remove(journal);
            }
        }
    } catch (const DbError&) {
        // The journals tell the next start.
    }
}

/// Those that no row has. Another console that merges now has its journal before its rows are gone:
/// the write lock waits for its end.
std::vector<MergedFile> LeftMerges::goneOf(Database& database, std::vector<MergedFile> all)
{
    const Transaction lock(database);
    std::erase_if(all, [&](const MergedFile& file) {
        const RemovedTrack& track = file.track;
        return !database
                    .OpenRecordset(
                        u"select FID from db_all where FID=%1 or (Path=%2 and DName=%3)"_s.arg(
                            sql::text(track.fid), sql::text(track.path), sql::text(track.name)))
                    ->Eof();
    });
    return all;
}

/// False when something waits for the next time.
bool LeftMerges::moveAll(Files& files, const std::vector<MergedFile>& gone)
{
    RecycleFolder recycler(
        {files, m_tools.clock, m_tools.dataFolder, m_tools.homeFolder, m_tools.systemName});
    bool isWhole = true;
    for (const MergedFile& file : gone) {
        if (m_isEnded) {
            return false;
        }
        const auto facts = files.facts(file.place);
        if (!facts) {
            // It has moved, or its volume is away.
            isWhole = files.folderExists(path::parent(file.place)) && isWhole;
        } else if (facts->size == file.size) {
            recycler.take(file.track, RecycleFolder::Reason::Deleted,
                          [this](qint64) { return !m_isEnded; });
        }
    }
    return isWhole && !m_isEnded;
}

} // namespace melovane
