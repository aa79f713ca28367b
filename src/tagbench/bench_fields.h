#pragma once

#include "store/track_fields.h"

#include <QString>
#include <QStringView>

#include <optional>
#include <span>

namespace melovane {

/// The fields of a track that the tag tool changes, in the order of its grid and its form. The
/// cover, kBenchCover, and the file itself, kBenchPlace, stand behind them.
[[nodiscard]] std::span<const TrackField> benchFields();

/// The pseudo field of the full name of the file.
inline constexpr TrackField kBenchPlace = TrackField::DName;

/// The pseudo field of the cover: the name of its picture, or kNoCover for one that is taken off.
inline constexpr TrackField kBenchCover = TrackField::Image;

/// No name of a picture: the cover goes, also one that stands in the file alone.
inline constexpr QStringView kNoCover = u"/";

/// What the column holds for a text of kBenchCover.
[[nodiscard]] QString imageOf(const QString& cover);

/// Place of a field among benchFields(), kBenchCover and kBenchPlace behind the last; -1 for any
/// other.
[[nodiscard]] int benchSlot(TrackField field);

/// Number of slots, those of kBenchCover and kBenchPlace included.
inline constexpr int kBenchSlots = 20;

/// What a field holds for a typed text; nothing for one that it does not take.
///
/// Blanks around are cut and what is longer than the column is cut. Control characters become
/// blanks; a comment keeps its line feeds. A rating is "1" to "5", empty, or "0" for none. BPM and
/// track keep the number at the beginning, a track also the total behind its "/"; without a number
/// they become empty.
[[nodiscard]] std::optional<QString> benchText(TrackField field, const QString& typed);

} // namespace melovane
