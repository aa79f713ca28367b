#pragma once

#include "intake/skipped.h"

#include <QStringList>

#include <functional>

namespace melovane {

class Clock;
class ConfigObjects;
class DBEngine;
class Files;
class GlobalSettings;
class PointerControl;
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
    /// Writes a file that could not be taken into the log of imports.
    std::function<void(const Refusal& refusal)> logRefusal = [](const Refusal&) {};
};

/// Takes what a user drops from a file manager: tracks, and word of what could not be taken.
class DropCommands
{
public:
    explicit DropCommands(DropParts parts);

    /// The tracks of files and folders, see DroppedTracks; the pointer is busy meanwhile. Files
    /// without readable sound are left out and told. \throws DbError, and nothing entered
    [[nodiscard]] QStringList tracksOf(const QStringList& places);

private:
    DropParts m_parts;
};

} // namespace melovane
