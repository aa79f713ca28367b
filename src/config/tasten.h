#pragma once

#include <QString>

#include <vector>

namespace melovane {

class ToolBox;

/// One configurable key combination.
class Tasten
{
public:
    QString TextKey; ///< key of its label in the catalogue and of its value in section "Tastatur"
    QString Id;
    QString KeyName; ///< "STRG-TASTE + C-TASTE"; empty when no key is bound
    QString Group;
    bool Enabled = true;

    /// Whether this combination is held down. An unbound one never is.
    [[nodiscard]] bool matches(const QString& keyStatus) const
    {
        return !KeyName.isEmpty() && KeyName == keyStatus;
    }
};

/// The bindings with their keys of delivery, in their fixed order.
[[nodiscard]] std::vector<Tasten> defaultTasten();

/// Takes what section "Tastatur" holds; a binding without an entry stays as it is.
void readTasten(std::vector<Tasten>& bindings, const ToolBox& file);

/// Writes all bindings, those without a key as empty entries.
void writeTasten(const std::vector<Tasten>& bindings, ToolBox& file);

} // namespace melovane
