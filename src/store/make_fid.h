#pragma once

#include <QDateTime>
#include <QString>
#include <QStringView>

namespace melovane {

class Clock;

/// Track identifiers: how they are made, and which foreign ones are trusted.
///
/// A `FID` is the whole seconds from 2000-01-01 00:00:00 local time to the moment it was made,
/// times 1000, plus a counter from 0 to 999, written in decimal. It stands in the database, in
/// playlist files and in the tags of audio files, so its form is fixed: keep.
namespace Mod_Make_FID {

/// Day number of 2000-01-01, from which the seconds count.
inline constexpr int kEpochDay = 36526;
/// Day number of 2001-01-01; an identifier that tells an earlier moment is not trusted.
inline constexpr int kEarliestDay = 36892;
/// Days that an identifier may lie ahead of the clock, for machines whose clocks differ.
inline constexpr int kDaysAhead = 30;
/// Letters of an identifier in records of fixed form, and of the columns that hold it.
inline constexpr int kFidLength = 12;

/// The local moment told by an identifier, to the second: the number at the beginning of the text,
/// cut to whole seconds. A text without a number tells the epoch; a number too large for a date
/// gives an invalid one.
[[nodiscard]] QDateTime FidToDate(QStringView fid);

/// Makes identifiers. The program has one maker, because its counter is what keeps two tracks of
/// the same second apart: a thousand identifiers per second, then the first one comes again.
class FidMaker
{
public:
    explicit FidMaker(const Clock& clock);

    /// The candidate without blanks at its ends when it can be trusted, so that a track that was
    /// known before stays known; otherwise a new identifier.
    ///
    /// Not trusted: an empty text, a moment before 2001-01-01 or more than 30 days ahead of the
    /// clock, anything but decimal digits, and more letters than an identifier has. Never fails.
    [[nodiscard]] QString MakeFID(const QString& candidate = {});

private:
    [[nodiscard]] bool isTrusted(const QString& candidate) const;

    const Clock& m_clock;
    int m_counter = 0;
};

} // namespace Mod_Make_FID
} // namespace melovane
