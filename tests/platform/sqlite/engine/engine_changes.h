#pragma once

#include "platform/db/database.h"
#include "support/fake_clock.h"
#include "support/temp_folder.h"

#include <QMap>

#include <functional>
#include <iosfwd>
#include <memory>

/// Every operation of the engine that changes data, for tests that let it fail.
namespace melovane::test {

/// A folder with a database, its side file and a backup, and an engine that works on them.
class Scene
{
public:
    /// Makes the files once; reset() goes back to them.
    Scene();

    /// Ends every connection and puts the files as they were made.
    void reset();

    /// Ends every connection.
    void close();

    /// Made at the first call.
    [[nodiscard]] DBEngine& engine();

    /// The main database, opened at the first call.
    [[nodiscard]] Database& db();

    [[nodiscard]] QString path(const QString& name) const { return m_folder.file(name); }

    /// All there is, read by an engine of its own: a text per database file, or its error.
    [[nodiscard]] QMap<QString, QString> content() const;

    /// Empty when SQLite finds nothing wrong with any of the database files.
    [[nodiscard]] QString damage() const;

    /// Names of files that no operation leaves behind when it is over.
    [[nodiscard]] QStringList litter() const;

private:
    [[nodiscard]] QStringList databases() const;
    [[nodiscard]] bool isAsMade(const QString& name) const;
    void make();

    TempFolder m_folder;
    FakeClock m_clock;
    QMap<QString, QByteArray> m_made;
    QMap<QString, QString> m_madeContent;
    std::unique_ptr<DBEngine> m_engine;
    std::unique_ptr<Database> m_database;
};

struct EngineChange
{
    const char* name;
    std::function<void(Scene&)> run;
    /// False when whole files are made and renamed, which the file layer of SQLite does not see.
    bool seenByFileLayer = true;
};

/// Its name, where a test tells its parameter.
void PrintTo(const EngineChange& change, std::ostream* out);

[[nodiscard]] const std::vector<EngineChange>& engineChanges();

} // namespace melovane::test
