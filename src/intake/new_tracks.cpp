#include "intake/new_tracks.h"

#include "config/global_settings.h"
#include "intake/import_errors.h"
#include "intake/tree_marks.h"
#include "platform/db/database.h"
#include "platform/db/recordset.h"
#include "platform/system/path_text.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

NewTracks::NewTracks(Database& database,
                     const GlobalSettings& settings,
                     const Files& files,
                     const TagReader& reader,
                     const Clock& clock)
    : m_database(database)
    , m_files(files)
    , m_reader(reader)
    , m_clock(clock)
    , m_import(files, clock)
    , m_places(database, files)
    , m_find(database.queryDefs().Item(u"QU_FindFile"_s))
{
    m_import.SetTagChoice(settings.ID3v2Tags());
    m_import.SetWidths(database.tableDefs().Item(u"db_all"_s));
    m_import.LoadGenre(database);
}

NewTracks::~NewTracks() = default;

std::unique_ptr<Recordset> NewTracks::findAsStored(const QString& folder, const QString& name)
{
    m_find->SetParameter(u"sPath"_s, folder);
    m_find->SetParameter(u"sDName"_s, name);
    return m_find->OpenRecordset();
}

std::unique_ptr<Recordset> NewTracks::find(const QString& folder, const QString& name)
{
    auto track = findAsStored(folder, name);
    if (track->Eof()) {
        if (const auto place = m_places.find(folder, name)) {
            track = findAsStored(place->Path, place->DName);
        }
    }
    return track;
}

NewTracks::Outcome NewTracks::readNew(const QString& file)
{
    const auto facts = m_files.facts(file);
    if (!facts) {
        return {importerror::kFileNotFound, {}, -1};
    }
    ImportOutcome outcome =
        m_import.ImportFile(path::parent(file), path::fileName(file), *facts, m_reader.read(file));
    if (!outcome.isUsable()) {
        return {outcome.code, outcome.detail, -1};
    }
    m_tracks.push_back(std::move(outcome.track));
    return {0, {}, int(m_tracks.size()) - 1};
}

NewTracks::Reading NewTracks::read(const QString& file)
{
    auto known = m_byFile.constFind(file);
    if (known == m_byFile.cend()) {
        known = m_byFile.insert(file, readNew(file));
    }
    return {known->code, known->detail,
            known->index < 0 ? nullptr : &m_tracks[size_t(known->index)]};
}

bool NewTracks::write(const GoOn& goOn)
{
    if (m_tracks.empty()) {
        return true;
    }
    TrackInsert insert(m_database, m_places, m_clock);
    for (size_t i = 0; i < m_tracks.size(); ++i) {
        const bool isAsked = goOn && i > 0 && i % kTracksAtOnce == 0;
        if (isAsked && !goOn(qint64(i), qint64(m_tracks.size()))) {
            return false;
        }
        const auto result = insert.add(m_tracks[i], TrackInsert::TakenFid::MakeNew);
        if (result.kind == TrackInsert::Result::Kind::FileIsKnown) {
            m_tracks[i].FID = result.row.FID;
            m_known.insert(int(i));
        } else {
            ++m_entered;
        }
    }
    noteTrees();
    return true;
}

void NewTracks::noteTrees()
{
    if (m_entered > 0) {
        markTrees(m_database);
    }
}

bool NewTracks::wasKnown(const QString& file) const
{
    const auto read = m_byFile.constFind(file);
    return read != m_byFile.cend() && m_known.contains(read->index);
}

QString NewTracks::fidOf(const QString& file) const
{
    const auto known = m_byFile.constFind(file);
    return known == m_byFile.cend() || known->index < 0 ? QString()
                                                        : m_tracks[size_t(known->index)].FID;
}

} // namespace melovane
