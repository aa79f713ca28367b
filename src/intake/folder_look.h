#pragma once

#include "intake/folder_walk.h"

#include <chrono>

namespace melovane {

class ConfigObjects;

/// What lies below some folders, told before anything is imported: how many MP3 files, and how many
/// files of other kinds of sound. Reads names alone.
class FolderLook
{
public:
    FolderLook(const Files& files, const QStringList& folders);

    FolderLook(const FolderLook&) = delete;
    FolderLook& operator=(const FolderLook&) = delete;

    /// Looks for about that long; false when everything was seen.
    bool step(std::chrono::milliseconds budget);

    [[nodiscard]] int found() const { return m_found; }

    /// "Gefunden: 120 Dateien. Nicht gelesen werden: 3 FLAC, 1 Ogg."
    [[nodiscard]] QString text(const ConfigObjects& texts) const;

private:
    Skipped m_skipped;
    FolderWalk m_walk;
    int m_found = 0;
    bool m_isOver = false;
};

} // namespace melovane
