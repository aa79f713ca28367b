#include "shell/library_data.h"

#include "config/global_settings.h"
#include "config/paths.h"
#include "platform/db/database.h"
#include "platform/db/db_error.h"
#include "platform/db/recordset.h"
#include "store/track_reader.h"
#include "trees/rebuild_trees.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

LibraryData::LibraryData(DBEngine& engine,
                         GlobalSettings& settings,
                         Mod_API& paths,
                         Files& files,
                         const Clock& clock,
                         ErrorSink sink)
    : m_engine(engine)
    , m_settings(settings)
    , m_paths(paths)
    , m_files(files)
    , m_clock(clock)
    , m_sink(std::move(sink))
{}

LibraryData::~LibraryData() = default;

void LibraryData::open()
{
    takeBack();
    m_database = m_engine.OpenDatabase(m_settings.DbName());
    m_settings.holdLibrary(m_settings.DbName());
}

void LibraryData::openOther(const QString& name)
{
    const QString former = m_settings.DbName();
    const QString version = m_settings.DBVersion();
    m_settings.holdLibrary(name);
    try {
        test();
        open();
    } catch (const DbError&) {
        m_settings.holdLibrary(former);
        m_settings.SetDBVersion(version);
        throw;
    }
    m_engine.Release(former);
}

/// What the start of the program asks of a library, and mends in it.
void LibraryData::test()
{
    CheckDatabase check(m_engine, m_files, m_clock, place(), m_sink);
    const QString fault = check.openTest();
    if (!fault.isEmpty()) {
        throw DbError(check.openError(), fault);
    }
    if (m_settings.CheckDBVersion() != 0) {
        throw DbError(dberror::kPreviousEngineFile, m_settings.DBVersion());
    }
}

DatabasePlace LibraryData::place() const
{
    return {m_settings.DbName(), m_paths.GetConfigPath(), m_paths.programName()};
}

void LibraryData::release()
{
    m_database.reset();
    takeBack();
    m_givenAway = m_settings.DbName();
    if (whenLent) {
        whenLent(m_givenAway);
    }
    m_engine.GiveAway(m_givenAway);
}

void LibraryData::takeBack()
{
    if (!m_givenAway.isEmpty()) {
        m_engine.TakeBack(m_givenAway);
        m_givenAway.clear();
        if (whenLent) {
            whenLent(m_givenAway);
        }
    }
}

void LibraryData::idle()
{
    m_engine.Idle(dbRefreshCache);
}

bool LibraryData::sideFilesWereStale()
{
    CheckDatabase check(m_engine, m_files, m_clock, place(), m_sink);
    check.whenKeptAside = whenKeptAside;
    check.checkTempTables();
    return check.checkTreeTables() < 0;
}

void LibraryData::requireLibrary()
{
    m_engine.OpenDatabase(m_settings.DbName())->Close();
}

void LibraryData::rebuildTree(const QString& tree)
{
    RebuildTrees trees({.engine = m_engine,
                        .files = m_files,
                        .clock = m_clock,
                        .dataFolder = m_paths.GetConfigPath()},
                       m_settings.DbName());
    for (const QString& failure : trees.runOne(tree).failures) {
        if (m_sink) {
            m_sink(u"RefreshDB"_s, failure);
        }
    }
}

qint64 LibraryData::count(const QString& statement)
{
    const auto database = m_engine.OpenDatabase(m_settings.DbName());
    const auto set = database->OpenRecordset(statement);
    return set->Eof() ? 0 : set->value(u"anz").toInt64();
}

qint64 LibraryData::trackCount()
{
    return count(u"select top 1 count(*) as anz from db_all"_s);
}

bool LibraryData::IsChangePlaylist()
{
    return count(u"select count(*) as anz from VPLGROUP_SAVE"_s) > 0;
}

MlvAllData LibraryData::GetAllDataByFid(const QString& fid)
{
    const MixDefaults defaults{.DefaultMixStyleIN = m_settings.DefaultMixStyleIN(),
                               .DefaultMixStyleOUT = m_settings.DefaultMixStyleOUT(),
                               .DefaultMixTime = m_settings.DefaultMixTime()};
    return TrackReader(m_engine, m_sink).GetAllDataByFid(m_settings.DbName(), fid, defaults);
}

} // namespace melovane
