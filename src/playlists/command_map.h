#pragma once

#include <QString>
#include <QStringView>

#include <optional>
#include <utility>
#include <vector>

namespace melovane {

/// Free keys and values of an entry, column `Command`: "key=value&key=value&". Keys tell capitals
/// apart and stand in the order in which they came.
class CommandMap
{
public:
    [[nodiscard]] std::optional<QString> value(QStringView key) const;

    /// False, and no change, when the key is there already.
    bool add(const QString& key, const QString& value);

    /// Adds the pair, or replaces its value.
    void set(const QString& key, const QString& value);
    void remove(QStringView key);

    [[nodiscard]] const std::vector<std::pair<QString, QString>>& pairs() const { return m_pairs; }

private:
    std::vector<std::pair<QString, QString>> m_pairs;
};

/// Key under which a looping entry keeps the action that it had before. Stands in the table: keep.
inline constexpr QStringView kFormerAktion = u"oak";

/// The pairs of a text; a piece without "=" or with several is dropped. Nothing at all for a text
/// in which a key is repeated: what it means is unknown, so it should be left as it is.
[[nodiscard]] std::optional<CommandMap> CommandToMap(QStringView text);

/// Each pair with an "&" behind it, values without blanks at their ends; the last "&" is part of
/// the stored form.
[[nodiscard]] QString MapToCommand(const CommandMap& map);

/// The same map with the pair in it.
CommandMap& CommandMapAdd(CommandMap& map, const QString& key, const QString& value);

} // namespace melovane
