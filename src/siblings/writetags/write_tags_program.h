#pragma once

#include "bus/message_numbers.h"
#include "config/config_objects.h"
#include "config/global_settings.h"
#include "config/melovane_configuration.h"
#include "config/paths.h"
#include "config/refusals.h"
#include "help/help_pages.h"
#include "platform/linux/id3_cover.h"
#include "platform/linux/ini_profile.h"
#include "platform/linux/library_loan.h"
#include "platform/linux/linux_environment.h"
#include "platform/linux/linux_files.h"
#include "platform/linux/linux_messages.h"
#include "platform/linux/linux_tag_writer.h"
#include "platform/linux/only_copy.h"
#include "platform/linux/tag_reader.h"
#include "platform/sqlite/engine/sqlite_engine.h"
#include "platform/system/clock.h"
#include "platform/system/path_text.h"
#include "shell/skin_files.h"
#include "siblings/writetags/write_tags.h"

#include <QDir>

#include <memory>

namespace melovane {

/// Everything that lives as long as the program, bottom to top.
class WriteTagsProgram
{
public:
    WriteTagsProgram()
        : m_paths(m_environment, m_files)
        , m_engine(sqlite::makeEngine(m_clock))
        , m_settings(m_paths, m_profile, m_files, *m_engine)
        , m_reader(linux_media::makeTagReader())
        , m_writer(linux_media::makeTagWriter(
              path::join(m_paths.GetConfigPath(), QStringLiteral("tagjournal"))))
        , m_messages(MessagePlace(m_environment.runtimeFolder()))
        , m_control(m_messages.makeControl())
        , m_onlyOne({m_environment.runtimeFolder(), m_paths.GetConfigPath()}, lockName())
        , m_loan(m_files, {m_environment.runtimeFolder(), m_paths.GetConfigPath()})
        , m_texts(m_paths, m_profile, m_files)
        , m_work({.engine = *m_engine,
                  .files = m_files,
                  .reader = *m_reader,
                  .covers = m_covers,
                  .writer = *m_writer,
                  .clock = m_clock,
                  .dataFolder = m_paths.GetConfigPath(),
                  .isLent = [this] { return m_loan.isLent(m_settings.DbName()); }},
                 {m_settings.DbName(), m_settings.ID3v2Tags()})
    {
        // Language files are looked for in the current folder.
        QDir::setCurrent(m_paths.GetConfigPath());
        MelovaneConfiguration::fill(m_texts);
    }

    /// Why nothing may be done; empty when all is well.
    [[nodiscard]] QString obstacle() const
    {
        return refusedLibraryText(
            m_texts, m_settings, [this](const QString& library) { return m_loan.isLent(library); });
    }

    /// True when no other program writes tags for the library; until this one ends, none can. What
    /// one that was killed left is then made whole.
    [[nodiscard]] bool claim()
    {
        if (!m_onlyOne.claim()) {
            return false;
        }
        m_writer->repair();
        return true;
    }

    [[nodiscard]] WriteTags& work() { return m_work; }

    [[nodiscard]] const ConfigObjects& texts() const { return m_texts; }

    /// What F1 shows.
    [[nodiscard]] HelpPages::Parts help() { return helpOf(m_files, m_paths, m_texts, m_settings); }

    [[nodiscard]] QString database() { return m_settings.DbName(); }

    /// The theme that the console was given, so that both look alike; empty without one.
    [[nodiscard]] QString themeText()
    {
        return SkinFiles(m_paths, m_files).text(m_settings.SkinFileName());
    }

    /// Tells the console how many files were written.
    /// \param console its control; 0 for the one that the settings name
    void tellConsole(MessageHandle console)
    {
        m_settings.Refresh(); // it may have been started meanwhile
        m_control->setTarget(console != 0 ? console : m_settings.MessageHandleDB());
        m_control->Post(message::kJobResult, message::kJobChanges, m_work.report().written);
    }

private:
    /// The same for every path that leads to the library's file.
    [[nodiscard]] QString lockName()
    {
        const FileFacts facts = m_files.facts(m_settings.DbName()).value_or(FileFacts{});
        return QStringLiteral("writetags-%1-%2").arg(facts.device, 0, 16).arg(facts.inode, 0, 16);
    }

    SystemClock m_clock;
    LinuxFiles m_files;
    LinuxEnvironment m_environment;
    IniProfile m_profile{m_files};
    Mod_API m_paths;
    std::unique_ptr<DBEngine> m_engine;
    GlobalSettings m_settings;
    std::unique_ptr<TagReader> m_reader;
    linux_media::Id3CoverReader m_covers;
    std::unique_ptr<TagWriter> m_writer;
    LinuxMessages m_messages;
    std::unique_ptr<KSMessage> m_control;
    OnlyCopy m_onlyOne;
    LibraryLoan m_loan;
    ConfigObjects m_texts;
    WriteTags m_work;
};

} // namespace melovane
