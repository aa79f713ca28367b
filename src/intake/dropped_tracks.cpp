#include "intake/dropped_tracks.h"

#include "config/global_settings.h"
#include "intake/new_tracks.h"
#include "platform/db/database.h"
#include "platform/db/recordset.h"
#include "platform/system/files.h"
#include "platform/system/path_text.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Deepest folder below a dropped one; links that lead round in a circle end here.
constexpr int kDeepest = 32;

bool isMp3(const QString& place)
{
    return path::extension(place).compare("mp3"_L1, Qt::CaseInsensitive) == 0;
}

} // namespace

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

void DroppedTracks::collect(const QString& place, int depth, QStringList& found) const
{
    if (found.size() >= kMostFiles || depth > kDeepest) {
        return;
    }
    if (m_files.fileExists(place)) {
        if (isMp3(place)) {
            found.append(place);
        }
        return;
    }
    for (const QString& name : m_files.names(place)) {
        collect(path::join(place, name), depth + 1, found);
    }
}

DroppedTracks::Result DroppedTracks::take(const QStringList& places)
{
    QStringList found;
    for (const QString& place : places) {
        collect(place, 0, found);
    }
    Result result;
    if (found.isEmpty()) {
        return result;
    }
    const auto database = m_engine.OpenDatabase(m_settings.DbName());
    NewTracks tracks(*database, m_settings, m_files, m_reader, m_clock);
    QStringList known; // an empty one for each file that is to be entered
    for (const QString& file : found) {
        const auto row = tracks.find(path::withSeparator(path::parent(file)), path::fileName(file));
        known.append(row->Eof() ? QString() : row->value(u"FID").toText());
        if (row->Eof() && tracks.read(file).track == nullptr) {
            result.skipped.append(file);
        }
    }
    Transaction all(*database);
    tracks.write();
    all.commit();
    for (qsizetype i = 0; i < found.size(); ++i) {
        const QString fid = known.at(i).isEmpty() ? tracks.fidOf(found.at(i)) : known.at(i);
        if (!fid.isEmpty()) {
            result.fids.append(fid);
        }
    }
    return result;
}

} // namespace melovane
