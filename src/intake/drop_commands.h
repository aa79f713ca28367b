#pragma once

#include "intake/dropped_tracks.h"

#include <QStringList>

#include <functional>
#include <memory>

namespace melovane {

class Clock;
class ConfigObjects;
class DBEngine;
class Files;
class GlobalSettings;
class PointerControl;
class ProgressWindow;
class TagReader;

/// What drops of files speak to; outlives them.
struct DropParts
{
    DBEngine& engine;
    const GlobalSettings& settings; ///< names the database
    const ConfigObjects& texts;
    const Files& files;
    const TagReader& reader;
    const Clock& clock;
    PointerControl& pointer;
    std::function<void(const QString& text)> showStatusText;
    std::function<std::unique_ptr<ProgressWindow>(const QString& title)> openProgress;
    /// Tells the views of the library that it holds new tracks.
    std::function<void()> libraryChanged;
    /// Writes a file that could not be taken into the log of imports.
    std::function<void(const Refusal& refusal)> logRefusal = [](const Refusal&) {};
};

/// Takes what a user drops from a file manager: tracks, and word of what could not be taken. The
/// window stays alive, and the user can end it.
class DropCommands
{
public:
    explicit DropCommands(DropParts parts);

    /// The tracks of files and folders, see DroppedTracks; the pointer is busy meanwhile. Files
    /// without readable sound, and those beyond what one drop takes, are left out and told. None
    /// when the user has ended it, or while another drop is at work. Turns the message loop.
    /// \throws DbError, and nothing entered
    [[nodiscard]] QStringList tracksOf(const QStringList& places);

private:
    [[nodiscard]] DroppedTracks::Result take(const QStringList& places);
    [[nodiscard]] QString told(const DroppedTracks::Result& result) const;

    DropParts m_parts;
    bool m_busy = false;
};

} // namespace melovane
