#pragma once

#include "bus/message_numbers.h"
#include "config/config_objects.h"
#include "config/global_settings.h"
#include "config/melovane_configuration.h"
#include "config/paths.h"
#include "config/refusals.h"
#include "help/help_pages.h"
#include "intake/intake_session.h"
#include "platform/db/db_error.h"
#include "platform/linux/audio_identity.h"
#include "platform/linux/ini_profile.h"
#include "platform/linux/library_loan.h"
#include "platform/linux/linux_environment.h"
#include "platform/linux/linux_files.h"
#include "platform/linux/linux_messages.h"
#include "platform/linux/linux_processes.h"
#include "platform/linux/only_copy.h"
#include "platform/linux/tag_reader.h"
#include "platform/sqlite/engine/sqlite_engine.h"
#include "platform/system/clock.h"
#include "platform/system/path_text.h"
#include "shell/language_files.h"
#include "shell/skin_files.h"
#include "siblings/mediaintake/import_lock.h"

#include <QDir>

#include <functional>
#include <memory>
#include <utility>

namespace melovane {

/// Everything that lives as long as the program, bottom to top.
class IntakeProgram
{
public:
    explicit IntakeProgram(IntakeMode mode)
        : m_paths(m_environment, m_files)
        , m_engine(sqlite::makeEngine(m_clock))
        , m_reader(linux_media::makeTagReader())
        , m_settings(m_paths, m_profile, m_files, *m_engine)
        , m_messages(MessagePlace(m_environment.runtimeFolder()))
        , m_control(m_messages.makeControl())
        , m_onlyImport({m_environment.runtimeFolder(), m_paths.GetConfigPath()},
                       importLockName(m_files, m_settings.DbName()))
        , m_loan(m_files, {m_environment.runtimeFolder(), m_paths.GetConfigPath()})
        , m_texts(m_paths, m_profile, m_files)
        , m_session({*m_engine, m_files, *m_reader, m_clock, m_texts, m_paths.GetConfigPath(),
                     &m_audio, &m_files},
                    m_settings,
                    mode)
    {
        // Language files are looked for in the current folder.
        QDir::setCurrent(m_paths.GetConfigPath());
        MelovaneConfiguration::fill(m_texts);
        m_session.whenOver = [this](const IntakeReport& report) { tellSuite(report); };
    }

    /// Why there must be no import; empty when there may be one.
    [[nodiscard]] QString obstacle() const
    {
        return refusedLibraryText(
            m_texts, m_settings, [this](const QString& library) { return m_loan.isLent(library); });
    }

    /// True when no other program imports into the database; until this one ends, none can.
    [[nodiscard]] bool claim() { return m_onlyImport.claim(); }

    /// Lets a later importer bring the window to the front.
    void listen(std::function<void()> bringToFront)
    {
        m_control->setMessageNumber([bring = std::move(bringToFront)](qint32 id, qint32, qint32) {
            if (id != message::kBringToFront) {
                return 0;
            }
            bring();
            return kIsInFront;
        });
        m_onlyImport.publish(m_control->handle());
    }

    /// For an importer that may not start: false when the other one has no window.
    [[nodiscard]] bool bringOtherToFront()
    {
        m_control->setTarget(m_onlyImport.runningCopy());
        return m_control->Send(message::kBringToFront, 0, 0) == kIsInFront;
    }

    [[nodiscard]] const ConfigObjects& texts() const { return m_texts; }

    [[nodiscard]] IntakeSession& session() { return m_session; }

    /// What F1 shows.
    [[nodiscard]] HelpPages::Parts help() { return helpOf(m_files, m_paths, m_texts, m_settings); }

    /// The theme that the console was given, so that both look alike; empty without one.
    [[nodiscard]] QString themeText()
    {
        return SkinFiles(m_paths, m_files).text(m_settings.SkinFileName());
    }

    /// No track was ever imported. A library that cannot be read is told by the import.
    [[nodiscard]] bool isLibraryEmpty()
    {
        try {
            const auto library = m_engine->OpenDatabase(m_settings.DbName());
            return library->OpenRecordset(QStringLiteral("select top 1 fid from db_all"))->Eof();
        } catch (const DbError&) {
            return false;
        }
    }

    [[nodiscard]] std::vector<LanguageEntry> languages()
    {
        return LanguageFiles(m_paths, m_files, m_texts).entries();
    }

    /// For all programs of the suite, at once.
    void chooseLanguage(const QString& file)
    {
        if (LanguageFiles(m_paths, m_files, m_texts).choose(file)) {
            MelovaneConfiguration::speak(m_texts, m_texts.value(u"Sprach.Datei"));
            tellSettings();
        }
    }

    /// File names.
    [[nodiscard]] QStringList themes() { return SkinFiles(m_paths, m_files).names(); }

    [[nodiscard]] QString theme() const { return m_settings.SkinFileName(); }

    /// Likewise. \param file empty for the theme of the desktop
    void chooseTheme(const QString& file)
    {
        m_settings.SetSkinFileName(file);
        tellSettings();
    }

private:
    void tellSettings()
    {
        m_settings.RefreshMessageHandle();
        m_control->setTarget(m_settings.MessageHandleDB());
        m_control->Post(message::kConfigChanged, 0, 0);
    }

    /// The answer to kBringToFront.
    static constexpr qint32 kIsInFront = 1;

    /// The console shows the new tracks at once. The trees follow as soon as their program, which
    /// tells the console itself, has filled the tables that the import has marked; where it is not
    /// installed they wait for the jobs program.
    void tellSuite(const IntakeReport& report)
    {
        if (report.rowsWritten() > 0) {
            m_control->setTarget(m_settings.MessageHandleDB());
            m_control->Send(message::kDatabaseChanged, 0, 0);
            m_processes.startProgram(
                path::join(m_paths.programFolder(), QStringLiteral("Task.RebuildTree")), {},
                Processes::WindowStyle::Hidden);
        }
    }

    SystemClock m_clock;
    LinuxFiles m_files;
    LinuxEnvironment m_environment;
    LinuxProcesses m_processes;
    IniProfile m_profile{m_files};
    Mod_API m_paths;
    std::unique_ptr<DBEngine> m_engine;
    std::unique_ptr<TagReader> m_reader;
    linux_media::LinuxAudioIdentity m_audio;
    GlobalSettings m_settings;
    LinuxMessages m_messages;
    std::unique_ptr<KSMessage> m_control;
    OnlyCopy m_onlyImport;
    LibraryLoan m_loan;
    ConfigObjects m_texts;
    IntakeSession m_session;
};

} // namespace melovane
