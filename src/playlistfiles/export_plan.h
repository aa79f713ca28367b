#pragma once

#include "playlists/playlist_ids.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <optional>
#include <vector>

namespace melovane {

class Database;
class DBEngine;
class FileLocator;
class Files;
class GlobalSettings;
class MessageLoop;

/// What an export is to do.
struct ExportOrder
{
    Pnid list{};
    QString folder;       ///< an existing one
    QString pathTemplate; ///< see Template2Path
    bool withData = true; ///< the list file holds the suite's own lines beside the paths
};

/// One row of an export.
struct ExportItem
{
    QString Path;     ///< as stored
    QString DName;    ///< as stored
    QString source;   ///< where the file lies today; empty when it is nowhere
    qint64 size = 0;  ///< bytes
    QString relative; ///< the copy, below the target folder
    QString lines;    ///< of the list file, path line included
    /// The copy would replace a file that the library knows, and that is not its own source.
    bool hitsLibrary = false;
};

/// What an export will do, row by row.
struct ExportPlan
{
    QString listFile; ///< full path
    QString header;
    std::vector<ExportItem> items;
    QStringList leftOut; ///< see M3uWriter::withoutTrack

    /// Bytes that the target volume must have free when its files take up whole blocks.
    [[nodiscard]] qint64 spaceNeeded(const Files& files, const QString& folder, qint64 block) const;
};

/// What plans are made with; outlives them.
struct ExportParts
{
    DBEngine& engine;
    const GlobalSettings& settings; ///< names the database
    Files& files;
    FileLocator& locator;
    MessageLoop& loop;
};

/// Name and length of a list, for telling the user what he is about to export.
struct ExportSubject
{
    QString name;
    qint64 entries = 0; ///< those whose track the library has
};

/// An unknown list has no name. \throws DbError
[[nodiscard]] ExportSubject readSubject(const ExportParts& parts, Pnid list);

/// Reads the list, gives every copy its path and looks for the files. The database is closed again
/// before the first file is looked for, and the message loop turns in between; `goOn` is asked
/// then. Nothing when `goOn` said no. \throws DbError
[[nodiscard]] std::optional<ExportPlan>
planExport(const ExportParts& parts, const ExportOrder& order, const std::function<bool()>& goOn);

} // namespace melovane
