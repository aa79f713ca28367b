#include "config/tasten.h"

#include "config/tool_box.h"

#include <array>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString kSection = u"Tastatur"_s;

struct BindingRow
{
    QStringView id;
    QStringView group;
    QStringView textKey;
    QStringView keys;
};

constexpr QStringView kDatabase = u"Datenbank";
constexpr QStringView kPlayer = u"Player";
constexpr QStringView kMixer = u"Player Mixer";
constexpr QStringView kMonitor = u"Monitor in Tabellen";
constexpr QStringView kImporter = u"MP3 Importer";
constexpr QStringView kSuite = u"Melovane";

/// Read by the siblings, too: keep every text.
constexpr std::array<BindingRow, 42> kBindings = {{
    {u"DBSelall", kDatabase, u"tooltip.all.data.select", u""},
    {u"DBKopie", kDatabase, u"tooltip.all.copy", u"STRG-TASTE + C-TASTE"},
    {u"DBInsert", kDatabase, u"tooltip.all.clip.insert", u"STRG-TASTE + V-TASTE"},
    {u"DBAppend", kDatabase, u"tooltip.all.clip.append", u"STRG-TASTE + A-TASTE"},
    {u"DBDetail", kDatabase, u"tooltip.all.book", u""},
    {u"DBPLDEL", kDatabase, u"confsdel", u""},
    {u"DBPLMOVEUP", kDatabase, u"confsup", u""},
    {u"DBPLMOVEDOWN", kDatabase, u"confsdown", u""},
    {u"DBALLNEXTPLAY", kDatabase, u"confPlayNext", u"STRG-TASTE + N-TASTE"},
    {u"DBALLSOFORTPLAY", kDatabase, u"confPlayNow", u"STRG-TASTE + S-TASTE"},
    {u"PLPlay1", kPlayer, u"confplay1", u""},
    {u"PLPlay2", kPlayer, u"confplay2", u""},
    {u"PLStop1", kPlayer, u"confstop1", u""},
    {u"PLStop2", kPlayer, u"confstop2", u""},
    {u"PLPause1", kPlayer, u"confpause1", u""},
    {u"PLPause2", kPlayer, u"confpause2", u""},
    {u"PLLOOP", kPlayer, u"confLoop", u"STRG-TASTE + L-TASTE"},
    {u"PLStop", kMixer, u"tooltip.play.stop", u""},
    {u"PLPlay", kMixer, u"tooltip.play.start", u""},
    {u"tast.player.activate.tree", kPlayer, u"tast.player.activate.tree", u"STRG-TASTE + B-TASTE"},
    {u"tast.player.activate.table", kPlayer, u"tast.player.activate.table",
     u"STRG-TASTE + T-TASTE"},
    {u"PLMix", kMixer, u"confMix", u"STRG-TASTE + M-TASTE"},
    {u"PLMonitorPlay", kMixer, u"confMplay", u""},
    {u"PLMonitorStop", kMixer, u"confMstop", u""},
    {u"PLTaloverON", kMixer, u"confTalkover", u""}, // the key's spelling in the suite
    {u"mixer.jingle.1", kMixer, u"mixer.jingle.1", u"STRG-TASTE + 1-TASTE"},
    {u"mixer.jingle.2", kMixer, u"mixer.jingle.2", u"STRG-TASTE + 2-TASTE"},
    {u"mixer.jingle.3", kMixer, u"mixer.jingle.3", u"STRG-TASTE + 3-TASTE"},
    {u"mixer.jingle.4", kMixer, u"mixer.jingle.4", u"STRG-TASTE + 4-TASTE"},
    {u"mixer.jingle.5", kMixer, u"mixer.jingle.5", u"STRG-TASTE + 5-TASTE"},
    {u"mixer.jingle.6", kMixer, u"mixer.jingle.6", u"STRG-TASTE + 6-TASTE"},
    {u"mixer.jingle.stop", kMixer, u"mixer.jingle.stop", u"STRG-TASTE + 0-TASTE"},
    {u"mixer.jingle.volume", kMixer, u"mixer.jingle.volume", u"n/a"}, // matches nothing
    {u"PLPLMonitorPlay", kMonitor, u"play", u""},
    {u"PLPLMonitorPlayCenter", kMonitor, u"centerplay", u""},
    {u"PLPLMonitorStop", kMonitor, u"stop", u""},
    {u"IMPTAUSCH", kImporter, u"confImTausch", u"STRG-TASTE + T-TASTE"},
    {u"IMPGENRE", kImporter, u"confImGenre", u"STRG-TASTE + G-TASTE"},
    {u"IMPDATEI", kImporter, u"confImDatei", u"STRG-TASTE + D-TASTE"},
    {u"IMPDELREC", kImporter, u"confImDel", u"STRG-TASTE + LÖSCHEN-TASTE"},
    {u"PLTOP", kSuite, u"confTopDj", u"F11-TASTE"},
    {u"DBTOP", kSuite, u"confTopDB", u"F12-TASTE"},
}};

} // namespace

std::vector<Tasten> defaultTasten()
{
    std::vector<Tasten> result;
    result.reserve(kBindings.size());
    for (const BindingRow& row : kBindings) {
        result.push_back(
            {row.textKey.toString(), row.id.toString(), row.keys.toString(), row.group.toString()});
    }
    return result;
}

void readTasten(std::vector<Tasten>& bindings, const ToolBox& file)
{
    for (Tasten& binding : bindings) {
        binding.KeyName = file.INI_GetKeyValue(kSection, binding.TextKey, binding.KeyName);
    }
}

void writeTasten(const std::vector<Tasten>& bindings, ToolBox& file)
{
    for (const Tasten& binding : bindings) {
        file.INI_WriteKeyValue(kSection, binding.TextKey, binding.KeyName);
    }
}

} // namespace melovane
