#include "bus/message_numbers.h"
#include "config/config_objects.h"
#include "config/global_settings.h"
#include "config/melovane_configuration.h"
#include "config/paths.h"
#include "intake/intake_session.h"
#include "platform/linux/ini_profile.h"
#include "platform/linux/linux_environment.h"
#include "platform/linux/linux_files.h"
#include "platform/linux/linux_messages.h"
#include "platform/linux/only_copy.h"
#include "platform/linux/tag_reader.h"
#include "platform/qt/desktop_texts.h"
#include "platform/qt/skin.h"
#include "platform/sqlite/engine/sqlite_engine.h"
#include "platform/system/clock.h"
#include "shell/skin_files.h"
#include "siblings/mediaintake/command_line.h"
#include "siblings/mediaintake/import_lock.h"
#include "siblings/mediaintake/ui/intake_window.h"

#include <QApplication>
#include <QCoreApplication>
#include <QDir>
#include <QMessageBox>
#include <QTextStream>

#include <chrono>

namespace {

using namespace melovane;

/// Everything that lives as long as the program, bottom to top.
class Program
{
public:
    explicit Program(IntakeMode mode)
        : m_paths(m_environment, m_files)
        , m_engine(sqlite::makeEngine(m_clock))
        , m_reader(linux_media::makeTagReader())
        , m_settings(m_paths, m_profile, m_files, *m_engine)
        , m_messages(MessagePlace(m_environment.runtimeFolder()))
        , m_control(m_messages.makeControl())
        , m_onlyImport({m_environment.runtimeFolder(), m_paths.GetConfigPath()},
                       importLockName(m_files, m_settings.DbName()))
        , m_texts(m_paths, m_profile, m_files)
        , m_session({*m_engine, m_files, *m_reader, m_clock, m_texts, m_paths.GetConfigPath()},
                    m_settings,
                    mode)
    {
        // Language files are looked for in the current folder.
        QDir::setCurrent(m_paths.GetConfigPath());
        MelovaneConfiguration::fill(m_texts);
        m_session.whenOver = [this](const IntakeReport& report) { tellConsole(report); };
    }

    /// True when no other program imports into the database; until this one ends, none can.
    [[nodiscard]] bool claim() { return m_onlyImport.claim(); }

    /// Lets a later importer bring a window to the front.
    void listen(QWidget& window)
    {
        m_control->setMessageNumber([&window](qint32 id, qint32, qint32) {
            if (id != message::kBringToFront) {
                return 0;
            }
            window.show();
            window.raise();
            window.activateWindow();
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

    /// The theme that the console was given, so that both look alike; empty without one.
    [[nodiscard]] QString themeText()
    {
        return SkinFiles(m_paths, m_files).text(m_settings.SkinFileName());
    }

private:
    /// The answer to kBringToFront.
    static constexpr qint32 kIsInFront = 1;

    void tellConsole(const IntakeReport& report)
    {
        if (report.rowsWritten() > 0) {
            m_control->setTarget(m_settings.MessageHandleDB());
            m_control->Send(message::kDatabaseChanged, 0, 0);
        }
    }

    SystemClock m_clock;
    LinuxFiles m_files;
    LinuxEnvironment m_environment;
    IniProfile m_profile{m_files};
    Mod_API m_paths;
    std::unique_ptr<DBEngine> m_engine;
    std::unique_ptr<TagReader> m_reader;
    GlobalSettings m_settings;
    LinuxMessages m_messages;
    std::unique_ptr<KSMessage> m_control;
    OnlyCopy m_onlyImport;
    ConfigObjects m_texts;
    IntakeSession m_session;
};

int runQuietly(const IntakeCommand& command)
{
    Program program(command.mode);
    if (!program.claim()) {
        QTextStream(stderr) << program.texts().text(u"intake.running") << '\n';
        return 1;
    }
    IntakeSession& session = program.session();
    session.setFolders(command.folders);
    session.start();
    while (session.step(std::chrono::seconds(1))) {
    }
    QTextStream out(stdout);
    for (const QString& line : reportLines(program.texts(), session.report())) {
        out << line << '\n';
    }
    return session.report().failure.isEmpty() ? 0 : 1;
}

int runWindow(QApplication& application, const IntakeCommand& command)
{
    Program program(command.mode);
    setLanguageOfDesktopTexts(application, program.texts().text(u"Sprach.Code"));
    Skin skin(application);
    if (const QString text = program.themeText(); !text.isEmpty()) {
        skin.load(text);
    }
    if (!program.claim()) {
        const QString text = program.texts().text(u"intake.running");
        QTextStream(stderr) << text << '\n';
        if (!program.bringOtherToFront()) {
            QMessageBox::information(nullptr, program.session().title(), text);
        }
        return 1;
    }
    if (!command.folders.isEmpty()) {
        program.session().setFolders(command.folders);
    }
    IntakeWindow window(program.session());
    program.listen(window);
    window.show();
    if (!command.folders.isEmpty()) {
        window.start();
    }
    return QApplication::exec();
}

QStringList argumentsOf(int argc, char** argv)
{
    QStringList arguments;
    for (int i = 1; i < argc; ++i) {
        arguments.append(QString::fromLocal8Bit(argv[i]));
    }
    return arguments;
}

} // namespace

int main(int argc, char** argv)
{
    // Without TZ the C library looks at this file again for every date that is turned into local
    // time, several times a track.
    qputenv("TZ", qEnvironmentVariable("TZ", QStringLiteral(":/etc/localtime")).toUtf8());
    auto command = parseCommandLine(argumentsOf(argc, argv));
    if (!command) {
        const QCoreApplication application(argc, argv);
        const Program program(IntakeMode::NewFiles);
        QTextStream(stderr) << commandLineHelp(program.texts()) << '\n';
        return 1;
    }
    // The program leaves the folder that these names may count from.
    for (QString& folder : command->folders) {
        folder = QDir::current().absoluteFilePath(folder);
    }
    if (command->quiet) {
        const QCoreApplication application(argc, argv);
        return runQuietly(*command);
    }
    QApplication application(argc, argv);
    return runWindow(application, *command);
}
