#include "siblings/mlvconfig/ui/run_config.h"

#include "bus/message_numbers.h"
#include "config/config_objects.h"
#include "config/global_settings.h"
#include "config/melovane_configuration.h"
#include "config/paths.h"
#include "help/ui/help_desk.h"
#include "platform/db/database.h"
#include "platform/db/db_error.h"
#include "platform/linux/ini_profile.h"
#include "platform/linux/linux_environment.h"
#include "platform/linux/linux_files.h"
#include "platform/linux/linux_messages.h"
#include "platform/linux/only_copy.h"
#include "platform/linux/sdl_output.h"
#include "platform/qt/file_dialogs.h"
#include "platform/qt/icon_set.h"
#include "platform/qt/qt_message_loop.h"
#include "platform/qt/skin.h"
#include "platform/qt/started_window.h"
#include "platform/sqlite/engine/sqlite_engine.h"
#include "platform/system/clock.h"
#include "platform/system/path_text.h"
#include "playlists/name_format.h"
#include "settings/test_tone.h"
#include "settings/ui/settings_window.h"
#include "shell/language_files.h"
#include "shell/skin_files.h"
#include "shell/ui/suite_look.h"
#include "siblings/mlvconfig/applied_settings.h"

#include <QApplication>
#include <QColorDialog>
#include <QDir>

#include <optional>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// The language that has a file of its own in every installation.
const QString kEnglish = u"lang_English.ini"_s;
const QString kProgram = u"mlvconfig"_s;

/// \param setting \see runConfig
void showSetting(SettingsWindow& window, const QString& setting)
{
    const qsizetype at = setting.indexOf(u'.');
    const SettingEntry* const entry =
        at < 0 ? nullptr : findEntry(setting.first(at), QStringView(setting).sliced(at + 1));
    if (entry != nullptr) {
        window.showSetting(*entry);
    }
}

void bringToFront(QWidget& window)
{
    window.show();
    window.raise();
    window.activateWindow();
}

/// Everything that lives as long as the program, bottom to top.
class ConfigProgram
{
public:
    ConfigProgram(QApplication& application, MessageHandle console)
        : m_console(console)
        , m_paths(m_environment, m_files)
        , m_engine(sqlite::makeEngine(m_clock))
        , m_settings(m_paths, m_profile, m_files, *m_engine)
        , m_messages(MessagePlace(m_environment.runtimeFolder()))
        , m_control(m_messages.makeControl())
        , m_onlyCopy({m_environment.runtimeFolder(), m_paths.GetConfigPath()}, kProgram)
        , m_texts(m_paths, m_profile, m_files)
        , m_german(m_paths, m_profile, m_files)
        , m_english(m_paths, m_profile, m_files)
        , m_skin(application)
        , m_icons(m_skin)
        , m_tone(m_output, m_loop)
        , m_draft(m_profile, path::join(m_paths.GetConfigPath(), m_settings.SetIniFilename()))
        , m_values(m_draft, m_settings, m_texts)
        , m_keys(m_draft, m_texts)
        , m_hints(m_draft, m_texts)
        , m_help(application, helpOf(m_files, m_paths, m_texts, m_settings), m_icons)
    {
        // Language files are looked for in the current folder.
        QDir::setCurrent(m_paths.GetConfigPath());
        for (ConfigObjects* const texts : {&m_texts, &m_german, &m_english}) {
            MelovaneConfiguration::fill(*texts);
        }
        MelovaneConfiguration::speak(m_german, {});
        MelovaneConfiguration::speak(m_english, kEnglish);
        const ConfigObjects* const languages[] = {&m_texts, &m_german, &m_english};
        m_search = std::make_unique<SettingSearch>(languages);
        m_look.emplace(
            SuiteLook::Parts{application, m_paths, m_files, m_settings, m_texts, m_skin});
    }

    /// True when no other copy runs.
    [[nodiscard]] bool claim() { return m_onlyCopy.claim(); }

    void wakeOther(const QString& setting)
    {
        m_control->setTarget(m_onlyCopy.runningCopy());
        m_control->SendText(message::kBringToFront, 0, setting);
    }

    /// From now on a second copy brings this one to the front, with the setting that it was asked
    /// for.
    void listen(SettingsWindow& window)
    {
        m_control->setMessageNumber([&window](qint32 id, qint32, qint32) {
            if (id == message::kBringToFront) {
                bringToFront(window);
            }
            return 0;
        });
        m_control->setMessageText([&window](qint32 id, qint32, const QString& setting) {
            if (id == message::kBringToFront) {
                bringToFront(window);
                showSetting(window, setting);
            }
            return 0;
        });
        m_onlyCopy.publish(m_control->handle());
        m_settings.WriteKeyValue(section::kMessageHandle.toString(), kProgram + u".exe"_s,
                                 QString::number(m_control->handle()));
    }

