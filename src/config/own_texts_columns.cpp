#include "config/built_in_texts.h"

#include <array>

namespace melovane::owntexts {

namespace {

// Headings of the grids: "column." and the field.
// clang-format off
constexpr std::array kTexts = std::to_array<BuiltInText>({
    {u"column.Note", u"Note"},
    {u"column.Note.tip", u"Bewertung von 1 bis 5, 5 ist die beste. Strg+1 bis Strg+5 vergeben Schulnoten, Strg+1 also die 5; ebenso findet Note=1 in der Suchzeile die 5."},
    {u"column.Titel", u"Titel"},
    {u"column.Interpret", u"Interpret"},
    {u"column.Album", u"Album"},
    {u"column.Genre", u"Genre"},
    {u"column.BPM", u"BPM"},
    {u"column.DTime", u"Zeit"},
    {u"column.Play", u"Gespielt"},
    {u"column.PlayCountDay", u"Heute"},
    {u"column.PlayCountAll", u"Gesamt"},
    {u"column.Jahr", u"Jahr"},
    {u"column.Track", u"Track"},
    {u"column.Kommentar", u"Kommentar"},
    {u"column.Kategorie", u"Kategorie"},
    {u"column.Situation", u"Situation"},
    {u"column.Stimmung", u"Stimmung"},
    {u"column.Tempo", u"Tempo"},
    {u"column.User1", u"User 1"},
    {u"column.User2", u"User 2"},
    {u"column.User3", u"User 3"},
    {u"column.User4", u"User 4"},
    {u"column.User5", u"User 5"},
    {u"column.DBit", u"Bitrate"},
    {u"column.DKhz", u"Abtastrate"},
    {u"column.DLen", u"Dateigröße"},
    {u"column.Path", u"Ordner"},
    {u"column.DName", u"Datei"},
    {u"column.DriveName", u"Datenträger"},
    {u"column.DriveTyp", u"Laufwerksart"},
    {u"column.DTSDatei", u"Dateidatum"},
    {u"column.DTSImport", u"Importiert"},
    {u"column.favorit", u"Favorit seit"},
    {u"column.DTimeMsec", u"Länge (ms)"},
    {u"column.FrameStart", u"Start"},
    {u"column.FrameStop", u"Stop"},
    {u"column.MixTime", u"Mixzeit"},
    {u"column.MixIn", u"Mix ein"},
    {u"column.MixOut", u"Mix aus"},
    {u"column.eq", u"Equalizer"},
    {u"column.Pitch", u"Pitch"},
    {u"column.Volume", u"Lautstärke"},
    {u"column.Normalize", u"Normalisierung"},
    {u"column.Image", u"Cover"},
    {u"column.DEL", u"Gelöscht"},
    {u"column.FID", u"FID"},
    {u"column.Nr", u"Nr"},
    {u"column.Aktion", u"Aktion"},
    {u"column.Start", u"Start"},
    {u"column.Stop", u"Stop"},
    {u"column.Time", u"Beginn"},
});
// clang-format on

} // namespace

std::span<const BuiltInText> columns()
{
    return kTexts;
}

} // namespace melovane::owntexts
