#include "config/built_in_texts.h"

#include <array>

namespace melovane::owntexts {

namespace {

// clang-format off
constexpr std::array kTexts = std::to_array<BuiltInText>({
    {u"viewer.title", u"Cover-Ansicht"},
    {u"viewer.next", u"Nächstes Bild"},
    {u"viewer.previous", u"Voriges Bild"},
    {u"viewer.first", u"Erstes Bild"},
    {u"viewer.last", u"Letztes Bild"},
    {u"viewer.zoomin", u"Vergrößern"},
    {u"viewer.zoomout", u"Verkleinern"},
    {u"viewer.fit", u"Ganzes Bild"},
    {u"viewer.fullscreen", u"Vollbild"},
    {u"viewer.choose", u"Titel mit diesem Cover suchen"},
    {u"viewer.close", u"Schließen"},

    // Instead of a picture: a title and a sentence.
    {u"viewer.notrack", u"Kein Titel"},
    {u"viewer.notrack.text", u"Markieren Sie in der Datenbank einen Titel; sein Cover erscheint hier."},
    {u"viewer.nopicture", u"Kein Bild"},
    {u"viewer.nopicture.text", u"Der Titel hat kein Cover, und in seinem Ordner liegt kein Bild."},
    {u"viewer.missing", u"Bild nicht lesbar"},
    {u"viewer.missing.text", u"Die Datei ist nicht mehr da oder darf nicht gelesen werden."},
    {u"viewer.toolarge", u"Bild zu groß"},
    {u"viewer.toolarge.text", u"Bilder mit mehr als 12000 Pixeln Seitenlänge, 30 Millionen Pixeln oder 30 MB werden nicht geladen."},
    {u"viewer.otherkind", u"Keine Bilddatei"},
    {u"viewer.otherkind.text", u"Gezeigt werden JPEG, PNG, GIF und BMP. Diese Datei enthält etwas anderes."},
    {u"viewer.damaged", u"Bild beschädigt"},
    {u"viewer.damaged.text", u"Aus der Datei lässt sich kein Bild lesen."},
});
// clang-format on

} // namespace

std::span<const BuiltInText> viewer()
{
    return kTexts;
}

} // namespace melovane::owntexts
