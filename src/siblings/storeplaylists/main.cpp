// Task.StorePlaylists [--quiet]
//
// Writes every list that has changed to its file and tells what it did on the standard output. What
// fails is told in a window, too, unless it was asked to be quiet. Ends with 0 when nothing failed.

#include "config/config_objects.h"
#include "config/global_settings.h"
#include "config/melovane_configuration.h"
#include "config/paths.h"
#include "platform/db/db_error.h"
#include "platform/linux/ini_profile.h"
#include "platform/linux/linux_environment.h"
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

/// Failures that a message tells one by one.
constexpr qsizetype kMaxTold = 8;

/// Everything that lives as long as the program, bottom to top.
class Program
{
public:
    Program()
        : m_paths(m_environment, m_files)
        , m_engine(sqlite::makeEngine(m_clock))
        , m_settings(m_paths, m_profile, m_files, *m_engine)
        , m_texts(m_paths, m_profile, m_files)
    {
        // Language files are looked for in the current folder.
        QDir::setCurrent(m_paths.GetConfigPath());
        MelovaneConfiguration::fill(m_texts);
    }

    /// What failed.
    [[nodiscard]] QStringList store()
    {
        QTextStream out(stdout);
        StorePlaylists::Result result;
        try {
            result = StorePlaylists(*m_engine, m_settings, m_files).run([&](const QString& file) {
                out << file << Qt::endl;
            });
        } catch (const DbError& error) {
            result.failures.append(error.text());
        }
        out << m_texts.text(u"store.written"_s, result.written, m_settings.PlaylistVerzeichnis())
            << Qt::endl;
        return result.failures;
    }

    [[nodiscard]] QString told(const QStringList& failures) const
    {
        QStringList lines = failures.first(qMin(failures.size(), kMaxTold));
        if (failures.size() > kMaxTold) {
            lines.append(m_texts.text(u"store.more"_s, failures.size() - kMaxTold));
        }
        return m_texts.text(u"store.failed"_s, failures.size(), lines.join(u'\n'));
    }

    void tell(int argc, char** argv, const QString& text)
    {
        const QString theme = SkinFiles(m_paths, m_files).text(m_settings.SkinFileName());
        showFailure(argc, argv, {m_settings, m_texts, m_paths, theme}, text);
    }

private:
    SystemClock m_clock;
    LinuxFiles m_files;
    LinuxEnvironment m_environment;
    IniProfile m_profile{m_files};
    Mod_API m_paths;
    std::unique_ptr<DBEngine> m_engine;
    GlobalSettings m_settings;
    ConfigObjects m_texts;
};

} // namespace

int main(int argc, char** argv)
{
    Program program;
    const QStringList failures = program.store();
    if (failures.isEmpty()) {
        return 0;
    }
    const QString text = program.told(failures);
    QTextStream(stderr) << text << Qt::endl;
    if (argc < 2 || QByteArrayView(argv[1]) != "--quiet") {
        program.tell(argc, argv, text);
    }
    return 1;
}
