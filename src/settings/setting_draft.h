#pragma once

#include "platform/system/private_profile.h"

#include <QString>

#include <optional>
#include <vector>

namespace melovane {

/// Changes of the settings file that were chosen and are not written yet.
///
/// The file itself is asked at each look, so what another program writes meanwhile is seen, and
/// written is nothing but what was chosen here. Names have no letter case.
class SettingDraft
{
public:
    /// \param file full path; the profile outlives the draft
    SettingDraft(PrivateProfile& profile, QString file);

    /// What a key will hold: chosen here, else as it stands in the file. Empty for one that is
    /// absent or will be removed.
    [[nodiscard]] QString text(const QString& section, const QString& key) const;

    /// Lines of a section of the file as "key=value", without those that will be removed.
    [[nodiscard]] QStringList section(const QString& section) const;

    /// Chooses a value; nothing removes the key. What the file holds already is no change.
    void set(const QString& section, const QString& key, const std::optional<QString>& value);

    /// Whether a key has another value here than in the file.
    [[nodiscard]] bool holds(const QString& section, const QString& key) const;

    [[nodiscard]] bool isEmpty() const { return m_entries.empty(); }

    /// Writes all changes as one write of the file. False when the file could not be written: it
    /// is as it was, and the changes stay here.
    bool write();

    void discard() { m_entries.clear(); }

    [[nodiscard]] const QString& file() const { return m_file; }

private:
    [[nodiscard]] const ProfileEntry* find(const QString& section, const QString& key) const;

    PrivateProfile& m_profile;
    QString m_file;
    std::vector<ProfileEntry> m_entries;
};

} // namespace melovane
