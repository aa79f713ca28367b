#include "config/built_in_texts.h"

#include <array>

namespace melovane::owntexts {

namespace {

// clang-format off
constexpr std::array kTexts = std::to_array<BuiltInText>({
    // Export of a list with its files.
    {u"export.subject", u"$2 Titel der Playliste „$1“ mit ihren Dateien in einen Ordner kopieren, dazu eine M3U-Liste der Kopien."},
    {u"export.subject.one", u"$2 Titel der Playliste „$1“ mit seiner Datei in einen Ordner kopieren, dazu eine M3U-Liste der Kopie."},
    {u"export.folder", u"Zielordner"},
    {u"export.folder.choose", u"Ordner wählen ..."},
    {u"export.folder.none", u"Noch kein Ordner gewählt"},
    {u"export.folder.missing", u"Diesen Ordner gibt es nicht."},
    {u"export.folder.space", u"$1 frei"},
    {u"export.template", u"Vorlage"},
    {u"export.templates", u"Vorlagen"},
    {u"export.preview", u"Beispiel: $1"},
    {u"export.markers", u"%I Interpret · %N Titel · %A Album · %G Genre · %TP Platz in der Playliste · %TO Track-Nummer · %O Dateiname · %P Playliste · %GN Gruppe · / trennt Ordner"},
    {u"export.log", u"Protokoll"},
    {u"export.start", u"Export starten"},
    {u"export.sample.group", u"Gruppenname"},
    {u"export.sample.album", u"Album"},
    {u"export.sample.artist", u"Interpret"},
    {u"export.sample.title", u"Titel"},
    {u"export.sample.genre", u"Genre"},
    {u"export.sample.list", u"Playlistname"},
    {u"export.sample.file", u"Original-Dateiname"},
    {u"export.done", u"$1 von $2 Titeln kopiert."},
    {u"export.done.one", u"$1 von $2 Titel kopiert."},
    {u"export.stopped.one", u"Abgebrochen, $1 von $2 Titel kopiert."},
    {u"export.stopped", u"Abgebrochen, $1 von $2 Titeln kopiert."},
    {u"export.empty", u"Die Playliste hat keine Titel."},
    {u"export.nospace", u"Der Platz im Zielordner reicht nicht: gebraucht werden $1, frei sind $2. Es wurde nichts kopiert."},
    {u"export.list.failed", u"Die Playliste $1 ließ sich nicht schreiben: $2"},
    {u"export.failed.title", u"Nicht alles wurde kopiert"},
    {u"export.failed.more", u"... und $1 weitere, siehe Protokoll"},
    {u"export.failed.all", u"... und $1 weitere; alle misslungenen Kopien stehen in $2"},
    {u"export.failure.notfound", u"Datei nicht gefunden"},
    {u"export.failure.nospace", u"kein Platz mehr im Zielordner"},
    {u"export.failure.library", u"dort liegt die Datei eines anderen Titels der Bibliothek"},
    {u"export.replaced", u"$1: mehrere Titel ergeben diesen Namen, der letzte blieb"},
    {u"export.nolist", u"Erst eine Playliste auswählen"},
});
// clang-format on

} // namespace

std::span<const BuiltInText> exporting()
{
    return kTexts;
}

} // namespace melovane::owntexts
