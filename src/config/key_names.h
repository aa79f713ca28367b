#pragma once

#include <QString>

namespace melovane {

class Keyboard;

/// The name of a key as bindings spell it, "C-TASTE" for code 67. Empty for the codes that never
/// count (the modifier keys of one side) and for those outside 1 to 255. Keys without a name of
/// their own carry their number: "186-TASTE".
[[nodiscard]] QString keyName(int code);

/// The name of a set of modifiers: 1 shift, 2 control, 4 alt, added. Empty outside 0 to 6.
[[nodiscard]] QString shiftName(int mask);

/// What is held down now, in rising order of the codes: "STRG-TASTE + C-TASTE". Empty when nothing
/// is. A binding matches when its text equals this one.
[[nodiscard]] QString keyStatus(const Keyboard& keyboard);

/// A combination as tool kits read it, "Ctrl+C" for "STRG-TASTE + C-TASTE": what menus show. Empty
/// for one without a key, with several, or with one that has only a number.
[[nodiscard]] QString portableKeys(const QString& combination);

} // namespace melovane
