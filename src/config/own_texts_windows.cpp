#include "config/built_in_texts.h"

#include <array>

namespace melovane::owntexts {

namespace {

constexpr QStringView kButtons = u"Spezial.Buttons";

// clang-format off
constexpr std::array kTexts = std::to_array<BuiltInText>({
    // The language itself: its name in its own words, and its code for the texts of the desktop's
    // own dialogs.
    {u"Sprach.Name", u"Deutsch"},
    {u"Sprach.Code", u"de"},

    {u"ja", u"Ja"},
    {u"nein", u"Nein"},
    {u"schliessen", u"Schließen"},
    {u"fehler.unerwartet", u"Unerwarteter Fehler: $1"},

    // Start and information window.
    {u"program.purpose", u"Die Musikdatenbank für DJ und Sendung"},
    {u"startup.loading", u"Bibliothek wird geöffnet ..."},
    {u"start.died", u"Das Programm wurde beim letzten Mal (Start $1) nicht ordentlich beendet."},
    {u"end.unwritten", u"Diese Dateien ließen sich nicht schreiben, was sich an ihnen geändert hat, ist verloren:\\n\\n$1"},
    {u"startup.page", u"Seite des Herstellers öffnen"},
    {u"info.title", u"Über $1"},
    {u"info.database", u"Datenbank: $1"},
    {u"info.settings", u"Einstellungen: $1"},
    {u"dberror.3024", u"Die Datenbankdatei ist nicht vorhanden:\\n$1"},
    {u"dberror.3026", u"Der Datenträger ist voll:\\n$1"},
    {u"dberror.3027", u"Die Datenbankdatei ist schreibgeschützt:\\n$1"},
    {u"dberror.3043", u"Lesen oder Schreiben der Datenbankdatei ist fehlgeschlagen:\\n$1"},
    {u"dberror.3045", u"Ein anderes Programm hat die Datenbank gerade für sich allein, deshalb geschieht hier nichts:\\n$1"},
    {u"dberror.3049", u"Die Datenbankdatei ist beschädigt:\\n$1"},
    {u"dberror.3051", u"Die Datenbankdatei lässt sich nicht öffnen:\\n$1"},
    {u"dberror.3260", u"Ein anderes Programm benutzt die Datenbank:\\n$1"},
    {u"dberror.3343", u"Diese Datei ist keine Datenbank:\\n$1"},
    {u"dberror.other", u"Fehler $1 der Datenbank, mehr steht in der Protokolldatei"},
    {u"dberror.3447", u"Diese Datenbank stammt aus einer älteren Fassung und kann so nicht geöffnet werden:\\n$1"},

    {u"messages.nowhere", u"Es gibt keinen Ordner für die Verständigung der Programme: XDG_RUNTIME_DIR fehlt, und der Ersatz unter /tmp gehört einem anderen Benutzer.\\n\\nPlayer, Import und ein zweiter Start erreichen dieses Programm nicht."},
    {u"db.reconnect.failed", u"Die Datenbank lässt sich nicht wieder öffnen.\\n\\n$1\\n\\nNoch einmal versuchen?"},

    // Menus.
    {u"mnuSkin", u"Farbschema"},
    {u"skin.desktop", u"Wie der Desktop"},
    {u"skin.melovane-dark.skn", u"Dunkel"},
    {u"skin.melovane-light.skn", u"Hell"},
    {u"mnuSprache", u"Sprache"},
    {u"mnuMoreResult.index", u"Index - Wortsuche"},
    {u"mnuMoreResult.fulltext", u"Volltextsuche"},

    // Commands: the menu "Bearbeiten", the row menus, and why one cannot work.
    {u"mnuBearbeiten", u"Bearbeiten"},
    {u"mnuCut", u"Ausschneiden"},
    {u"mnuCopy", u"Kopieren"},
    {u"mnuPaste", u"Einfügen"},
    {u"mnuPasteAppend", u"Anhängen"},
    {u"mnuSelectAll", u"Alles markieren"},
    {u"mnuDelete", u"Löschen"},
    {u"row.cut", u"Ausschneiden"},
    {u"row.copy", u"Kopieren"},
    {u"row.insert.db", u"In die Playliste einfügen"},
    {u"row.append.db", u"An die Playliste anhängen"},
    {u"row.insert.pl", u"Kopierte Titel einfügen"},
    {u"row.append.pl", u"Kopierte Titel anhängen"},
    {u"row.delete.db", u"Als gelöscht markieren oder zurückholen"},
    {u"row.delete.pl", u"Aus der Playliste löschen"},
    {u"row.note", u"Bewertung"},
    {u"row.note.none", u"Keine"},
    {u"row.aktion", u"Abspielaktion"},
    {u"row.list", u"Ganze Playliste"},
    {u"row.reset", u"Einstellungen aller Titel zurücksetzen"},
    {u"command.norow", u"Erst einen Titel auswählen"},
    {u"command.noplay", u"Der Player spielt keine Playliste"},
    {u"command.nofocus", u"Erst in die Titel der Bibliothek oder der Playliste klicken"},
    {u"command.nocut", u"Titel der Bibliothek lassen sich nicht ausschneiden"},
    {u"command.notext", u"Hier ist nichts dafür markiert oder kopiert"},
    {u"command.missing.mlvconfig", u"Das Programm für die Einstellungen ist nicht installiert"},
    {u"command.missing.mediaintake", u"Der Importer ist nicht installiert"},
    {u"command.missing.tagbench", u"Der Tag-Editor ist nicht installiert"},
    {u"command.missing.Task.StorePlaylists", u"Das Programm zum Speichern der Playlisten ist nicht installiert"},
    {u"command.missing.Task.WriteTags", u"Das Programm zum Schreiben der Tags ist nicht installiert"},
    {u"command.missing.Task.RebuildTree", u"Das Programm zum Aufbau der Bäume ist nicht installiert"},
    {u"command.missing.Melovanekiv", u"Der Sampler ist nicht installiert"},
    {u"command.missing.LevelPanel", u"Der Lautstärkeregler ist nicht installiert"},
    {u"command.missing.beatgauge", u"Das Programm zum Ermitteln der BPM ist nicht installiert"},
    {u"library.readonly", u"Die Bibliothek ist schreibgeschützt"},
    {u"library.readonly.told", u"Die Bibliothek ist schreibgeschützt, geändert werden kann nichts: $1"},

    // Why the system refused something.
    {u"system.notpermitted", u"das ist nicht erlaubt"},
    {u"system.missing", u"Datei oder Ordner nicht vorhanden"},
    {u"system.io", u"Fehler beim Lesen oder Schreiben des Datenträgers"},
    {u"system.denied", u"keine Berechtigung"},
    {u"system.busy", u"wird gerade benutzt"},
    {u"system.exists", u"ist schon vorhanden"},
    {u"system.nodevice", u"das Gerät ist nicht vorhanden"},
    {u"system.nofolder", u"ist kein Ordner"},
    {u"system.folder", u"ist ein Ordner"},
    {u"system.manyfiles", u"zu viele offene Dateien"},
    {u"system.large", u"die Datei ist zu groß"},
    {u"system.full", u"auf dem Datenträger ist kein Platz mehr"},
    {u"system.readonly", u"der Datenträger ist schreibgeschützt"},
    {u"system.longname", u"der Dateiname ist zu lang"},
    {u"system.links", u"zu viele Verknüpfungen hintereinander"},
    {u"system.stale", u"der Datenträger im Netz ist nicht mehr da"},
    {u"system.quota", u"der zugeteilte Speicherplatz ist aufgebraucht"},

    // Status line and messages of the main window.
    {u"library.changed", u"Jetzt ist eine andere Bibliothek geöffnet: $1"},
    {u"library.gone", u"Die Bibliothek der Einstellungen ist nicht vorhanden: $1. Geöffnet bleibt $2"},
    {u"library.missing", u"Die Bibliothek der Einstellungen ist nicht vorhanden: $1. Es wurde nichts getan."},
    {u"library.lent.refused", u"Ein anderes Programm hat die Bibliothek gerade für sich allein. Es wurde nichts getan."},
    {u"library.other", u"Die Bibliothek der Einstellungen ist nicht vorhanden: $1. Geöffnet ist an ihrer Stelle $2"},
    {u"library.refused", u"Die Bibliothek der Einstellungen lässt sich nicht öffnen: $1. $2"},
    {u"status.notdone", u"Nicht ausgeführt: $1"},
    {u"history.anew", u"Die Schritte zum Rückgängigmachen waren beschädigt und beginnen neu; die alten liegen in $1"},
    {u"search.anew", u"Die Liste der früheren Suchen war beschädigt; die alte liegt in $1"},
    {u"sidefile.anew", u"Eine Hilfsdatei der Bibliothek war beschädigt und wurde neu angelegt; die alte liegt in $1"},
    {u"status.skin.unreadable", u"Das Farbschema $1 ist nicht lesbar."},
    {u"status.sibling.missing", u"Das Programm $1 ist nicht vorhanden oder lässt sich nicht starten."},
    {u"status.importer.missing", u"Der Importer (mediaintake) lässt sich nicht starten."},
    {u"status.jobs.none", u"Es laufen keine Hintergrundaufgaben."},
    {u"status.player.missing", u"Der Player läuft nicht."},
    {u"status.player.silent", u"Der Player antwortet nicht; was verlangt war, bekommt er, sobald er weiterläuft."},
    {u"status.monitor.silent", u"Ein anderes Programm der Suite antwortet nicht; vielleicht ist es beim Vorhören weiter zu hören."},
    {u"status.help.missing", u"Die Hilfe ist nicht vorhanden."},
    {u"status.help.noopener", u"Kein Programm öffnet die Hilfe. Sie liegt hier: $1"},
    {u"status.page.missing", u"Die Seite ist nicht vorhanden: $1"},
    {u"status.page.noopener", u"Kein Programm öffnet die Seite. Sie liegt hier: $1"},
    {u"status.later", u"Noch nicht in dieser Fassung"},
    {u"status.tree.rebuilding", u"Der Baum wird neu aufgebaut ..."},
    {u"status.import", u"Import: $1"},
    {u"status.file.missing", u"Datei nicht gefunden :: $1"},
    {u"status.file.broken", u"Datei nicht lesbar :: $1"},
    {u"status.file.noaudio", u"Keine gültige MP3 Datei :: $1"},
    {u"status.card.missing", u"Soundkarte zum Vorhören nicht gefunden :: $1"},
    {u"status.card.none", u"Keine Soundkarte zum Vorhören"},
    {u"cd.title", u"Titel auf CD - DVD"},
    {u"cd.text", u"Die Datei: \\n\\n$1\\n\\nbefindet sich auf der CD: \\n\\n$2\\n\\n\\nBitte CD einlegen."},
    {u"nofile.text", u"Einige Dateien konnten nicht gefunden werden, genauere Informationen zu diesen Dateien finden Sie in $1\\nDie Einträge in der Datenbank wurden als nicht vorhanden markiert. Wenn die Dateien wieder zur Verfügung stehen, können Sie diese Aktion wiederholen um die Datenbankeinträge wieder zu aktiviere."}, // spelt so

    // Tag panel.
    {u"Button.Close", u"Bereich schließen", {}, {}, kButtons},
    {u"Button.Show.Dir", u"Ordner des Titels öffnen", {}, {}, kButtons},
    {u"edittag.image.title", u"Cover wählen"},
    {u"edittag.image.kind", u"Bilddateien"},
    {u"edittag.image.unreadable", u"Das Bild lässt sich nicht lesen oder nicht ablegen: $1"},
    {u"edittag.image.name", u"Cover"},
    {u"edittag.image.tip", u"Cover - ein Klick wählt ein anderes Bild"},
    {u"edittag.save.title", u"Fehler beim Speichern des ID3v2-Tag"},
    {u"edittag.save.text", u"Beim Speichern ist ein Fehler aufgetreten:\\n$1"},
    {u"library.tagpanel", u"Tag-Bereich zeigen oder schließen"},
    {u"edittag.name", u"Titel bearbeiten"},
    {u"edittag.none", u"Kein Titel gewählt - wählen Sie in der Bibliothek oder in der Playliste einen aus"},
    {u"edittag.kept", u"Was im Tag-Bereich getippt wurde, ließ sich noch nicht speichern; es wird nachgeholt."},
    {u"edittag.gone", u"Der Titel steht nicht mehr in der Bibliothek, die Änderung entfällt."},
    {u"edittag.file.missing", u"Datei fehlt, nur in der Datenbank"},
    {u"edittag.folder", u"Kein Programm öffnet den Ordner. Er liegt hier: $1"},
    {u"edittag.size", u"$1 MB"},
    {u"edittag.waiting", u"wird in die Datei geschrieben: $1 wartend"},
    {u"edittag.waiting.tip", u"Titel, deren Änderungen noch in ihre Dateien zu schreiben sind"},
    {u"edittag.show.dir", u"Ordner zeigen"},
    {u"edittag.newgenre.tip", u"Ein neues Genre anlegen"},
    {u"edittag.rating.none", u"Keine Note"},
    {u"edittag.rating", u"Note $1"},
    {u"edittag.level", u"Lautstärke"},
    {u"edittag.level.tip", u"Song Lautstärke, beim Messen ermittelt; ?? heißt nicht gemessen"},
    {u"edittag.start.tip", u"Default Startposition: Minuten, Sekunden, Hundertstel"},
    {u"edittag.stop.tip", u"Default Stopposition: Minuten, Sekunden, Hundertstel"},
    {u"edittag.start.play", u"Ab der Startposition vorhören"},
    {u"edittag.stop.play", u"Ab der Stopposition vorhören"},
    {u"edittag.facts", u"Datei und Zeiten"},
    {u"edittag.DName", u"Datei"},
    {u"edittag.Path", u"Path"},
    {u"edittag.DTime", u"Gesamtzeit"},
    {u"edittag.DBit", u"KBit"},
    {u"edittag.DKhz", u"Hz"},
    {u"edittag.DLen", u"Dateilänge"},
    {u"edittag.DTSDatei", u"Dateidatum"},
    {u"edittag.DTSImport", u"Importiert"},
    {u"edittag.DriveName", u"Datenträger"},
    {u"edittag.Play", u"Zuletzt gespielt"},
    {u"edittag.PlayCountDay", u"Heute"},
    {u"edittag.PlayCountAll", u"Gesamt"},

    // Details of a playlist.
    {u"detail.title", u"Eigenschaften Playliste"},
    {u"detail.name", u"Name:"},
    {u"detail.group", u"Groupname:"},
    {u"detail.count", u"Count Titel:"},
    {u"detail.time", u"Totaltime:"},
    {u"detail.created", u"Create Time:"},
    {u"detail.updated", u"Update Time:"},
    {u"detail.mp3", u"Speicherplatz MP3:"},
    {u"detail.audio", u"Speicherplatz Audio:"},
    {u"detail.first", u"Play First:"},
    {u"detail.last", u"Play Last:"},
    {u"detail.note", u"Notiz"},
});
// clang-format on

} // namespace

std::span<const BuiltInText> windows()
{
    return kTexts;
}

} // namespace melovane::owntexts
