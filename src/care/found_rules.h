#pragma once

#include "intake/folder_walk.h"

#include <QSet>
#include <QString>
#include <QStringList>

#include <atomic>
#include <functional>
#include <optional>
#include <vector>

namespace melovane {

class AudioIdentity;
class TagReader;
struct AudioPrint;

/// A row of the library whose file is not where it should be.
struct MissingTrack
{
    QString fid;
    QString title;  ///< for the user
    QString folder; ///< as it is stored, with its separator
    QString name;
    qint64 size = 0;      ///< bytes of the file as it was last read
    int milliseconds = 0; ///< of sound
    int del = 0;          ///< column `DEL`

    [[nodiscard]] QString place() const { return folder + name; }
};

/// What a file has in common with the track that it may be.
struct FoundEvidence
{
    bool name = false;
    bool length = false;   ///< it sounds as long
    bool fid = false;      ///< its tag holds the identifier of the track
    bool audio = false;    ///< it holds the sound that was kept of the track
    bool otherFid = false; ///< its tag holds the identifier of another one

    /// Enough to give the track that place unasked. The name alone is not.
    [[nodiscard]] bool isCertain() const { return fid || audio || (name && length && !otherFid); }

    bool operator==(const FoundEvidence&) const = default;
};

/// One missing track and what was found for it.
struct FoundTrack
{
    int track = 0;  ///< place in the list of missing tracks
    QString folder; ///< with its separator; empty when nothing was found
    QString name;
    FoundEvidence evidence;
    bool isChosen = false;

    [[nodiscard]] bool isFound() const { return !name.isEmpty(); }

    [[nodiscard]] QString place() const { return folder + name; }
};

/// A folder that has moved, with all below it.
struct FoundRule
{
    QString oldFolder; ///< with its separator
    QString newFolder; ///< likewise; empty when nothing of it was found
    std::vector<FoundTrack> tracks;
    bool isChosen = false;

    [[nodiscard]] int foundCount() const;
    /// Tracks that would get a new place.
    [[nodiscard]] int chosenCount() const;
};

/// A pair of folders, cut where what stands behind is the same in both: "/alt/Musik/Pop/" and
/// "/neu/Pop/" give "/alt/Musik/" and "/neu/". A side of one component stays whole.
struct FolderPair
{
    QString oldFolder;
    QString newFolder;
    QStringList rest; ///< what both have behind it

    [[nodiscard]] static FolderPair of(const QString& oldFolder, const QString& newFolder);
};

/// What is known when files are to be found again; all of it is read only.
struct FoundInput
{
    const std::vector<MissingTrack>& tracks;
    const std::vector<FoundFile>& files;
    /// Full names that the library has already: such a file is no missing one.
    const QSet<QString>& taken;
    /// Shown by the user: all below the first folder lies below the second.
    std::vector<std::pair<QString, QString>> given;
    const TagReader& reader;
    const AudioIdentity& audio;
    /// The sound that was kept of a track; may be empty.
    std::function<std::optional<AudioPrint>(const QString& fid)> kept;
    std::atomic<int>& done; ///< files read so far
    const std::atomic<bool>& isCancelled;
};

/// Finds the files of missing tracks among those of some folders and makes rules of it: few, each
/// as far up as it holds. Every track stands in exactly one of them. Folders of which nothing was
/// found are rules without a new folder and stand last.
///
/// A file is found by its name, and where no file of that name is left, by the identifier in its
/// tag or by its sound: files of a folder that a rule leads to, and those of the size of a missing
/// one. An identifier counts more than a name. Reads the tag of each file that it proposes.
[[nodiscard]] std::vector<FoundRule> findRules(const FoundInput& input);

} // namespace melovane
