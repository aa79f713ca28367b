#include "intake/dropped_tracks.h"

#include "config/global_settings.h"
#include "intake/folder_walk.h"
#include "intake/new_tracks.h"
#include "platform/db/database.h"
#include "platform/db/recordset.h"
#include "platform/system/path_text.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

DroppedTracks::DroppedTracks(DBEngine& engine,
                             const GlobalSettings& settings,
                             const Files& files,
                             const TagReader& reader,
                             const Clock& clock)
    : m_engine(engine)
    , m_settings(settings)
    , m_files(files)
    , m_reader(reader)
    , m_clock(clock)
{}

QStringList DroppedTracks::filesOf(const QStringList& places, Skipped& skipped) const
{
    QStringList result;
    FolderWalk walk(m_files, places, skipped);
    for (auto found = walk.next(); found && result.size() < kMaxFiles; found = walk.next()) {
        for (const FoundFile& file : *found) {
            if (result.size() < kMaxFiles) {
                result.append(file.path());
            }
        }
    }
    return result;
}

DroppedTracks::Result DroppedTracks::take(const QStringList& places)
{
    Result result;
    const QStringList files = filesOf(places, result.skipped);
    if (files.isEmpty()) {
        return result;
    }
    const auto database = m_engine.OpenDatabase(m_settings.DbName());
    NewTracks tracks(*database, m_settings, m_files, m_reader, m_clock);
    QStringList known; // an empty one for each file that is to be entered
    for (const QString& file : files) {
        const auto row = tracks.find(path::withSeparator(path::parent(file)), path::fileName(file));
        known.append(row->Eof() ? QString() : row->value(u"FID").toText());
        if (!row->Eof()) {
            continue;
        }
        if (const auto reading = tracks.read(file); reading.track == nullptr) {
            result.skipped.refused.push_back({file, reading.code, reading.detail});
        }
    }
    Transaction all(*database);
    [[maybe_unused]] const bool isDone = tracks.write();
    all.commit();
    for (qsizetype i = 0; i < files.size(); ++i) {
        const QString fid = known.at(i).isEmpty() ? tracks.fidOf(files.at(i)) : known.at(i);
        if (!fid.isEmpty()) {
            result.fids.append(fid);
        }
    }
    return result;
}

} // namespace melovane
