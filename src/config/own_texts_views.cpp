#include "config/built_in_texts.h"

#include <array>

namespace melovane::owntexts {

namespace {

// clang-format off
constexpr std::array kTexts = std::to_array<BuiltInText>({
    // Library view.
    {u"library.search.hint", u"Titel oder Interpret suchen"},
    {u"library.search.name", u"Suche in der Bibliothek"},
    {u"library.search.tip", u"Worte am Anfang von Titel oder Interpret, mit * davor überall.\\nKurzformen: Note=1 (Schulnote, 1 ist die beste und zeigt die Titel mit der Bewertung 5), Count>1 (öfter gespielt), BPM=130."},
    {u"library.search.clear", u"Suchzeile leeren"},
    {u"library.grid.name", u"Titel der Bibliothek"},
    {u"library.count", u"$1 Titel"},
    {u"library.count.one", u"$1 Titel"},
    {u"library.import", u"MP3s importieren"},
    {u"library.columns", u"Spalten ein- und ausblenden"},
    {u"layout.columns", u"Alle Spalten"},
    {u"layout.add", u"Zeigen"},
    {u"layout.remove", u"Ausblenden"},
    {u"layout.heading", u"Überschrift"},
    {u"font.name", u"Schriftart"},
    {u"font.size", u"Größe in Punkt"},
    {u"font.bold", u"Fett"},
    {u"font.sample", u"Titel und Interpret 3:45"},
    {u"library.empty.title", u"Noch keine Titel - MP3s importieren"},
    {u"library.empty.text", u"Nach dem Import eines Ordners findet die Suchzeile jeden Titel mit ein paar Buchstaben."},
    {u"library.nosearch.title", u"$1 Titel in der Bibliothek"},
    {u"library.nosearch.title.one", u"$1 Titel in der Bibliothek"},
    {u"library.nosearch.text", u"Den Anfang von Titel oder Interpret in die Suchzeile tippen."},
    {u"library.nosearch.button", u"Alle Titel zeigen"},
    {u"library.nohits.title", u"Keine Treffer für „$1“"},
    {u"library.nohits.begin", u"Gesucht wurde am Anfang der Felder."},
    {u"library.nohits.inside", u"Auch mitten im Text kommt das nicht vor."},
    {u"library.nohits.button", u"Auch mitten im Text suchen"},
    {u"library.lent.title", u"Ein anderes Programm benutzt die Bibliothek"},
    {u"library.lent.text", u"Sobald es fertig ist, geht es hier weiter."},
    {u"library.nodeleted", u"Keine Titel als gelöscht markiert"},
    {u"library.nomissing", u"Keine Titel ohne Datei"},
    {u"library.view.deleted", u"Als gelöscht markiert"},
    {u"library.view.missing", u"Ohne Datei"},
    {u"library.view.folder", u"Ordner $1"},
    {u"library.view.text", u"„$1“"},
    {u"library.norows", u"Hier stehen keine Titel"},
    {u"look.heard", u"wird vorgehört"},
    {u"library.edit.note", u"Eine Note geht von 1 bis 5, 5 ist die beste; leer oder 0 nimmt sie weg"},

    // The monitor player in the status line.
    {u"monitor.seek.name", u"Stelle im Titel, der vorgehört wird"},
    {u"monitor.seek.tip", u"Stelle im Titel: klicken oder ziehen; Pfeil links und rechts 5 s, Bild auf und ab 30 s, Pos1 zum Anfang, Ende 10 s vor Schluss; Mausrad: Lautstärke"},
    {u"monitor.volume.tip", u"Lautstärke beim Vorhören: klicken, ziehen oder Mausrad; leiser F7, lauter F8"},

    // Panels beside the library.
    {u"tree.title", u"Navigation"},
    {u"tree.empty", u"Ordner, Genres, Interpreten und Favoriten: noch nicht in dieser Fassung."},
    {u"lists.title", u"Playlisten"},
    {u"tree.row.level", u"Ebene"},
    {u"tree.row.open", u"aufgeklappt"},
    {u"tree.row.folded", u"zugeklappt"},
    {u"tree.row.ticked", u"angehakt"},
    {u"tree.row.unticked", u"nicht angehakt"},

    // Playlist view.
    {u"playlist.grid.name", u"Titel der Playliste"},
    {u"playlist.none.title", u"Keine Playliste geöffnet"},
    {u"playlist.noplaying", u"Keine Playliste wird gespielt"},
    {u"playlist.none.text", u"Eine Playliste im Feld links anklicken."},
    {u"playlist.none.button", u"Neue Playliste"},
    {u"playlist.norows.title", u"Noch keine Titel in dieser Playliste"},
    {u"playlist.norows.text", u"Titel aus der Bibliothek, MP3-Dateien oder M3U-Listen hierher ziehen."},
    {u"playlist.norows.locked", u"Die Playliste ist schreibgeschützt."},
    {u"playlist.locked", u"Schreibgeschützt"},
    {u"playlist.undo.locked", u"„$1“ ist schreibgeschützt; erst die Sperre lösen."},
    {u"playlist.cue", u"Anfang und Ende nach dem Ton setzen"},
    {u"playlist.cue.failed", u"Der Ton von „$1“ lässt sich nicht lesen."},
    {u"playlist.summary", u"$1 Titel"},
    {u"playlist.summary.one", u"$1 Titel"},
    {u"playlist.undo.failed", u"Das ließ sich nicht rückgängig machen oder wiederholen."},
    {u"playlist.listsonly", u"Playlisten gelesen, die anderen Dateien daneben nicht: $1"},
    {u"playlist.notracks", u"Keine lesbaren MP3-Dateien darunter"},
    {u"drop.title", u"Dateien in die Playliste aufnehmen"},
    {u"drop.beyond", u"Höchstens $2 Dateien auf einmal, $1 weitere ausgelassen"},
    {u"drop.beyond.one", u"Höchstens $2 Dateien auf einmal, $1 weitere ausgelassen"},
    {u"playlist.skipped", u"$1 Dateien ohne lesbaren Ton ausgelassen, zuerst „$2“"},
    {u"playlist.skipped.one", u"$1 Datei ohne lesbaren Ton ausgelassen: „$2“"},
    {u"playlist.loop", u"Endlos spielen ein- oder ausschalten"},
    {u"playlist.volume", u"Lautstärke beim Vorhören"},
    {u"Aktion.Mix", u"In den nächsten Titel mischen"},
    {u"Aktion.Stop", u"Nach diesem Titel anhalten"},
    {u"Aktion.Loop", u"Endlos spielen"},
    {u"Aktion.JPlay", u"Als Jingle spielen"},
    {u"Aktion.Jingle.1", u"Jingle-Bank 1"},
    {u"Aktion.Jingle.2", u"Jingle-Bank 2"},

    // Library tree: headings and its menu.
    {u"tree.root.favorit", u"Favorit"},
    {u"tree.root.genre", u"Genre"},
    {u"tree.root.album", u"Album"},
    {u"tree.root.interpret", u"Interpret"},
    {u"tree.root.directory", u"Directory"},
    {u"tree.root.other", u"Other"},
    {u"tree.root.jingle", u"Jingle"},
    {u"tree.tick.add", u" Add Farvorit "},      // spelt so
    {u"tree.tick.remove", u" Remove Favorit "},
    {u"tree.menu.1001", u"An Playliste anhängen"},
    {u"tree.menu.1002", u"In Playliste einfühgen"}, // spelt so
    {u"tree.menu.1004", u"An aktuelle gespielte Playliste anhängen"},

    // Playlist tree: its menu.
    {u"lists.menu.1001", u"Aktivieren"},
    {u"lists.menu.1002", u"Umbenennen"},
    {u"lists.menu.1004", u"Sortieren nach Namen"},
    {u"lists.menu.1005", u"Sortieren nach Datum"},
    {u"lists.menu.1007", u"Eigenschaften Playliste"},
    {u"lists.menu.1009", u"In dieser Auswahl zeigen"},
    {u"lists.menu.1010", u"Alle Playlisten zeigen"},
    {u"lists.menu.1011", u"Als M3U-Datei speichern ..."},
    {u"lists.norow", u"Erst eine Playliste auswählen"},
    {u"lists.nogroup", u"Erst eine Gruppe oder Playliste auswählen"},
    {u"lists.gone", u"Diese Playliste gibt es nicht mehr"},

    // What can be undone in lists: $1 entries, $2 the list. ".one" for a single entry.
    {u"history.append", u"$1 Titel an „$2“ angehängt"},
    {u"history.insert", u"$1 Titel in „$2“ eingefügt"},
    {u"history.copy", u"$1 Titel in „$2“ kopiert"},
    {u"history.move", u"Titel in „$2“ verschoben"},
    {u"history.delete", u"$1 Titel aus „$2“ gelöscht"},
    {u"history.up", u"Titel in „$2“ nach oben verschoben"},
    {u"history.down", u"Titel in „$2“ nach unten verschoben"},
    {u"history.aktion", u"Abspielaktion in „$2“ geändert"},
    {u"history.entry", u"Einstellungen eines Titels in „$2“ geändert"},
    {u"history.reset", u"Alle Einstellungen in „$2“ zurückgesetzt"},
    {u"history.styles", u"Alle Übergänge in „$2“ geändert"},
    {u"history.import", u"$1 Titel in „$2“ importiert"},
    {u"history.deletelist", u"Playliste „$2“ mit $1 Titeln gelöscht"},
    {u"history.deletegroup", u"Gruppe „$2“ gelöscht"},
    {u"history.append.one", u"1 Titel an „$2“ angehängt"},
    {u"history.insert.one", u"1 Titel in „$2“ eingefügt"},
    {u"history.copy.one", u"1 Titel in „$2“ kopiert"},
    {u"history.delete.one", u"1 Titel aus „$2“ gelöscht"},
    {u"history.import.one", u"1 Titel in „$2“ importiert"},
    {u"history.deletelist.one", u"Playliste „$2“ mit 1 Titel gelöscht"},
    {u"history.undo", u"Rückgängig: $1"},
    {u"history.redo", u"Wiederholen: $1"},
    {u"history.undo.nothing", u"Nichts rückgängig zu machen"},
    {u"history.redo.nothing", u"Nichts zu wiederholen"},
    {u"history.elsewhere", u"„$1“ wurde inzwischen anderswo geändert.\\n\\nTrotzdem ausführen? $2"},

    // Information tree.
    {u"info.root", u"Informationen"},
    {u"info.id3v2", u"ID3v2 erweitert"},
    {u"info.kategorie", u"Kategorie: $1 "},
    {u"info.stimmung", u"Stimmung: $1 "},
    {u"info.situation", u"Situation: $1 "},
    {u"info.tempo", u"Tempo: $1 "},
    {u"info.user", u"User$1: $2 "},
    {u"info.firstimport", u"Zuerst Importiert am: $1"},
    {u"info.lastimport", u"Zuletzt Importiert am: $1"},
    {u"info.filedate", u"Dateidatum: $1"},
    {u"info.year", u"Jahr $1"},
    {u"info.bpm", u"BPM $1"},
    {u"info.today", u"Heute $1"},
    {u"info.total", u"Gesamt $1"},
    {u"info.played", u"Gespielt am: $1"},
});
// clang-format on

} // namespace

std::span<const BuiltInText> views()
{
    return kTexts;
}

} // namespace melovane::owntexts
