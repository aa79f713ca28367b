#pragma once

#include "care/beside_tools.h"

#include <QString>

#include <functional>
#include <memory>

namespace melovane {

class ConfigObjects;
class DBEngine;
class Files;
class GlobalSettings;
class LibraryScan;
struct LibraryScanResult;
class LiveWait;
class ProgressWindow;
class Warnings;

/// The list of the files that the last scan has missed, in the data folder: keep.
inline constexpr QStringView kMissingList = u"FileNotExist.txt";

struct MissingFilesParts
{
    DBEngine& engine;
    const GlobalSettings& settings;
    const ConfigObjects& texts;
    Files& files;
    Warnings& warnings;
    LiveWait& wait;
    BesideTools beside;
    QString dataFolder;
    std::function<std::unique_ptr<ProgressWindow>(const QString& title)> openProgress;
    std::function<void(const QString& text)> tell; ///< a line for the user
    std::function<void()> changed;                 ///< rows of the library are others now
    std::function<void()> rebuildTrees;
};

/// The scan for missing files: marks tracks whose file is gone, and those whose file is back.
class MissingFiles
{
public:
    explicit MissingFiles(MissingFilesParts parts);

    /// Looks for the file of each track that is on no disc. `DEL` 0 becomes 2 and -1 becomes 3
    /// where it is missing; 2 and 3 go back where it is there again. FileNotExist.txt names every
    /// missing file, also those that were marked before; files on a volume that isn't here are told
    /// apart.
    ///
    /// The window lives meanwhile; rows are written a thousand at a time. When the user ends it,
    /// what was written stays, and the list is that of the last whole scan.
    /// \throws DbError, IoError when the list could not be written; the rows are then
    void Scan();

private:
    [[nodiscard]] bool writeSome(LibraryScan& scan);
    [[nodiscard]] bool goesOn(LibraryScan& scan, ProgressWindow& progress) const;
    [[nodiscard]] bool lookAndWrite(const std::shared_ptr<LibraryScan>& scan);
    void report(const LibraryScanResult& found) const;
    [[nodiscard]] QString reportText(const LibraryScanResult& found, const QString& list) const;

    MissingFilesParts m_parts;
    bool m_isRunning = false;
    qint64 m_written = 0; ///< rows of the present scan
};

} // namespace melovane
