// Says whether the library is whole and, with --repair, mends what can be mended without loss. Ends
// with what scripts ask for, see its page.

#include "bus/event_guard.h"
#include "bus/message_numbers.h"
#include "care/check_report.h"
#include "care/last_check.h"
#include "care/library_check.h"
#include "config/config_objects.h"
#include "config/global_settings.h"
#include "config/melovane_configuration.h"
#include "config/paths.h"
#include "config/program_call.h"
#include "config/refusals.h"
#include "platform/linux/ini_profile.h"
#include "platform/linux/library_loan.h"
#include "platform/linux/linux_environment.h"
#include "platform/linux/linux_files.h"
#include "platform/linux/linux_messages.h"
#include "platform/sqlite/engine/database_care.h"
#include "platform/sqlite/engine/sqlite_engine.h"
#include "platform/system/clock.h"
#include "playlistfiles/store_playlists.h"
#include "trees/rebuild_trees.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QTextStream>

#include <algorithm>

namespace {

using namespace melovane;
using namespace Qt::Literals::StringLiterals;

// What the program ends with: keep, scripts ask for it.
constexpr int kWhole = 0;
constexpr int kFindings = 1;
constexpr int kUnreadable = 3;

bool neverGivenUp(qint64, qint64)
{
    return true;
}

/// What the user asks for.
struct Call
{
    bool repairs = false;
    bool isQuick = false;
    QString file; ///< empty: the library of the settings
};

/// Nothing for a call that makes no sense.
std::optional<Call> callOf(const QStringList& arguments)
{
    Call call;
    for (const QString& argument : arguments) {
        if (argument == u"--repair") {
            call.repairs = true;
        } else if (argument == u"--quick") {
            call.isQuick = true;
        } else if (argument.startsWith(u'-') || argument.isEmpty() || !call.file.isEmpty()) {
            return std::nullopt;
        } else {
            call.file = QFileInfo(argument).absoluteFilePath();
        }
    }
    return call;
}

/// Everything that lives as long as the program, bottom to top.
class Program
{
public:
    Program()
        : m_paths(m_environment, m_files)
        , m_engine(sqlite::makeEngine(m_clock))
        , m_care(sqlite::makeDatabaseCare(m_clock))
        , m_settings(m_paths, m_profile, m_files, *m_engine)
        , m_loan(m_files, {m_environment.runtimeFolder(), m_paths.GetConfigPath()})
        , m_messages(MessagePlace(m_environment.runtimeFolder()))
        , m_control(m_messages.makeControl())
        , m_texts(m_paths, m_profile, m_files)
    {
        // Language files are looked for in the current folder.
        QDir::setCurrent(m_paths.GetConfigPath());
        MelovaneConfiguration::fill(m_texts);
    }

    [[nodiscard]] int run(const Call& call)
    {
        const bool isLibrary = call.file.isEmpty();
        if (isLibrary) {
            const QString obstacle =
                refusedLibraryText(m_texts, m_settings, [this](const QString& library) {
                    return m_loan.isLent(library);
                });
            if (!obstacle.isEmpty()) {
                QTextStream(stderr) << obstacle << Qt::endl;
                return kUnreadable;
            }
        }
        LibraryCheck check({*m_engine, *m_care, m_files, m_clock},
                           isLibrary ? placeOfLibrary() : LibraryCheck::Place{call.file});
        const auto depth = call.isQuick ? DatabaseCare::Depth::Pages : DatabaseCare::Depth::Indexes;
        std::vector<Finding> findings = check.run(depth, neverGivenUp).value();
        if (call.repairs && !findings.empty()) {
            repair(check, findings);
            findings = check.run(depth, neverGivenUp).value();
        }
        if (isLibrary) {
            keepLastCheck(m_settings, m_settings.DbName(),
                          {m_clock.now(), qint64(findings.size())});
        }
        return tell(findings);
    }

private:
    [[nodiscard]] LibraryCheck::Place placeOfLibrary()
    {
        LibraryCheck::Place place{.library = m_settings.DbName(),
                                  .dataFolder = m_paths.GetConfigPath(),
                                  .restName = m_texts.text(u"check.rest")};
        // One that cannot be read has no lists; the check tells why.
        quietly({}, {}, [&] {
            place.listFiles = StorePlaylists(*m_engine, m_settings, m_files, m_texts)
                                  .places(*m_engine->OpenDatabase(place.library));
        });
        return place;
    }

    /// A console that runs lets go of the library meanwhile.
    void repair(LibraryCheck& check, const std::vector<Finding>& findings)
    {
        const qint32 console = m_settings.MessageHandleDB();
        const bool isRunning = m_messages.IsMsgWindow(console);
        m_control->setTarget(console);
        if (isRunning) {
            m_control->Send(message::kReleaseDatabase, 0, m_control->handle());
        }
        quietly(
            [](const QString&, const QString& what) { QTextStream(stderr) << what << Qt::endl; },
            u"repair"_s,
            [&] {
                if (check.repair(findings)) {
                    rebuildTrees();
                }
            });
        m_engine->Release(m_settings.DbName());
        if (isRunning) {
            m_control->setTarget(console);
            m_control->Send(message::kReconnectDatabase, 0, 0);
            m_control->Post(message::kDatabaseChanged, 0, 0);
        }
    }

    void rebuildTrees()
    {
        RebuildTrees trees({.engine = *m_engine,
                            .files = m_files,
                            .clock = m_clock,
                            .dataFolder = m_paths.GetConfigPath()},
                           m_settings.DbName());
        for (const QString& failure : trees.run(RebuildTrees::Scope::All).failures) {
            QTextStream(stderr) << failure << Qt::endl;
        }
    }

    [[nodiscard]] int tell(const std::vector<Finding>& findings) const
    {
        QTextStream out(stdout);
        if (findings.empty()) {
            out << m_texts.text(u"check.whole") << Qt::endl;
            return kWhole;
        }
        for (const QString& line : reportLines(m_texts, findings)) {
            out << line << Qt::endl;
        }
        const bool isUnreadable = findings.front().flaw == Flaw::Unreadable;
        if (isUnreadable || findings.front().flaw == Flaw::PageDamaged) {
            out << m_texts.text(u"check.restore") << Qt::endl;
        }
        return isUnreadable ? kUnreadable : kFindings;
    }

    SystemClock m_clock;
    LinuxFiles m_files;
    LinuxEnvironment m_environment;
    IniProfile m_profile{m_files};
    Mod_API m_paths;
    std::unique_ptr<DBEngine> m_engine;
    std::unique_ptr<DatabaseCare> m_care;
    GlobalSettings m_settings;
    LibraryLoan m_loan;
    LinuxMessages m_messages;
    std::unique_ptr<KSMessage> m_control;
    ConfigObjects m_texts;
};

} // namespace

int main(int argc, char** argv)
{
    const QString name = u"MelovaneCheck"_s;
    const QStringList arguments = argumentsOf(argc, argv);
    if (const auto code = answerCall(name, arguments)) {
        return *code;
    }
    const auto call = callOf(arguments);
    if (!call || (call->repairs && !call->file.isEmpty())) {
        return refuseCall(name, arguments.join(u' '));
    }
    const QCoreApplication application(argc, argv);
    return Program().run(*call);
}
