#pragma once

#include "platform/system/private_profile.h"

#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace melovane {

class Mod_API;

/// Reads and writes one settings file. Each call looks at the file, each write is in it at once.
///
/// Nothing is reported: a file or key that is missing or cannot be read gives the default, a write
/// that fails changes nothing.
class ToolBox
{
public:
    ToolBox(Mod_API& paths, PrivateProfile& profile);

    /// The value of key `Lang` in section "Global"; empty when there is none.
    [[nodiscard]] QString GetLang() const;

    /// Put in front of every section name, in reads and writes alike. Empty at first.
    [[nodiscard]] const QString& SubSelection() const { return m_subSelection; }

    void SetSubSelection(const QString& prefix) { m_subSelection = prefix; }

    /// The lines of a section, each "key=value". At most 30000 letters in all, one counted between
    /// two lines; what is longer is cut. A section without lines gives one empty text.
    [[nodiscard]] QStringList INI_GetSection(const QString& section) const;

    /// \param relative whether the name is one in the configuration path; else it is a full path
    void INI_SetFilename(const QString& name, bool relative);

    /// The value, cut at 259 letters, or the default, uncut, when the key gives no text.
    [[nodiscard]] QString
    INI_GetKeyValue(const QString& section, const QString& key, const QString& defaultValue) const;

    /// The number at the beginning of the value: 12 for "12abc", 0 for a text without one.
    [[nodiscard]] double
    INI_GetKeyValueLong(const QString& section, const QString& key, int defaultValue) const;

    /// Nothing as value removes the key. False when the file could not be written.
    bool INI_WriteKeyValue(const QString& section,
                           const QString& key,
                           const std::optional<QString>& value);

    /// Several changes as one write of the file; the sections without the prefix. False when an
    /// entry cannot stand in the file, which keeps none of the others out, or when the file could
    /// not be written.
    bool INI_WriteAll(std::vector<ProfileEntry> entries);

    /// Full path of the file.
    [[nodiscard]] QString fullName() const;

private:
    Mod_API& m_paths;
    PrivateProfile& m_profile;
    QString m_name;
    bool m_relative = false;
    QString m_subSelection;
};

} // namespace melovane
