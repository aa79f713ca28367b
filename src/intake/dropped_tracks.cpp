#include "intake/dropped_tracks.h"

#include "config/global_settings.h"
#include "intake/folder_walk.h"
#include "intake/new_tracks.h"
#include "platform/db/database.h"
#include "platform/db/recordset.h"
#include "platform/system/files.h"
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

QStringList
DroppedTracks::filesOf(const QStringList& places, const GoOn& goOn, Result& result) const
{
    QStringList files;
    QStringList roots;
    for (const QString& place : places) {
        const QString extension = path::extension(place).toLower();
        const bool isList = extension == "m3u"_L1 || extension == "m3u8"_L1;
        if (isList && !m_files.folderExists(place)) {
            ++result.skipped.kinds[u"M3U"_s];
        } else {
            roots.append(place);
        }
    }
    FolderWalk walk(m_files, roots, result.skipped);
    for (auto found = walk.next(); found && !result.isGivenUp; found = walk.next()) {
        for (const FoundFile& file : *found) {
            if (files.size() < kMaxFiles) {
                files.append(file.path());
            } else {
                ++result.beyond;
            }
        }
        result.isGivenUp = goOn && !goOn(found->empty() ? QString() : found->back().folder, 0, 0);
    }
    return files;
}

DroppedTracks::Result DroppedTracks::take(const QStringList& places, const GoOn& goOn)
{
    Result result;
    const QStringList files = filesOf(places, goOn, result);
    if (!files.isEmpty() && !result.isGivenUp) {
        enter(files, goOn, result);
    }
    if (result.isGivenUp) {
        result = {};
        result.isGivenUp = true;
    }
    return result;
}

void DroppedTracks::enter(const QStringList& files, const GoOn& goOn, Result& result)
{
    const auto database = m_engine.OpenDatabase(m_settings.DbName());
    NewTracks tracks(*database, m_settings, m_files, m_reader, m_clock);
    QStringList known; // an empty one for each file that is to be entered
    for (const QString& file : files) {
        if (goOn && !goOn(file, known.size(), files.size())) {
            result.isGivenUp = true;
            return;
        }
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
    const bool isWritten = tracks.write(
        [&](qint64 done, qint64 size) { return !goOn || goOn(files.last(), done, size); });
    if (!isWritten) {
        result.isGivenUp = true;
        return;
    }
    all.commit();
    result.entered = tracks.entered();
    for (qsizetype i = 0; i < files.size(); ++i) {
        const QString fid = known.at(i).isEmpty() ? tracks.fidOf(files.at(i)) : known.at(i);
        if (!fid.isEmpty()) {
            result.fids.append(fid);
        }
    }
}

} // namespace melovane
