#include "shell/menu_commands.h"

#include "bus/message_names.h"
#include "bus/suite_messages.h"
#include "config/config_objects.h"
#include "config/global_settings.h"
#include "config/paths.h"
#include "config/tool_tip_text.h"
#include "config/update_colors.h"
#include "platform/controls/warnings.h"
#include "platform/controls/window_frame.h"
#include "platform/message/message_control.h"
#include "platform/system/letter_case.h"
#include "shell/sibling_commands.h"
#include "shell/sibling_control.h"
#include "shell/window_data.h"
#include "views/command_gate.h"
#include "views/layout_files.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

std::span<const MenuRow> MenuCommands::rows()
{
    using enum MenuRow::Kind;
    // clang-format off
    static constexpr MenuRow kRows[] = {
        {0, Menu,  u"mnuDatei"},
        {1, Entry, u"mnuConfig", {}, u"settings", {}, &MenuCommands::mnuConfig},
        {1, Separator, {}},
        {1, Entry, u"mnuImpMP3_0", {}, u"import", u"Ctrl+I", &MenuCommands::mnuImpMP3New},
        {1, Entry, u"mnuImpMP3_1", {}, u"edit", {}, &MenuCommands::mnuImpMP3Edit},
        {1, Entry, u"mnuImpMP3_2", {}, u"reload", {}, &MenuCommands::mnuImpMP3Again},
        {1, Entry, u"mnuDatenbereinigung", u"frmBerDB"},
        {1, Entry, u"mnuRecycler"},
        {1, Separator, {}},
        {1, Entry, u"mnuBackups"},
        {1, Entry, u"mnuCheckLibrary"},
        {1, Separator, {}},
        {1, Entry, u"mnuImpPlaylistBas", {}, {}, {}, &MenuCommands::mnuImpPlaylistBas},
        {1, Entry, u"mnuExpPlaylistBas", {}, {}, {}, &MenuCommands::mnuExpPlaylistBas},
        // Not Ctrl+S: that key plays a track at once, and a slip would be heard by all.
        {1, Entry, u"mnuAktivePlaylist", {}, {}, u"Ctrl+Shift+S", &MenuCommands::mnuAktivePlaylist},
        {1, Entry, u"mnuAktivePlaystFiles", {}, {}, {}, &MenuCommands::mnuAktivePlaystFiles},
        {1, Separator, {}},
        {1, Entry, u"mnuExitJobs", {}, {}, {}, &MenuCommands::mnuExitJobs},
        {1, Entry, u"mnuExit", {}, u"exit", u"Ctrl+Q", &MenuCommands::mnuExit},

        // Ctrl+A appends here: it is what the user's key bindings say, and is shown.
        {0, Menu,  u"mnuBearbeiten"},
        {1, Entry, u"mnuUndo", u"history.undo.nothing", u"undo", u"Ctrl+Z", &MenuCommands::mnuUndo},
        {1, Entry, u"mnuRedo", u"history.redo.nothing", u"redo", u"Ctrl+Shift+Z", &MenuCommands::mnuRedo},
        {1, Separator, {}},
        {1, Entry, u"mnuCut", {}, u"cut", u"Ctrl+X", &MenuCommands::mnuCut},
        {1, Entry, u"mnuCopy", {}, u"copy", {}, &MenuCommands::mnuCopy},
        {1, Entry, u"mnuPaste", {}, u"insert", {}, &MenuCommands::mnuPaste},
        {1, Entry, u"mnuPasteAppend", {}, u"append", {}, &MenuCommands::mnuPasteAppend},
        {1, Separator, {}},
        {1, Entry, u"mnuSelectAll", {}, u"selectall", {}, &MenuCommands::mnuSelectAll},
        {1, Entry, u"mnuDelete", {}, u"delete", {}, &MenuCommands::mnuDelete},

        {0, Menu,  u"mnuExtra"},
        {1, Entry, u"mnuDelSuchlist", {}, {}, {}, &MenuCommands::mnuDelSuchlist},
        {1, Entry, u"mnuDelDayCount", {}, {}, {}, &MenuCommands::mnuDelDayCount},
        {1, Separator, {}},
        {1, Entry, u"mnuViewDel", {}, {}, {}, &MenuCommands::mnuViewDel},
        {1, Menu,  u"mnuNoExist"},
        {2, Entry, u"mnuNoExistSuchen"},
        {2, Entry, u"mnuNoExistAnzeigen", {}, {}, {}, &MenuCommands::mnuNoExistAnzeigen},
        {2, Entry, u"mnuNoExistFind"},
        {1, Entry, u"mnuDoubles"},
        {1, Separator, {}},
        {1, Entry, u"mnuToDatei", {}, {}, {}, &MenuCommands::mnuToDatei},
        {1, Entry, u"mnuRefreshTree", {}, u"tree", {}, &MenuCommands::mnuRefreshTree},

        {0, Filled, u"mnuTopPlugin"},

        {0, Menu,  u"mnuAnsicht"},
        {1, Entry, u"mnuPlaylist", {}, {}, {}, &MenuCommands::mnuPlaylist},
        {1, Entry, u"mnuDatenbank", {}, u"columns", {}, &MenuCommands::mnuDatenbank},
        {1, Entry, u"mnuRepairGridLayout", {}, {}, {}, &MenuCommands::mnuRepairGridLayout},
        {1, Separator, {}},
        {1, Filled, u"mnuSkin", {}, u"theme"},
        {1, Filled, u"mnuSprache", {}, u"language"},
        {1, Entry, u"mnuFont", {}, {}, {}, &MenuCommands::mnuFont},
        {1, Check, u"mnuAutosizeGrid", {}, {}, {}, &MenuCommands::mnuAutosizeGrid},
        {1, Separator, {}},
        {1, Entry, u"mnuQuickOpen", {}, u"search", u"Ctrl+K"},

        {0, Menu,  u"mnuHelp"},
        {1, Entry, u"mnuInternet_0", {}, {}, u"F1", &MenuCommands::mnuInternet},
        {1, Entry, u"mnuInternet_1", {}, {}, {}, &MenuCommands::mnuInternetPage},
        {1, Entry, u"mnuInternet_3", {}, {}, {}, &MenuCommands::mnuInternetVersions},
        {1, Separator, {}},
        {1, Entry, u"mnuHealth", {}, u"shield"},
        {1, Entry, u"mnuUeber", {}, u"info", {}, &MenuCommands::mnuUeber},
    };
    // clang-format on
    return kRows;
}

