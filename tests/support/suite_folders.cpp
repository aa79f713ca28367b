#include "support/suite_folders.h"

#include "platform/db/db_error.h"
#include "platform/system/path_text.h"

#include <QDir>

#include <gtest/gtest.h>

namespace melovane::test {

using namespace Qt::Literals::StringLiterals;

namespace {

EnvironmentPlaces
placesBelow(const QString& folder, SuiteFolders::Layout layout, const QString& programName)
{
    const auto made = [&](QStringView name) {
        const QString path = path::join(folder, name);
        EXPECT_TRUE(QDir().mkpath(path));
        return path;
    };
    const bool installed = layout == SuiteFolders::Layout::UserNormal;
    EnvironmentPlaces places;
    places.programFolder = made(installed ? u"prefix/lib/melovane" : u"suite");
    places.programName = programName;
    places.userData = made(u"home/.local/share");
    places.commonData = made(u"common/data");
    places.userDocuments = made(u"home/Documents");
    places.commonDocuments = made(u"common/documents");
    places.programFiles = made(u"prefix");
    places.machineFile = path::join(made(u"etc"), u"machine.conf");
    places.userFile = path::join(folder, u"home/.config/Melovane/user.conf");
    places.cacheBase = path::join(folder, u"home/.cache");
    places.runtimeBase = made(u"run");
    places.temporaryBase = made(u"tmp");
    return places;
}

} // namespace

std::unique_ptr<Database> NoEngine::OpenDatabase(const QString& name)
{
    throw DbError(dberror::kFileNotFound, u"no database "_s + name);
}

Workspace& NoEngine::Workspaces(int)
{
    throw DbError(dberror::kOther, u"no workspace"_s);
}

void NoEngine::BackupDatabase(const QString& source, const QString&)
{
    throw DbError(dberror::kFileNotFound, u"no database "_s + source);
}

SuiteFolders::SuiteFolders(Layout layout, const QString& programName)
    : m_places(placesBelow(m_folder.path(), layout, programName))
    , m_environment(m_places)
    , m_profile(m_files)
    , m_paths(m_environment, m_files)
{}

QString SuiteFolders::install(const QString& name, const QByteArray& bytes) const
{
    return m_folder.write(path::join(m_places.programFolder, name), bytes);
}

QString SuiteFolders::configFile(const QString& name)
{
    return path::join(m_paths.GetConfigPath(), name);
}

std::unique_ptr<GlobalSettings> SuiteFolders::makeSettings(DBEngine& engine)
{
    return std::make_unique<GlobalSettings>(m_paths, m_profile, m_files, engine);
}

std::unique_ptr<GlobalSettings> SuiteFolders::makeSettings()
{
    return makeSettings(m_noEngine);
}

} // namespace melovane::test
