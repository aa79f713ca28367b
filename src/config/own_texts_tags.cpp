#include "config/built_in_texts.h"

#include <array>

namespace melovane::owntexts {

namespace {

// clang-format off
constexpr std::array kTexts = std::to_array<BuiltInText>({
    // The program that writes tags into files.
    {u"writetags.title", u"Tags schreiben"},
    {u"writetags.written", u"$1 Dateien geschrieben"},
    {u"writetags.written.one", u"$1 Datei geschrieben"},
    {u"writetags.unwritten", u"$1 Dateien wurden nicht geschrieben, ihre Änderungen warten weiter"},
    {u"writetags.unwritten.one", u"$1 Datei wurde nicht geschrieben, ihre Änderungen warten weiter"},
    {u"writetags.progress", u"$1 von $2 Titeln"},
    {u"writetags.running", u"In diese Bibliothek werden schon Tags geschrieben."},
    {u"writetags.notfound", u"die Datei ist nicht da"},
    {u"writetags.readonly", u"die Datei ist schreibgeschützt"},
    {u"writetags.noaudio", u"die Datei enthält keinen Ton, der sich erkennen lässt"},
    {u"writetags.tagsize", u"der Tag der Datei ist beschädigt"},
    {u"writetags.full", u"auf dem Datenträger ist kein Platz"},
    {u"writetags.changed", u"die Datei wird gerade von einem anderen Programm geändert"},
    {u"writetags.failed", u"die Datei lässt sich nicht schreiben"},
    {u"writetags.progressbar", u"Fortschritt"},
    {u"writetags.report", u"Nicht geschriebene Dateien"},
    {u"writetags.report.tip", u"Dateien, die nicht geschrieben wurden, mit dem Grund"},
    {u"writetags.report.file", u"Datei"},
    {u"writetags.report.reason", u"Grund"},
    {u"writetags.cancel", u"Abbrechen"},
    {u"writetags.cancel.tip", u"Aufhören; was geschrieben ist, bleibt, der Rest wartet weiter"},
    {u"writetags.close", u"Schließen"},
    {u"writetags.close.tip", u"Dieses Fenster schließen"},
});
// clang-format on

} // namespace

std::span<const BuiltInText> tagWriting()
{
    return kTexts;
}

} // namespace melovane::owntexts
