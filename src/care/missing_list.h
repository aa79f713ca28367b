#pragma once

#include "care/found_rules.h"

#include <QStringList>

#include <atomic>
#include <vector>

namespace melovane {

class Database;
class Files;

/// Which tracks are missing: those that a scan has marked, and those whose whole folder is gone.
/// Tracks on discs never are.
namespace missinglist {

/// Every folder of the library that may be gone. \throws DbError
[[nodiscard]] QStringList folders(Database& database);

/// Rows that are marked as missing (`DEL` 2 and 3). \throws DbError
[[nodiscard]] std::vector<MissingTrack> marked(Database& database);

/// All rows of folders. \throws DbError
[[nodiscard]] std::vector<MissingTrack> rowsOf(Database& database, const QStringList& folders);

/// Those folders that are neither where they are stored, in whatever spelling, nor where
/// `ChangeDir.conf` leads to.
[[nodiscard]] QStringList
gone(const Files& files, const QString& dataFolder, const QStringList& folders);

/// Without the tracks whose file is there: under another spelling, in a mapped folder, or because
/// it has come back since.
/// \param gone what gone() gave: nothing is asked about these
[[nodiscard]] std::vector<MissingTrack> stillMissing(const Files& files,
                                                     const QString& dataFolder,
                                                     std::vector<MissingTrack> tracks,
                                                     const QStringList& gone,
                                                     const std::atomic<bool>& isCancelled);

} // namespace missinglist

} // namespace melovane
