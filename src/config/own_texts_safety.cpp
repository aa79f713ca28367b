#include "config/built_in_texts.h"

#include <array>

namespace melovane::owntexts {

namespace {

// clang-format off
constexpr std::array kTexts = std::to_array<BuiltInText>({
    // Window of the backups.
    {u"backup.title", u"Sicherungen"},
    {u"backup.intro", u"Jede Sicherung ist eine vollständige Datenbank im Datenordner."},
    {u"backup.col.date", u"Datum"},
    {u"backup.col.size", u"Größe"},
    {u"backup.col.tracks", u"Titel"},
    {u"backup.col.lists", u"Listen"},
    {u"backup.col.occasion", u"Anlass"},
    {u"backup.col.state", u"Prüfung"},
    {u"backup.daily", u"täglich"},
    {u"backup.hand", u"von Hand"},
    {u"backup.cleaning", u"vor Bereinigung"},
    {u"backup.relink", u"vor neuen Orten"},
    {u"backup.merge", u"vor Zusammenlegen"},
    {u"backup.beforerestore", u"vor Wiederherstellung"},
    {u"backup.level", u"Stand $1"},
    {u"backup.good", u"in Ordnung"},
    {u"backup.damaged", u"beschädigt"},
    {u"backup.unchecked", u"nicht geprüft"},
    {u"backup.checked", u"Geprüft am $1 um $2: $3"},
    {u"backup.unchecked.long", u"Noch nicht geprüft"},
    {u"backup.free", u"$1 frei"},
    {u"backup.all", u"alle Sicherungen $1"},
    {u"backup.now", u"Jetzt sichern"},
    {u"backup.check", u"Prüfen"},
    {u"backup.restore", u"Wiederherstellen ..."},
    {u"backup.settings", u"Einstellungen, Layouts und Verlauf mit wiederherstellen"},
    {u"backup.settings.tip",
     u"Der Verlauf zum Rückgängigmachen gilt sofort, "
      "Einstellungen und Layouts ab dem nächsten Start."},
    {u"backup.none", u"Noch keine Sicherung. Beim ersten Start jedes Tages wird eine gemacht."},
    // What becomes of a backup.
    {u"backup.making", u"Die Datenbank wird gesichert ..."},
    {u"backup.checking", u"Die Sicherung wird geprüft ..."},
    {u"backup.restoring", u"Die Sicherung wird wiederhergestellt ..."},
    {u"backup.made", u"Sicherung gemacht und geprüft: $1 Titel, $2 Listen."},
    {u"backup.restored", u"Die Sicherung vom $1 ist wiederhergestellt."},
    {u"backup.restored.settings",
     u"Die Sicherung vom $1 ist wiederhergestellt. Einstellungen "
      "und Layouts gelten ab dem nächsten Start."},
    {u"backup.givenup", u"Abgebrochen, nichts wurde geändert."},
    {u"backup.busy", u"Ein anderes Programm arbeitet gerade mit den Sicherungen."},
    {u"backup.failed", u"Nicht gelungen, alles ist, wie es war: $1"},
    {u"backup.library.damaged",
     u"Die Datenbank ist beschädigt, deshalb wurde keine Sicherung gemacht. Die "
      "vorhandenen Sicherungen bleiben. Stellen Sie eine davon wieder her."},
    {u"backup.is.damaged", u"Die Sicherung $1 ist beschädigt und kann nicht verwendet werden."},
    {u"backup.pages",
     u"Die Sicherung $1 ist anders aufgebaut (andere Seitengröße) "
      "und kann nicht in diese Datenbank zurück."},
    {u"backup.ask",
     u"Die Datenbank\\n$1\\nbekommt den Inhalt der Sicherung vom $2 ($3 Titel, $4 "
      "Listen).\\n\\nWas jetzt in ihr steht, wird vorher gesichert. Wiederherstellen?"},
    {u"backup.goon", u"Die Sicherung davor ist nicht gelungen.\\n\\n$1\\n\\nTrotzdem fortfahren?"},
    {u"backup.rescue",
     u"Die Datenbank kann nicht geöffnet werden:\\n$1\\n\\nDie letzte Sicherung ist vom $2 ($3 Titel, $4 "
      "Listen). Die beschädigte Datei wird daneben aufgehoben.\\n\\nSicherung wiederherstellen?"},
    // Check of the library.
    {u"check.title", u"Datenbank prüfen"},
    {u"check.running", u"Die Datenbank wird geprüft ..."},
    {u"check.whole", u"Die Datenbank ist in Ordnung."},
    {u"check.found", u"Gefunden: $1"},
    {u"check.Unreadable", u"Die Datei kann nicht gelesen werden: $1"},
    {u"check.PageDamaged", u"Die Datei ist beschädigt: $1"},
    {u"check.IndexDamaged", u"Ein Index passt nicht zu seinen Zeilen: $1"},
    {u"check.TableLost", u"Eine Tabelle hat ihre Zeilen verloren: $1"},
    {u"check.TemplateFilled", u"Eine Vorlage, die immer leer ist, hat Zeilen: $1"},
    {u"check.JobUnknown", u"Aufträge, die niemand ausführen kann: $1"},
    {u"check.CountWrong", u"Die Zahl der Einträge stimmt nicht: $1"},
    {u"check.EntryWithoutTrack",
     u"Einträge von Titeln, die es nicht mehr gibt: $1 "
      "(die Datenbereinigung entfernt sie)"},
    {u"check.EntryWithoutList", u"Einträge ohne Playliste: $1"},
    {u"check.ListWithoutGroup", u"Playliste ohne Gruppe: $1"},
    {u"check.PlayWithoutTrack",
     u"Statistik von Titeln, die es nicht mehr gibt: $1 "
      "(die Datenbereinigung entfernt sie)"},
    {u"check.TrackWithoutId", u"Titel ohne gültige Kennung: $1"},
    {u"check.SideFileMissing", u"Eine Nebendatei fehlt: $1"},
    {u"check.SideFileDamaged", u"Eine Nebendatei ist beschädigt: $1"},
    {u"check.HistoryDamaged", u"Der Verlauf zum Rückgängigmachen ist beschädigt: $1"},
    {u"check.ListFileMissing", u"Die Datei einer Playliste fehlt: $1"},
    {u"check.more", u"... und $1 weitere"},
    {u"check.mend", u"Was ohne Verlust zu beheben ist, jetzt beheben?"},
    {u"check.mended", u"Behoben: $1"},
    {u"check.left", u"Geblieben: $1"},
    {u"check.restore", u"Stellen Sie eine Sicherung wieder her."},
    {u"check.rest", u"Wiedergefunden"},
    {u"check.started", u"Nach dem letzten Ende geprüft: die Datenbank ist in Ordnung."},
});
// clang-format on

} // namespace

std::span<const BuiltInText> safety()
{
    return kTexts;
}

} // namespace melovane::owntexts
