#pragma once

#include "shell/window_data.h"
#include "store/check_database.h"
#include "store/error_sink.h"

#include <functional>
#include <memory>

namespace melovane {

class Clock;
class Database;
class DBEngine;
class Files;
class GlobalSettings;
class Mod_API;

/// The window's questions, answered by the library that the settings name at that moment.
class LibraryData : public WindowData
{
public:
    /// \param sink learns of every ignored failure
    LibraryData(DBEngine& engine,
                GlobalSettings& settings,
                Mod_API& paths,
                Files& files,
                const Clock& clock,
                ErrorSink sink);
    ~LibraryData() override;

    /// Hears of a side file that was damaged and made anew, with the path under which the old one
    /// is kept. May be empty.
    std::function<void(const QString& kept)> whenKeptAside;

    /// Hears which library is lent from now on, before the other program learns that it may have
    /// it; an empty text when it is back. May be empty.
    std::function<void(const QString& library)> whenLent;

    void open() override;
    void openOther(const QString& name) override;
    void release() override;
    void idle() override;
    [[nodiscard]] bool sideFilesWereStale() override;
    void requireLibrary() override;
    void rebuildTree(const QString& tree) override;
    [[nodiscard]] qint64 trackCount() override;
    [[nodiscard]] bool IsChangePlaylist() override;
    [[nodiscard]] MlvAllData GetAllDataByFid(const QString& fid) override;

private:
    void takeBack();
    void test();
    [[nodiscard]] DatabasePlace place() const;
    [[nodiscard]] qint64 count(const QString& statement);

    DBEngine& m_engine;
    GlobalSettings& m_settings;
    Mod_API& m_paths;
    Files& m_files;
    const Clock& m_clock;
    ErrorSink m_sink;
    std::unique_ptr<Database> m_database;
    QString m_givenAway; ///< from release() to open()
};

} // namespace melovane
