#include "intake/new_tracks.h"

#include "config/global_settings.h"
#include "intake/import_errors.h"
#include "platform/db/database.h"
#include "platform/db/recordset.h"
#include "platform/db/sql_text.h"
#include "platform/system/path_text.h"
#include "store/row_statements.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Identifiers that are tried: a second has no more of them.
constexpr int kMostTries = 1000;

} // namespace

NewTracks::NewTracks(Database& database,
                     const GlobalSettings& settings,
                     const Files& files,
                     const TagReader& reader,
                     const Clock& clock)
    : m_database(database)
    , m_files(files)
    , m_reader(reader)
    , m_import(files, clock)
    , m_ids(clock)
    , m_find(database.queryDefs().Item(u"QU_FindFile"_s))
{
    m_import.SetTagChoice(settings.ID3v2Tags());
    m_import.SetWidths(database.tableDefs().Item(u"db_all"_s));
    m_import.LoadGenre(database);
}

NewTracks::~NewTracks() = default;

std::unique_ptr<Recordset> NewTracks::find(const QString& folder, const QString& name)
{
    m_find->SetParameter(u"sPath"_s, folder);
    m_find->SetParameter(u"sDName"_s, name);
    return m_find->OpenRecordset();
}

QString NewTracks::freeFid(const QString& candidate)
{
    const auto isTaken = [this](const QString& fid) {
        return m_byFid.contains(fid) ||
               m_database
                       .OpenRecordset(u"select count(*) as anz from db_all where fid="_s +
                                      sql::text(fid))
                       ->value(u"anz")
                       .toLong() > 0;
    };
    QString fid = m_ids.MakeFID(candidate);
    for (int tries = 0; tries < kMostTries && isTaken(fid); ++tries) {
        fid = m_ids.MakeFID();
    }
    return fid;
}

NewTracks::Outcome NewTracks::readNew(const QString& file)
{
    const auto facts = m_files.facts(file);
    if (!facts) {
        return {importerror::kFileNotFound, -1};
    }
    ImportOutcome outcome =
        m_import.ImportFile(path::parent(file), path::fileName(file), *facts, m_reader.read(file),
                            [this](const QString& candidate) { return freeFid(candidate); });
    if (!outcome.isUsable()) {
        return {outcome.code, -1};
    }
    const int index = int(m_tracks.size());
    m_byFid.insert(outcome.track.FID, index);
    m_tracks.push_back(std::move(outcome.track));
    return {0, index};
}

NewTracks::Reading NewTracks::read(const QString& file)
{
    auto known = m_byFile.constFind(file);
    if (known == m_byFile.cend()) {
        known = m_byFile.insert(file, readNew(file));
    }
    return {known->code, known->index < 0 ? nullptr : &m_tracks[size_t(known->index)]};
}

void NewTracks::write()
{
    if (m_tracks.empty()) {
        return;
    }
    const QString table = u"db_all"_s;
    RowInsert insert(m_database, table,
                     writtenColumns(m_database, table, ImportedTrack::columns()));
    for (const ImportedTrack& track : m_tracks) {
        insert.run(track.values());
    }
}

} // namespace melovane
