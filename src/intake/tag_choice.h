#pragma once

#include <QString>

/// Rules by which tag texts become column texts. Pure functions.
namespace melovane::tagchoice {

/// Of the texts of the old and the new tag the one that the setting `ID3v2Tags` takes, without
/// blanks at its ends.
///
/// 1: the old one unless it is empty. 2: the new one unless it is empty. 3: the old one. 4: the new
/// one. Any other: the longer one, of equal length the old one.
[[nodiscard]] QString choose(const QString& id3v1, const QString& id3v2, int setting);

/// Number at the beginning of the text, as text ("3/12" gives "3", "abc" gives "0"); an empty text
/// stays empty.
[[nodiscard]] QString numeric(const QString& text);

/// The first `width` letters; a pair of UTF-16 halves is not torn. A width of 0 is no limit.
[[nodiscard]] QString cut(const QString& text, int width);

/// Each letter behind white space, and the first one, upper case; all others lower case.
[[nodiscard]] QString properCase(const QString& text);

struct TitleAndArtist
{
    QString Titel;
    QString Interpret;
};

/// Title and artist of a file without tags: ".mp3" removed, "_" read as a blank, in proper case;
/// "artist-title" is split at its first "-", a name without one is the title.
[[nodiscard]] TitleAndArtist fromFileName(const QString& name);

} // namespace melovane::tagchoice
