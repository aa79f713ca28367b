#pragma once

#include <QString>

/// Numbers and texts of failures while files and lists are read into the library. They stand in the
/// log that users keep: keep.
namespace melovane::importerror {

inline constexpr int kPathNotFound = 10001;
inline constexpr int kFileNotFound = 10002;
/// The file holds no sound that could be measured.
inline constexpr int kNoAudio = 10003;
/// The file could not be opened as audio at all.
inline constexpr int kCannotOpen = 10004;
inline constexpr int kOnDisc = 10005;
inline constexpr int kDatabase = 20001;
inline constexpr int kFile = 20002;
inline constexpr int kUnknown = 40000;

/// "MessageText - Undef" for a number that is not in the list.
[[nodiscard]] QString GetMessageText(int code);

} // namespace melovane::importerror
