#pragma once

#include "bus/message_numbers.h"
#include "bus/suite_messages.h"
#include "config/config_objects.h"
#include "config/global_settings.h"
#include "config/melovane_configuration.h"
#include "config/paths.h"
#include "config/refusals.h"
#include "config/update_colors.h"
#include "help/help_pages.h"
#include "platform/linux/id3_cover.h"
#include "platform/linux/ini_profile.h"
#include "platform/linux/job_locks.h"
#include "platform/linux/library_loan.h"
#include "platform/linux/linux_environment.h"
#include "platform/linux/linux_files.h"
#include "platform/linux/linux_messages.h"
#include "platform/linux/mp3_player.h"
#include "platform/linux/sdl_output.h"
#include "platform/linux/tag_reader.h"
#include "platform/qt/qt_picture_maker.h"
#include "platform/qt/qt_worker.h"
#include "platform/sqlite/engine/sqlite_engine.h"
#include "platform/system/clock.h"
#include "playlists/list_history.h"
#include "shell/skin_files.h"
#include "tagbench/bench_player.h"
#include "tagbench/bench_session.h"
#include "views/track_look.h"

#include <QDir>

#include <memory>

namespace melovane {

/// Everything that lives as long as the program, bottom to top.
class BenchProgram
{
public:
    explicit BenchProgram(BenchMode mode)
        : m_paths(m_environment, m_files)
        , m_engine(sqlite::makeEngine(m_clock))
        , m_reader(linux_media::makeTagReader())
        , m_settings(m_paths, m_profile, m_files, *m_engine)
        , m_messages(MessagePlace(m_environment.runtimeFolder()))
        , m_control(m_messages.makeControl())
        , m_loan(m_files, {m_environment.runtimeFolder(), m_paths.GetConfigPath()})
        , m_texts(m_paths, m_profile, m_files)
        , m_history(*m_engine, m_files, m_clock, m_settings, {})
        , m_session({*m_engine, m_history, m_settings, m_files, *m_reader, m_clock, m_texts,
                     m_covers, m_pictures, m_worker, m_paths.GetConfigPath(), claiming()},
                    mode)
    {
        // Language files are looked for in the current folder.
        QDir::setCurrent(m_paths.GetConfigPath());
        MelovaneConfiguration::fill(m_texts);
        m_session.whenWritten = [this] { tellConsole(); };
        m_session.whyNotNow = [this] { return obstacle(); };
    }

    /// Why nothing may be changed; empty when all is well.
    [[nodiscard]] QString obstacle() const
    {
        return refusedLibraryText(m_texts, m_settings, [this](const QString& library) {
            // The tracks are of the library that the tool began with.
            return m_loan.isLent(library) || m_loan.isLent(m_session.library());
        });
    }

    [[nodiscard]] const ConfigObjects& texts() const { return m_texts; }

    /// What F1 shows.
    [[nodiscard]] HelpPages::Parts help() { return helpOf(m_files, m_paths, m_texts, m_settings); }

    [[nodiscard]] BenchSession& session() { return m_session; }

    /// The theme that the console was given, so that both look alike; empty without one.
    [[nodiscard]] QString themeText()
    {
        return SkinFiles(m_paths, m_files).text(m_settings.SkinFileName());
    }

    [[nodiscard]] NoteColours noteColours() { return NoteColours::from(UpdateColors(m_settings)); }

    /// Gives the bench a voice. The loop outlives this.
    void addPlayer(MessageLoop& loop)
    {
        m_player = std::make_unique<linux_media::Mp3Player>(m_output, loop);
        m_listening = std::make_unique<BenchPlayer>(
            BenchPlayer::Parts{*m_player, m_settings, m_texts,
                               [this](const QString& stored) { return m_locator.placeOf(stored); },
                               [this] { (void)m_suite.StopOtherMonitors(); }});
        m_session.play = [this](const QString& stored, bool fromMiddle) {
            return m_listening->play(stored, fromMiddle);
        };
        m_session.stopPlaying = [this] { m_listening->stop(); };
    }

private:
    [[nodiscard]] std::function<std::unique_ptr<FileLock>()> claiming()
    {
        return jobClaim(jobLockFile(m_files,
                                    {m_environment.runtimeFolder(), m_paths.GetConfigPath()},
                                    QStringLiteral("tagbench"), m_settings.DbName()));
    }

    void tellConsole()
    {
        // It may have been started meanwhile.
        m_settings.Refresh();
        m_control->setTarget(m_settings.MessageHandleDB());
        m_control->Post(message::kDatabaseChanged, 0, 0);
    }

    SystemClock m_clock;
    LinuxFiles m_files;
    LinuxEnvironment m_environment;
    IniProfile m_profile{m_files};
    Mod_API m_paths;
    std::unique_ptr<DBEngine> m_engine;
    std::unique_ptr<TagReader> m_reader;
    linux_media::Id3CoverReader m_covers;
    QtPictureMaker m_pictures;
    GlobalSettings m_settings;
    LinuxMessages m_messages;
    std::unique_ptr<KSMessage> m_control;
    LibraryLoan m_loan;
    ConfigObjects m_texts;
    ListHistory m_history;
    BenchSession m_session;
    FileLocator m_locator{m_files, m_paths.GetConfigPath()};
    SuiteMessages m_suite{m_settings, *m_engine, m_messages, *m_control};
    linux_media::SdlOutput m_output;
    std::unique_ptr<Player> m_player;
    std::unique_ptr<BenchPlayer> m_listening;
    QtWorker m_worker; ///< the last member: it ends before all that it works on
};

} // namespace melovane
