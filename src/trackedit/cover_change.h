#pragma once

#include "trackedit/covers.h"

#include <functional>

namespace melovane {

class ConfigObjects;
class Database;
class EventGuard;
class FileChooser;
class GlobalSettings;
class Warnings;

/// A new cover for a track: the user chooses a picture, it is scaled and kept, the track and those
/// that shared its cover get it, and it enters the audio file at once.
class CoverChange
{
public:
    /// What it works on; all of it outlives it.
    struct Parts
    {
        Covers& covers;
        FileChooser& chooser;
        Warnings& warnings;
        GlobalSettings& settings;
        const ConfigObjects& texts;
        const EventGuard& guard;
        /// Stores the name of the new picture for the track and those that share the former one.
        /// \throws DbError
        std::function<void(const Covers::Track& track, const QString& image)> save;
        /// Stores the name of the picture file for the cover that a track has already.
        /// \throws DbError
        std::function<void(const QString& fid, const QString& image)> name;
        /// The track has another cover now.
        std::function<void(const QString& fid)> changed;
        std::function<void(const QString& text)> tell;
    };

    explicit CoverChange(Parts parts);

    /// Asks for a picture for that track. What follows goes on beside the window.
    void choose(const Covers::Track& track);

private:
    void take(const Covers::Track& track, const Covers::Ready& ready, const QString& picture);
    void written(const QString& file, const TagWriting& how) const;

    Parts m_parts;
};

} // namespace melovane
