#include "config/built_in_texts.h"

#include <array>

namespace melovane::owntexts {

namespace {

// clang-format off
constexpr std::array kTexts = std::to_array<BuiltInText>({
    // Pages: the title, and a sentence below it.
    {u"settings.page.library", u"Bibliothek", u"Welche Musikdatenbank geöffnet wird und was Tabelle und Bäume zeigen."},
    {u"settings.page.search", u"Suche", u"Was die Suchzeile der Datenbank durchsucht."},
    {u"settings.page.lists", u"Listen und Namen", u"Wie neue Playlisten und Gruppen heißen und wo ihre Dateien liegen."},
    {u"settings.page.monitor", u"Abhören", u"Wie Titel am Kopfhörer vorgehört werden. Die Player behalten ihre eigenen Karten."},
    {u"settings.page.files", u"Dateien und Tags", u"Was beim Import gelesen wird und wie Cover gespeichert werden."},
    {u"settings.page.keys", u"Tasten", u"Eine Zeile wählen, EINGABETASTE drücken, dann die neue Tastenfolge."},
    {u"settings.page.look", u"Aussehen", u"Sprache, Farbschema, Schrift und Farben der Tabellen. Alles gilt sofort."},
    {u"settings.page.hints", u"Hinweise", u"Meldungen, die nicht mehr gezeigt werden sollen."},
    {u"settings.page.suite", u"Suite", u"Diese Einstellungen liest nur der Player."},

    // Headings within a page.
    {u"settings.group.trees", u"Bäume"},
    {u"settings.group.columns", u"Die freie Suche sucht"},
    {u"settings.group.names", u"Namen"},
    {u"settings.group.output", u"Ausgabe"},
    {u"settings.group.doubleclick", u"Doppelklick"},
    {u"settings.group.listen", u"Vorhören"},
    {u"settings.group.tags", u"Tags"},
    {u"settings.group.covers", u"Cover"},
    {u"settings.group.folders", u"Ordner"},
    {u"settings.group.window", u"Fenster"},
    {u"settings.group.font", u"Schrift der Tabellen"},
    {u"settings.group.note", u"Farben der Bewertung"},
    {u"settings.group.rows", u"Farben der Zeilen"},
    {u"settings.group.level", u"Lautstärke angleichen"},
    {u"settings.group.cue", u"Start und Stop suchen"},
    {u"settings.group.start", u"Programmstart"},

    // One line each; behind it a note where the words do not say it all.
    {u"settings.dbname", u"Datenbankdatei", u"Die Konsole öffnet sie sofort; die bisherige bleibt, wo sie ist."},
    {u"settings.loadall", u"Alle Zeilen sofort in die Tabelle laden", u"Ausgeschaltet werden Zeilen erst gelesen, wenn sie gezeigt werden."},
    {u"settings.bpmrange", u"Spielraum um einen BPM-Wert", u"So weit darf ein Titel abweichen, den der Baum zu einem BPM-Wert findet."},
    {u"settings.jinglename", u"Name neuer Jinglelisten"},
    {u"settings.nameformat", u"Beispiel: $1", u"Zwischen zwei # steht das Datum: DD Tag, MM Monat, YY Jahr, HH Stunde, NN Minute."},
    {u"settings.followplaying", u"Dem laufenden Titel in der Playliste folgen"},
    {u"settings.template", u"Dateinamen beim Export", u"%O ist der Name der Datei, %N der Titel, %I der Interpret."},
    {u"settings.card", u"Soundkarte des Monitors", u"Fehlt die Karte, spielt die Standardkarte; die Wahl bleibt gespeichert."},
    {u"settings.card.system", u"Standardkarte des Systems"},
    {u"settings.card.missing", u"$1 (fehlt)"},
    {u"settings.card.player1", u"Soundkarte von Player 1"},
    {u"settings.card.player2", u"Soundkarte von Player 2"},
    {u"settings.testtone", u"Testton"},
    {u"settings.testtone.failed", u"Die Karte lässt sich nicht öffnen."},
    {u"settings.volume", u"Lautstärke"},
    {u"settings.doubleclick", u"Doppelklick in der Tabelle", u"0#;Datensatz wird bearbeitet|1#;Titel wird wiedergegeben|2#;Titel zur Playlist"},
    {u"settings.bypos", u"Nur von Start bis Stop vorhören", u"Ausgeschaltet läuft der Titel über seine Stopposition weiter."},
    {u"settings.id3v2", u"Beim Import ID3v2 vor ID3v1 lesen"},
    {u"settings.genres", u"Auswahl im Feld Genre", u"all#;Alle Genres|verwendete#;Nur die der eigenen Titel"},
    {u"settings.coversize", u"Größte Seite eines Covers in Pixeln"},
    {u"settings.coverquality", u"Qualität gespeicherter Cover"},
    {u"settings.importdir", u"Ordner für den Import"},
    {u"settings.coverdir", u"Ordner, in dem Cover gesucht werden"},
    {u"settings.cddir", u"Ordner für Dateien von CD"},
    {u"settings.language", u"Sprache"},
    {u"settings.theme", u"Farbschema"},
    {u"settings.fontname", u"Schrift"},
    {u"settings.fontsize", u"Größe in Punkt"},
    {u"settings.fontbold", u"Fett"},
    {u"settings.rowspacing", u"Zusätzlicher Zeilenabstand"},
    {u"settings.note1", u"Note 1"},
    {u"settings.note2", u"Note 2"},
    {u"settings.note3", u"Note 3"},
    {u"settings.note4", u"Note 4"},
    {u"settings.note5", u"Note 5"},
    {u"settings.notetext", u"Schrift der Note"},
    {u"settings.notebold", u"Note fett"},
    {u"settings.playnow", u"Laufender Titel"},
    {u"settings.rowdel", u"Gelöschter Titel"},
    {u"settings.rowfid", u"Aktueller Titel"},
    {u"settings.normalize", u"Lautstärke der Titel angleichen"},
    {u"settings.normalizetuning", u"Korrektur beim Angleichen"},
    {u"settings.autonormalize", u"Beim Laden messen"},
    {u"settings.fadein", u"Einblenden in Millisekunden"},
    {u"settings.fadeout", u"Ausblenden in Millisekunden"},
    {u"settings.autocue", u"Start und Stop nach dem Ton suchen"},
    {u"settings.autocuelevel", u"Pegel, der als Ton gilt"},
    {u"settings.autocuescan", u"Höchstens so viele Sekunden suchen"},
    {u"settings.mixstylein", u"Mixstil am Anfang"},
    {u"settings.mixstyleout", u"Mixstil am Ende"},
    {u"settings.jingleplayers", u"Zahl der Jingle-Player"},
    {u"settings.shifthold", u"Umschalttaste gilt so lange als gehalten (Millisekunden)"},

    // The window around the pages.
    {u"settings.find", u"Einstellung suchen"},
    {u"settings.find.none", u"Keine Einstellung heißt so."},
    {u"settings.categories", u"Bereiche"},
    {u"settings.of", u"von $1"},
    {u"settings.default", u"Zurück zum Standard: $1"},
    {u"settings.default.off", u"aus"},
    {u"settings.default.on", u"ein"},
    {u"settings.default.empty", u"leer"},
    {u"settings.reset", u"Zurücksetzen", u"Alles auf dieser Seite auf den Standard setzen"},
    {u"settings.changed.none", u"Alles auf dieser Seite steht auf dem Standard"},
    {u"settings.changed.one", u"1 Änderung auf dieser Seite"},
    {u"settings.changed", u"$1 Änderungen auf dieser Seite"},
    {u"settings.unwritten", u"Nicht gespeichert: $1 lässt sich nicht schreiben. Die Änderungen bleiben in diesem Fenster."},
    {u"settings.choose", u"Wählen ..."},
    {u"settings.colour", u"Farbe wählen"},
    {u"settings.database.kind", u"Musikdatenbanken"},
    {u"settings.missing", u"Nicht vorhanden: $1"},

    // Keys.
    {u"keys.command", u"Befehl"},
    {u"keys.key", u"Taste"},
    {u"keys.hint", u"Hinweis"},
    {u"keys.find", u"Befehl oder Taste suchen"},
    {u"keys.allgroups", u"Alle Gruppen"},
    {u"keys.none", u"nicht belegt"},
    {u"keys.press", u"Tasten drücken ..."},
    {u"keys.press.hint", u"ESC behält die alte Taste"},
    {u"keys.changed", u"geändert"},
    {u"keys.also", u"auch bei „$1“"},
    {u"keys.conflict", u"$1 ist zweimal belegt. Es wirkt die Zeile „$2“."},
    {u"keys.other", u"Zur anderen Zeile"},
    {u"keys.clear", u"Keine Taste"},
    {u"keys.summary", u"$1 Tasten geändert, $2 doppelt"},
    {u"keys.group.Datenbank", u"Datenbank"},
    {u"keys.group.Player", u"Player"},
    {u"keys.group.Player Mixer", u"Player Mixer"},
    {u"keys.group.Monitor in Tabellen", u"Monitor in Tabellen"},
    {u"keys.group.MP3 Importer", u"MP3 Importer"},
    {u"keys.group.Melovane", u"Melovane"},

    // The volume monitor.
    {u"level.title", u"Lautstärke des Monitors"},
    {u"level.percent", u"$1 %"},

    // Messages that are not shown any more.
    {u"hints.none", u"Zurzeit wird jede Meldung gezeigt."},
    {u"hints.show", u"Wieder zeigen"},
    {u"hints.showall", u"Alle wieder zeigen"},
});
// clang-format on

} // namespace

std::span<const BuiltInText> settingsPages()
{
    return kTexts;
}

} // namespace melovane::owntexts
