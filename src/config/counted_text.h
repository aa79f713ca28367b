#pragma once

#include "config/config_objects.h"

namespace melovane {

/// The key of a text about `count` things: that of a single one has ".one" behind it.
[[nodiscard]] inline QString countedKey(const QString& key, qint64 count)
{
    return count == 1 ? key + QStringLiteral(".one") : key;
}

/// A text with a number in the form that fits it: that of the key, for a single thing that of the
/// key with ".one" behind it. The number is $1.
/// \param more $2
[[nodiscard]] inline QString
countedText(const ConfigObjects& texts, const QString& key, qint64 count, const Value& more = {})
{
    return texts.text(countedKey(key, count), count, more);
}

} // namespace melovane
