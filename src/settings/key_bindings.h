#pragma once

#include <QString>

#include <vector>

namespace melovane {

class ConfigObjects;
class SettingDraft;

/// A key binding as the settings window shows it.
struct KeyRow
{
    QString id;
    QString group; ///< as the suite names it: "Player Mixer"
    QString label; ///< the command, in the user's language
    QString keys;  ///< "STRG-TASTE + C-TASTE"; empty for none
    bool changed = false;
    QString otherId = {}; ///< of another command that the same keys are for; empty for none
    bool acts = true;     ///< false when the other one takes the keys
};

/// The key bindings of the suite as they will be when the draft is written.
class KeyBindings
{
public:
    KeyBindings(SettingDraft& draft, const ConfigObjects& texts);

    /// In the order of the suite's table.
    [[nodiscard]] std::vector<KeyRow> rows() const;

    /// Gives a command other keys, as the suite spells them; empty for none. An unknown identifier
    /// is no operation.
    void bind(const QString& id, const QString& keys);
    /// Back to the keys of delivery.
    void reset(const QString& id);
    void resetAll();

private:
    SettingDraft& m_draft;
    const ConfigObjects& m_texts;
};

} // namespace melovane
