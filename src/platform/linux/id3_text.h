#pragma once

#include <QString>

#include <span>

namespace melovane::linux_media {

/// The first text of a field, by the encoding number of ID3v2 (0 single bytes, 1 UTF-16 with a byte
/// order mark, 2 UTF-16 big endian, 3 UTF-8; others give an empty text).
///
/// Ends at the first zero character, so of several values the first is taken. Blanks at the end are
/// cut. Single bytes are read as Windows-1252, which is what programs write there. Broken UTF-8 and
/// halves of UTF-16 pairs become U+FFFD. At most kLongestText letters are given.
[[nodiscard]] QString decodeText(int encoding, std::span<const quint8> bytes);

/// The bytes behind the first text and its terminator; empty when nothing follows.
[[nodiscard]] std::span<const quint8> behindText(int encoding, std::span<const quint8> bytes);

/// A text of single bytes with a fixed place, padded with zeros or blanks.
[[nodiscard]] QString decodeSingleBytes(std::span<const quint8> bytes);

/// A text with the name that stands in front of it.
struct NamedText
{
    QString name;
    QString text;
};

/// The content of a frame COMM, whose language is not looked at; both empty when it is cut short.
[[nodiscard]] NamedText decodeComment(std::span<const quint8> content);

/// The content of a frame TXXX; of long names the beginning. Both empty when there is no content.
[[nodiscard]] NamedText decodeUserText(std::span<const quint8> content);

/// The year of a time of recording as frame TDRC has it: the first four digits of
/// "2004-05-06T07:08:09"; other texts stay as they are.
[[nodiscard]] QString yearOfRecordingTime(const QString& text);

/// No column keeps more.
inline constexpr qsizetype kLongestText = qsizetype{64} * 1024;

} // namespace melovane::linux_media
