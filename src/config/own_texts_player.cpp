#include "config/built_in_texts.h"

#include <array>

namespace melovane::owntexts {

namespace {

// clang-format off
constexpr std::array kTexts = std::to_array<BuiltInText>({
    {u"air.title", u"Player"},
    {u"air.play", u"Wiedergabe"},
    {u"air.stop", u"Anhalten"},
    {u"air.pause", u"Pause"},
    {u"air.next", u"Nächster Titel"},
    {u"air.mix", u"Jetzt mixen"},
    {u"air.loop", u"Loop"},
    {u"air.mixmode", u"Automix"},
    {u"air.talkover", u"Talkover"},
    {u"air.pitch", u"Pitch"},
    {u"air.pitch.value", u"$1 %"},
    {u"air.pitch.zero", u"Auf 0"},
    {u"air.bpm", u"$1 BPM"},
    {u"air.dock", u"Über die Datenbank stellen"},
    {u"air.onair", u"AUF SENDUNG"},
    {u"air.ready", u"BEREIT"},
    {u"air.paused", u"PAUSE"},
    {u"air.free", u"FREI"},
    {u"air.upcoming", u"Es folgen"},
    {u"air.jingles", u"Jingles"},
    {u"air.jingles.stop", u"Jingles anhalten"},
    {u"air.mix.ahead", u"Mix in $1, Länge $2 s"},
    {u"air.mix.none", u"Endet ohne Mix"},

    // What went wrong.
    {u"air.missing", u"Übersprungen, die Datei ist nicht da: $1"},
    {u"air.damaged", u"Übersprungen, die Datei ist beschädigt: $1"},
    {u"air.starved", u"Kein Titel der Playliste ist spielbar. Ich suche weiter."},
    {u"air.nolist", u"Keine Playliste ist aktiv. Aktivieren Sie in der Datenbank eine."},
    {u"air.cardlost", u"Die Soundkarte fehlt, die Standardkarte spielt weiter."},
    {u"air.nocard", u"Keine Soundkarte ist offen."},
    {u"air.restarted", u"Der Player wurde neu gestartet und spielt weiter."},
});
// clang-format on

} // namespace

std::span<const BuiltInText> player()
{
    return kTexts;
}

} // namespace melovane::owntexts
