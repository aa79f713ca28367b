#include "config/built_in_texts.h"

#include <array>

namespace melovane::suitetexts {

namespace {

constexpr QStringView kCheck = u"Checkbox";
constexpr QStringView kPlayer = u"Player";

// clang-format off
constexpr std::array kTexts = std::to_array<BuiltInText>({
    {u"StartUp.Set.Old.Track", u"Letzte Playlistposition speichern", {}, u"1", kPlayer, kCheck},
    {u"StartUp.Set.To.Old.Position", u"Aktuelle Titelposition speichern", {}, u"0", kPlayer, kCheck},
    {u"StartUp.Autoplay", u"Nach dem starten automatisch mit Wiedergabe beginnen", {}, u"0", kPlayer, kCheck},
    {u"Playlist.Time", u"Titellänge in Playlist als TIME anzeigen", {}, u"1", kPlayer, kCheck},
    {u"Playlist.View.Aktive.Rows", u"Bei aktiven Titeln nur die Nummer vorheben", {}, u"0", kPlayer, kCheck},
    {u"Player.PitchDirection", u"Verhalten des Pitchreglers invertieren", {}, u"0", kPlayer, kCheck},
    {u"Player.One.Click.Action", u"Player Ein-Klicksteuerung", {}, u"0", kPlayer, kCheck},
    {u"player.monitor.pause.change", u"Klick auf Pausentaste setzt neue Startposition", {}, u"0", kPlayer, kCheck},
    {u"Player.BPM.Anzeige", u"BPM Anzeige ändert sich beim Pitchen ", {}, u"0", kPlayer, kCheck},
    {u"Explorer.Kontext.Menu.Import", u"Explorer Erweiterung 'Durchsuchen mit Melovane'", {}, u"0", u"other.settings", kCheck},
    {u"player.WaitForMixTime", u"Zusätzliche Pause beim Mixen einstellen (in Millisekunden)", {}, u"0", kPlayer, u"Edit.Number"},
    {u"other.settings", u"Sonstige Einstellungen"},
    {u"Explorer.Kontext.Menu.Import.shell", u"Durchsuchen mit Melovane"},
    {u"other.db.settings", u"Einstellungen der Datenbank"},
    {u"Tree.Item.No.Data", u"Zusatzinfos nur bei vorhandenen Daten anzeigen", {}, u"1", u"other.db.settings", kCheck},
    {u"player.mnuConfig", u"Einstellungen"},
    {u"player.mnuStatistikMenu", u"Statistik"},
    {u"player.mnuStatistik", u"Statistik mitschreiben"},
    {u"player.mnuStatAutoMix", u"Auch im Automix mitschreiben"},
    {u"player.mnuAnsicht", u"Ansicht"},
    {u"player.mnuGridConfig", u"Spalten ..."},
    {u"player.mnuFont", u"Schrift ..."},
    {u"player.mnuRepairGridLayout", u"Tabellenansichten reparieren", u"Diese Änderung wird erst nach einem Neustart von $1 aktiv."},
    {u"player.mnuDockDB", u"Datenbank andocken"},
    {u"player.mnuHelp", u"?"},
    {u"player.mnuInternet", u"Melovane im Internet"},
    {u"player.mnuInfo", u"Über"},
    {u"player.mnuToPlayer", u"In den Player laden"},
    {u"player.mnuAutocue", u"Start und Stop automatisch setzen"},
    {u"player.mnuToAktivPlaylist", u"An die aktive Playliste anhängen"},
    {u"player.mnuMelovaneKIV", u"Im Sampler öffnen"},
    {u"player.mnuBeatGaugeManuell", u"BPM von Hand bestimmen"},
    {u"player.mnuBeatGauge", u"BPM automatisch bestimmen"},
    {u"player.mnuAutosizeGrid", u"Spaltenbreiten anpassen"},
    {u"player.mnuMixStyleAllDel", u"Mixstile aller Titel entfernen"},
    {u"player.mnuMixstyleCopyToAll", u"Mixstil für alle Titel übernehmen"},
    {u"player.mnuPlayNormal", u"In den nächsten Titel mixen"},
    {u"player.mnuPlayStop", u"Nach dem Titel anhalten"},
    {u"player.mnuPlayLoop", u"Titel in Schleife spielen"},
});
// clang-format on

} // namespace

std::span<const BuiltInText> settings()
{
    return kTexts;
}

} // namespace melovane::suitetexts
