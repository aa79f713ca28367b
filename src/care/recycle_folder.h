#pragma once

#include "platform/system/files.h"

#include <QByteArray>
#include <QString>

#include <functional>
#include <vector>

namespace melovane {

class Clock;
struct RemovedTrack;

/// A file of a recycle folder, or one that was to go there and stayed.
struct RecycledFile
{
    QString folder = {}; ///< the recycle folder
    QString fid = {};
    QString title = {}; ///< for a person
    QString from = {};  ///< full name that it had
    QString to = {};    ///< full name in the recycle folder
    QString rows = {};  ///< see bringBack()
    QDateTime moment = {};
    bool isHere = false; ///< false: it was never moved and lies where it was
};

struct RecycleParts
{
    Files& files;
    const Clock& clock;
    QString dataFolder; ///< of `ChangeDir.conf`, and of the list of recycle folders
    QString homeFolder; ///< where files go whose volume the user may not write to
    std::function<QByteArray(const QString&)> systemName; ///< a path as the system has it
};

/// `MelovaneRecycler`: where the files of removed tracks wait to be put back or thrown away.
///
/// It lies in the root of the file's volume when the user may write there, else in his home folder.
/// Below it a file keeps its own folders. Beside the files stand the two scripts that put them back
/// (see recycle_script.h), and `ReMoveFiles.jsonl`: a line of JSON for each file with its names and
/// with the rows that the library had of it. `MelovaneRecycler.txt` of the data folder names the
/// recycle folders.
///
/// A program that ends at any moment loses no file: the line of a file is written before it moves,
/// and a copy to another volume is synced and compared before the original goes.
class RecycleFolder
{
public:
    enum class Reason
    {
        Deleted,
        Damaged ///< "MP3ERROR": into the folder of that name
    };

    explicit RecycleFolder(RecycleParts parts);

    /// Moves the file of a track that leaves the library. One of a disc stays, and so does one that
    /// cannot be moved, that is in a recycle folder already, or whose way would lead through a link
    /// inside of the recycle folder. A file that is there is never replaced: the new one gets a
    /// number.
    /// \param step of a copy to another volume
    /// True when it lies in the recycle folder now.
    bool take(const RemovedTrack& track, Reason reason, const CopyStep& step);

    /// What can be put back, the oldest first; folders of volumes that are not here are left out,
    /// and so is a line of the side record that names a file outside of the recycle folder, or a
    /// place outside of its volume. A file whose record was written twice is there once.
    [[nodiscard]] std::vector<RecycledFile> all() const;

    /// Moves a file back to where it was; folders are made anew. It stays recycled when something
    /// has its name there, or a link leads out of the recycle folder or of the volume. Nothing for
    /// one that was never moved. \throws IoError
    void putBack(const RecycledFile& file, const CopyStep& step);

    /// Takes the lines of files out of the side records and out of both scripts; those go with the
    /// last line. What other programs have written into ReMoveFiles.bat stays. \throws IoError
    void forget(const std::vector<RecycledFile>& files);

private:
    [[nodiscard]] QString folderFor(const QString& file, Reason reason, QString& recycler);
    [[nodiscard]] bool makeOwnFolder(const QString& folder);
    [[nodiscard]] bool moveTo(const QString& file, const QString& target, const CopyStep& step);
    void write(const RecycledFile& file);
    void writeScripts(const RecycledFile& file);
    void remember(const QString& recycler);
    [[nodiscard]] QString reachOf(const QString& recycler) const;
    void requireOwnPlace(const QString& file, const QString& reach) const;
    [[nodiscard]] QStringList folders() const;
    [[nodiscard]] QList<QByteArray> linesOf(const QString& folder, QStringView name) const;
    void replaceLines(const QString& folder, QStringView name, const QList<QByteArray>& lines);
    [[nodiscard]] QByteArray batchLine(const RecycledFile& file) const;
    [[nodiscard]] QByteArray shellLine(const RecycledFile& file) const;

    RecycleParts m_parts;
};

} // namespace melovane
