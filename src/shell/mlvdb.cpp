#include "shell/mlvdb.h"

#include "bus/message_names.h"
#include "bus/suite_messages.h"
#include "config/config_objects.h"
#include "config/global_settings.h"
#include "config/melovane_configuration.h"
#include "config/paths.h"
#include "config/update_colors.h"
#include "monitor/monitor_control.h"
#include "platform/controls/warnings.h"
#include "platform/controls/window_frame.h"
#include "platform/message/message_control.h"
#include "platform/system/path_text.h"
#include "platform/system/timers.h"
#include "shell/sibling_control.h"
#include "shell/window_data.h"
#include "views/layout_files.h"

#include <utility>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr QSize kLeastSize{600, 300};

/// The file of the chosen language: keep.
const QString kLanguageSetting = u"Sprach.Datei"_s;

} // namespace

MLVDB::MLVDB(MlvdbParts parts, MlvdbControls controls)
    : m_parts(std::move(parts))
    , m_controls(controls)
    , m_bus(m_parts.bus, kMainWindowName.toString())
    , m_skinFiles(m_parts.paths, m_parts.files)
    , m_languages(m_parts.paths, m_parts.files, m_parts.texts)
    , m_statusText(m_parts.loop, controls.status)
    , m_guard(
          m_parts.texts,
          [this] { return m_parts.settings.DbName(); },
          [this](const QString& text) { m_statusText.show(text); },
          m_parts.log)
    , m_siblings(m_parts.siblings,
                 m_parts.texts,
                 [this](const QString& text) { m_statusText.show(text); })
    , m_player(
          m_parts.suite,
          m_parts.texts,
          [this](const QString& order) { return m_parts.siblings.startPlayer(order); },
          [this](const QString& text) { m_statusText.show(text); })
    , m_place(m_parts.settings, controls.window, controls.splits)
    , m_docking(controls.window)
    , m_suiteHandler({.settings = m_parts.settings,
                      .texts = m_parts.texts,
                      .warnings = m_parts.warnings,
                      .loop = m_parts.loop,
                      .data = m_parts.data,
                      .monitor = m_parts.monitor,
                      .docking = m_docking,
                      .suite = m_parts.suite,
                      .reloadLibrary = m_parts.library.reload,
                      // Nobody has asked for it: a program that is missing is missed silently.
                      .rebuildTrees = [this] { m_parts.siblings.startRebuildTree(); },
                      .libraryOpened = [this] { tellAccess(); },
                      .showStatusText = [this](const QString& text) { m_statusText.show(text); },
                      .settingsChanged = [this] { followSettings(); }},
                     m_parts.bus,
                     kMainWindowName.toString())
    , m_edit({.texts = m_parts.texts,
              .library = m_parts.library,
              .playlist = m_parts.playlist,
              .menus = controls.menus})
    , m_contextMenu({.settings = m_parts.settings,
                     .texts = m_parts.texts,
                     .library = m_parts.library,
                     .playlist = m_parts.playlist,
                     .edit = m_edit,
                     .data = m_parts.data,
                     .siblings = m_siblings,
                     .player = m_player,
                     .monitor = m_parts.monitor,
                     .menus = controls.menus},
                    m_parts.bus,
                    kMainWindowName.toString())
    , m_menu({.window = m_parts,
              .controls = m_controls,
              .bus = m_bus,
              .guard = m_guard,
              .siblings = m_siblings,
              .edit = m_edit,
              .showStatusText = [this](const QString& text) { m_statusText.show(text); }})
    , m_messages({.window = m_parts,
                  .status = controls.status,
                  .bus = m_bus,
                  .guard = m_guard,
                  .siblings = m_siblings,
                  .player = m_player,
                  .contextMenu = m_contextMenu,
                  .menu = m_menu,
                  .showStatusText = [this](const QString& text) { m_statusText.show(text); }})
{}

MLVDB::~MLVDB()
{
    m_parts.message.setMessageNumber({});
    m_parts.message.setMessageText({});
}

void MLVDB::load()
{
    m_parts.data.open();
    // Before any view reads them: what was played yesterday does not count for today.
    m_parts.settings.UpdateLastPlayDayCount();
    tellAccess();
    m_followed = present();
    m_menu.setCaptions();
    m_parts.suite.publishControl(m_parts.paths);
    loadSkin();
    m_place.restoreSplits();
    startViews();
    // From here on siblings may send: everything that answers them is there.
    m_parts.suite.publishWindow(m_controls.window.windowHandle32());
    m_menu.buildPlugIns();
    m_parts.loop.turn();
    m_bus.SendMessage(bus::kCreateToolBars, QString());
    m_bus.SendMessage(bus::kRefreshAll, u"start"_s);
    m_bus.SendMessage(bus::kLoadLayoutMp3db, kLibraryLayout.toString());
    m_bus.SendMessage(bus::kLoadLayoutPlaylist, kPlaylistLayout.toString());
    m_parts.loop.turn();
    m_bus.SendMessage(bus::kUpdateColor);
}

void MLVDB::tellAccess()
{
    if (!m_parts.isReadOnly()) {
        m_controls.window.setCaption(mainWindowCaption());
        return;
    }
    const QString words = m_parts.texts.text(u"library.readonly"_s);
    m_controls.window.setCaption(mainWindowCaption() + u" - "_s + words);
    m_statusText.show(m_parts.texts.text(u"library.readonly.told"_s, m_parts.settings.DbName()));
}

void MLVDB::loadSkin()
{
    m_controls.window.setLeastSize(kLeastSize);
    takeSkin();
}

