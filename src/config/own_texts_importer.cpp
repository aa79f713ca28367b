#include "config/built_in_texts.h"

#include <array>

namespace melovane::owntexts {

namespace {

// clang-format off
constexpr std::array kTexts = std::to_array<BuiltInText>({
    // Window.
    {u"intake.title.new", u"MP3-Dateien importieren"},
    {u"intake.title.changed", u"Geänderte Dateien neu einlesen"},
    {u"intake.hint.new", u"Alle MP3-Dateien dieser Ordner und ihrer Unterordner kommen in die Datenbank."},
    {u"intake.hint.changed", u"Titel, deren Datei sich geändert hat, werden neu eingelesen. Bewertungen, Zähler und Mix-Einstellungen bleiben."},
    {u"intake.choose", u"Ordner mit MP3-Dateien"},
    {u"intake.folders", u"Ordner"},
    {u"intake.folders.tip", u"Ordner, deren MP3-Dateien importiert werden"},
    {u"intake.folders.none", u"Noch kein Ordner. \"Ordner hinzufügen\" nimmt einen auf."},
    {u"intake.add", u"&Ordner hinzufügen ..."},
    {u"intake.add.tip", u"Einen weiteren Ordner wählen"},
    {u"intake.remove", u"&Entfernen"},
    {u"intake.remove.tip", u"Den markierten Ordner aus der Liste nehmen"},
    {u"intake.start", u"&Start"},
    {u"intake.start.tip", u"Den Import beginnen"},
    {u"intake.cancel", u"&Abbrechen"},
    {u"intake.cancel.tip", u"Den Import beenden; was eingelesen ist, bleibt"},
    {u"intake.close", u"S&chließen"},
    {u"intake.close.tip", u"Das Fenster schließen"},
    {u"intake.progress", u"Fortschritt"},
    {u"intake.look", u"Gefunden: $1 MP3-Dateien."},
    {u"intake.look.one", u"Gefunden: $1 MP3-Datei."},
    {u"intake.look.on", u"Bisher gefunden: $1 MP3-Dateien ..."},
    {u"intake.look.on.one", u"Bisher gefunden: $1 MP3-Datei ..."},
    {u"intake.look.kinds", u"Nicht gelesen werden: $1."},
    {u"intake.welcome", u"Willkommen bei Melovane DB"},
    {u"intake.welcome.text", u"Die Bibliothek ist noch leer. Wählen Sie die Ordner mit Ihrer Musik; die Dateien bleiben, wo sie sind."},
    {u"intake.language", u"Sprache"},
    {u"intake.language.tip", u"In dieser Sprache sprechen alle Programme von Melovane"},
    {u"intake.theme", u"Farbschema"},
    {u"intake.theme.tip", u"So sehen alle Programme von Melovane aus"},
    {u"intake.progress.found", u"$1 gefunden"},
    {u"intake.progress.file", u"Datei $1 von $2"},
    {u"intake.report", u"Nicht übernommene Dateien"},
    {u"intake.report.tip", u"Dateien, die nicht übernommen wurden, mit ihrem Grund"},
    {u"intake.report.file", u"Datei"},
    {u"intake.report.reason", u"Grund"},

    // Report.
    {u"intake.files", u"$1 Dateien"},
    {u"intake.files.one", u"1 Datei"},
    {u"intake.checked", u"$1 geprüft"},
    {u"intake.found", u"$1 gefunden"},
    {u"intake.added", u"$1 neu"},
    {u"intake.changed", u"$1 neu gelesen"},
    {u"intake.moved", u"$1 am neuen Ort"},
    {u"intake.returned", u"$1 wieder da"},
    {u"intake.known", u"$1 schon in der Datenbank"},
    {u"intake.unchanged", u"$1 unverändert"},
    {u"intake.duplicate", u"$1 doppelt"},
    {u"intake.missing", u"$1 nicht gefunden"},
    {u"intake.refused", u"$1 abgelehnt"},
    {u"intake.leftover", u"$1 nicht gelesen"},
    {u"intake.running", u"In diese Datenbank wird gerade schon importiert."},
    {u"intake.kinds", u"Nicht gelesen, weil keine MP3-Dateien: $1."},
    {u"intake.cancelled", u" (abgebrochen)"},

    // Why a file did not become a track.
    {u"intake.samefile", u"dieselbe Datei wie $1"},
    {u"intake.copyof", u"Kopie von $1"},
    {u"intake.copyofdisc", u"Kopie eines Titels der CD \"$1\""},
    {u"intake.unreadable", u"der Ordner lässt sich nicht lesen"},
    {u"importerror.10001", u"Path nicht gefunden"},
    {u"importerror.10002", u"Datei nicht gefunden"},
    {u"importerror.10003", u"Fehlerhafte MP3"},
    {u"importerror.10004", u"Fehlerhafe MP3"}, // spelt so
    {u"importerror.10005", u"Die Datei kann an dieser Stelle nicht von CDROM importiert werden"},
    {u"importerror.20001", u"Datenbank Fehler"},
    {u"importerror.20002", u"Datei Fehler"},
    {u"importerror.40000", u"Unbekannter Fehler"},
    {u"media.empty", u"die Datei ist leer"},
    {u"media.tagsize", u"ein Tag gibt sich größer als die Datei"},
    {u"media.noframe", u"kein vollständiges Audiobild"},
    {u"media.cutshort", u"endet im ersten Audiobild"},
    {u"media.onlytags", u"nur Tags, keine Audiodaten"},
    {u"media.noaudio", u"keine MPEG-Audiodaten"},
});
// clang-format on

} // namespace

std::span<const BuiltInText> importer()
{
    return kTexts;
}

} // namespace melovane::owntexts
