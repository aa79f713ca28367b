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

/// Modifiers first, in the order in which menus show them; the rest are keys.
constexpr std::array<std::pair<QStringView, QStringView>, 3> kPortableModifiers = {
    {{u"STRG-TASTE", u"Ctrl+"}, {u"ALT-TASTE", u"Alt+"}, {u"UMSCHALTTASTE", u"Shift+"}}};

constexpr std::array<std::pair<QStringView, QStringView>, 15> kPortableKeys = {{
    {u"EINGABETASTE", u"Return"},
    {u"PAUSE-TASTE", u"Pause"},
    {u"ESC-TASTE", u"Esc"},
    {u"LEERTASTE", u"Space"},
    {u"BILD-AUF-TASTE", u"PgUp"},
    {u"BILD-AB-TASTE", u"PgDown"},
    {u"ENDE-TASTE", u"End"},
    {u"POS1-TASTE", u"Home"},
    {u"NACH-LINKS-TASTE", u"Left"},
    {u"NACH-OBEN-TASTE", u"Up"},
    {u"NACH-RECHTS-TASTE", u"Right"},
    {u"NACH-UNTEN-TASTE", u"Down"},
    {u"EINFG-TASTE", u"Ins"},
    {u"LÖSCHEN-TASTE", u"Del"},
    {u"HILFETASTE", u"Help"},
}};

/// One key; empty for one that only has a number.
QString portableKey(const QString& name)
{
    for (const auto& [known, portable] : kPortableKeys) {
        if (known == name) {
            return portable.toString();
        }
    }
    const QString key = name.endsWith(kTail) ? name.chopped(kTail.size()) : QString();
    // Letters, digits and the function keys; the number pad has a sign of its own in front.
    if (key.startsWith("NUM-"_L1)) {
        return u"Num+"_s + key.mid(4);
    }
    const bool isFunction = key.size() > 1 && key.startsWith(u'F') && key[1].isDigit();
    return key.size() == 1 || isFunction ? key : QString();
}

} // namespace

QString portableKeys(const QString& combination)
{
    QStringList names = combination.split(u" + "_s, Qt::SkipEmptyParts);
    QString result;
    for (const auto& [name, portable] : kPortableModifiers) {
        if (names.removeAll(name.toString()) > 0) {
            result += portable;
        }
    }
    const QString key = names.size() == 1 ? portableKey(names.first()) : QString();
    return key.isEmpty() ? QString() : result + key;
}

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
