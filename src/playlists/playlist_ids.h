#pragma once

#include <QtGlobal>

namespace melovane {

/// Number of a playlist entry, `pl_all.PLID`. It stays with the entry wherever it is moved.
enum class Plid : qint32
{
};

/// Number of a playlist or jingle list, `pl_name.NID`.
enum class Pnid : qint32
{
};

/// Number of a group, `pl_group.GRID`.
enum class GroupId : qint32
{
};

/// Sort key of an entry in its list, `pl_all.SID`. Only the order counts; gaps are normal, and two
/// entries with the same one stand in the order of their numbers.
enum class Sid : qint32
{
};

/// The number as tables and statements have it.
template <typename Id> [[nodiscard]] constexpr qint64 numberOf(Id id)
{
    return static_cast<qint32>(id);
}

/// As a target position: the end of the list. Known to other programs: keep.
inline constexpr Sid kEndOfList{-10000};
/// As a list: the one that is playing now. Known to other programs: keep.
inline constexpr Pnid kPlayingPlaylist{-222};
/// The group of all jingle lists; it has no row in `pl_group`. Stands in the table: keep.
inline constexpr GroupId kJingleGroup{-1};

/// What happens when an entry ends: column `Aktion`. Numbers of the table: keep.
inline constexpr int kAktionMix = 0;
inline constexpr int kAktionStop = 1;
inline constexpr int kAktionLoop = 2;
inline constexpr int kAktionJinglePlay = 3;
inline constexpr int kAktionJingle1 = 11;
inline constexpr int kAktionJingle2 = 12;

} // namespace melovane
