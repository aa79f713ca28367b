#pragma once

#include <QString>

#include <memory>

namespace melovane {

class Database;
class DBEngine;

/// A library that is open for one operation: behind it no file of the library stays open, so that
/// another program can take it, or put another file in its place.
class LibraryVisit
{
public:
    /// \param engine outlives this \throws DbError
    LibraryVisit(DBEngine& engine, const QString& library);
    ~LibraryVisit();
    LibraryVisit(const LibraryVisit&) = delete;
    LibraryVisit& operator=(const LibraryVisit&) = delete;

    [[nodiscard]] Database& operator*() const { return *m_database; }

private:
    DBEngine& m_engine;
    QString m_library;
    std::unique_ptr<Database> m_database;
};

} // namespace melovane
