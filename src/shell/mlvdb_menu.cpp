// The menus of the main window and what their entries do.
#include "bus/message_names.h"
#include "bus/suite_messages.h"
#include "config/config_objects.h"
#include "config/global_settings.h"
#include "config/paths.h"
#include "config/update_colors.h"
#include "platform/controls/warnings.h"
#include "platform/controls/window_frame.h"
#include "platform/message/message_control.h"
#include "platform/system/letter_case.h"
#include "shell/mlvdb.h"
#include "shell/sibling_control.h"
#include "shell/window_data.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Layout files that are made anew at the next start when this word stands under their names.
const QString kRepair = u"repair"_s;
const QString kLibraryLayout = u"gridlayout_db.grx"_s;
const QString kPlaylistLayout = u"gridlayout_dbpl.grx"_s;

} // namespace

std::span<const MenuRow> MLVDB::menu()
{
    using enum MenuRow::Kind;
    // clang-format off
    static constexpr MenuRow kRows[] = {
        {0, Menu,  u"mnuDatei"},
        {1, Entry, u"mnuConfig", {}, u"settings", {}, &MLVDB::mnuConfig},
        {1, Separator, {}},
        {1, Entry, u"mnuImpMP3_0", {}, u"import", u"Ctrl+I", &MLVDB::mnuImpMP3New},
        {1, Entry, u"mnuImpMP3_1", {}, u"edit", {}, &MLVDB::mnuImpMP3Edit},
        {1, Entry, u"mnuImpMP3_2", {}, u"reload", {}, &MLVDB::mnuImpMP3Again},
        {1, Entry, u"mnuDatenbereinigung", u"frmBerDB"},
        {1, Separator, {}},
        {1, Entry, u"mnuImpPlaylistBas", {}, {}, {}, &MLVDB::mnuImpPlaylistBas},
        {1, Entry, u"mnuExpPlaylistBas", {}, {}, {}, &MLVDB::mnuExpPlaylistBas},
        // Not Ctrl+S: that key plays a track at once, and a slip would be heard by all.
        {1, Entry, u"mnuAktivePlaylist", {}, {}, u"Ctrl+Shift+S", &MLVDB::mnuAktivePlaylist},
        {1, Entry, u"mnuAktivePlaystFiles", {}, {}, {}, &MLVDB::mnuAktivePlaystFiles},
        {1, Separator, {}},
        {1, Entry, u"mnuExitJobs", {}, {}, {}, &MLVDB::mnuExitJobs},
        {1, Entry, u"mnuExit", {}, u"exit", u"Ctrl+Q", &MLVDB::mnuExit},

        {0, Menu,  u"mnuExtra"},
        {1, Entry, u"mnuUndo", u"history.undo.nothing", u"undo", u"Ctrl+Z", &MLVDB::mnuUndo},
        {1, Entry, u"mnuRedo", u"history.redo.nothing", u"redo", u"Ctrl+Shift+Z", &MLVDB::mnuRedo},
        {1, Separator, {}},
        {1, Entry, u"mnuDelSuchlist", {}, {}, {}, &MLVDB::mnuDelSuchlist},
        {1, Entry, u"mnuDelDayCount", {}, {}, {}, &MLVDB::mnuDelDayCount},
        {1, Separator, {}},
        {1, Entry, u"mnuViewDel", {}, {}, {}, &MLVDB::mnuViewDel},
        {1, Menu,  u"mnuNoExist"},
        {2, Entry, u"mnuNoExistSuchen"},
        {2, Entry, u"mnuNoExistAnzeigen", {}, {}, {}, &MLVDB::mnuNoExistAnzeigen},
        {1, Separator, {}},
        {1, Entry, u"mnuToDatei", {}, {}, {}, &MLVDB::mnuToDatei},
        {1, Entry, u"mnuRefreshTree", {}, u"tree", {}, &MLVDB::mnuRefreshTree},

        {0, Filled, u"mnuTopPlugin"},

        {0, Menu,  u"mnuAnsicht"},
        {1, Entry, u"mnuPlaylist", {}, {}, {}, &MLVDB::mnuPlaylist},
        {1, Entry, u"mnuDatenbank", {}, u"columns", {}, &MLVDB::mnuDatenbank},
        {1, Entry, u"mnuRepairGridLayout", {}, {}, {}, &MLVDB::mnuRepairGridLayout},
        {1, Separator, {}},
        {1, Filled, u"mnuSkin", {}, u"theme"},
        {1, Filled, u"mnuSprache", {}, u"language"},
        {1, Entry, u"mnuFont", {}, {}, {}, &MLVDB::mnuFont},
        {1, Check, u"mnuAutosizeGrid", {}, {}, {}, &MLVDB::mnuAutosizeGrid},

        {0, Menu,  u"mnuHelp"},
        {1, Entry, u"mnuInternet_0", {}, {}, u"F1", &MLVDB::mnuInternet},
        {1, Entry, u"mnuInternet_1"},
        {1, Entry, u"mnuInternet_3"},
        {1, Separator, {}},
        {1, Entry, u"mnuUeber", {}, u"info", {}, &MLVDB::mnuUeber},
    };
    // clang-format on
    return kRows;
}

void MLVDB::menuClicked(const MenuRow& row)
{
    if (row.action != nullptr) {
        m_guard.run(row.name.toString(), [&] { (this->*row.action)(); });
    }
}

