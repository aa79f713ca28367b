#pragma once

#include "platform/linux/volumes.h"
#include "platform/system/files.h"

#include <QHash>
#include <QSet>

namespace melovane {

/// Files and folders of Linux.
///
/// Names that are not UTF-8 are listed in a form that opens again (see system_names.h). A file that
/// has no write permission at all counts as read only for everybody, root included: writeWhole,
/// append and copy leave it alone. Only plain files are read; a pipe or device is an error, never a
/// wait.
class LinuxFiles : public Files
{
public:
    /// \param sources where mounts and devices are described; tests put their own in
    explicit LinuxFiles(VolumeSources sources = {});

    [[nodiscard]] bool fileExists(const QString& path) const override;
    [[nodiscard]] bool folderExists(const QString& path) const override;
    [[nodiscard]] std::optional<FileFacts> facts(const QString& path) const override;

    /// With the separators of the system. Where several spellings exist, the exact one goes first,
    /// the others follow in the order of their bytes, and one that leads to an existing end wins.
    [[nodiscard]] QString resolve(const QString& path) const override;
    [[nodiscard]] QString canonical(const QString& path) const override;
    [[nodiscard]] bool canList(const QString& folder) const override;
    [[nodiscard]] QStringList names(const QString& folder) const override;
    [[nodiscard]] QByteArray read(const QString& path, qint64 maxBytes) const override;
    void writeWhole(const QString& path, const QByteArray& bytes) override;
    void writeNamed(const QString& path, const QByteArray& bytes) override;
    void append(const QString& path, const QByteArray& bytes) override;
    void copy(const QString& source, const QString& target) override;
    [[nodiscard]] bool
    copyInSteps(const QString& source, const QString& target, const CopyStep& step) override;
    bool makeFolder(const QString& path) override;
    bool makeFolders(const QString& path) override;

    /// Removes a file or a link, never a folder.
    bool remove(const QString& path) override;
    void rename(const QString& source, const QString& target) override;
    bool removeFolder(const QString& path) override;
    bool setModified(const QString& path, const QDateTime& moment) override;
    bool makeWritable(const QString& path) override;

    /// A path that does not exist belongs to the volume of the nearest folder above it that does.
    [[nodiscard]] VolumeFacts volume(const QString& path) const override;

    /// What root keeps back for itself does not count.
    [[nodiscard]] std::optional<VolumeSpace> space(const QString& path) const override;

    /// Paths of the files whose last writeWhole has failed.
    [[nodiscard]] QStringList unwritten() const { return m_unwritten.values(); }

private:
    /// Names of a folder by their folded form, kept while the folder does not change.
    struct Listing
    {
        quint64 device = 0;
        quint64 inode = 0;
        qint64 modified = 0; ///< nanoseconds
        QHash<QString, QList<QByteArray>> names;
    };

    [[nodiscard]] const Listing& listing(const QByteArray& folder) const;
    [[nodiscard]] QByteArray
    resolveBelow(const QByteArray& folder, const QStringList& parts, qsizetype at) const;

    VolumeSources m_sources;
    mutable QHash<QByteArray, Listing> m_listings;
    QSet<QString> m_unwritten;
};

} // namespace melovane
