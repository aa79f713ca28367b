#pragma once

#include "store/change_dir.h"

#include <QString>

#include <vector>

namespace melovane {

class Files;

/// Decides where the audio file of a track is today: in its stored folder, or in the folder that
/// `ChangeDir.conf` of the data folder maps it to.
///
/// The mappings are read once, when the stored folder fails for the first time. A missing,
/// unreadable, oversized or damaged file means no mappings; it is never written.
class FileLocator
{
public:
    /// \param dataFolder folder of `ChangeDir.conf`
    FileLocator(const Files& files, QString dataFolder);
    virtual ~FileLocator() = default;

    /// The full name of a track's file; the caller still has to test for it, since a track that is
    /// nowhere gives folder and name as they are stored.
    ///
    /// \param path folder of the track; replaced by the new folder when a mapping led to the file.
    ///     The change is not stored anywhere: mappings apply anew at each look-up.
    /// \param name file name; blanks at its ends are cut
    ///
    /// A file whose stored spelling differs from the disk's in letter case or Unicode form is found
    /// too, and is returned as the disk spells it.
    [[nodiscard]] QString ExistFile(QString& path, const QString& name);

    /// Where a stored file lies now; empty when it is nowhere.
    /// \param file its folder and name as they are stored
    [[nodiscard]] QString placeOf(const QString& file);

protected:
    /// Where a file of that name is, spelled as the disk does; empty when there is none.
    [[nodiscard]] virtual QString find(const QString& file);

private:
    void loadMappings();

    const Files& m_files;
    QString m_dataFolder;
    std::vector<changedir::Record> m_mappings; ///< empty before the first load
};

} // namespace melovane
