#include "config/built_in_texts.h"

#include <array>

namespace melovane::owntexts {

namespace {

// clang-format off
constexpr std::array kTexts = std::to_array<BuiltInText>({
    // Lists as files.
    {u"m3u.kind", u"Playlisten"},
    {u"m3u.import.title", u"Playlisten importieren"},
    {u"m3u.imported", u"$1 mit $2 importiert"},
    {u"m3u.imported.lists", u"$1 Playlisten"},
    {u"m3u.imported.lists.one", u"$1 Playliste"},
    {u"m3u.imported.tracks", u"$1 Titeln"},
    {u"m3u.imported.tracks.one", u"$1 Titel"},
    {u"m3u.import.cancelled", u"Import abgebrochen, $1 Playlisten sind da"},
    {u"m3u.import.cancelled.one", u"Import abgebrochen, $1 Playliste ist da"},
    {u"m3u.inserted", u"$1 Titel aus Playlisten eingefügt"},
    {u"m3u.inserted.one", u"$1 Titel aus Playlisten eingefügt"},
    {u"m3u.insert.cancelled", u"Einfügen abgebrochen, die Playliste ist unverändert"},
    {u"m3u.cancel", u"Abbrechen"},
    {u"m3u.save.title", u"Playliste speichern"},
    {u"m3u.save.nolist", u"Es ist keine Playliste geöffnet."},
    {u"m3u.save.replace", u"Die Datei\\n$1\\nist schon da. Soll sie ersetzt werden?"},
    {u"m3u.save.failed", u"Die Playliste wurde nicht gespeichert:\\n$1\\n\\n$2"},
    {u"m3u.log.opened", u"Das Protokoll liegt hier: $1"},
    {u"m3u.log.noopener", u"Kein Programm öffnet das Protokoll. Es liegt hier: $1"},
    {u"m3u.leftout", u"$1 Einträge stehen nicht in der Datei, weil ihr Titel nicht mehr in der Bibliothek ist:\\n$2"},
    {u"m3u.leftout.one", u"$1 Eintrag steht nicht in der Datei, weil sein Titel nicht mehr in der Bibliothek ist:\\n$2"},
    {u"m3u.storing", u"Geänderte Playlisten werden gespeichert: $1"},
    {u"m3u.saved", u"Gespeichert: $1"},
    {u"store.title", u"Playlisten speichern"},
    {u"store.written", u"$1 Playlisten in $2 gespeichert"},
    {u"store.written.one", u"$1 Playliste in $2 gespeichert"},
    {u"store.failed.one", u"$1 Playliste wurde nicht gespeichert:\\n\\n$2"},
    {u"store.failed", u"$1 Playlisten wurden nicht gespeichert:\\n\\n$2"},
    {u"store.nofolder", u"der Ordner $1 lässt sich nicht anlegen"},
    {u"store.more", u"und $1 weitere"},
    {u"store.more.one", u"und 1 weitere Zeile"},
});
// clang-format on

} // namespace

std::span<const BuiltInText> lists()
{
    return kTexts;
}

} // namespace melovane::owntexts
