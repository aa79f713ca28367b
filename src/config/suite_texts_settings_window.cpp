#include "config/built_in_texts.h"

#include <array>

namespace melovane::suitetexts {

namespace {

// clang-format off
constexpr std::array kTexts = std::to_array<BuiltInText>({
    {u"confApp", u"Melovane Einstellungen"},
    {u"confnodb", u"Keine Datenbank gefunden"},
    {u"confdbfile", u"Datenbankdatei"},
    {u"confLabelTexte_7", u"Lautstärke beim Start"},
    {u"confLabelTexte_6", u"Pitchbereich in Prozent"},
    {u"confLabelTexte_5", u"Pitch zurückstellen in Millisekunden"},
    {u"confLabelTexte_4", u"Längste Überblendung in Millisekunden"},
    {u"confLabelTexte_3", u"Lautstärke beim Talkover"},
    {u"confLabelTexte_2", u"Talkover einblenden in Millisekunden"},
    {u"confLabelTexte_1", u"Talkover ausblenden in Millisekunden"},
    {u"confLabelTexte_0", u"Mixzeit in Millisekunden"},
    {u"confSSTab_0", u"Allgemein"},
    {u"confSSTab_1", u"Player"},
    {u"confSSTab_2", u"Tastatur"},
    {u"confSSTab_3", u"Playlisten"},
    {u"confFrame7", u"Suche"},
    {u"confCheckLiveSuche", u"Schon während der Eingabe suchen"},
    {u"confFrame8", u"Tastenbelegung"},
    {u"confReset", u"Zurücksetzen"},
    {u"confFrame5", u"Datenbank pflegen"},
    {u"confcmdCompact", u"Datenbank komprimieren"},
    {u"confFrame4", u"Talkover"},
    {u"confFrame3", u"Überblenden"},
    {u"confFrame2", u"Pitch"},
    {u"confFrame1", u"Lautstärke"},
    {u"confSdel", u"Titel löschen"},
    {u"confSup", u"Titel nach oben"},
    {u"confSdown", u"Titel nach unten"},
    {u"confPlay1", u"Player 1 Play"},
    {u"confPlay2", u"Player 2 Play"},
    {u"confStop1", u"Player 1 Stop"},
    {u"confStop2", u"Player 2 Stop"},
    {u"confPause1", u"Player 1 Pause"},
    {u"confPause2", u"Player 2 Pause"},
    {u"confMix", u"Mix starten"},
    {u"confLoop", u"Loop ein- oder ausschalten"},
    {u"confMplay", u"Monitor Play"},
    {u"confMStop", u"Monitor Stop"},
    {u"confTalkover", u"Talkover ein- oder ausschalten"},
    {u"Mixer.Jingle.1", u"Jingle 1"},
    {u"Mixer.Jingle.2", u"Jingle 2"},
    {u"Mixer.Jingle.3", u"Jingle 3"},
    {u"Mixer.Jingle.4", u"Jingle 4"},
    {u"Mixer.Jingle.5", u"Jingle 5"},
    {u"Mixer.Jingle.6", u"Jingle 6"},
    {u"Mixer.Jingle.7", u"Jingle 7"},
    {u"Mixer.Jingle.Stop", u"Jingle anhalten"},
    {u"Mixer.Jingle.Volume", u"Lautstärke der Jingles"},
    {u"tast.player.activate.tree", u"In den Baum wechseln"},
    {u"tast.player.activate.table", u"In die Tabelle wechseln"},
    {u"confImTausch", u"Titel und Interpret tauschen"},
    {u"confImGenre", u"Genre für alle übernehmen"},
    {u"confImDatei", u"Titel aus dem Dateinamen"},
    {u"confImDel", u"Eintrag entfernen"},
    {u"confTopDj", u"Player in den Vordergrund"},
    {u"confTopDB", u"Datenbank in den Vordergrund"},
    {u"conf.GridSwap.EditPlay", u"Doppelklick in der Tabelle"},
    {u"conf.GridSwap.Edit", u"Datensatz wird bearbeitet"},
    {u"conf.GridSwap.Play", u"Titel wird wiedergegeben"},
    {u"conf.GridSwap.AddPList", u"Titel zur Playlist"},
    {u"confPlayNext", u"Als nächsten Titel spielen"},
    {u"confPlayNow", u"Sofort spielen"},
    {u"confPLDirFrame", u"Ordner für Playlisten"},
    {u"confProFrame", u"Programm"},
    {u"confSoundkartFrame", u"Soundkarten"},
    {u"confDBFrame", u"Datenbank"},
    {u"confPLSaveCheck", u"Geänderte Playlisten beim Beenden speichern"},
    {u"confPLNameFrame", u"Name neuer Playlisten"},
    {u"confPLGroupNameFrame", u"Name neuer Gruppen"},
    {u"confGridValue", u"Wert"},
    {u"confGridDesc", u"Beschreibung"},
    {u"confGridActiv", u"Aktiv"},
    {u"confGridIntervall", u"Intervall"},
    {u"confSuchOptionCheck_0", u"Auch im Album suchen"},
    {u"confSuchOptionCheck_1", u"Auch im Kommentar suchen"},
    {u"confSuchOptionCheck_2", u"Auch im Dateinamen suchen"},
    {u"confSuchOptionCheck_3", u"Auch im Ordner suchen"},
    {u"confChPlayerStartMixMode", u"Player im Mixmodus starten"},
    {u"Compact.DB.Info", u"Die Datenbank wird verkleinert und neu geordnet. Andere Programme geben sie dafür kurz frei."},
    {u"Compact.DB.end", u"Datenbank wurde koprimiert."}, // spelt so
    {u"Compact.DB.Wait", u"Bitte warten Datenbank wird komprimiert ..."},
});
// clang-format on

} // namespace

std::span<const BuiltInText> settingsWindow()
{
    return kTexts;
}

} // namespace melovane::suitetexts
