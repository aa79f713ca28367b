#include "config/built_in_texts.h"

#include <array>

namespace melovane::suitetexts {

namespace {

constexpr QStringView kKeys = u"Keys";

// clang-format off
constexpr std::array kTexts = std::to_array<BuiltInText>({
    {u"button.play.loop", u"Titel in Schleife spielen"},
    {u"buttons.loop", u"Loop"},
    {u"button.loop.plus", u"Loop verlängern"},
    {u"button.loop.minus", u"Loop verkürzen"},
    {u"buttons.takte", u"Takte"},
    {u"button.takte.plus", u"Ein Takt mehr"},
    {u"button.takte.minus", u"Ein Takt weniger"},
    {u"player1.Global.Eq", u"Equalizer Player 1"},
    {u"player2.Global.Eq", u"Equalizer Player 2"},
    {u"db.monitor.play.by.pos", u"Nur von Start bis Stop vorhören", {}, u"on"},
    {u"mixer.button.0", u"Mixer Taste 0", {}, u"NUM-0-TASTE", kKeys},
    {u"mixer.button.1", u"Mixer Taste 1", {}, u"NUM-1-TASTE", kKeys},
    {u"mixer.button.2", u"Mixer Taste 2", {}, u"NUM-2-TASTE", kKeys},
    {u"mixer.button.3", u"Mixer Taste 3", {}, u"NUM-3-TASTE", kKeys},
    {u"mixer.button.4", u"Mixer Taste 4", {}, u"NUM-4-TASTE", kKeys},
    {u"mixer.button.5", u"Mixer Taste 5", {}, u"NUM-5-TASTE", kKeys},
    {u"mixer.button.6", u"Mixer Taste 6", {}, u"NUM-6-TASTE", kKeys},
    {u"mixer.button.7", u"Mixer Taste 7", {}, u"NUM-7-TASTE", kKeys},
    {u"mixer.button.8", u"Mixer Taste 8", {}, u"NUM-8-TASTE", kKeys},
    {u"mixer.button.9", u"Mixer Taste 9", {}, u"NUM-9-TASTE", kKeys},
    {u"player.1.button.0", u"Player 1 Taste 0"},
    {u"EditBox.Caption.NewGenre", u"Name des neuen Genres", u"Neues Genre"},
    {u"EditTag.NewGenre", u"Neues Genre"},
    {u"Button.0", u"Keine Bewertung"},
    {u"Button.1", u"Bewertung 5"},
    {u"Button.2", u"Bewertung 4"},
    {u"Button.3", u"Bewertung 3"},
    {u"Button.4", u"Bewertung 2"},
    {u"Button.5", u"Bewertung 1"},
    {u"Button.Open.Mixstyle", u"Mixstil bearbeiten"},
    {u"Button.Reload", u"Neu laden"},
    {u"CheckBox.Shuffle", u"Zufall"},
    {u"CheckBox.LockMix", u"Mixstil festhalten"},
    {u"Button.View.AllVolume", u"Alle Lautstärken"},
    {u"CheckBox.TalkOver", u"Talkover"},
    {u"Button.Jingle.Stop", u"Jingle anhalten"},
    {u"Button.View.JingleMixer", u"Jinglemixer"},
    {u"Sprach.Datei", {}, {}, u"lang_Deutsch.ini"},
    {u"Importer.msg.findfile.end", u"$1 Dateien, in $2  Verzeichnissen gefunden\\n$3  Dateien neu\\n\\n"},
    {u"Importer.msg.errorfiles", u"$1 Dateien fehlerhaft\\n"},
    {u"Importer.msg.new.search", u"Neue Suche"},
    {u"Importer.msg.info.search", u"MP3-Dateien werden gesucht ..."},
    {u"Importer.msg.info.attention", u"Vor dem Import die Genres und Titel prüfen."},
    {u"Importer.msg.firstimport", u"Die Datenbank ist noch leer.\\nZuerst einen Ordner mit MP3s importieren."},
});
// clang-format on

} // namespace

std::span<const BuiltInText> controls()
{
    return kTexts;
}

} // namespace melovane::suitetexts
