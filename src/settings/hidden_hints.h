#pragma once

#include <QString>

#include <vector>

namespace melovane {

class ConfigObjects;
class SettingDraft;

/// A message that the user does not want to see any more.
struct HiddenHint
{
    QString key;     ///< in the settings: program and name of the message
    QString program; ///< that shows it
    QString words;   ///< the message; its name when the catalogue does not know it
};

/// The messages that stay hidden when the draft is written.
class HiddenHints
{
public:
    HiddenHints(SettingDraft& draft, const ConfigObjects& texts);

    /// In the order of the file.
    [[nodiscard]] std::vector<HiddenHint> rows() const;

    /// The message is shown again; an unknown key is no operation.
    void show(const QString& key);
    void showAll();

private:
    SettingDraft& m_draft;
    const ConfigObjects& m_texts;
};

} // namespace melovane
