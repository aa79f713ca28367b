#pragma once

#include "platform/media/tag_writer.h"
#include "trackedit/former_cover.h"
#include "trackedit/kept_covers.h"

#include <QByteArray>
#include <QDateTime>
#include <QString>

#include <functional>

namespace melovane {

class CoverReader;
class Files;
class PictureMaker;
class Worker;

/// What the covers are made over; all of it outlives them. Reader, pictures and writer are used
/// beside the window.
struct CoverParts
{
    Files& files;
    Files& workFiles; ///< for what is done beside the window, and for nothing else
    QString dataFolder;
    const CoverReader& reader;
    const PictureMaker& pictures;
    TagWriter& writer;
    Worker& worker;
};

/// Covers of tracks: found, shown, replaced. All that reads and writes pictures and audio files is
/// done beside the window, so that no row and no key waits for it.
class Covers
{
public:
    explicit Covers(CoverParts parts);

    /// What a track knows of its cover.
    struct Track
    {
        QString fid;
        QString image; ///< the column `Image`
        QString file;  ///< its audio file as it lies now; empty for nowhere
    };

    /// The picture file of a track, empty for none. \see coverFile
    [[nodiscard]] QString fileOf(const QString& image) const;

    /// Gives the cover of a track as a small JPEG: that of its picture file, else that of its tag.
    /// Of several questions only the last one is answered.
    /// \param shown gets an empty text when there is none
    void show(const Track& track, std::function<void(const QByteArray& picture)> shown);

    /// Has the cover that stands in the tag alone written to a picture file.
    /// \param done gets the image name, empty when there is no cover
    void takeOut(const Track& track, int mostWidth, std::function<void(const QString& image)> done);

    /// A chosen picture, made ready.
    struct Ready
    {
        QString image;   ///< name of the picture file that it stands in now
        QByteArray jpeg; ///< empty when the picture could not be read
        /// Name of the picture file that keeps the cover that stood in the tag alone; empty when
        /// there was none, or when the track has a picture file.
        QString former;
    };

    /// Scales a picture file and puts it beside the others, under a name of its own; what was made
    /// last stands in `tempcover.jpg` of the data folder, too. The cover that it will replace in
    /// the tag is kept for who takes the change back, as a picture and as it stands there.
    void prepare(const Track& track,
                 const QString& picture,
                 int mostWidth,
                 int quality,
                 std::function<void(const Ready& ready)> done);

    /// Puts a cover into the tag of an audio file.
    /// \param track with the name of that cover
    void write(const Track& track,
               const QByteArray& jpeg,
               std::function<void(const TagWriting& how)> done);

    /// Takes the picture file of that image name out of the folder, if there is one. It waits in
    /// the folder of covers that are taken over when a track asks for them: a change that is taken
    /// back finds it there.
    void setAside(const QString& image);

private:
    [[nodiscard]] CoverSources sources() const;
    [[nodiscard]] QByteArray inTag(const Track& track) const;
    /// False when it could not be written.
    [[nodiscard]] bool put(const QString& file, const QByteArray& bytes) const;

    CoverParts m_parts;
    KeptCovers m_kept;   ///< for the worker
    quint64 m_asked = 0; ///< number of the last question
};

} // namespace melovane
