#include "siblings/mlvmessage/suite_health.h"

#include "bus/message_numbers.h"
#include "care/backups.h"
#include "care/health.h"
#include "config/config_objects.h"
#include "config/global_settings.h"
#include "config/melovane_configuration.h"
#include "config/paths.h"
#include "platform/linux/ini_profile.h"
#include "platform/linux/linux_environment.h"
#include "platform/linux/linux_files.h"
#include "platform/linux/linux_messages.h"
#include "platform/linux/process_name.h"
#include "platform/linux/zstd_archive.h"
#include "platform/sqlite/engine/database_care.h"
#include "platform/sqlite/engine/sqlite_engine.h"
#include "platform/system/clock.h"

#include <QDir>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// For a console that does not answer.
constexpr std::chrono::milliseconds kPatience{2000};

/// Everything that lives as long as the report is made, bottom to top.
class HealthOfSuite
{
public:
    HealthOfSuite()
        : m_paths(m_environment, m_files)
        , m_engine(sqlite::makeEngine(m_clock))
        , m_care(sqlite::makeDatabaseCare(m_clock))
        , m_settings(m_paths, m_profile, m_files, *m_engine)
        , m_messages(place(m_environment))
        , m_control(m_messages.makeControl())
        , m_texts(m_paths, m_profile, m_files)
    {
        // Language files are looked for in the current folder.
        QDir::setCurrent(m_paths.GetConfigPath());
        MelovaneConfiguration::fill(m_texts);
    }

    [[nodiscard]] QString text()
    {
        return healthText(healthOf({.texts = m_texts,
                                    .settings = m_settings,
                                    .paths = m_paths,
                                    .files = m_files,
                                    .engine = *m_engine,
                                    .clock = m_clock,
                                    .runtimeFolder = m_environment.runtimeFolder(),
                                    .programs = [this] { return programs(); },
                                    .messages = [this] { return journal(); },
                                    .backups = [this] { return backups(); }}));
    }

private:
    static MessagePlace place(const LinuxEnvironment& environment)
    {
        MessagePlace result(environment.runtimeFolder());
        result.patience = kPatience;
        return result;
    }

    /// All but this one.
    [[nodiscard]] std::vector<LiveProgram> programs() const
    {
        std::vector<LiveProgram> found;
        for (const LiveControl& control : m_messages.liveControls()) {
            if (control.handle != m_control->handle()) {
                found.push_back({control.handle, control.process, processName(control.process)});
            }
        }
        return found;
    }

    [[nodiscard]] QStringList journal()
    {
        QString told;
        m_control->setMessageText([&told](qint32 id, qint32, const QString& text) {
            told = id == message::kTellJournal ? text : told;
            return 0;
        });
        m_control->setTarget(m_settings.MessageHandleDB());
        const bool isAnswered = m_control->Send(message::kTellJournal, 0, m_control->handle()) == 1;
        m_control->setMessageText({});
        return isAnswered ? told.split(u'\n', Qt::SkipEmptyParts)
                          : QStringList(m_texts.text(u"health.messages.away"));
    }

    [[nodiscard]] std::vector<Backup> backups()
    {
        return Backups({.care = *m_care,
                        .archives = m_archives,
                        .files = m_files,
                        .clock = m_clock,
                        .lock = [] { return std::unique_ptr<FileLock>(); }},
                       {m_settings.DbName(), m_paths.GetConfigPath(), databaseLevelOfThisRelease()})
            .list();
    }

    SystemClock m_clock;
    LinuxFiles m_files;
    LinuxEnvironment m_environment;
    IniProfile m_profile{m_files};
    Mod_API m_paths;
    ZstdArchives m_archives;
    std::unique_ptr<DBEngine> m_engine;
    std::unique_ptr<DatabaseCare> m_care;
    GlobalSettings m_settings;
    LinuxMessages m_messages;
    std::unique_ptr<KSMessage> m_control;
    ConfigObjects m_texts;
};

} // namespace

QString suiteHealth()
{
    return HealthOfSuite().text();
}

} // namespace melovane