void MLVDB::takeSkin()
{
    const QString text = m_skinFiles.text(m_parts.settings.SkinFileName());
    if (text.isEmpty() || !m_controls.skin.load(text)) {
        m_controls.skin.clear();
    }
}

MLVDB::Followed MLVDB::present() const
{
    Followed result{.skin = m_parts.settings.SkinFileName(),
                    .language = m_parts.texts.value(kLanguageSetting),
                    .colours = {},
                    .keys = {}};
    const UpdateColors colours(m_parts.settings);
    for (const UpdateColors::ColorValue& value : colours.GetColors()) {
        result.colours.append(value.value);
    }
    for (const Tasten& binding : m_parts.settings.TastenAll()) {
        result.keys.append(binding.KeyName);
    }
    return result;
}

void MLVDB::followSettings()
{
    m_parts.texts.LoadAllValue();
    const Followed before = std::exchange(m_followed, present());
    if (before.language.isEmpty()) {
        return; // Nothing is shown yet.
    }
    const bool hasOtherSkin = before.skin != m_followed.skin;
    if (hasOtherSkin) {
        takeSkin();
    }
    if (before.language.compare(m_followed.language, Qt::CaseInsensitive) != 0) {
        speak();
    } else {
        // Keys and ticks stand in the menus.
        m_menu.setCaptions();
    }
    if (before.keys != m_followed.keys) {
        m_bus.SendMessage(bus::kUpdateToolTipText);
    }
    if (hasOtherSkin || before.colours != m_followed.colours) {
        m_bus.SendMessage(bus::kUpdateColor);
    }
}

void MLVDB::speak()
{
    m_followed.language = m_parts.texts.value(kLanguageSetting);
    MelovaneConfiguration::speak(m_parts.texts, m_followed.language);
    m_parts.languageChanged();
    tellAccess();
    m_menu.setCaptions();
    m_bus.SendMessage(bus::kUpdateToolTipText);
    // Counts, notes and the words of rows come with what is shown.
    m_bus.SendMessage(bus::kDbChange);
    m_bus.SendMessage(bus::kRefreshAll);
}

void MLVDB::startViews()
{
    m_messages.start();
    m_parts.message.setMessageNumber([this](qint32 id, qint32 wParam, qint32 lParam) {
        m_guard.run(u"MessageNumber %1"_s.arg(id),
                    [&] { m_suiteHandler.MessageNumber(id, wParam, lParam); });
        return 0;
    });
    m_parts.message.setMessageText([this](qint32 id, qint32 number, const QString& text) {
        m_guard.run(u"MessageText %1"_s.arg(id),
                    [&] { m_suiteHandler.MessageText(id, number, text); });
        return 0;
    });
    m_parts.monitor.reopen();
    m_parts.library.start();
    m_parts.playlist.start();
}

void MLVDB::activateFirst()
{
    // The message loop stands still here: the window is not on the screen yet, and whoever closed
    // it now would leave it half shown.
    if (m_parts.data.sideFilesWereStale()) {
        m_parts.siblings.startRebuildTree();
    }
    // A library that cannot be counted is not an empty one: nobody is sent to the importer.
    qint64 tracks = 1;
    m_guard.run(u"MLVDB.Activate"_s, [&] { tracks = m_parts.data.trackCount(); });
    m_parts.siblings.startJobs();
    if (tracks > 0) {
        m_place.restore();
        m_place.restoreSplits();
        return;
    }
    m_place.centre();
    m_siblings.importMusic();
}

void MLVDB::unload()
{
    m_parts.suite.withdraw();
    if (!m_docking.isDocked()) {
        m_place.save();
    }
    m_guard.run(u"MLVDB.Unload"_s, m_parts.tags.saveState);
    m_guard.run(u"MLVDB.Unload"_s, m_parts.library.saveState);
    m_guard.run(u"MLVDB.Unload"_s, m_parts.playlist.saveState);
    m_place.saveSplits();
}

void MLVDB::showHeardTitle(const QString& title)
{
    m_statusText.keep(title.isEmpty() ? title : u" :: "_s + title);
}

/// The texts know the themes that ship with the program, in the language of the window; others have
/// their own name.
QString MLVDB::skinTitle(const QString& fileName) const
{
    const QString known = m_parts.texts.text(u"skin."_s + fileName.toLower());
    if (!known.isEmpty()) {
        return known;
    }
    const QString own = m_controls.skin.titleOf(m_skinFiles.text(fileName));
    return own.isEmpty() ? path::baseName(fileName) : own;
}

std::vector<SkinEntry> MLVDB::skins() const
{
    std::vector<SkinEntry> result;
    const QString chosen = m_parts.settings.SkinFileName();
    for (const QString& name : m_skinFiles.names()) {
        result.push_back({name, skinTitle(name), name.compare(chosen, Qt::CaseInsensitive) == 0});
    }
    std::sort(result.begin(), result.end(), [](const SkinEntry& one, const SkinEntry& two) {
        return one.title.localeAwareCompare(two.title) < 0;
    });
    return result;
}

void MLVDB::chooseSkin(const QString& fileName)
{
    if (fileName.isEmpty()) {
        m_controls.skin.clear();
    } else if (!m_controls.skin.load(m_skinFiles.text(fileName))) {
        showStatusText(m_parts.texts.text(u"status.skin.unreadable"_s, fileName));
        return;
    }
    m_parts.settings.SetSkinFileName(fileName);
    m_followed.skin = m_parts.settings.SkinFileName();
    m_bus.SendMessage(bus::kUpdateColor);
}

void MLVDB::chooseLanguage(const QString& fileName)
{
    if (m_languages.choose(fileName)) {
        speak();
    }
}

} // namespace melovane
