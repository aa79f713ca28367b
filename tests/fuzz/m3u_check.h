#pragma once

#include "config/global_settings.h"
#include "config/paths.h"
#include "platform/db/database.h"
#include "platform/linux/ini_profile.h"
#include "platform/linux/linux_environment.h"
#include "platform/linux/linux_files.h"
#include "platform/media/track_tags.h"
#include "platform/system/clock.h"
#include "playlistfiles/mlv_m3u.h"
#include "playlists/list_history.h"
#include "playlists/undo_redo.h"
#include "store/file_locator.h"

#include <QTemporaryDir>

#include <memory>

namespace melovane::fuzz {

/// What must hold of every file that is read as a list, whoever wrote it.
class M3uCheck
{
public:
    M3uCheck();
    ~M3uCheck();

    /// Takes the bytes as a list file: each record has a path of one line without a bar and texts
    /// that are no "Null", and reads back as it is when it is written again.
    /// \return what went wrong; empty when all holds
    [[nodiscard]] static QString checkText(const QByteArray& bytes);

    /// Loads them over a library and a disk, which costs some thousand times as much: each record
    /// becomes an entry or one failure, nothing else comes into the library, and the entries go
    /// into a list.
    [[nodiscard]] QString checkImport(const QByteArray& bytes);

    /// Entries that were found so far, and failures.
    [[nodiscard]] int entries() const { return m_entries; }

    [[nodiscard]] int failures() const { return m_failures; }

private:
    [[nodiscard]] static QString checkRecord(const M3uRecord& record);
    [[nodiscard]] int count(const QString& from) const;
    void fillLibrary();

    QTemporaryDir m_folder;
    SystemClock m_clock;
    LinuxFiles m_files;
    LinuxEnvironment m_environment;
    IniProfile m_profile;
    Mod_API m_paths;
    std::unique_ptr<DBEngine> m_engine;
    GlobalSettings m_settings;
    FileLocator m_locator;
    ListHistory m_history;
    ModUndoRedo m_snapshots;
    std::unique_ptr<TagReader> m_reader;
    MlvM3U m_m3u;
    Pnid m_list{};
    int m_entries = 0;
    int m_failures = 0;
};

} // namespace melovane::fuzz