void MLVDB::plugInClicked(const QString& name)
{
    const PluginProperty& plugIn = m_parts.settings.Plugin(name);
    int number = 0;
    if (upperCase(plugIn.Option) == "PNID"_L1) {
        number = m_parts.playlist.pnid();
    } else if (upperCase(plugIn.Option) == "PLID"_L1) {
        number = m_parts.playlist.plid();
    }
    const QString argument = number > 0 ? QString::number(number) : QString();
    tellMissing(m_parts.siblings.startPlugIn(plugIn.Program, argument), plugIn.Program);
}

void MLVDB::mnuConfig()
{
    tellMissing(m_parts.siblings.startConfig(m_parts.message.handle()), u"mlvconfig"_s);
}

void MLVDB::mnuImpMP3New()
{
    tellMissing(m_parts.siblings.startImport(0), u"mediaintake"_s);
}

void MLVDB::mnuImpMP3Edit()
{
    tellMissing(m_parts.siblings.startImport(1), u"tagbench"_s);
}

void MLVDB::mnuImpMP3Again()
{
    tellMissing(m_parts.siblings.startImport(2), u"mediaintake"_s);
}

void MLVDB::mnuImpPlaylistBas()
{
    m_parts.playlist.importLists();
}

void MLVDB::mnuAktivePlaylist()
{
    m_parts.playlist.saveActive();
}

void MLVDB::mnuExpPlaylistBas()
{
    if (m_parts.data.IsChangePlaylist()) {
        const bool isStarted = m_parts.siblings.startStorePlaylists();
        tellMissing(isStarted, u"Task.StorePlaylists"_s);
        if (isStarted) {
            showStatusText(
                m_parts.texts.text(u"m3u.storing"_s, m_parts.settings.PlaylistVerzeichnis()));
        }
        return;
    }
    m_parts.warnings.ShowWarning(m_parts.texts.text(u"nochangeplaylist"_s), WarningType::Note,
                                 m_parts.texts.text(u"achtung"_s));
}

void MLVDB::mnuAktivePlaystFiles()
{
    SendMessage(bus::kPlaylistSaveFile);
}

void MLVDB::mnuExitJobs()
{
    if (!m_parts.suite.endJobs()) {
        showStatusText(m_parts.texts.text(u"status.jobs.none"_s));
    }
}

void MLVDB::mnuExit()
{
    m_controls.window.closeWindow();
}

void MLVDB::mnuDelDayCount()
{
    m_parts.settings.DELPlayDayCount();
    m_parts.library.reload();
}

void MLVDB::mnuViewDel()
{
    m_parts.library.showDeleted();
}

void MLVDB::mnuNoExistAnzeigen()
{
    m_parts.library.showMissing();
}

void MLVDB::mnuToDatei()
{
    tellMissing(m_parts.siblings.startWriteTags(m_parts.message.handle()), u"Task.WriteTags"_s);
}

void MLVDB::mnuRefreshTree()
{
    tellMissing(m_parts.siblings.startRebuildTree(), u"Task.RebuildTree"_s);
}

void MLVDB::mnuDelSuchlist()
{
    m_parts.library.forgetSearches();
}

void MLVDB::mnuDatenbank()
{
    SendMessage(bus::kSaveLayoutMp3db);
    if (m_parts.dialogs.editLibraryLayout()) {
        SendMessage(bus::kLoadLayoutChangeMp3db, kLibraryLayout);
    }
}

void MLVDB::mnuPlaylist()
{
    SendMessage(bus::kSaveLayoutPlaylist);
    if (m_parts.dialogs.editPlaylistLayout()) {
        SendMessage(bus::kLoadLayoutChangePlaylist, kPlaylistLayout);
    }
}

void MLVDB::mnuUndo()
{
    m_parts.playlist.undo();
}

void MLVDB::mnuRedo()
{
    m_parts.playlist.redo();
}

void MLVDB::setHistoryTexts(const QString& undo, const QString& redo)
{
    // Names of lists may hold what menus take for a mark.
    const auto plain = [](QString text) { return text.replace(u'&', u"&&"_s); };
    m_controls.menus.setText(u"mnuUndo"_s, plain(undo), {});
    m_controls.menus.setText(u"mnuRedo"_s, plain(redo), {});
}

void MLVDB::mnuFont()
{
    UpdateColors colours(m_parts.settings);
    if (const auto font = m_parts.dialogs.chooseFont(colours.font())) {
        colours.setFont(*font);
        colours.SaveIni();
        SendMessage(bus::kUpdateColor);
    }
}

void MLVDB::mnuRepairGridLayout()
{
    m_parts.paths.SetUserRegistryValue(kLibraryLayout, kRepair);
    m_parts.paths.SetUserRegistryValue(kPlaylistLayout, kRepair);
    const ConfigObject* item = m_parts.texts.FindObject(u"mnuRepairGridLayout"_s);
    m_parts.warnings.ShowWarning(item ? item->GetDescriptionEx(u"Melovane DB"_s) : QString(),
                                 WarningType::Note, u"Achtung !"_s);
}

void MLVDB::mnuAutosizeGrid()
{
    const bool on = m_parts.settings.AutosizeGrid() == 0;
    m_parts.settings.SetAutosizeGrid(on ? 1 : 0);
    m_controls.menus.setChecked(u"mnuAutosizeGrid"_s, on);
}

void MLVDB::mnuInternet()
{
    if (!m_parts.siblings.openHelp()) {
        showStatusText(m_parts.texts.text(u"status.help.missing"_s));
    }
}

void MLVDB::mnuUeber()
{
    m_parts.dialogs.showInfo();
}

} // namespace melovane
