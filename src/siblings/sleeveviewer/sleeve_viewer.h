#pragma once

#include "siblings/sleeveviewer/picture_reader.h"
#include "siblings/sleeveviewer/sleeve_track.h"

#include <QString>
#include <QStringList>

#include <functional>

namespace melovane {

class ConfigObjects;

/// Which picture is on the stage and what a click on it answers. No window, no disk, no database.
class SleeveViewer
{
public:
    struct Parts
    {
        const ConfigObjects& texts;
        std::function<SleeveTrack(const QString& fid)> trackByFid;
        std::function<SleeveTrack(const QString& image)> trackByImage;
        std::function<void(const SleeveTrack&)> find;  ///< answered by found()
        std::function<void(const QString& file)> read; ///< answered by pictureRead()
        /// Tells the console that an image was chosen.
        std::function<void(const QString& image)> choose;
        /// Something is to be painted anew.
        std::function<void()> changed;
    };

    explicit SleeveViewer(Parts parts);

    /// The row of the console has changed. The same track again changes nothing but what has become
    /// of its pictures.
    void showFid(const QString& fid);
    /// \param image name of a cover, with or without ".jpg"; one that no track has is shown alone
    void showImage(const QString& image);

    void found(const QStringList& files);
    void pictureRead(const ReadPicture& picture);

    void next() { go(1); }

    void previous() { go(-1); }

    void first() { goTo(0); }

    void last() { goTo(m_files.size() - 1); }

    /// The cover of the track is searched for in the console, when the library knows it.
    void choose();

    [[nodiscard]] bool canChoose() const
    {
        return !m_track.image.isEmpty() && m_state == State::Shown;
    }

    // -- What is to be seen --

    /// Null while there is none to be seen; `note` then says why.
    [[nodiscard]] const QImage& image() const { return m_picture.image; }

    /// Of the picture in its file.
    [[nodiscard]] QSize size() const { return m_picture.size; }

    /// The track; empty for none.
    [[nodiscard]] const QString& title() const { return m_track.title; }

    /// "2 / 5   cover.jpg   600 x 600"; empty when there is nothing to be told.
    [[nodiscard]] QString caption() const;

    /// Why the stage is empty: a title and a sentence. Empty beside a picture, and for the moment
    /// in which it is being read.
    [[nodiscard]] QString noteTitle() const;
    [[nodiscard]] QString noteText() const;

    [[nodiscard]] bool hasOthers() const { return m_files.size() > 1; }

private:
    enum class State
    {
        NoTrack,
        Busy, ///< the picture on the stage stays until the next is there
        Shown,
        NoPictures
    };

    void showTrack(SleeveTrack track);
    void go(int step);
    void goTo(qsizetype index);
    [[nodiscard]] QString noteKey() const;

    Parts m_parts;
    SleeveTrack m_track;
    QStringList m_files;
    qsizetype m_index = 0;
    ReadPicture m_picture;
    State m_state = State::NoTrack;
};

} // namespace melovane