MenuCommands::MenuCommands(Parts parts)
    : m_parts(std::move(parts))
{}

QString MenuCommands::text(const QString& id) const
{
    return m_parts.window.texts.text(id);
}

void MenuCommands::setCaptions()
{
    MenuControl& menus = m_parts.controls.menus;
    for (const MenuRow& row : rows()) {
        if (row.kind != MenuRow::Kind::Separator) {
            menus.setText(row.name.toString(), text(row.textKey()),
                          toolTipText(m_parts.window.texts, row.textKey()));
        }
        if (row.shortcut.isEmpty()) {
            menus.setKey(row.name.toString(), commandKey(m_parts.window.settings, row.name));
        }
    }
    for (const ContextRow& row : contextRows()) {
        if (!row.isSeparator()) {
            const QString name = u"mnuPOPDBGRID_%1"_s.arg(row.index);
            menus.setText(name, text(row.key.toString()),
                          toolTipText(m_parts.window.texts, row.key));
            menus.setKey(name, commandKey(m_parts.window.settings, row.tag));
        }
    }
    menus.setChecked(u"mnuAutosizeGrid"_s, m_parts.window.settings.AutosizeGrid() != 0);
    judge();
}

QString MenuCommands::whyNot(const MenuRow& row) const
{
    if (row.isLater() && !m_parts.window.care.contains(row.name.toString())) {
        return text(u"status.later"_s);
    }
    if (row.name == u"mnuUndo" || row.name == u"mnuRedo") {
        return m_parts.window.playlist.whyNot(row.name == u"mnuUndo" ? u"all.undo" : u"all.redo",
                                              false);
    }
    if (const EditRow* const command = editRow(row.name)) {
        return m_parts.edit.whyNot(*command);
    }
    if (row.name == u"mnuExitJobs") {
        return m_parts.window.suite.hasJobs() ? QString() : text(u"status.jobs.none"_s);
    }
    return m_parts.window.library.whyNot(row.name, false);
}

void MenuCommands::judge()
{
    for (const MenuRow& row : rows()) {
        if (row.kind == MenuRow::Kind::Entry || row.kind == MenuRow::Kind::Check) {
            const QString reason = whyNot(row);
            m_parts.controls.menus.setEnabled(
                row.name.toString(), reason.isEmpty(),
                toolTipText(m_parts.window.texts, row.textKey(), reason));
        }
    }
}

