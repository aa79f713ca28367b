#include "config/built_in_texts.h"

#include <array>

namespace melovane::suitetexts {

namespace {

// clang-format off
constexpr std::array kTexts = std::to_array<BuiltInText>({
    {u"conf.monitor.playtype", u"Monitor Play ab", u"1#;Play ab Start|2#;Play Von -> Bis", u"2"},
    {u"uebernehmen", u"Übernehmen"},
    {u"Abbruch", u"Abbrechen"},
    {u"Play", u"Vorhören ab Start"},
    {u"centerPlay", u"Vorhören ab Mitte"},
    {u"stop", u"Vorhören beenden"},
    {u"tooltip.play.start", u"Titel abspielen"},
    {u"tooltip.play.center", u"Titel ab der Mitte abspielen"},
    {u"tooltip.play.stop", u"Titel anhalten"},
    {u"tooltip.play.vor", u"Vorspulen"},
    {u"tooltip.play.zur", u"Zurückspulen"},
    {u"tooltip.all.book", u"Titel bearbeiten"},
    {u"tooltip.all.copy", u"Markierte Titel kopieren"},
    {u"tooltip.all.delete", u"Löschen"},
    {u"tooltip.all.data.select", u"Alle Titel markieren"},
    {u"tooltip.all.data.insert", u"Alle Titel in die Playliste einfügen"},
    {u"tooltop.all.data.append", u"Alle Titel an die Playliste anhängen"}, // spelt so
    {u"tooltip.all.clip.insert", u"Kopierte Titel einfügen"},
    {u"tooltip.all.clip.append", u"Kopierte Titel anhängen"},
    {u"tooltip.all.newdoc", u"Neue Playliste"},
    {u"tooltip.all.newdir", u"Neue Gruppe"},
    {u"all.newdir", u"Neue Gruppe"},
    {u"tooltip.all.activate", u"Playliste aktivieren"},
    {u"tooltip.all.lock", u"Schreibschutz ein- oder ausschalten"},
    {u"tooltip.all.refresh", u"Aktualisieren"},
    {u"tooltip.all.sample", u"Im Sampler öffnen"},
    {u"ok", u"OK"},
    {u"achtung", u"Achtung !"},
    {u"minuten", u"Minuten"},
    {u"ToolTipPlaylistNew", u"Neue Playliste"},
    {u"ToolTipPlaylistLock", u"Schreibschutz ein- oder ausschalten"},
    {u"ToolTipPlaylistActiv", u"Playliste aktivieren"},
    {u"ToolTipPlaylistDel", u"Playliste oder Gruppe löschen"},
    {u"ToolTipPlaylistDetail", u"Eigenschaften der Playliste"},
    {u"ToolTipPlaylistGoTo", u"Zum laufenden Titel springen"},
    {u"ToolTipRefresh", u"Aktualisieren"},
    {u"ToolTipDBTableDel", u"Titel als gelöscht markieren"},
    {u"ToolTipAllTableDetail", u"Titel bearbeiten"},
    {u"ToolTipAllTableSel", u"Alle Titel markieren"},
    {u"ToolTipAllTableCopy", u"Markierte Titel kopieren"},
    {u"ToolTipAllTableAppend", u"Markierte Titel an die Playliste anhängen"},
    {u"ToolTipAllTableInsert", u"Markierte Titel in die Playliste einfügen"},
    {u"ToolTipPlayerPlay", u"Vorhören ab Start"},
    {u"ToolTipPlayerStop", u"Vorhören beenden"},
    {u"ToolTipPlayerPlayCenter", u"Vorhören ab Mitte"},
    {u"ToolTipPlayerRemain", u"Zurückspulen"},
    {u"ToolTipPlayerForward", u"Vorspulen"},
    {u"ToolTipKIV", u"Im Sampler öffnen"},
    {u"ToolTipSuchen", u"Suchen"},
    {u"ToolTipHistoryRemain", u"Vorherige Suche"},
    {u"ToolTipHistoryForward", u"Nächste Suche"},
    {u"ToolTipPlaylistTableAppend", u"Kopierte Titel anhängen"},
    {u"ToolTipPlaylistTableInsert", u"Kopierte Titel einfügen"},
    {u"ToolTipPlaylistTableDel", u"Markierte Titel aus der Playliste entfernen"},
    {u"ToolTip.Sleeve.Viewer", u"Cover anzeigen"},
    {u"ToolTip.Tree.Genre", u"Genres"},
    {u"ToolTip.Tree.Dir", u"Ordner"},
    {u"ToolTip.Tree.Album", u"Alben"},
    {u"ToolTip.Tree.Playlist", u"Playlisten"},
    {u"ToolTip.Tree.state", u"Statistik"},
    {u"ToolTip.Tree.Favorit", u"Favoriten"},
    {u"ToolTip.Tree.Info", u"Informationen zum Titel"},
    {u"ToolTip.Tree.Erweitert", u"Weitere Listen"},
    {u"ToolTip.Tree.collaps.close", u"Alles auf- oder zuklappen"},
    {u"ToolTip.Tree.Interpret", u"Interpreten"},
    {u"ToolTipTreeNewGroup", u"Neue Gruppe"},
    {u"ToolTipTreeDelGroup", u"Playliste oder Gruppe löschen"},
    {u"ToolTip.Player.Mixer.Reload", u"Mixer neu laden"},
    {u"ToolTip.Player.Mixer.Talkover", u"Talkover ein- oder ausschalten"},
    {u"ToolTip.Player.Mixer.Shuffle", u"Titel in zufälliger Reihenfolge spielen"},
    {u"ToolTip.Player.Mixer.Mixstyle.NoCange", u"Mixstil nicht ändern"}, // spelt so
    {u"ToolTip.Player.Mixer.Regler.Soundkard", u"Lautstärke der Soundkarte"}, // spelt so
});
// clang-format on

} // namespace

std::span<const BuiltInText> toolTips()
{
    return kTexts;
}

} // namespace melovane::suitetexts
