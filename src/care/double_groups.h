#pragma once

#include <QString>

#include <atomic>
#include <functional>
#include <vector>

namespace melovane {

class AudioIdentity;
class Database;
class FileLocator;
struct AudioPrint;

/// A row that may be there twice.
struct DoubleTrack
{
    QString fid;
    QString title;
    QString artist;
    QString folder; ///< as it is stored, with its separator
    QString name;
    int milliseconds = 0;
    int bitRate = 0; ///< KBit/s; -99 for a variable one
    qint64 size = 0; ///< bytes of its file
    QString note;    ///< "1" to "5", or empty
    int plays = 0;
    bool isDeleted = false; ///< marked as deleted: the next cleaning takes it
    int entries = 0;        ///< of lists

    [[nodiscard]] QString place() const { return folder + name; }

    /// The mean bit rate in KBit/s, also of a variable one.
    [[nodiscard]] int rate() const;
};

/// Rows of one recording.
struct DoubleGroup
{
    bool isSameSound = false; ///< proved by all of their sound; else they are called the same
    std::vector<DoubleTrack> tracks;
    int kept = 0; ///< proposed, or chosen by the user
    bool isChosen = false;
};

/// What is searched for.
enum class DoubleKind
{
    Sound = 1, ///< files with the same sound, whatever they are called
    Names = 2, ///< same title and artist, and as long
};

/// Progress of a search, read by another thread.
struct DoubleProgress
{
    std::atomic<int> done = 0; ///< files compared
    std::atomic<int> size = 0; ///< files that have to be
    std::atomic<bool> isCancelled = false;
};

/// Hears of each sampled print, so that it need not be made again.
using KeepSound = std::function<void(const QString& fid, const AudioPrint& print)>;

/// All rows of the library that are there more than once; missing ones, discs and rows whose
/// identifier is no plain number are none of them. Groups of the same sound come first and are
/// chosen; a row stands in one group.
///
/// Opens only files of tracks that are exactly as long as another one, and reads all of those whose
/// samples agree. For a thread of its own. \throws DbError
[[nodiscard]] std::vector<DoubleGroup> findDoubles(Database& database,
                                                   const AudioIdentity& audio,
                                                   FileLocator& locator,
                                                   unsigned kinds,
                                                   DoubleProgress& progress,
                                                   const KeepSound& keep = {});

/// The row of a group that is worth most: one that is not marked as deleted, then the higher bit
/// rate, then the one in more lists, then a rated one, then the more played one, then the older
/// one.
[[nodiscard]] int bestOf(const std::vector<DoubleTrack>& tracks);

} // namespace melovane
