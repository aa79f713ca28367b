#pragma once

#include "store/file_locator.h"
#include "trackedit/former_cover.h"

#include <QByteArray>
#include <QDateTime>
#include <QHash>
#include <QString>

#include <functional>
#include <memory>
#include <vector>

namespace melovane {

class BenchTracks;
class Worker;

/// The covers of the tracks on the bench: which ones they have, and what they shall have. All that
/// reads pictures and audio files is done beside the window.
class BenchCovers
{
public:
    /// All of it outlives this.
    BenchCovers(CoverSources sources, Worker& worker, BenchTracks& tracks);

    /// What some tracks have, with what was changed and not yet applied.
    struct Shown
    {
        int pictures = 0;   ///< different ones
        int without = 0;    ///< tracks that have none
        QByteArray picture; ///< a small JPEG of the first one
    };

    /// Of several questions only the last one is answered.
    void show(const std::vector<int>& tracks, std::function<void(const Shown& shown)> shown);

    /// How a picture becomes a cover.
    struct Size
    {
        int mostWidth = 500;
        int quality = 75;
    };

    /// Gives one picture to all these tracks, as one step on the bench. The same one is one picture
    /// file, however often it is chosen.
    /// \param picture a picture file as it was chosen or dropped \param date of it
    /// \param done gets false when it cannot be read, and nothing has changed
    void choose(const QByteArray& picture,
                const QDateTime& date,
                const Size& size,
                const std::vector<int>& tracks,
                std::function<void(bool isRead)> done);

    /// The tracks shall have no cover.
    void takeOff(const std::vector<int>& tracks);

    /// The pictures that were chosen, by the names that the rows will hold.
    [[nodiscard]] const QHash<QString, QByteArray>& pictures() const { return m_pictures; }

    [[nodiscard]] const CoverSources& sources() const { return m_sources; }

private:
    struct Question;

    /// A track as its tag is asked for.
    struct TagOf
    {
        QString fid;
        QString image;
        QString file; ///< as it lies on the disc
    };

    void readTags(const std::shared_ptr<Question>& question);
    void answer(const std::shared_ptr<Question>& question);
    [[nodiscard]] QByteArray keyOf(int track) const;
    [[nodiscard]] TagOf tagOf(int track);
    [[nodiscard]] QByteArray pictureIn(const TagOf& tag) const;
    [[nodiscard]] QString
    nameFor(const std::vector<int>& tracks, const QDateTime& date, const QByteArray& jpeg) const;

    CoverSources m_sources;
    Worker& m_worker;
    BenchTracks& m_tracks;
    FileLocator m_locator;
    QHash<QString, QByteArray> m_pictures;
    QHash<QString, QByteArray> m_tagKeys; ///< by file: what tells the cover in its tag from others
    std::shared_ptr<Question> m_asked;    ///< the last one
};

} // namespace melovane
