#pragma once

#include <QByteArray>
#include <QString>

#include <optional>
#include <span>
#include <vector>

namespace melovane {

/// A picture as it shall stand in the tag.
struct CoverPicture
{
    QByteArray bytes; ///< the picture file, JPEG or PNG; empty takes all front covers out
    QString mimeType; ///< "image/jpeg" or "image/png"
};

/// What shall stand in a tag. An absent member stays as the file has it, an empty one is taken out.
struct TagChanges
{
    std::optional<QString> Titel = {};
    std::optional<QString> Interpret = {};
    std::optional<QString> Album = {};
    std::optional<QString> Genre = {}; ///< the plain name
    int genreNumber = 255; ///< of Genre, for a tag that knows only numbers; 255 for none
    std::optional<QString> Jahr = {};
    std::optional<QString> Kommentar = {}; ///< of the comment without a description
    std::optional<QString> Track = {};     ///< the number; a total behind a slash in the file stays
    std::optional<QString> BPM = {};
    std::optional<QString> Note = {}; ///< "1" to "5", in our own rating frame
    std::optional<QString> FID = {};
    std::optional<QString> Kategorie = {};
    std::optional<QString> Situation = {};
    std::optional<QString> Stimmung = {};
    std::optional<QString> Tempo = {};
    std::optional<QString> User1 = {}, User2 = {}, User3 = {}, User4 = {}, User5 = {};
    /// The front cover with an empty description. Front covers of other programs, which have one,
    /// stay beside it, but a user who takes the cover off wants to see none: then they go, too.
    /// Pictures of other kinds stay in any case.
    std::optional<CoverPicture> cover = {};
    /// The front covers, put back as CoverReader::frontCover() gave it; goes before `cover`.
    std::optional<QByteArray> formerCover = {};
};

/// One file and what shall stand in its tag.
struct TagWork
{
    QString path;
    TagChanges changes;
};

/// Why a tag was not written. The file is what it was before.
enum class TagWriteFault
{
    None,
    NotFound, ///< no such file
    ReadOnly, ///< neither the file nor its folder may be written
    NoAudio,  ///< no MPEG frame where the tag ends
    TagSize,  ///< a tag that claims to be larger than its file, or cannot be walked
    Full,     ///< no room on the volume
    Changed,  ///< another program changed the file while it was read or written
    Failed,   ///< anything else; `detail` holds the system's words
};

struct TagWriting
{
    TagWriteFault fault = TagWriteFault::None;
    QString detail;       ///< the system's own words, empty when there are none
    bool changed = false; ///< false when the file already held all of it and was not touched
};

/// The one door by which a tag enters an audio file. The audio never changes by a byte, frames that
/// are not ours are carried as they stand, a tag keeps its version, and a file is either wholly the
/// old or wholly the new one, whenever the program ends.
class TagWriter
{
public:
    virtual ~TagWriter() = default;

    /// Writes one file after the other and brings all of them to the disc before it returns. One
    /// result for each piece of work, in the same order; a failure concerns only its own file.
    [[nodiscard]] virtual std::vector<TagWriting> write(std::span<const TagWork> work) = 0;

    /// Makes whole what a writer that was killed left behind. To be called once at start, under the
    /// lock that keeps a second writer away.
    virtual void repair() = 0;
};

} // namespace melovane
