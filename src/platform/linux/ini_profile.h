#pragma once

#include "platform/system/ini_text.h"
#include "platform/system/private_profile.h"

#include <QByteArray>
#include <QHash>
#include <QSet>

#include <chrono>
#include <functional>

namespace melovane {

class Files;

/// Settings files of the suite on Linux. What the lines mean is told at IniText.
///
/// Read as their byte order mark says, else each line as UTF-8 when it is valid and as
/// Windows-1252 when not; written as UTF-8, with a mark when there was one, each line with the end
/// it had. Writers of all programs take the lock on "<file>.lock" beside the file for the whole of
/// reading, changing and writing, so none of two writes at the same moment is lost. The text of an
/// unchanged file is kept in memory; every look asks the file's times and size, and its bytes while
/// it is so young that its times cannot be trusted, so a sibling's change is seen at once.
///
/// A file that is a folder, cannot be read or is larger than kMaxBytes reads as empty and is never
/// written.
class IniProfile : public PrivateProfile
{
public:
    /// Settings are some kilobytes; what is larger than this is something else.
    static constexpr qint64 kMaxBytes = 16LL * 1024 * 1024;

    /// \param patience how long a write waits for another program's write before it fails
    explicit IniProfile(Files& files, std::chrono::milliseconds patience = std::chrono::seconds(5));

    [[nodiscard]] std::optional<QString>
    value(const QString& file, const QString& section, const QString& key) const override;

    [[nodiscard]] QStringList section(const QString& file, const QString& section) const override;

    /// False also for names that cannot be written (see IniText::isUsable).
    bool write(const QString& file,
               const QString& section,
               const QString& key,
               const std::optional<QString>& value) override;

    bool writeAll(const QString& file, const std::vector<ProfileEntry>& entries) override;

    bool replace(const QString& file, const QString& source) override;

    /// Settings files whose last write has failed.
    [[nodiscard]] QStringList unwritten() const { return m_unwritten.values(); }

private:
    /// What tells one state of a file from the next.
    struct Fingerprint
    {
        quint64 device = 0;
        quint64 inode = 0;
        qint64 size = 0;
        qint64 modified = 0; ///< nanoseconds
        qint64 changed = 0;  ///< nanoseconds, of the file's facts

        bool operator==(const Fingerprint&) const = default;
    };

    struct Known
    {
        Fingerprint fingerprint;
        bool settled =
            false; ///< old enough when it was read: a change would have changed its times
        QByteArray bytes;
        IniText text;
    };

    [[nodiscard]] static std::optional<Fingerprint> fingerprintOf(const QString& file);
    [[nodiscard]] const IniText& text(const QString& file) const;
    bool change(const QString& file, const std::function<bool(IniText&)>& edit);

    Files& m_files;
    std::chrono::milliseconds m_patience;
    mutable QHash<QString, Known> m_known;
    QSet<QString> m_unwritten;
};

} // namespace melovane
