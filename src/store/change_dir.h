#pragma once

#include <QString>
#include <QStringView>

#include <optional>
#include <vector>

/// Folder mappings that a user writes by hand after moving music to another drive, or has written
/// by the window that finds files again.
///
/// One mapping a line: old folder, two question marks, new folder, with free blanks around them.
namespace melovane::changedir {

inline constexpr QStringView kFileName = u"ChangeDir.conf";

/// Kind of the record that always stands first in a list of mappings.
inline constexpr QStringView kDummy = u"Dummy";
/// Kind of a mapping from one folder to another.
inline constexpr QStringView kDir = u"Dir";

struct Record
{
    QString kind;
    QString oldFolder;
    QString newFolder;

    bool operator==(const Record&) const = default;
};

/// The mappings of a file's text in file order; whether the new folders exist is not asked.
///
/// Left out without a word: lines of five letters or fewer, lines that do not split into exactly
/// two pieces, and an empty old folder, which would match everything.
[[nodiscard]] std::vector<Record> parse(const QString& text);

/// The text with these mappings behind all that it holds, each once. Every line that is there stays
/// as it is, and those that come first count first.
///
/// Left out are mappings that no line can hold: with two question marks or a line's end in a name,
/// or with blanks at an end.
[[nodiscard]] QString withMappings(const QString& text, const std::vector<Record>& records);

/// The folder after a mapping, in the separators of the new folder, with a closing separator when
/// the folder had one; nothing when the old folder is not at the beginning of it.
///
/// Compared component by component without regard to letter case, Unicode form and kind of
/// separator, so `C:\Music` maps `c:/music/Rock/` and never `C:\Musical\`.
[[nodiscard]] std::optional<QString> mapped(const Record& record, QStringView folder);

} // namespace melovane::changedir
