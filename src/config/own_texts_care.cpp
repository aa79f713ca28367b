#include "config/built_in_texts.h"

#include <array>

namespace melovane::owntexts {

namespace {

// clang-format off
constexpr std::array kTexts = std::to_array<BuiltInText>({
    // The cleaning. Its boxes are the system's own.
    {u"care.clean.lead", u"Einträge endgültig aus der Datenbank nehmen. Erledigte Schritte werden ausgegraut."},
    {u"care.clean.moves", u"Gilt für die ersten beiden Schritte; ReMoveFiles.bat holt sie zurück."},
    {u"care.clean.counting", u"wird gezählt ..."},
    {u"care.clean.tracks", u"$1 Titel"},
    {u"care.clean.tracks.one", u"1 Titel"},
    {u"care.clean.entries", u"$1 Einträge"},
    {u"care.clean.entries.one", u"1 Eintrag"},
    {u"care.clean.lists", u"$1 Listen"},
    {u"care.clean.lists.one", u"1 Liste"},
    {u"care.clean.files", u"$1 Dateien, $2 MB"},
    {u"care.clean.files.one", u"1 Datei, $2 MB"},
    {u"care.clean.moving", u"$1 von $2 Dateien"},
    {u"care.clean.moved", u"$1 Dateien verschoben"},
    {u"care.clean.moved.one", u"1 Datei verschoben"},
    {u"care.clean.removed", u"$1 Titel entfernt"},
    {u"care.clean.removed.one", u"1 Titel entfernt"},
    {u"care.clean.removed.all", u"$1, $2 entfernt"},
    {u"care.clean.step", u"Schritt $1 von $2: $3"},
    {u"care.clean.file", u"verschiebe $1"},
    {u"care.clean.cancelled", u"Abgebrochen. Was erledigt ist, bleibt erledigt."},
    {u"care.clean.done", u"Fertig."},
    // The way back from the recycle folder.
    {u"care.recycler.lead", u"Verschobene Dateien kommen an ihren Ort zurück, mit Eintrag, Listenplätzen und Statistik."},
    {u"care.recycler.title", u"Titel"},
    {u"care.recycler.file", u"Datei"},
    {u"care.recycler.moment", u"Entfernt am"},
    {u"care.recycler.note", u"Hinweis"},
    {u"care.recycler.one", u"Zurückholen"},
    {u"care.recycler.all", u"Alle zurückholen"},
    {u"care.recycler.empty", u"Der Papierkorb MelovaneRecycler ist leer."},
    {u"care.recycler.rowonly", u"Datei ist da, nur der Eintrag fehlt"},
    {u"care.recycler.taken", u"An ihrem Ort liegt eine andere Datei"},
    {u"care.recycler.progress", u"$1 von $2 Dateien zurückgeholt"},
    {u"care.recycler.back", u"$1 Titel zurückgeholt"},
    {u"care.recycler.back.one", u"1 Titel zurückgeholt"},
    // The scan for missing files.
    {u"care.scan.title", u"Fehlende Dateien suchen"},
    {u"care.scan.progress", u"$1 von $2 Titeln geprüft"},
    {u"care.scan.ended", u"Die Suche nach fehlenden Dateien wurde abgebrochen."},
    {u"care.scan.allthere", u"Alle Dateien sind vorhanden."},
    {u"care.scan.absent", u"$1 Dateien davon liegen auf einem Laufwerk, das nicht angeschlossen ist: $2."},
    {u"care.scan.absent.one", u"Eine Datei davon liegt auf einem Laufwerk, das nicht angeschlossen ist: $2."},
    // Menu entries of the care of the library.
    {u"mnuRecycler", u"Aus MelovaneRecycler zurückholen ..."},
    {u"mnuNoExistFind", u"Wiederfinden ..."},
    {u"mnuDoubles", u"Doppelte Titel ..."},
    {u"mnuBackups", u"Sicherungen ..."},
    {u"mnuCheckLibrary", u"Datenbank prüfen ..."},
});
// clang-format on

} // namespace

std::span<const BuiltInText> care()
{
    return kTexts;
}

} // namespace melovane::owntexts
