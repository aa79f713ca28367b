#pragma once

#include <QString>
#include <QStringView>

#include <span>

namespace melovane::linux_media {

/// The first text of a field, by the encoding number of ID3v2 (0 single bytes, 1 UTF-16 with a byte
/// order mark, 2 UTF-16 big endian, 3 UTF-8; others give an empty text).
///
/// Ends at the first zero character, so of several values the first is taken. Blanks at the end are
/// cut. Single bytes are read as Windows-1252, which is what programs write there, unless they are
/// UTF-8 beyond doubt. UTF-16 without its mark is read in the order of bytes that has fewer zeros
/// in front. Broken UTF-8 and halves of UTF-16 pairs become U+FFFD. At most kLongestText letters
/// are given.
[[nodiscard]] QString decodeText(int encoding, std::span<const quint8> bytes);

/// All texts of a field that holds several values, joined by kValueSeparator; empty ones are left
/// out.
[[nodiscard]] QString decodeValues(int encoding, std::span<const quint8> bytes);

/// What stands between two values of a field when they are shown as one text.
inline constexpr QStringView kValueSeparator = u"; ";

/// True for bytes that some program has written as UTF-8 into a place of single bytes: valid, with
/// at least one letter of several bytes, and without control characters among them.
[[nodiscard]] bool isUtf8InSingleBytes(std::span<const quint8> bytes);

/// The bytes behind the first text and its terminator; empty when nothing follows.
[[nodiscard]] std::span<const quint8> behindText(int encoding, std::span<const quint8> bytes);

/// A text of Windows-1252 with a fixed place, padded with zeros or blanks.
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
