#include "config/built_in_texts.h"

#include <array>

namespace melovane::suitetexts {

namespace {

// clang-format off
constexpr std::array kTexts = std::to_array<BuiltInText>({
    {u"impOk", u"Importieren"},
    {u"impOkEdit", u"Importieren und bearbeiten"},
    {u"mnuImpMP3_0", u"MP3s importieren ..."},
    {u"mnuImpMP3_1", u"MP3s importieren und bearbeiten ..."},
    {u"mnuImpMP3_2", u"Geänderte MP3s neu einlesen ..."},
    {u"mnuAutosizeGrid", u"Spaltenbreiten automatisch anpassen"},
    {u"mnuExitJobs", u"Hintergrundaufgaben beenden"},
    {u"mnuInternet_0", u"Hilfe"},
    {u"mnuInternet_1", u"Melovane im Internet"},
    {u"mnuInternet_3", u"Neue Versionen"},
    {u"mnuPOPDBGRID_0", u"Vorhören ab Start"},
    {u"mnuPOPDBGRID_1", u"Vorhören ab Mitte"},
    {u"mnuPOPDBGRID_2", u"Vorhören beenden"},
    {u"mnuPOPDBGRID_4", u"Sofort spielen"},
    {u"mnuPOPDBGRID_5", u"Als nächsten Titel spielen"},
    {u"mnuPOPDBGRID_7", u"Alle Titel dieses Ordners"},
    {u"mnuPOPDBGRID_8", u"Ordner im Baum zeigen"},
    {u"mnuPOPDBGRID_9", u"Mehr davon suchen"},
    {u"mnuPOPDBGRID_11", u"Zum Bearbeiten vormerken"},
    {u"mnuPOPDBGRID_12", u"Titel bearbeiten"},
    {u"mnuPOPDBGRID_13", u"Im Sampler öffnen"},
    {u"mnuPOPDBGRID_15", u"Spaltenbreiten anpassen"},
    {u"mnuPOPDBGRID_16", u"BPM automatisch bestimmen"},
    {u"mnuPOPDBGRID_17", u"BPM von Hand bestimmen"},
    {u"mnuDatei", u"Datei"},
    {u"mnuConfig", u"Einstellungen"},
    {u"mnuImpPlaylistBas", u"Playlisten importieren ..."},
    {u"mnuExpPlaylistBas", u"Geänderte Playlisten speichern"},
    {u"noChangePlaylist", u"Keine relevanten Änderungen an Playlisten vorhanden."},
    {u"mnuAktivePlaylist", u"Aktive Playliste speichern ..."},
    {u"mnuAktivePlaystFiles", u"Playliste mit Dateien exportieren ..."},
    {u"mnuExit", u"Beenden"},
    {u"mnuExtra", u"Extras"},
    {u"mnuDelSuchlist", u"Suchliste löschen"},
    {u"mnuDelDayCount", u"Tageszähler zurücksetzen"},
    {u"mnuViewDel", u"Als gelöscht markierte Datensätze anzeigen"},
    {u"mnuNoExist", u"Nicht mehr vorhandene Dateien"},
    {u"mnuNoExistSuchen", u"Suchen"},
    {u"mnuNoExistAnzeigen", u"Anzeigen"},
    {u"mnuToDatei", u"Änderungen in die Dateien schreiben"},
    {u"mnuRefreshTree", u"Bäume neu aufbauen"},
    {u"mnuTopPlugin", u"PlugIns"},
    {u"mnuAnsicht", u"Ansicht"},
    {u"mnuPlaylist", u"Playlisten"},
    {u"mnuDatenbank", u"Datenbank"},
    {u"mnuRepairGridLayout", u"Tabellenansichten reparieren", u"Diese Änderung wird erst nach einem Neustart von $1 aktiv."},
    {u"mnuFont", u"Schrift ..."},
    {u"mnuHelp", u"?"},
    {u"mnuUeber", u"Über"},
    {u"frmBerDB", u"Datenbereinigung"},
    {u"chBerDB-0", u"Gelöscht markierte MP3s entfernen."},
    {u"chBerDB-1", u"Fehlerhafte MP3s entfernen (MP3ERROR)"},
    {u"chBerDB-2", u"Nicht mehr vorhandenen MP3s entfernen"},
    {u"chBerDB-3", u"Nicht mehr vorhandenen Abhängigkeiten entfernen"},
    {u"chBerDB-4", u"Betroffene Dateien nach MelovaneRecycler verschieben"},
    {u"errPlayer", u"Fehler beim laden der Datei"},
    {u"errPlayerNoFile", u"Datei nicht gefunden"},
    {u"errPlayerNoMP3", u"Keine gültige MP3 Datei"},
    {u"errPlayerNext", u"Lade nächsten Titel in 5 Sekunden"},
    {u"EditGridChGross", u"Breite und Reihenfolge der Spalten werden oben in der Tabelle mit der Maus geändert."},
    {u"EditGrid-db", u"Spalten der Datenbank"},
    {u"EditGrid-pl", u"Spalten der Playliste"},
    {u"opExpFile_0", u"Name der Datei"},
    {u"opExpFile_1", u"Titel - Interpret"},
    {u"opExpFile_2", u"Interpret - Titel"},
    {u"opExpDir_0", u"Ein Ordner je Genre"},
    {u"opExpDir_1", u"Ein Ordner je Album"},
    {u"opExpDir_2", u"Ein Ordner je Genre und Album"},
    {u"opExpDir_3", u"Keine Unterordner"},
    {u"frExpNewDir", u"Unterordner"},
    {u"frExpFile", u"Dateinamen"},
    {u"frExpDir", u"Ziel"},
    {u"meldExpAbbruch", u"Vorgang abgebrochen"},
    {u"meldExpEnd", u"Export beendet"},
});
// clang-format on

} // namespace

std::span<const BuiltInText> menus()
{
    return kTexts;
}

} // namespace melovane::suitetexts