    [[nodiscard]] SettingsDesk desk()
    {
        return {
            .draft = m_draft,
            .values = m_values,
            .keys = m_keys,
            .hints = m_hints,
            .search = *m_search,
            .texts = m_texts,
            .skin = m_skin,
            .icons = m_icons,
            .cards = [this] { return cards(); },
            .testTone = [this](const QString& card,
                               int volume) { return m_tone.play(card, volume); },
            .themes = [this] { return themes(); },
            .languages = [this] { return languages(); },
            .nameExample = [this](const QString& format) { return nameExample(format); },
            .chooseFolder = [](QWidget* owner, const QString& title,
                               const QString& present) { return askFolder(owner, title, present); },
            .chooseLibrary =
                [this](QWidget* owner, const QString& title, const QString& present) {
                    return askFile(owner, title, present,
                                   m_texts.text(u"settings.database.kind") + u" (*.mdb *.db)"_s);
                },
            .chooseColour =
                [](QWidget* owner, const QString& title, const QColor& present) {
                    return QColorDialog::getColor(present, owner, title);
                }};
    }

    /// Writes what was chosen and tells the console. False when the file cannot be written.
    ///
    /// \param spoken called when the language has changed
    bool apply(const std::function<void()>& spoken)
    {
        if (m_draft.isEmpty()) {
            return true;
        }
        const AppliedSettings applied = appliedBy(m_draft, m_values);
        if (!m_draft.write()) {
            return false;
        }
        tellConsole(*m_control, m_messages, m_settings, m_console, applied);
        m_look->follow();
        if (applied.language) {
            spoken();
        }
        return true;
    }

private:
    [[nodiscard]] QStringList cards()
    {
        QStringList names;
        for (const SoundCard& card : m_tone.cards()) {
            names.append(card.name);
        }
        return names;
    }

    [[nodiscard]] std::vector<SettingValues::Choice> themes()
    {
        const SkinFiles files(m_paths, m_files);
        std::vector<SettingValues::Choice> result = {
            {m_values.defaultValue(*findEntry(section::kGlobal, u"SkinFileName")),
             m_texts.text(u"skin.desktop")}};
        for (const QString& name : files.names()) {
            const QString known = m_texts.text(u"skin."_s + name.toLower());
            const QString own = m_skin.titleOf(files.text(name));
            result.emplace_back(name, !known.isEmpty() ? known
                                      : own.isEmpty()  ? path::baseName(name)
                                                       : own);
        }
        return result;
    }

    [[nodiscard]] std::vector<SettingValues::Choice> languages()
    {
        std::vector<SettingValues::Choice> result;
        for (const LanguageEntry& entry : LanguageFiles(m_paths, m_files, m_texts).entries()) {
            result.emplace_back(entry.fileName, entry.title);
        }
        return result;
    }

    [[nodiscard]] QString nameExample(const QString& format)
    {
        try {
            return nameOfFormat(*m_engine->OpenDatabase(m_settings.DbName()), format);
        } catch (const DbError&) {
            return format; // Without a library there is nobody who knows the dates.
        }
    }

    MessageHandle m_console;
    SystemClock m_clock;
    LinuxFiles m_files;
    LinuxEnvironment m_environment;
    IniProfile m_profile{m_files};
    Mod_API m_paths;
    std::unique_ptr<DBEngine> m_engine;
    GlobalSettings m_settings;
    LinuxMessages m_messages;
    std::unique_ptr<KSMessage> m_control;
    OnlyCopy m_onlyCopy;
    ConfigObjects m_texts;
    ConfigObjects m_german;
    ConfigObjects m_english;
    Skin m_skin;
    IconSet m_icons;
    QtMessageLoop m_loop;
    linux_media::SdlOutput m_output;
    TestTone m_tone;
    SettingDraft m_draft;
    SettingValues m_values;
    KeyBindings m_keys;
    HiddenHints m_hints;
    HelpDesk m_help;
    std::unique_ptr<SettingSearch> m_search;
    std::optional<SuiteLook> m_look; ///< of filled texts
};

} // namespace

int runConfig(int argc, char** argv, int console, const QString& setting)
{
    QApplication application(argc, argv);
    ConfigProgram program(application, console);
    if (!program.claim()) {
        program.wakeOther(setting);
        return 0;
    }
    const SettingsDesk desk = program.desk();
    SettingsWindow* shown = nullptr;
    // Behind the click that has asked for it: the button goes with all other controls.
    SettingsWindow window(desk, [&] {
        return program.apply([&shown] {
            QMetaObject::invokeMethod(shown, &SettingsWindow::rebuild, Qt::QueuedConnection);
        });
    });
    shown = &window;
    program.listen(window);
    showAsStarted(window);
    showSetting(window, setting);
    return QApplication::exec();
}

} // namespace melovane
