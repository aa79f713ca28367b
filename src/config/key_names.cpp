#include "config/key_names.h"

#include "platform/system/keyboard.h"

#include <QStringList>

#include <algorithm>
#include <array>
#include <utility>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Keys with words of their own; keep the spelling, stored bindings hold it.
constexpr std::array<std::pair<int, QStringView>, 24> kNamedKeys = {{
    {12, u"ENTF-TASTE"},
    {13, u"EINGABETASTE"},
    {16, u"UMSCHALTTASTE"},
    {17, u"STRG-TASTE"},
    {18, u"ALT-TASTE"},
    {19, u"PAUSE-TASTE"},
    {20, u"FESTSTELLTASTE"},
    {27, u"ESC-TASTE"},
    {32, u"LEERTASTE"},
    {33, u"BILD-AUF-TASTE"},
    {34, u"BILD-AB-TASTE"},
    {35, u"ENDE-TASTE"},
    {36, u"POS1-TASTE"},
    {37, u"NACH-LINKS-TASTE"},
    {38, u"NACH-OBEN-TASTE"},
    {39, u"NACH-RECHTS-TASTE"},
    {40, u"NACH-UNTEN-TASTE"},
    {41, u"AUSWAHLTASTE"},
    {42, u"DRUCK"},
    {43, u"AUSFÜHREN-TASTE"},
    {44, u"SNAPSHOT-TASTE"},
    {45, u"EINFG-TASTE"},
    {46, u"LÖSCHEN-TASTE"},
    {47, u"HILFETASTE"},
}};

/// Modifier keys of the left side and the left system key: the keys 16 to 18 stand for them.
constexpr std::array kSilentKeys = {91, 160, 162, 164, 255};

constexpr std::array<QStringView, 7> kShiftNames = {
    u"", u"UMSCHALT", u"STRG", u"STRG+UMSCHALT", u"ALT", u"UMSCHALT+ALT", u"STRG+ALT"};

/// A run of keys whose names differ by a counter.
struct KeyRun
{
    int first;
    int last;
    QStringView head;
    int number; ///< of the first key
};

constexpr std::array<KeyRun, 3> kRuns = {
    {{48, 57, u"", 0}, {96, 105, u"NUM-", 0}, {112, 127, u"F", 1}}};

const QString kTail = u"-TASTE"_s;

} // namespace

QString keyName(int code)
{
    const bool silent =
        std::find(kSilentKeys.begin(), kSilentKeys.end(), code) != kSilentKeys.end();
    if (code < 1 || code > kLastKeyCode || silent) {
        return {};
    }
    for (const auto& [known, name] : kNamedKeys) {
        if (known == code) {
            return name.toString();
        }
    }
    for (const KeyRun& run : kRuns) {
        if (code >= run.first && code <= run.last) {
            return run.head.toString() + QString::number(code - run.first + run.number) + kTail;
        }
    }
    if (code >= 'A' && code <= 'Z') {
        return QChar(code) + kTail;
    }
    return QString::number(code) + kTail;
}

QString shiftName(int mask)
{
    return mask < 0 || mask >= int(kShiftNames.size()) ? QString()
                                                       : kShiftNames[size_t(mask)].toString();
}

QString keyStatus(const Keyboard& keyboard)
{
    QStringList names;
    for (int code = 1; code <= kLastKeyCode; ++code) {
        if (keyboard.isDown(code)) {
            names.append(keyName(code));
        }
    }
    names.removeAll(QString());
    return names.join(u" + "_s);
}

} // namespace melovane