void MenuCommands::buildPlugIns()
{
    std::vector<PlugInEntry> entries;
    for (const PluginProperty& plugIn : m_parts.window.settings.GetPlugIns(true)) {
        if (m_parts.window.siblings.isInstalled(plugIn.Program)) {
            const bool unnamed = plugIn.MenuText.isEmpty();
            entries.push_back({plugIn.Name, unnamed ? plugIn.Name : plugIn.MenuText});
        }
    }
    m_parts.controls.menus.setPlugIns(entries);
}

void MenuCommands::clicked(const MenuRow& row)
{
    // A key comes here without a look at the menu.
    const QString reason = whyNot(row);
    if (!reason.isEmpty()) {
        m_parts.showStatusText(reason);
    } else if (row.action != nullptr) {
        m_parts.guard.run(row.name.toString(), [&] { (this->*row.action)(); });
    } else {
        m_parts.guard.run(row.name.toString(), m_parts.window.care.value(row.name.toString()));
    }
}

void MenuCommands::plugInClicked(const QString& name)
{
    const PluginProperty& plugIn = m_parts.window.settings.Plugin(name);
    int number = 0;
    if (upperCase(plugIn.Option) == "PNID"_L1) {
        number = m_parts.window.playlist.pnid();
    } else if (upperCase(plugIn.Option) == "PLID"_L1) {
        number = m_parts.window.playlist.plid();
    }
    const QString argument = number > 0 ? QString::number(number) : QString();
    m_parts.siblings.tellUnless(m_parts.window.siblings.startPlugIn(plugIn.Program, argument),
                                plugIn.Program);
}

void MenuCommands::mnuConfig()
{
    m_parts.siblings.tellUnless(
        m_parts.window.siblings.startConfig(m_parts.window.message.handle()), u"mlvconfig"_s);
}

void MenuCommands::mnuImpMP3New()
{
    m_parts.siblings.importMusic();
}

void MenuCommands::mnuImpMP3Edit()
{
    m_parts.siblings.tellUnless(m_parts.window.siblings.startImport(1), u"tagbench"_s);
}

void MenuCommands::mnuImpMP3Again()
{
    m_parts.siblings.tellUnless(m_parts.window.siblings.startImport(2), u"mediaintake"_s);
}

void MenuCommands::mnuImpPlaylistBas()
{
    m_parts.window.playlist.importLists();
}

void MenuCommands::mnuAktivePlaylist()
{
    m_parts.window.playlist.saveActive();
}

void MenuCommands::mnuExpPlaylistBas()
{
    if (m_parts.window.data.IsChangePlaylist()) {
        const bool isStarted = m_parts.window.siblings.startStorePlaylists();
        m_parts.siblings.tellUnless(isStarted, u"Task.StorePlaylists"_s);
        if (isStarted) {
            m_parts.showStatusText(m_parts.window.texts.text(
                u"m3u.storing"_s, m_parts.window.settings.PlaylistVerzeichnis()));
        }
        return;
    }
    m_parts.window.warnings.ShowWarning(text(u"nochangeplaylist"_s), WarningType::Note,
                                        text(u"achtung"_s), u"nochangeplaylist"_s,
                                        u"nochangeplaylist"_s);
}

void MenuCommands::mnuAktivePlaystFiles()
{
    m_parts.bus.SendMessage(bus::kPlaylistSaveFile);
}

void MenuCommands::mnuExitJobs()
{
    if (!m_parts.window.suite.endJobs()) {
        m_parts.showStatusText(m_parts.window.texts.text(u"status.jobs.none"_s));
    }
}

void MenuCommands::mnuExit()
{
    m_parts.controls.window.closeWindow();
}

void MenuCommands::mnuDelDayCount()
{
    m_parts.window.settings.DELPlayDayCount();
    m_parts.window.library.reload();
}

void MenuCommands::mnuViewDel()
{
    m_parts.window.library.showDeleted();
}

void MenuCommands::mnuNoExistAnzeigen()
{
    m_parts.window.library.showMissing();
}

void MenuCommands::mnuToDatei()
{
    m_parts.siblings.tellUnless(
        m_parts.window.siblings.startWriteTags(m_parts.window.message.handle()),
        u"Task.WriteTags"_s);
}

void MenuCommands::mnuRefreshTree()
{
    m_parts.siblings.rebuildTrees();
}

void MenuCommands::mnuDelSuchlist()
{
    m_parts.window.library.forgetSearches();
}

