#include "playlistfiles/dropped_tracks.h"

#include "config/global_settings.h"
#include "platform/db/database.h"
#include "platform/db/recordset.h"
#include "platform/db/sql_text.h"
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

QString DroppedTracks::known(Database& database, const QString& file) const
{
    const auto query = database.queryDefs().Item(u"QU_FindFile"_s);
    query->SetParameter(u"sPath"_s, path::withSeparator(path::parent(file)));
    query->SetParameter(u"sDName"_s, path::fileName(file));
    const auto row = query->OpenRecordset();
    return row->Eof() ? QString() : row->value(u"FID").toText();
}

QString DroppedTracks::enter(Database& database,
                             TagImport& import,
                             const QString& file,
                             Mod_Make_FID::FidMaker& ids)
{
    const auto facts = m_files.facts(file);
    const MediaReading reading = m_reader.read(file);
    if (!facts) {
        return {};
    }
    const auto isTaken = [&database](const QString& fid) {
        const auto count = database.OpenRecordset(
            u"select count(*) as anz from db_all where fid="_s + sql::text(fid));
        return count->value(u"anz").toLong() > 0;
    };
    const auto freeFid = [&](const QString& candidate) {
        QString fid = ids.MakeFID(candidate);
        for (int tries = 0; tries < 1000 && isTaken(fid); ++tries) {
            fid = ids.MakeFID();
        }
        return fid;
    };
    const ImportOutcome outcome =
        import.ImportFile(path::parent(file), path::fileName(file), *facts, reading, freeFid);
    if (!outcome.isUsable()) {
        return {};
    }
    const auto set = database.OpenRecordset(u"select * from db_all where fid is null"_s);
    const std::vector<Value> values = outcome.track.values();
    set->AddNew();
    for (qsizetype index = 0; index < ImportedTrack::columns().size(); ++index) {
        set->setValue(ImportedTrack::columns().at(index), values[size_t(index)]);
    }
    set->Update();
    return outcome.track.FID;
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
    TagImport import(m_files, m_clock);
    import.SetTagChoice(m_settings.ID3v2Tags());
    import.SetWidths(database->tableDefs().Item(u"db_all"_s));
    import.LoadGenre(*database);
    Mod_Make_FID::FidMaker ids(m_clock);
    Transaction all(*database);
    for (const QString& file : found) {
        QString fid = known(*database, file);
        if (fid.isEmpty()) {
            fid = enter(*database, import, file, ids);
        }
        if (fid.isEmpty()) {
            result.skipped.append(file);
        } else {
            result.fids.append(fid);
        }
    }
    all.commit();
    return result;
}

} // namespace melovane
