#include "config/built_in_texts.h"

#include <array>

namespace melovane::owntexts {

namespace {

// clang-format off
constexpr std::array kTexts = std::to_array<BuiltInText>({
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