void MenuCommands::mnuDatenbank()
{
    m_parts.bus.SendMessage(bus::kSaveLayoutMp3db);
    if (m_parts.window.dialogs.editLibraryLayout()) {
        m_parts.bus.SendMessage(bus::kLoadLayoutChangeMp3db, kLibraryLayout.toString());
    }
}

void MenuCommands::mnuPlaylist()
{
    m_parts.bus.SendMessage(bus::kSaveLayoutPlaylist);
    if (m_parts.window.dialogs.editPlaylistLayout()) {
        m_parts.bus.SendMessage(bus::kLoadLayoutChangePlaylist, kPlaylistLayout.toString());
    }
}

void MenuCommands::edit(QStringView name)
{
    m_parts.edit.run(*editRow(name));
}

void MenuCommands::mnuCut()
{
    edit(u"mnuCut");
}

void MenuCommands::mnuCopy()
{
    edit(u"mnuCopy");
}

void MenuCommands::mnuPaste()
{
    edit(u"mnuPaste");
}

void MenuCommands::mnuPasteAppend()
{
    edit(u"mnuPasteAppend");
}

void MenuCommands::mnuSelectAll()
{
    edit(u"mnuSelectAll");
}

void MenuCommands::mnuDelete()
{
    edit(u"mnuDelete");
}

void MenuCommands::mnuUndo()
{
    m_parts.window.playlist.undo();
}

void MenuCommands::mnuRedo()
{
    m_parts.window.playlist.redo();
}

void MenuCommands::setHistoryTexts(const QString& undo, const QString& redo)
{
    // Names of lists may hold what menus take for a mark.
    const auto plain = [](QString text) { return text.replace(u'&', u"&&"_s); };
    m_parts.controls.menus.setText(u"mnuUndo"_s, plain(undo), {});
    m_parts.controls.menus.setText(u"mnuRedo"_s, plain(redo), {});
    judge();
}

void MenuCommands::mnuFont()
{
    UpdateColors colours(m_parts.window.settings);
    if (const auto font = m_parts.window.dialogs.chooseFont(colours.font())) {
        colours.setFont(*font);
        colours.SaveIni();
        m_parts.bus.SendMessage(bus::kUpdateColor);
    }
}

void MenuCommands::mnuRepairGridLayout()
{
    LayoutFiles(m_parts.window.paths, m_parts.window.files).markForRepair();
    const ConfigObject* item = m_parts.window.texts.FindObject(u"mnuRepairGridLayout"_s);
    m_parts.window.warnings.ShowWarning(item ? item->GetDescriptionEx(u"Melovane DB"_s) : QString(),
                                        WarningType::Note, u"Achtung !"_s, u"mnuRepairGridLayout"_s,
                                        u"mnuRepairGridLayout"_s);
}

void MenuCommands::mnuAutosizeGrid()
{
    const bool on = m_parts.window.settings.AutosizeGrid() == 0;
    m_parts.window.settings.SetAutosizeGrid(on ? 1 : 0);
    m_parts.controls.menus.setChecked(u"mnuAutosizeGrid"_s, on);
}

/// The pages in the window of the help; where they are missing, the one page of the desktop.
void MenuCommands::mnuInternet()
{
    if (m_parts.window.dialogs.showHelp() || m_parts.window.siblings.openPage(kHelpPage)) {
        return;
    }
    const ConfigObjects& texts = m_parts.window.texts;
    const QString page = m_parts.window.siblings.pageFile(kHelpPage);
    m_parts.showStatusText(page.isEmpty() ? texts.text(u"status.help.missing"_s)
                                          : texts.text(u"status.help.noopener"_s, page));
}

void MenuCommands::openMakersPage(const QString& name)
{
    if (m_parts.window.siblings.openPage(name)) {
        return;
    }
    const ConfigObjects& texts = m_parts.window.texts;
    const QString page = m_parts.window.siblings.pageFile(name);
    m_parts.showStatusText(page.isEmpty() ? texts.text(u"status.page.missing"_s, name)
                                          : texts.text(u"status.page.noopener"_s, page));
}

/// What the logo of the start opens, too.
void MenuCommands::mnuInternetPage()
{
    openMakersPage(kHelpPage);
}

void MenuCommands::mnuInternetVersions()
{
    openMakersPage(kVersionsPage);
}

void MenuCommands::mnuUeber()
{
    m_parts.window.dialogs.showInfo();
}

} // namespace melovane
