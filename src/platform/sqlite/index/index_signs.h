#pragma once

#include <QChar>

#include <string_view>

/// What can be told of a text without looking into it: a bit for each letter a to z, one for
/// figures, one for letters beyond ASCII, and some that pairs of letters share.
namespace melovane::sqlite {

/// Letters that have a bit of their own.
[[nodiscard]] inline bool isSign(QChar letter)
{
    return letter >= u'a' && letter <= u'z';
}

[[nodiscard]] inline quint32 bitOf(unsigned letter)
{
    return letter - 'a';
}

/// A text that holds a piece has all signs of it.
/// \param text folded, as UTF-8
[[nodiscard]] quint64 signsOf(std::string_view text);

} // namespace melovane::sqlite
