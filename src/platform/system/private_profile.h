#pragma once

#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace melovane {

/// One change of a profile.
struct ProfileEntry
{
    QString section;
    QString key;
    std::optional<QString> value; ///< nothing removes the key
};

/// A text file of sections and keys that several programs share.
///
/// Sections and keys have no regard to case; the first of equal keys wins; blanks around key and
/// value are cut and one pair of quotes around a value is dropped when reading. Each write goes to
/// the file at once, under a lock that all programs of the suite take, as a whole file written
/// beside and renamed: other sections, unknown keys, comments and the order of lines survive. A
/// missing file reads as empty and is made by the first write.
class PrivateProfile
{
public:
    virtual ~PrivateProfile() = default;

    /// The value of a key, or nothing when section or key is absent.
    [[nodiscard]] virtual std::optional<QString>
    value(const QString& file, const QString& section, const QString& key) const = 0;

    /// The lines of a section as "key=value", in file order, without comments.
    [[nodiscard]] virtual QStringList section(const QString& file,
                                              const QString& section) const = 0;

    /// Nothing as value removes the key. False when the file could not be written.
    virtual bool write(const QString& file,
                       const QString& section,
                       const QString& key,
                       const std::optional<QString>& value) = 0;

    /// Several changes as one write of the file. An entry that cannot stand in it is passed over.
    /// False when that happened, or when the file could not be written.
    virtual bool writeAll(const QString& file, const std::vector<ProfileEntry>& entries) = 0;

    /// Puts the whole content of another file in the place of the file, under the same lock, so
    /// that no writer works on a mixture. False, and no change, when that fails.
    virtual bool replace(const QString& file, const QString& source) = 0;
};

} // namespace melovane
