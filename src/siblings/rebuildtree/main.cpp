// Brings the tables of the trees up to date and tells the console when one has changed. Nothing is
// shown and nothing is said when all went well. Ends with 0 when nothing failed.

#include "bus/message_numbers.h"
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
#include "platform/sqlite/engine/sqlite_engine.h"
#include "platform/system/clock.h"
#include "siblings/rebuildtree/rebuild_locks.h"
#include "trees/rebuild_trees.h"

#include <QCoreApplication>
#include <QDir>
#include <QTextStream>

namespace {

using namespace melovane;
using namespace Qt::Literals::StringLiterals;

/// Every tree of the library is to be loaded again: a digit per tree.
constexpr qint32 kAllTrees = 1111111;

/// Everything that lives as long as the program, bottom to top.
class Program
{
public:
    Program()
        : m_paths(m_environment, m_files)
        , m_engine(sqlite::makeEngine(m_clock))
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

    /// Why nothing may be done; empty when all is well.
    [[nodiscard]] QString obstacle() const
    {
        return refusedLibraryText(
            m_texts, m_settings, [this](const QString& library) { return m_loan.isLent(library); });
    }

    /// \param work "1" for all, a tree, or empty for what has changed
    [[nodiscard]] QStringList rebuild(const QString& work)
    {
        RebuildLocks locks(m_files, {m_environment.runtimeFolder(), m_paths.GetConfigPath()},
                           m_settings.DbName(), work);
        if (!locks.claim()) {
            return {};
        }
        RebuildTrees trees({.engine = *m_engine,
                            .files = m_files,
                            .clock = m_clock,
                            .dataFolder = m_paths.GetConfigPath()},
                           m_settings.DbName());
        using Scope = RebuildTrees::Scope;
        const RebuildTrees::Result result =
            RebuildTrees::isTree(work) ? trees.runOne(work)
                                       : trees.run(work.isEmpty() ? Scope::Changed : Scope::All);
        if (!result.rebuilt.isEmpty()) {
            tellConsole();
        }
        return result.failures;
    }

private:
    void tellConsole()
    {
        // It may have been started meanwhile.
        m_settings.Refresh();
        m_control->setTarget(m_settings.MessageHandleDB());
        m_control->Post(message::kJobResult, message::kJobTree, kAllTrees);
    }

    SystemClock m_clock;
    LinuxFiles m_files;
    LinuxEnvironment m_environment;
    IniProfile m_profile{m_files};
    Mod_API m_paths;
    std::unique_ptr<DBEngine> m_engine;
    GlobalSettings m_settings;
    LibraryLoan m_loan;
    LinuxMessages m_messages;
    std::unique_ptr<KSMessage> m_control;
    ConfigObjects m_texts;
};

bool isWork(const QString& word)
{
    return word.isEmpty() || word == u"1"_s || RebuildTrees::isTree(word);
}

} // namespace

int main(int argc, char** argv)
{
    // Without TZ the C library looks at this file again for every date that is turned into local
    // time, several times a track.
    qputenv("TZ", qEnvironmentVariable("TZ", u":/etc/localtime"_s).toUtf8());
    const QString name = u"Task.RebuildTree"_s;
    QStringList call = argumentsOf(argc, argv);
    call.removeAll(QString());
    if (const auto code = answerCall(name, call)) {
        return *code;
    }
    const QString work = call.value(0);
    if (call.size() > 1 || !isWork(work)) {
        return refuseCall(name, call.join(u' '));
    }
    const QCoreApplication application(argc, argv);
    Program program;
    QTextStream errors(stderr);
    if (const QString obstacle = program.obstacle(); !obstacle.isEmpty()) {
        errors << obstacle << Qt::endl;
        return 1;
    }
    const QStringList failures = program.rebuild(work);
    for (const QString& failure : failures) {
        errors << failure << Qt::endl;
    }
    return failures.isEmpty() ? 0 : 1;
}
