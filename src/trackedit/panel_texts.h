#pragma once

#include "platform/db/value.h"

#include <QString>

namespace melovane {

class ConfigObjects;
class KsEditFid;
struct KsField;

/// What the panel shows for values that nobody types.
namespace paneltexts {

/// Options of the rating group: 0 takes the rating away, 1 is the best.
inline constexpr int kRatings = 6;

/// The option that stands for a value of the column `Note`: 1 for "5" ... 5 for "1", 0 for all
/// else.
[[nodiscard]] int optionOfNote(const Value& note);

/// A position of the column `FrameStart`: "mm:ss:hh".
[[nodiscard]] QString startText(int frames);

/// The same for `FrameStop`; 0 or less is the end of the track.
/// \param length time of the track, as the row has it
[[nodiscard]] QString stopText(int frames, const QString& length);

/// A linear level in decibels, cut to two decimals downwards: 1 for one below 1, and levels beyond
/// 32767 count as that.
[[nodiscard]] double levelDecibels(double level);

/// "-2.12 db"; "??" for a level that nobody has measured.
[[nodiscard]] QString levelText(double level);

/// What stands for a field that cannot be edited, by the kind of its display.
[[nodiscard]] QString factText(const KsField& field, const ConfigObjects& texts);

} // namespace paneltexts
} // namespace melovane
