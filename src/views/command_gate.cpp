#include "views/command_gate.h"

#include "bus/message_names.h"
#include "config/config_objects.h"
#include "config/global_settings.h"
#include "config/key_names.h"

#include <algorithm>
#include <iterator>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// What a command needs; added.
enum Need : unsigned
{
    kLibrary = 1,   ///< that no other program has it
    kWriting = 2,   ///< that it can be written, too
    kRow = 4,       ///< a current row
    kList = 8,      ///< an open playlist
    kUnlocked = 16, ///< that may be changed
    kPlayer = 32,   ///< the player
    kUndo = 64,     ///< a step to take back
    kRedo = 128,    ///< a step to do again
    kPlay = 256,    ///< an entry that plays, and one that comes next
};

constexpr unsigned kWrites = kLibrary | kWriting;
constexpr unsigned kEditsList = kWrites | kList | kUnlocked;

struct Command
{
    QStringView name;
    unsigned needs;
    QStringView program = {};
};

constexpr Command kCommands[] = {
    // Menu bar.
    {u"mnuConfig", 0, u"mlvconfig"},
    {u"mnuImpMP3_0", kWrites, u"mediaintake"},
    {u"mnuImpMP3_1", kWrites, u"tagbench"},
    {u"mnuImpMP3_2", kWrites, u"mediaintake"},
    {u"mnuImpPlaylistBas", kWrites},
    {u"mnuExpPlaylistBas", kLibrary, u"Task.StorePlaylists"},
    {u"mnuAktivePlaylist", kLibrary},
    {u"mnuAktivePlaystFiles", kLibrary},
    {u"mnuDelDayCount", kWrites},
    {u"mnuViewDel", kLibrary},
    {u"mnuNoExistAnzeigen", kLibrary},
    {u"mnuNoExistFind", kWrites},
    {u"mnuDoubles", kWrites},
    {u"mnuNoExistSuchen", kWrites},
    {u"mnuDatenbereinigung", kWrites},
    {u"mnuRecycler", kWrites},
    {u"mnuToDatei", kWrites, u"Task.WriteTags"},
    {u"mnuRefreshTree", kLibrary, u"Task.RebuildTree"},
    {u"mnuBackups", kLibrary},
    {u"mnuCheckLibrary", kLibrary},
    // Tool bars and row menus.
    {u"all.import", kWrites, u"mediaintake"},
    {u"all.undo", kWrites | kUndo},
    {u"all.redo", kWrites | kRedo},
    {u"all.copy", kRow},
    {bus::kAllDbInsert, kWrites | kRow},
    {bus::kAllDbAppend, kWrites | kRow},
    {u"all.delete", kEditsList | kRow},
    {u"all.clip.cut", kEditsList | kRow},
    {u"all.clip.insert", kEditsList},
    {u"all.clip.append", kEditsList},
    {bus::kPlaylistJingleLoop, kEditsList | kRow},
    {u"note", kEditsList | kRow},
    {u"aktion", kEditsList | kRow},
    {u"play.mix", kLibrary | kList | kRow},
    {bus::kToAktivPlaylist, kWrites | kRow},
    {bus::kMixstyleAllDel, kEditsList},
    {bus::kMixstyleAllCopy, kEditsList | kPlay},
    {bus::kPlaylistReset, kEditsList},
    {u"all.book", kLibrary | kRow},
    {u"all.sample", kLibrary | kRow, u"Melovanekiv"},
    {bus::kAllVolume, 0, u"LevelPanel"},
    {u"play_next", kRow | kPlayer},
    {u"play_sofort", kRow | kPlayer},
    {u"play.next", kRow | kPlayer},
    {u"play.sofort", kRow | kPlayer},
    {u"mark.for.edit", kWrites},
    {bus::kShowTagEditor, kWrites, u"tagbench"},
    {bus::kShowMelovaneKiv, kLibrary, u"Melovanekiv"},
    {u"BeatGauge.Menu.Click", kWrites, u"beatgauge"},
    {u"BeatGauge.Menu.Manuell.Click", kWrites, u"beatgauge"},
    // The tree of lists; its buttons have the keys of other views' ones.
    {u"lists.all.newdoc", kWrites},
    {u"lists.all.newdir", kWrites},
    {u"lists.all.activate", kWrites},
    {u"lists.all.lock", kWrites},
    {u"lists.all.book", kLibrary},
    {u"lists.all.refresh", kLibrary},
    {u"lists.all.delete", kWrites},
    {u"lists.rename", kWrites},
    {u"lists.sort", kWrites},
    {u"lists.move", kWrites},
    {u"lists.panel", kWrites},
    {u"lists.showall", kLibrary},
    {u"lists.save", kLibrary},
};

