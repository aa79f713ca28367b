#include "config/built_in_texts.h"

#include <array>

namespace melovane::owntexts {

namespace {

// clang-format off
constexpr std::array kTexts = std::to_array<BuiltInText>({
    // Files that are found again.
    {u"find.title", u"Dateien wiederfinden"},
    {u"find.loading", u"Fehlende Dateien werden gezählt ..."},
    {u"find.missing", u"$1 Titel zeigen auf Dateien, die nicht mehr an ihrem Ort liegen. Eine Regel lenkt einen ganzen Ordner um."},
    {u"find.missing.one", u"1 Titel zeigt auf eine Datei, die nicht mehr an ihrem Ort liegt. Eine Regel lenkt einen ganzen Ordner um."},
    {u"find.none", u"Alle Dateien liegen an ihrem Ort."},
    {u"find.search", u"Ordner durchsuchen ..."},
    {u"find.show", u"Datei zeigen ..."},
    {u"find.show.tip", u"Zeigen, wo die Datei des gewählten Titels jetzt liegt; daraus wird eine Regel für ihren ganzen Ordner"},
    {u"find.rules", u"Regeln"},
    {u"find.found", u"$1 von $2 gefunden"},
    {u"find.old", u"Fehlender Ordner"},
    {u"find.new", u"Gefundener Ordner"},
    {u"find.hits", u"Treffer"},
    {u"find.hits.of", u"$1 von $2"},
    {u"find.nofolder", u"kein Ordner gefunden"},
    {u"find.byhand", u"Regel von Hand anlegen"},
    {u"find.byhand.tip", u"Zeigen, wo der gewählte fehlende Ordner jetzt liegt"},
    {u"find.preview", u"Vorschau"},
    {u"find.tracks", u"$1 Titel"},
    {u"find.track", u"Titel"},
    {u"find.place", u"Neuer Ort"},
    {u"find.agrees", u"Stimmt überein"},
    {u"find.name", u"Name"},
    {u"find.length", u"Länge"},
    {u"find.fid", u"FID"},
    {u"find.audio", u"Ton"},
    {u"find.nothing", u"nichts"},
    {u"find.otherlength", u"$1; Länge weicht ab"},
    {u"find.otherfid", u"$1; FID eines anderen Titels"},
    {u"find.lost", u"nicht gefunden"},
    {u"find.ticked", u"Wird übernommen"},
    {u"find.unticked", u"Wird nicht übernommen"},
    {u"find.warning", u"Stimmt nicht ganz überein"},
    {u"find.searching", u"$1 Dateien gesehen, $2 verglichen"},
    {u"find.remember", u"Regeln in ChangeDir.conf merken"},
    {u"find.remember.tip", u"Auch Listen und Programme, die die alten Orte kennen, finden die Dateien dann"},
    {u"find.chosen", u"$1 Titel werden umgelenkt, $2 bleiben offen"},
    {u"find.chosen.one", u"1 Titel wird umgelenkt, $2 bleiben offen"},
    {u"find.apply", u"Übernehmen"},
    {u"find.cancel", u"Abbrechen"},
    {u"find.close", u"Schließen"},
    {u"find.applying", u"$1 von $2 umgelenkt"},
    {u"find.done", u"$1 Titel umgelenkt"},
    {u"find.done.one", u"1 Titel umgelenkt"},
    {u"find.done.left", u"$1 Titel umgelenkt, $2 übersprungen, weil sie inzwischen anders sind"},
    {u"find.notremembered", u"ChangeDir.conf konnte nicht geschrieben werden"},
    {u"find.failed", u"Nichts wurde geändert: $1"},
    {u"find.empty.title", u"Noch nichts durchsucht"},
    {u"find.empty.text", u"Den Ordner wählen, in dem die Dateien jetzt liegen könnten, auch ein ganzes Laufwerk."},
    {u"find.files.kind", u"MP3-Dateien"},
    // Tracks that are there twice.
    {u"double.title", u"Doppelte Titel"},
    {u"double.search", u"Suchen"},
    {u"double.hint", u"Mit Leertaste oder Klick wählen, welcher Titel einer Gruppe bleibt."},
    {u"double.group", u"Gruppe"},
    {u"double.artist", u"Interpret"},
    {u"double.note", u"Note"},
    {u"double.search.audio", u"Gleicher Ton"},
    {u"double.search.names", u"Gleicher Titel, Interpret und Länge"},
    {u"double.searching", u"$1 von $2 Dateien verglichen"},
    {u"double.groups", u"$1 Gruppen mit $2 überzähligen Titeln"},
    {u"double.groups.one", u"1 Gruppe mit $2 überzähligen Titeln"},
    {u"double.none", u"Kein Titel ist doppelt."},
    {u"double.file", u"Datei"},
    {u"double.rate", u"Bitrate"},
    {u"double.lists", u"In Listen"},
    {u"double.plays", u"Gespielt"},
    {u"double.kept", u"Bleibt"},
    {u"double.goes", u"Wird entfernt"},
    {u"double.staysboth", u"Bleibt auch"},
    {u"double.recycle", u"Dateien nach MelovaneRecycler verschieben"},
    {u"double.recycle.tip", u"Zurückgeholt werden sie mit „Aus MelovaneRecycler zurückholen“; Rückgängig holt nur die Einträge zurück"},
    {u"double.chosen", u"$1 Titel werden entfernt; Listen und Statistik gehen an den über, der bleibt"},
    {u"double.chosen.one", u"1 Titel wird entfernt; Listen und Statistik gehen an den über, der bleibt"},
    {u"double.merge", u"Zusammenlegen"},
    {u"double.done", u"$1 Titel zusammengelegt"},
    {u"double.done.one", u"1 Titel zusammengelegt"},
    {u"double.done.left", u"$1 Titel zusammengelegt, $2 übersprungen, weil sie inzwischen anders sind"},
});
// clang-format on

} // namespace

std::span<const BuiltInText> found()
{
    return kTexts;
}

} // namespace melovane::owntexts
