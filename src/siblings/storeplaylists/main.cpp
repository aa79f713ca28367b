// Writes every list that has changed to its file and tells what it did on the standard output. What
// fails is told in a window, too, unless it was asked to be quiet. Ends with 0 when nothing failed.

#include "bus/event_guard.h"
#include "config/config_objects.h"
#include "config/counted_text.h"
#include "config/global_settings.h"
#include "config/melovane_configuration.h"
#include "config/paths.h"
#include "config/program_call.h"
#include "config/refusals.h"
#include "platform/db/db_error.h"
#include "platform/linux/ini_profile.h"
#include "platform/linux/job_locks.h"
#include "platform/linux/library_loan.h"
#include "platform/linux/linux_environment.h"
#include "platform/linux/linux_file_lock.h"
#include "platform/linux/linux_files.h"
#include "platform/sqlite/engine/sqlite_engine.h"
#include "platform/system/clock.h"
#include "playlistfiles/store_playlists.h"
#include "shell/skin_files.h"
#include "siblings/storeplaylists/ui/failure_message.h"

#include <QDir>
#include <QTextStream>

namespace {

using namespace melovane;
using namespace Qt::Literals::StringLiterals;

/// Longer than storing all lists of the largest library takes.
constexpr std::chrono::minutes kLongest{5};

/// Everything that lives as long as the program, bottom to top.
class Program
{
public:
    Program()
        : m_paths(m_environment, m_files)
        , m_engine(sqlite::makeEngine(m_clock))
        , m_settings(m_paths, m_profile, m_files, *m_engine)
        , m_loan(m_files, lockFolders())
        , m_texts(m_paths, m_profile, m_files)
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

    /// What it has done, and what not. Waits for another one that stores lists of the library, so
    /// that two never write one file.
    [[nodiscard]] StorePlaylists::Result store()
    {
        const auto lock =
            lockFile(jobLockFile(m_files, lockFolders(), u"storeplaylists"_s, m_settings.DbName()),
                     kLongest);
        QTextStream out(stdout);
        StorePlaylists::Result result;
        try {
            result = StorePlaylists(*m_engine, m_settings, m_files, m_texts)
                         .run([&](const QString& file) { out << file << Qt::endl; });
        } catch (const DbError& error) {
            result.failures.append(
                databaseFaultText(m_texts, error.number(), error.text(), m_settings.DbName()));
        }
        out << countedText(m_texts, u"store.written"_s, result.written,
                           m_settings.PlaylistVerzeichnis())
            << Qt::endl;
        return result;
    }

    /// Empty when there is nothing to be told.
    [[nodiscard]] QString told(const StorePlaylists::Result& result) const
    {
        QStringList texts;
        if (!result.failures.isEmpty()) {
            texts.append(toldFailures(result.failures));
        }
        if (!result.leftOut.isEmpty()) {
            texts.append(leftOutText(m_texts, result.leftOut));
        }
        return texts.join(u"\n\n"_s);
    }

    [[nodiscard]] QString toldFailures(const QStringList& failures) const
    {
        return countedText(m_texts, u"store.failed"_s, failures.size(),
                           toldLines(m_texts, failures));
    }

    void tell(int argc, char** argv, const QString& text, WarningType type)
    {
        const QString theme = SkinFiles(m_paths, m_files).text(m_settings.SkinFileName());
        showFailure(argc, argv, {m_settings, m_texts, m_paths, theme}, text, type);
    }

private:
    [[nodiscard]] QStringList lockFolders()
    {
        return {m_environment.runtimeFolder(), m_paths.GetConfigPath()};
    }

    SystemClock m_clock;
    LinuxFiles m_files;
    LinuxEnvironment m_environment;
    IniProfile m_profile{m_files};
    Mod_API m_paths;
    std::unique_ptr<DBEngine> m_engine;
    GlobalSettings m_settings;
    LibraryLoan m_loan;
    ConfigObjects m_texts;
};

} // namespace

int main(int argc, char** argv)
{
    const QString name = u"Task.StorePlaylists"_s;
    QStringList call = argumentsOf(argc, argv);
    // The console starts it with a single blank.
    call.removeAll(QString());
    if (const auto code = answerCall(name, call)) {
        return *code;
    }
    const bool quiet = call == QStringList{u"--quiet"_s};
    if (!quiet && !call.isEmpty()) {
        return refuseCall(name, call.join(u' '));
    }
    Program program;
    if (const QString obstacle = program.obstacle(); !obstacle.isEmpty()) {
        QTextStream(stderr) << obstacle << Qt::endl;
        if (!quiet) {
            program.tell(argc, argv, obstacle, WarningType::Stop);
        }
        return 1;
    }
    const StorePlaylists::Result result = program.store();
    const QString text = program.told(result);
    const bool failed = !result.failures.isEmpty();
    if (!text.isEmpty()) {
        QTextStream(stderr) << text << Qt::endl;
        if (!quiet) {
            program.tell(argc, argv, text, failed ? WarningType::Stop : WarningType::Note);
        }
    }
    return failed ? 1 : 0;
}