struct Key
{
    QStringView command;
    QStringView binding;    ///< of the user
    QStringView fixed = {}; ///< of a command that none can be bound to
};

constexpr Key kKeys[] = {
    {u"play.start", u"PLPLMonitorPlay"},
    {u"play", u"PLPLMonitorPlay"},
    {u"play.center", u"PLPLMonitorPlayCenter"},
    {u"play.stop", u"PLPLMonitorStop"},
    {u"stop", u"PLPLMonitorStop"},
    {u"all.data.select", u"DBSelall"},
    {u"mnuSelectAll", u"DBSelall"},
    {u"all.copy", u"DBKopie"},
    {u"mnuCopy", u"DBKopie"},
    {bus::kAllDbInsert, u"DBInsert"},
    {u"all.clip.insert", u"DBInsert"},
    {u"mnuPaste", u"DBInsert"},
    {bus::kAllDbAppend, u"DBAppend"},
    {u"all.clip.append", u"DBAppend"},
    {u"mnuPasteAppend", u"DBAppend"},
    {u"play.next", u"DBALLNEXTPLAY"},
    {u"play.sofort", u"DBALLSOFORTPLAY"},
    {u"all.clip.cut", {}, u"Ctrl+X"},
    {u"all.delete", {}, u"Del"},
    {u"mnuDelete", {}, u"Del"},
    {u"all.undo", {}, u"Ctrl+Z"},
    {u"all.redo", {}, u"Ctrl+Shift+Z"},
    {u"all.import", {}, u"Ctrl+I"},
};

} // namespace

CommandGate::CommandGate(const ConfigObjects& texts, CommandWorld world)
    : m_texts(texts)
    , m_world(std::move(world))
{}

bool CommandGate::isThere(QStringView program) const
{
    const QString name = program.toString();
    return m_world.isRunning(name) || m_world.isInstalled(name);
}

QString CommandGate::missing(QStringView program) const
{
    const QString name = program.toString();
    const QString known = m_texts.text(u"command.missing."_s + name);
    return known.isEmpty() ? m_texts.text(u"status.sibling.missing"_s, name) : known;
}

QString CommandGate::whyNot(QStringView name, const CommandPlace& place) const
{
    const auto* const command =
        std::find_if(std::begin(kCommands), std::end(kCommands),
                     [name](const Command& entry) { return entry.name == name; });
    if (command == std::end(kCommands)) {
        return {};
    }
    const auto needs = [command](unsigned need) { return (command->needs & need) != 0; };
    if (!command->program.isEmpty() && !isThere(command->program)) {
        return missing(command->program);
    }
    // What no click of the user can change comes first.
    if (needs(kLibrary) && place.isLent) {
        return m_texts.text(u"library.lent.title"_s);
    }
    if (needs(kWriting) && m_world.isReadOnly()) {
        return m_texts.text(u"library.readonly"_s);
    }
    if (needs(kList) && !place.hasList) {
        return m_texts.text(u"playlist.none.title"_s);
    }
    if (needs(kUnlocked) && place.isLocked) {
        return m_texts.text(u"playlist.norows.locked"_s);
    }
    if (needs(kUndo) && !place.canUndo) {
        return m_texts.text(u"history.undo.nothing"_s);
    }
    if (needs(kRedo) && !place.canRedo) {
        return m_texts.text(u"history.redo.nothing"_s);
    }
    if (needs(kRow) && !place.hasRow) {
        return m_texts.text(u"command.norow"_s);
    }
    if (needs(kPlay) && !place.knowsPlay) {
        return m_texts.text(u"command.noplay"_s);
    }
    if (needs(kPlayer) && !m_world.isPlayerThere()) {
        return m_texts.text(u"status.player.missing"_s);
    }
    return {};
}

QString commandKey(GlobalSettings& settings, QStringView command)
{
    const auto* const key = std::find_if(std::begin(kKeys), std::end(kKeys),
                                         [command](const Key& k) { return k.command == command; });
    if (key == std::end(kKeys)) {
        return {};
    }
    if (key->binding.isEmpty()) {
        return key->fixed.toString();
    }
    for (const Tasten& binding : settings.TastenAll()) {
        if (binding.Id == key->binding) {
            return portableKeys(binding.KeyName);
        }
    }
    return {};
}

} // namespace melovane
