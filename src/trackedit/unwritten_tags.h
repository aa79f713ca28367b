#pragma once

#include "platform/media/tag_writer.h"

#include <QString>

#include <optional>
#include <span>

namespace melovane {

class ConfigObjects;
class Database;
class Files;

/// A track whose changes did not reach its file.
struct UnwrittenTag
{
    QString fid;
    TagWriteFault fault = TagWriteFault::Failed;
    QString detail; ///< the system's own words, or empty
};

/// Keeps what the last run of `Task.WriteTags` could not write, so that the console can say so at
/// the track: the file "unwritten.txt" of the data folder, a line "FID, fault, detail" each with
/// tabs between them. It is read by the console: keep. None takes the file away. Quiet: what
/// cannot be kept is not told.
void keepUnwritten(Files& files, const QString& dataFolder, std::span<const UnwrittenTag> tracks);

/// What was kept of a track; nothing for one that was written.
[[nodiscard]] std::optional<UnwrittenTag>
unwrittenOf(const Files& files, const QString& dataFolder, const QString& fid);

/// Tracks of `db_edit`, whose changes have yet to reach their files; of that one alone when it is
/// named. \throws DbError
[[nodiscard]] qint64 waitingTracks(Database& database, const QString& fid = {});

/// Why a file was not written, for the user.
[[nodiscard]] QString
unwrittenReason(const ConfigObjects& texts, TagWriteFault fault, const QString& detail);

} // namespace melovane
