#include "shell/wings/quick_wing.h"

#include "bus/message_names.h"
#include "library/ui/mp3db_widget.h"
#include "platform/db/database.h"
#include "platform/sqlite/engine/sqlite_engine.h"
#include "platform/system/clock.h"
#include "playlistview/ui/playlist_widget.h"
#include "settings/setting_pages.h"
#include "shell/mlvdb.h"
#include "shell/ui/quick_open_dialog.h"
#include "shell/ui/window_commands.h"
#include "shell/wings/desk.h"
#include "shell/wings/library_wing.h"
#include "shell/wings/machine.h"
#include "shell/wings/playlist_wing.h"
#include "shell/wings/suite_wing.h"
#include "shell/wings/trees_wing.h"
#include "trackedit/ui/edit_tag_widget.h"
#include "trees/row_search.h"
#include "trees/tree_key.h"
#include "trees/ui/playlist_favorit_widget.h"
#include "trees/ui/tree_widget.h"

#include <algorithm>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Rows of lists and trees that are offered.
constexpr size_t kMaxRows = 100;

/// Menus whose entries are offered in words of their own.
const QStringList kOtherMenus{u"mnuSkin"_s, u"mnuSprache"_s, u"mnuQuickOpen"_s};

QString kindName(NamedRowPlace::Kind kind)
{
    using enum NamedRowPlace::Kind;
    switch (kind) {
    case List:
        return u"quick.list"_s;
    case JingleList:
        return u"quick.jingles"_s;
    case Group:
        return u"quick.group"_s;
    case Artist:
        return u"quick.artist"_s;
    case Album:
        return u"quick.album"_s;
    case Genre:
        return u"quick.genre"_s;
    case Folder:
        return u"quick.folder"_s;
    }
    return {};
}

} // namespace

QuickWing::QuickWing(const Below& wings)
    : below(wings)
{}

void QuickWing::open()
{
    RowSearch search(
        m_worker,
        [library = below.machine.settings.DbName()](const std::function<void(Database&)>& work) {
            const SystemClock clock;
            work(*sqlite::makeEngine(clock)->OpenDatabase(library));
        },
        kMaxRows);
    QuickOpenDialog dialog(
        below.machine.texts, commands(),
        [this, &search](const QString& typed, const std::function<void(Entries found)>& answer) {
            find(search, typed, answer);
        },
        &below.desk.window);
    dialog.exec();
    search.forget();
    if (dialog.chosen()) {
        dialog.chosen()->run();
    }
}

QuickWing::Entries QuickWing::commands()
{
    const ConfigObjects& texts = below.machine.texts;
    const MlvdbWindow& form = below.desk.window;
    const QString kind = texts.text(u"quick.command"_s);
    below.window.menu().judge();
    Entries entries = menuCommands(form, kind, kOtherMenus);
    const auto append = [&entries](Entries more) {
        std::ranges::move(more, std::back_inserter(entries));
    };
    append(rowCommands());
    MlvdbWindow& window = below.desk.window;
    append(buttonsOf(window.library(), kind, texts.text(u"quick.library"_s)));
    append(buttonsOf(window.playlist(), kind, texts.text(u"quick.list"_s)));
    append(buttonsOf(window.lists(), kind, texts.text(u"lists.title"_s)));
    append(buttonsOf(window.tree(), kind, texts.text(u"tree.title"_s)));
    addLooks(entries);
    addSettings(entries);
    return entries;
}

/// What the menu of a row offers for the current one of the view with the keyboard.
QuickWing::Entries QuickWing::rowCommands()
{
    const ConfigObjects& texts = below.machine.texts;
    MlvdbWindow& form = below.desk.window;
    const bool fromLibrary = form.controls().menus.editPlace() != EditPlace::Playlist;
    const QString fid = fromLibrary ? below.library.view.GetFID() : below.playlist.view.GetFID();
    below.window.contextMenu().prepare(fid, fromLibrary);
    Entries entries =
        rowMenuCommands(form, texts.text(u"quick.command"_s), texts.text(u"quick.row"_s));
    for (QuickEntry& entry : entries) {
        if (fid.isEmpty() && entry.whyNot.isEmpty()) {
            entry.whyNot = texts.text(u"command.norow"_s);
        }
    }
    return entries;
}

void QuickWing::addLooks(Entries& entries) const
{
    const ConfigObjects& texts = below.machine.texts;
    MLVDB& window = below.window;
    const QString theme = texts.text(u"mnuSkin"_s);
    entries.push_back({.title = theme + u": "_s + texts.text(u"skin.desktop"_s),
                       .kind = theme,
                       .run = [&window] { window.chooseSkin({}); }});
    for (const SkinEntry& skin : window.skins()) {
        entries.push_back({.title = theme + u": "_s + skin.title,
                           .kind = theme,
                           .run = [&window, file = skin.fileName] { window.chooseSkin(file); }});
    }
    const QString language = texts.text(u"mnuSprache"_s);
    for (const LanguageEntry& entry : window.languages()) {
        entries.push_back(
            {.title = language + u": "_s + entry.title,
             .kind = language,
             .run = [&window, file = entry.fileName] { window.chooseLanguage(file); }});
    }
}

void QuickWing::addSettings(Entries& entries) const
{
    const ConfigObjects& texts = below.machine.texts;
    const QString kind = texts.text(u"quick.setting"_s);
    const QString whyNot = below.library.view.whyNot(u"mnuConfig");
    for (const SettingEntry& entry : settingEntries()) {
        const QString setting = entry.section.toString() + u'.' + entry.key.toString();
        entries.push_back(
            {.title = texts.text(pageText(entry.page)) + u": "_s + texts.text(entry.text),
             .kind = kind,
             .whyNot = whyNot,
             .run = [this, setting] {
                 below.suite.commands.tellUnless(
                     below.suite.siblings.startConfig(below.suite.message->handle(), setting),
                     u"mlvconfig"_s);
             }});
    }
}

void QuickWing::find(RowSearch& search,
                     const QString& typed,
                     const std::function<void(Entries found)>& answer) const
{
    // While another program has the library nobody here opens it.
    if (typed.trimmed().isEmpty() || !below.library.view.whyNot(u"mnuViewDel").isEmpty()) {
        search.forget();
        return;
    }
    search.find(typed, [this, answer](const std::vector<NamedRowPlace>& found) {
        Entries entries;
        for (const NamedRowPlace& row : found) {
            entries.push_back(entryOf(row));
        }
        answer(std::move(entries));
    });
}

QuickEntry QuickWing::entryOf(const NamedRowPlace& row) const
{
    return {.title = row.name,
            .kind = below.machine.texts.text(kindName(row.kind)),
            .run = [this, row] { show(row); }};
}

void QuickWing::show(const NamedRowPlace& row) const
{
    using enum NamedRowPlace::Kind;
    const QString key = row.rowKey();
    if (row.kind == List || row.kind == JingleList || row.kind == Group) {
        below.trees.favorit.showRow(key);
    } else if (const auto values = treekey::clickValues(key)) {
        // Not in the name of the window, which would not hear itself.
        BusSender(below.suite.bus, u"QuickOpen"_s)
            .SendMessage(bus::kTreeClickRow, values->value1, values->value2, values->value3,
                         row.name);
    }
}

} // namespace melovane
