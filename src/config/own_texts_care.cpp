#include "config/built_in_texts.h"

#include <array>

namespace melovane::owntexts {

namespace {

// clang-format off
constexpr std::array kTexts = std::to_array<BuiltInText>({
    // The scan for missing files.
    {u"care.scan.title", u"Fehlende Dateien suchen"},
    {u"care.scan.progress", u"$1 von $2 Titeln geprüft"},
    {u"care.scan.ended", u"Die Suche nach fehlenden Dateien wurde abgebrochen."},
    {u"care.scan.allthere", u"Alle Dateien sind vorhanden."},
    {u"care.scan.absent", u"$1 Dateien davon liegen auf einem Laufwerk, das nicht angeschlossen ist: $2."},
    {u"care.scan.absent.one", u"Eine Datei davon liegt auf einem Laufwerk, das nicht angeschlossen ist: $2."},
    // Menu entries of the care of the library.
    {u"mnuRecycler", u"Aus MelovaneRecycler zurückholen ..."},
    {u"mnuNoExistFind", u"Wiederfinden ..."},
    {u"mnuDoubles", u"Doppelte Titel ..."},
    {u"mnuBackups", u"Sicherungen ..."},
    {u"mnuCheckLibrary", u"Datenbank prüfen ..."},
});
// clang-format on

} // namespace

std::span<const BuiltInText> care()
{
    return kTexts;
}

} // namespace melovane::owntexts
