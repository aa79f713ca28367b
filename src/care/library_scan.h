#pragma once

#include "care/beside_tools.h"

#include <QMap>
#include <QMutex>
#include <QString>

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace melovane {

/// The `DEL` that a track gets for what the disk says: 2 and 3 are 0 and -1 of a track whose file
/// is missing. Nothing when it has it already.
[[nodiscard]] std::optional<int> delAfterLook(int del, bool isThere);

/// What a scan has found.
struct LibraryScanResult
{
    qint64 missing = 0;
    qint64 restored = 0;
    QString list;                 ///< a line for each missing file: volume, folder and name
    QMap<QString, qint64> absent; ///< missing files by the name of their volume that isn't here
    bool isWhole = false;         ///< false while it runs, and for one that was ended
    int error = 0;                ///< of the database that could not be read
    QString errorText;
};

/// Compares all tracks of a library with the disks; discs are left out, as they can't be present in
/// general. The library is read in one go and let go before the first look at a disk, which may
/// take long to answer.
///
/// One thread calls run(), another one everything else, at any time.
class LibraryScan
{
public:
    /// A track whose `DEL` does not say what the disk says.
    struct Change
    {
        QString fid;
        bool isThere = false;
    };

    /// \param dataFolder of `ChangeDir.conf`
    LibraryScan(BesideTools tools, QString dataFolder, QString dbName);

    void run();

    /// run() ends at the next track.
    void end();

    /// Tracks looked for, of all of them; 0 of 0 before it knows.
    [[nodiscard]] std::pair<qint64, qint64> progress();

    /// What is to be written, in the order of the tracks, each once.
    /// \param count at most
    [[nodiscard]] std::vector<Change> takeChanges(size_t count);

    /// Only when run() is over.
    [[nodiscard]] const LibraryScanResult& result() const { return m_result; }

private:
    struct Track
    {
        qsizetype at = 0; ///< of identifier and name in m_letters
        int fidSize = 0;
        int nameSize = 0;
        int folder = 0; ///< in m_folders
        int del = 0;
    };

    struct Folder
    {
        QString volume; ///< its label
        QString path;
        std::optional<bool> isAbsent; ///< whether the volume that holds it isn't here
    };

    void readTracks();
    void lookForTracks();
    void missing(const Track& track, const QString& name, const Files& files);
    [[nodiscard]] bool isEnded();

    const BesideTools m_tools;
    const QString m_dataFolder;
    const QString m_dbName;
    std::string
        m_letters; ///< of a million tracks: packed, as each text of its own is four times that
    std::vector<Track> m_tracks;
    std::vector<Folder> m_folders;
    LibraryScanResult m_result;

    QMutex m_mutex; ///< of all below
    std::vector<Change> m_changes;
    size_t m_taken = 0;
    qint64 m_done = 0;
    qint64 m_whole = 0;
    bool m_isEnded = false;
};

} // namespace melovane
