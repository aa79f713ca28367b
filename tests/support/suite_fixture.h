#pragma once

#include "config/global_settings.h"
#include "platform/db/database.h"
#include "platform/linux/linux_files.h"
#include "store/check_database.h"
#include "support/fake_clock.h"
#include "support/library_maker.h"
#include "support/suite_folders.h"
#include "support/temp_folder.h"

#include <QStringList>

#include <gtest/gtest.h>

#include <memory>

namespace melovane::test {

/// A suite as it lies on a disk after the first start, for one test: a data folder of its own with
/// the shipped `melovane.ini` and `melovane.mdb`, its side files made and linked by the program's
/// own bootstrap.
class Suite
{
public:
    enum class SideFiles
    {
        Linked,
        None ///< as before the first start
    };

    explicit Suite(SideFiles sideFiles = SideFiles::Linked);

    [[nodiscard]] QString dataFolder() const { return folders.programFolder(); }

    /// Full path of a file in the data folder.
    [[nodiscard]] QString file(const QString& name) const;

    /// Writes a file into the data folder and returns its path.
    QString write(const QString& name, const QByteArray& bytes) const;
    [[nodiscard]] QByteArray read(const QString& name) const;

    [[nodiscard]] QString dbName() const { return file(QStringLiteral("melovane.mdb")); }

    [[nodiscard]] std::unique_ptr<Database> open() const { return engine->OpenDatabase(dbName()); }

    /// Settings as a program makes them at its start, over this suite's melovane.ini.
    [[nodiscard]] std::unique_ptr<GlobalSettings> makeSettings()
    {
        return folders.makeSettings(*engine);
    }

    /// Checks this suite's database as the program of that name.
    [[nodiscard]] CheckDatabase check(const QString& program = QStringLiteral("MelovaneDB"));

    void execute(const QString& statement) const { open()->Execute(statement); }

    /// The first cell of a statement's first row; null when there is no row.
    [[nodiscard]] Value value(const QString& statement) const;

    /// The first column of a statement, top to bottom.
    [[nodiscard]] QStringList column(const QString& statement) const;

    SuiteFolders folders;
    LinuxFiles& files;
    FakeClock clock;
    std::unique_ptr<DBEngine> engine;
    LibraryMaker library;
    QStringList log; ///< "where: what" of every quiet failure
};

/// A test with a suite.
class SuiteFixture : public testing::Test
{
protected:
    Suite suite;
};

/// Folder of the schema sources, and of everything else that ships.
[[nodiscard]] QString schemaFolder();
[[nodiscard]] QString resourceFolder();

} // namespace melovane::test
