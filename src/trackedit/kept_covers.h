#pragma once

#include "platform/media/tag_writer.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>

namespace melovane {

class CoverReader;
class Files;

/// Which cover stands in the tag of a track's file, and what stood there under each of its former
/// ones: so the file follows the row wherever undo takes its column `Image`.
///
/// Lies in the folder "tags" beside the covers, "Image" of the data folder: per track a file
/// "<FID>.now" with the name of the cover that its file has, and per track and cover a file
/// "<FID>.<Image>.id3" with the frame, empty for one that a user took off. A cover that was chosen
/// for many has a file "<Image>.tracks" with their FIDs, one in a line. Names and contents are read
/// by console and `Task.WriteTags` alike: keep. Tracks whose cover was never changed have none of
/// it. The folder may be deleted at any time; covers that were changed then stay as they are in the
/// files.
///
/// Quiet: what cannot be kept is not put back. Any thread may use one of its own.
class KeptCovers
{
public:
    KeptCovers(Files& files, const QString& dataFolder, const CoverReader& reader);

    /// What a file shall show.
    struct Order
    {
        std::optional<CoverPicture> cover;     ///< a cover that a user chose
        std::optional<QByteArray> formerCover; ///< what stood there before
    };

    /// To be called before a track whose file shows `image` gets another cover: keeps what stands
    /// in its tag. Nothing is kept anew while the file has yet to follow to that cover.
    /// \param file empty for nowhere
    void beforeChange(const QString& fid, const QString& image, const QString& file);

    /// The user has chosen that cover for these tracks, whatever its name: one picture for many, or
    /// none at all for an empty name. Without it a name of another track is none that a file gets.
    void chosen(const QStringList& fids, const QString& image);

    /// Takes chosen() back for covers that were taken off.
    void notTakenOff(const QStringList& fids);

    /// Whether no picture of the tag stands for a track: the user took its cover off. A front cover
    /// counts again that another program puts into the file behind that; the pictures of other
    /// kinds that a taking off leaves there never do. \param image what the row holds \param file
    /// empty for nowhere
    [[nodiscard]] bool
    isTakenOff(const QString& fid, const QString& image, const QString& file) const;

    /// What the file must be given to show the cover of its row. Nothing when it does, or when
    /// nobody has changed the cover of this track. What stands in the file is kept before.
    [[nodiscard]] std::optional<Order>
    due(const QString& fid, const QString& image, const QString& file);

    /// The file of the track shows that cover now.
    void written(const QString& fid, const QString& image);

    /// Files in the folder; beyond them the oldest go.
    static constexpr int kMaxFiles = 20000;

private:
    [[nodiscard]] bool isMarkedOff(const QString& fid) const;
    [[nodiscard]] QString placeOf(const QString& fid, const QString& image) const;
    [[nodiscard]] QString placeOfNow(const QString& fid) const;
    [[nodiscard]] std::optional<QByteArray> read(const QString& place, qint64 longest) const;
    [[nodiscard]] QString placeOfTracks(const QString& image) const;
    [[nodiscard]] bool isChosen(const QString& fid, const QString& image) const;
    [[nodiscard]] std::optional<QString> shown(const QString& fid) const;
    [[nodiscard]] std::optional<Order> orderOf(const QString& fid, const QString& image) const;
    void keep(const QString& fid, const QString& image, const QString& file);
    void write(const QString& place, const QByteArray& bytes);
    void makeRoom();

    Files& m_files;
    QString m_dataFolder;
    QString m_folder;
    const CoverReader& m_reader;
    int m_untilRoom = 0; ///< files that can be kept before the folder is looked through again
};

} // namespace melovane
