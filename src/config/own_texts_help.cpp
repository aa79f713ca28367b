#include "config/built_in_texts.h"

#include <array>

namespace melovane::owntexts {

namespace {

// clang-format off
constexpr std::array kTexts = std::to_array<BuiltInText>({
    // The window of the help. The folder is where the pages of the language lie: keep.
    {u"help.folder", u"de"},
    {u"help.title", u"Hilfe"},
    {u"help.contents", u"Seiten der Hilfe"},
    {u"help.contents.tip", u"Eine Seite wählen"},
    {u"help.page", u"Gezeigte Seite"},
    {u"help.search", u"In der Hilfe suchen"},
    {u"help.search.tip", u"Zeigt die Seiten, in denen alle Worte vorkommen (Strg+F)"},
    {u"help.hits", u"Gesucht: $1"},
    {u"help.none", u"Keine Seite enthält: $1"},
    {u"help.back", u"Zurück"},
    {u"help.forward", u"Vorwärts"},
    {u"help.nokeys", u"nicht belegt"},

    // What controls say under the pointer that have no words of their own for it.
    {u"tip.field", u"Ein Feld des gewählten Titels; was hier steht, gilt, sobald Sie das Feld verlassen"},
    {u"tip.clean.ok", u"Die angekreuzten Schritte ausführen; vorher wird gesichert"},
    {u"tip.clean.0", u"Titel, die in der Bibliothek durchgestrichen sind, endgültig herausnehmen"},
    {u"tip.clean.1", u"Titel herausnehmen, deren Datei sich beim Lesen als fehlerhaft erwies"},
    {u"tip.clean.2", u"Titel herausnehmen, deren Datei fehlt"},
    {u"tip.clean.3", u"Einträge in Playlisten herausnehmen, deren Titel es nicht mehr gibt"},
    {u"tip.clean.4", u"Die Dateien nicht liegen lassen, sondern in den Papierkorb MelovaneRecycler legen"},
    {u"tip.recycler.one", u"Den markierten Titel mit Eintrag, Listenplätzen und Statistik zurückholen"},
    {u"tip.recycler.all", u"Alle Titel des Papierkorbs zurückholen"},
    {u"tip.backup.now", u"Sofort eine Sicherung der ganzen Bibliothek machen und prüfen"},
    {u"tip.backup.check", u"Die gewählte Sicherung Seite für Seite lesen"},
    {u"tip.backup.restore", u"Die Bibliothek durch die gewählte Sicherung ersetzen; der jetzige Stand wird vorher gesichert"},
    {u"tip.find.search", u"Einen Ordner wählen und darin nach den fehlenden Dateien suchen"},
    {u"tip.find.apply", u"Die angekreuzten Titel an ihre neuen Orte lenken; Rückgängig nimmt es zurück"},
    {u"tip.double.sound", u"Dateien vergleichen, deren Ton gleich ist, wie sie auch heißen"},
    {u"tip.double.names", u"Titel vergleichen, die gleich heißen und gleich lang sind"},
    {u"tip.double.search", u"Die Bibliothek nach doppelten Titeln durchsuchen"},
    {u"tip.double.merge", u"Von jeder Gruppe den gewählten Titel behalten und die anderen entfernen"},
    {u"tip.columns.ok", u"Die Spalten so zeigen"},
    {u"tip.columns.heading", u"Das Wort über der gewählten Spalte"},
    {u"tip.columns.add", u"Die gewählte Spalte in die Tabelle aufnehmen"},
    {u"tip.columns.remove", u"Die gewählte Spalte aus der Tabelle nehmen"},
    {u"tip.quick", u"Den Anfang eines Namens tippen, mit den Pfeilen wählen, Eingabe"},
    {u"tip.health.again", u"Alles noch einmal nachsehen"},
    {u"tip.health.copy", u"Den ganzen Bericht in die Zwischenablage legen"},
    {u"tip.facts", u"Fassung und Orte; der Text lässt sich markieren und kopieren"},
    {u"tip.more", u"Werkzeuge, für die hier kein Platz ist"},
    {u"tip.close", u"Das Fenster schließen (Esc)"},

    // Hints of the first hour, each shown until it is put away.
    {u"firsthour.hint.1", u"Tippen Sie in die Suchzeile (Strg+F): Schon der erste Buchstabe zeigt Treffer, ein * davor sucht auch mitten im Text."},
    {u"firsthour.hint.2", u"Legen Sie links unten eine Gruppe und eine Playliste an, und ziehen Sie Titel hinein. Strg+Z nimmt alles zurück."},
    {u"firsthour.hint.3", u"F1 erklärt überall den Bereich, in dem Sie gerade arbeiten."},
    {u"firsthour.read", u"Verstanden"},
    {u"firsthour.read.tip", u"Diesen Hinweis nie wieder zeigen"},

    // The line that finds everything by its name.
    {u"mnuQuickOpen", u"Schnell öffnen ..."},
    {u"quick.title", u"Schnell öffnen"},
    {u"quick.hint", u"Befehl, Liste, Interpret, Einstellung ... suchen"},
    {u"quick.none", u"Nichts heißt so."},
    {u"quick.command", u"Befehl"},
    {u"quick.row", u"Gewählter Titel"},
    {u"quick.library", u"Bibliothek"},
    {u"quick.list", u"Playliste"},
    {u"quick.jingles", u"Jingleliste"},
    {u"quick.group", u"Gruppe"},
    {u"quick.artist", u"Interpret"},
    {u"quick.album", u"Album"},
    {u"quick.genre", u"Genre"},
    {u"quick.folder", u"Ordner"},
    {u"quick.setting", u"Einstellung"},

    // The window that tells whether the suite is well.
    {u"mnuHealth", u"Zustand der Suite ..."},
    {u"health.title", u"Zustand der Suite"},
    {u"health.intro", u"Was gerade läuft, was noch zu tun ist und wo alles liegt."},
    {u"health.again", u"Neu lesen"},
    {u"health.copy", u"Als Text kopieren"},
    {u"health.programs", u"Programme, die laufen"},
    {u"health.programs.none", u"Kein Programm der Suite läuft."},
    {u"health.program", u"Gegenstelle $1, Prozess $2  $3"},
    {u"health.waiting", u"Was noch wartet"},
    {u"health.nothing", u"nichts"},
    {u"health.todo", u"Postfach der Programme (todo)"},
    {u"health.todo.row", u"Nummer $1: $2"},
    {u"health.tags", u"Tags, die in Dateien zu schreiben sind (db_edit)"},
    {u"health.tracks", u"$1 Titel"},
    {u"health.trees", u"Bäume, die neu zu füllen sind (ChangeTree)"},
    {u"health.lists", u"Playlisten, die in Dateien zu schreiben sind"},
    {u"health.library.unread", u"Die Bibliothek lässt sich nicht lesen"},
    {u"health.messages", u"Letzte Nachrichten der Konsole"},
    {u"health.messages.none", u"Noch keine."},
    {u"health.messages.away", u"Die Konsole läuft nicht oder antwortet nicht."},
    {u"health.safety", u"Sicherung und Prüfung"},
    {u"health.never", u"noch nie"},
    {u"health.backup", u"Letzte Sicherung"},
    {u"health.backup.last", u"$1, $2; $3 vorhanden"},
    {u"health.check", u"Letzte Prüfung der Datenbank"},
    {u"health.check.whole", u"$1, ohne Befund"},
    {u"health.check.found", u"$1, Befunde: $2"},
    {u"health.paths", u"Wo alles liegt"},
    {u"health.missing", u"$1  (fehlt)"},
    {u"health.path.library", u"Datenbank"},
    {u"health.path.trees", u"Bäume"},
    {u"health.path.history", u"Schritte zum Rückgängigmachen"},
    {u"health.path.settings", u"Einstellungen"},
    {u"health.path.data", u"Datenordner"},
    {u"health.path.lists", u"Playlisten"},
    {u"health.path.program", u"Programme"},
    {u"health.path.runtime", u"Treffpunkt der Programme"},
});
// clang-format on

} // namespace

std::span<const BuiltInText> help()
{
    return kTexts;
}

} // namespace melovane::owntexts
